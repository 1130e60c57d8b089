#include "tests/support/ConexionDePrueba.hpp"

#include <array>
#include <iostream>
#include <memory>
#include <utility>

namespace atipicos::pruebas {

namespace {

    template <class Valor>
    const Valor* busca(const std::map<std::string, Valor>& mapa, const std::string& sql)
    {
        for (const auto& [comienzo, valor] : mapa)
            if (sql.starts_with(comienzo))
                return &valor;
        return nullptr;
    }

    class Campo final : public adodb::Field {
    public:
        explicit Campo(std::string nombre)
            : m_nombre(std::move(nombre))
        {
        }
        using adodb::Field::Value;
        const std::string& Name() const noexcept override { return m_nombre; }
        Variant Value(Donde) const override { return valor; }
        void anexa_texto(std::string& destino) const override
        {
            if (!valor.es_nulo())
                destino += CStr(valor);
        }
        void Value(const Variant& nuevo, Donde) override
        {
            valor = nuevo;
            cambiado = true;
        }

        Variant valor;
        bool cambiado = false;

    private:
        std::string m_nombre;
    };

    class Filas final : public adodb::Recordset {
    public:
        explicit Filas(ConexionDePrueba& conexion)
            : m_conexion(conexion)
        {
        }

        void Open(const std::string& sql, adodb::CursorType cursor, adodb::LockType bloqueo,
            adodb::CommandType, Donde donde) override
        {
            m_sql = sql;
            m_nueva = false;
            static constexpr std::array cursores{ "forward-only", "keyset", "static" };
            static constexpr std::array bloqueos{ "read-only", "pessimistic" };
            m_conexion.dichas.push_back(std::string("OPEN ") + cursores[static_cast<std::size_t>(cursor)]
                + " " + bloqueos[static_cast<std::size_t>(bloqueo)] + " " + sql);
            m_conexion.comprueba(sql, donde);
            m_tabla = m_conexion.respuesta(sql);
            for (const auto& fila : m_tabla.filas)
                if (fila.size() != m_tabla.campos.size())
                    falta("una fila con " + std::to_string(m_tabla.campos.size()) + " valores", donde);
            m_fila = 0;
            m_campos.clear();
            for (const auto& nombre : m_tabla.campos)
                m_campos.push_back(std::make_unique<Campo>(nombre));
            carga();
        }

        bool Eof() const noexcept override { return m_fila >= m_tabla.filas.size(); }
        void MoveNext(Donde) override
        {
            ++m_fila;
            carga();
        }
        std::size_t Count() const noexcept override { return m_campos.size(); }

        adodb::Field& Fields(std::string_view nombre, Donde donde) override
        {
            for (auto& campo : m_campos)
                if (campo->Name() == nombre)
                    return *campo;
            if (!m_nueva)
                falta("la columna «" + std::string(nombre) + "»", donde);
            return *m_campos.emplace_back(std::make_unique<Campo>(std::string(nombre)));
        }
        adodb::Field& Fields(std::size_t posicion, Donde donde) override
        {
            if (posicion >= m_campos.size())
                falta("la columna número " + std::to_string(posicion), donde);
            return *m_campos[posicion];
        }

        void AddNew(Donde) override
        {
            m_nueva = true;
            m_conexion.dichas.emplace_back("ADDNEW");
        }
        void Update(Donde donde) override
        {
            std::string dicha = "UPDATE";
            for (auto& campo : m_campos)
                if (campo->cambiado)
                    dicha += " " + campo->Name() + "=" + CStr(campo->valor);
            m_conexion.dichas.push_back(dicha);
            m_conexion.comprueba(dicha, donde);
        }
        void Close(Donde) override { m_conexion.dichas.emplace_back("CLOSE"); }

    private:
        void carga()
        {
            if (!Eof())
                for (std::size_t i = 0; i < m_campos.size(); ++i)
                    m_campos[i]->valor = m_tabla.filas[m_fila][i];
        }

        /// The test has not prepared what is asked for. It is said aloud too: what asked may swallow the
        /// error.
        [[noreturn]] void falta(const std::string& que, Donde donde) const
        {
            std::string motivo = "A la respuesta de prueba le falta " + que + ", que pide "
                + std::string(donde.fichero()) + ":" + std::to_string(donde.linea())
                + ". Respuesta a: " + m_sql + ". Columnas:";
            for (const auto& campo : m_tabla.campos)
                motivo += " " + campo;
            std::cerr << motivo << std::endl;
            throw adodb::ErrorBaseDatos(adodb::Categoria::instruccion, "Prueba", motivo, m_sql, donde);
        }

        ConexionDePrueba& m_conexion;
        std::string m_sql;
        bool m_nueva = false; ///< a row is being added: it has the columns that it is given
        Tabla m_tabla;
        std::size_t m_fila = 0;
        std::vector<std::unique_ptr<Campo>> m_campos;
    };

}

void ConexionDePrueba::responde(const std::string& comienzo, Tabla tabla)
{
    m_respuestas[comienzo] = std::move(tabla);
}

void ConexionDePrueba::afecta(const std::string& comienzo, std::int32_t filas)
{
    m_afectadas[comienzo] = filas;
}

void ConexionDePrueba::falla(const std::string& comienzo, std::string descripcion)
{
    m_fallos[comienzo] = std::move(descripcion);
}

void ConexionDePrueba::Execute(
    const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    dichas.push_back("EXEC " + sql);
    comprueba(sql, donde);
    const auto* filas = busca(m_afectadas, sql);
    if (afectadas != nullptr)
        *afectadas = filas != nullptr ? *filas : 1;
}

std::unique_ptr<adodb::Recordset> ConexionDePrueba::CreateRecordset()
{
    return std::make_unique<Filas>(*this);
}

const Tabla& ConexionDePrueba::respuesta(const std::string& sql) const
{
    static const Tabla ninguna;
    const auto* tabla = busca(m_respuestas, sql);
    return tabla != nullptr ? *tabla : ninguna;
}

void ConexionDePrueba::comprueba(const std::string& sql, Donde donde) const
{
    if (const auto* descripcion = busca(m_fallos, sql))
        throw adodb::ErrorBaseDatos(adodb::Categoria::instruccion, "Prueba", *descripcion, sql, donde);
}

} // namespace atipicos::pruebas
