#include "tests/integracion/ConexionGemela.hpp"

#include <gtest/gtest.h>

#include <exception>
#include <map>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace atipicos::pruebas {

namespace {

    /// How something ended: what it gave, or its error.
    struct Final {
        std::string dicho;
        std::exception_ptr error = {};
    };

    template <class Uso> Final final_de(Uso uso)
    {
        try {
            return { uso() };
        } catch (const adodb::ErrorBaseDatos& error) {
            return { "error " + std::to_string(error.numero()) + " of kind "
                    + std::to_string(static_cast<int>(error.categoria())) + " of " + error.fuente() + ": "
                    + error.descripcion() + " in " + error.instruccion(),
                std::current_exception() };
        } catch (const Error& error) {
            return { "error " + std::to_string(error.numero()) + ": " + error.descripcion(),
                std::current_exception() };
        }
    }

    /// Does it with one and with the other, and raises the error of the first.
    template <class Una, class Otra> void compara(const std::string& que, Una una, Otra otra)
    {
        const auto de_una = final_de(std::move(una));
        const auto de_otra = final_de(std::move(otra));
        EXPECT_EQ(de_una.dicho, de_otra.dicho) << que;
        if (de_una.error)
            std::rethrow_exception(de_una.error);
    }

    /// Kind and value, a floating number with all its digits.
    std::string texto_de(const Variant& valor)
    {
        std::ostringstream texto;
        texto << valor.valor().index() << ' ';
        if (const auto* real = std::get_if<double>(&valor.valor()))
            texto << std::hexfloat << *real;
        else if (!valor.es_nulo() && !valor.es_vacio())
            texto << CStr(valor);
        return texto.str();
    }

    /// The names of the fields and, where there is one, the row that they stand on.
    std::string fila_de(adodb::Recordset& filas)
    {
        std::string texto = filas.Eof() ? "end" : "row";
        for (std::size_t i = 0; i < filas.Count(); ++i) {
            const auto& campo = filas.Fields(i);
            texto += " | " + campo.Name();
            if (!filas.Eof())
                texto += " = " + final_de([&] { return texto_de(campo.Value()); }).dicho;
        }
        return texto;
    }

    class CampoGemelo final : public adodb::Field {
    public:
        CampoGemelo(adodb::Field& uno, adodb::Field& otro)
            : m_uno(uno)
            , m_otro(otro)
        {
        }

        const std::string& Name() const noexcept override { return m_uno.Name(); }

        Variant Value(Donde donde) const override
        {
            Variant valor;
            compara(
                "field " + Name(), [&] { return texto_de(valor = m_uno.Value(donde)); },
                [&] { return texto_de(m_otro.Value(donde)); });
            return valor;
        }

        void anexa_texto(std::string& destino) const override
        {
            std::string una;
            compara(
                "text of field " + Name(), [&] { return (m_uno.anexa_texto(una), una); },
                [&] {
                    std::string otra;
                    m_otro.anexa_texto(otra);
                    return otra;
                });
            destino += una;
        }

        void Value(const Variant& valor, Donde donde) override
        {
            compara(
                "value for field " + Name(), [&] { return (m_uno.Value(valor, donde), ""); },
                [&] { return (m_otro.Value(valor, donde), ""); });
        }

    private:
        adodb::Field& m_uno;
        adodb::Field& m_otro;
    };

    class FilasGemelas final : public adodb::Recordset {
    public:
        FilasGemelas(std::unique_ptr<adodb::Recordset> unas, std::unique_ptr<adodb::Recordset> otras)
            : m_unas(std::move(unas))
            , m_otras(std::move(otras))
        {
        }

        void Open(const std::string& sql, adodb::CursorType cursor, adodb::LockType bloqueo,
            adodb::CommandType tipo, Donde donde) override
        {
            m_que = sql;
            m_campos.clear();
            los_dos(
                [&](auto& filas) { return (filas.Open(sql, cursor, bloqueo, tipo, donde), fila_de(filas)); });
        }

        bool Eof() const noexcept override { return m_unas->Eof(); }
        std::size_t Count() const noexcept override { return m_unas->Count(); }

        void MoveNext(Donde donde) override
        {
            los_dos([&](auto& filas) { return (filas.MoveNext(donde), fila_de(filas)); });
        }

        adodb::Field& Fields(std::string_view nombre, Donde donde) override
        {
            return campo([&](auto& filas) -> adodb::Field& { return filas.Fields(nombre, donde); });
        }

        adodb::Field& Fields(std::size_t posicion, Donde donde) override
        {
            return campo([&](auto& filas) -> adodb::Field& { return filas.Fields(posicion, donde); });
        }

        void AddNew(Donde donde) override
        {
            los_dos([&](auto& filas) { return (filas.AddNew(donde), ""); });
        }
        void Update(Donde donde) override
        {
            los_dos([&](auto& filas) { return (filas.Update(donde), ""); });
        }
        void Close(Donde donde) override
        {
            los_dos([&](auto& filas) { return (filas.Close(donde), ""); });
        }

    private:
        template <class Uso> void los_dos(Uso uso)
        {
            compara(
                m_que, [&] { return std::string(uso(*m_unas)); }, [&] { return std::string(uso(*m_otras)); });
        }

        template <class Uso> adodb::Field& campo(Uso uso)
        {
            adodb::Field* uno = nullptr;
            adodb::Field* otro = nullptr;
            compara(
                m_que, [&] { return (uno = &uso(*m_unas))->Name(); },
                [&] { return (otro = &uso(*m_otras))->Name(); });
            if (otro == nullptr)
                throw std::logic_error("only one of the twins has the field");
            return *m_campos.try_emplace(uno, std::make_unique<CampoGemelo>(*uno, *otro)).first->second;
        }

        std::unique_ptr<adodb::Recordset> m_unas;
        std::unique_ptr<adodb::Recordset> m_otras;
        std::map<const adodb::Field*, std::unique_ptr<CampoGemelo>> m_campos;
        std::string m_que;
    };

}

ConexionGemela::ConexionGemela(
    std::shared_ptr<adodb::Connection> una, std::shared_ptr<adodb::Connection> otra)
    : m_una(std::move(una))
    , m_otra(std::move(otra))
{
}

void ConexionGemela::Execute(
    const std::string& sql, std::int32_t* afectadas, adodb::CommandType tipo, Donde donde)
{
    std::int32_t filas = 0;
    const auto ejecuta = [&](adodb::Connection& conexion, std::int32_t& cuantas) {
        conexion.Execute(sql, &cuantas, tipo, donde);
        return std::to_string(cuantas) + " rows";
    };
    compara(
        sql, [&] { return ejecuta(*m_una, filas); },
        [&] {
            std::int32_t otras = 0;
            return ejecuta(*m_otra, otras);
        });
    if (afectadas != nullptr)
        *afectadas = filas;
}

void ConexionGemela::BeginTrans(Donde donde)
{
    compara(
        "BEGIN", [&] { return (m_una->BeginTrans(donde), ""); },
        [&] { return (m_otra->BeginTrans(donde), ""); });
}

void ConexionGemela::CommitTrans(Donde donde)
{
    compara(
        "COMMIT", [&] { return (m_una->CommitTrans(donde), ""); },
        [&] { return (m_otra->CommitTrans(donde), ""); });
}

void ConexionGemela::RollbackTrans(Donde donde)
{
    compara(
        "ROLLBACK", [&] { return (m_una->RollbackTrans(donde), ""); },
        [&] { return (m_otra->RollbackTrans(donde), ""); });
}

std::unique_ptr<adodb::Recordset> ConexionGemela::CreateRecordset()
{
    return std::make_unique<FilasGemelas>(m_una->CreateRecordset(), m_otra->CreateRecordset());
}

} // namespace atipicos::pruebas
