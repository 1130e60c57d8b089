#include "engines/ado/Recordset.hpp"

#include "engines/ado/Conversion.hpp"

#ifdef _WIN32
#include <objbase.h>
#endif

#include <utility>

namespace atipicos::ado {

using namespace automation;

namespace {

    class Campo final : public adodb::Field {
    public:
        Campo(Despacho campo, const std::string& sql)
            : m_campo(std::move(campo))
            , m_sql(sql)
            , m_nombre(CStr(variant_de(m_campo.llama("Name").get())))
            , m_valor(m_campo.id("Value"))
        {
        }

        [[nodiscard]] const std::string& Name() const noexcept override { return m_nombre; }

        [[nodiscard]] Variant Value(Donde donde = Donde::aqui()) const override
        {
            return con_base_de_datos(
                m_sql, donde, [&] { return variant_de(m_campo.llama(m_valor).get(), donde); });
        }

        void anexa_texto(std::string& destino) const override
        {
            const Variant valor = Value();
            if (!valor.es_nulo())
                destino += CStr(valor);
        }

        void Value(const Variant& valor, Donde donde = Donde::aqui()) override
        {
            con_base_de_datos(m_sql, donde, [&] { m_campo.pon(m_valor, valor_de(valor, donde)); });
        }

    private:
        Despacho m_campo;
        const std::string& m_sql; ///< of the recordset, which outlives its fields
        std::string m_nombre;
        DISPID m_valor;
    };

    std::int32_t codigo(adodb::CursorType cursor)
    {
        switch (cursor) {
        case adodb::CursorType::Keyset:
            return 1;
        case adodb::CursorType::Static:
            return 3;
        case adodb::CursorType::ForwardOnly:
            break;
        }
        return 0;
    }

    std::int32_t codigo(adodb::LockType bloqueo) { return bloqueo == adodb::LockType::Pessimistic ? 2 : 1; }

    Despacho nuevas_filas(const Despacho& conexion)
    {
        if (conexion.tiene("CreateRecordset"))
            return conexion.objeto("CreateRecordset");
#ifdef _WIN32
        GUID clsid;
        void* objeto = nullptr;
        if (SUCCEEDED(CLSIDFromProgID(L"ADODB.Recordset", &clsid))
            && SUCCEEDED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, iid_despacho, &objeto)))
            return Despacho::adopta(static_cast<IDispatch*>(objeto));
#endif
        throw Fallo(429, "QVORComprasAtip",
            "La conexión no ofrece CreateRecordset y no se puede crear el objeto ADODB.Recordset.");
    }

}

Recordset::Recordset(Despacho conexion)
    : m_conexion(std::move(conexion))
{
}

Recordset::~Recordset() { abandona(); }

void Recordset::Open(const std::string& sql, adodb::CursorType cursor, adodb::LockType bloqueo,
    adodb::CommandType, Donde donde)
{
    suelta(donde);
    m_sql = sql;
    con_base_de_datos(m_sql, donde, [&] {
        auto filas = nuevas_filas(m_conexion);
        filas.llama("Open", sql, m_conexion.get(), codigo(cursor), codigo(bloqueo), opcion_texto);
        m_filas = std::move(filas);
    });
    try {
        con_base_de_datos(m_sql, donde, [&] {
            lee_campos();
            lee_fin();
        });
    } catch (...) {
        abandona(); // none is open by half, with its rows locked
        throw;
    }
}

void Recordset::lee_campos()
{
    const auto campos = m_filas.objeto("Fields");
    const auto cuantos = CLng(variant_de(campos.llama("Count").get()));
    for (std::int32_t i = 0; i < cuantos; ++i)
        m_campos.push_back(std::make_unique<Campo>(campos.objeto("Item", i), m_sql));
}

void Recordset::lee_fin() { m_fin = CBool(variant_de(m_filas.llama("EOF").get())); }

void Recordset::comprueba_abierto(Donde donde) const
{
    if (!m_filas)
        throw adodb::ErrorBaseDatos(
            adodb::Categoria::otra, "QVORComprasAtip", "El conjunto de filas no está abierto.", m_sql, donde);
}

void Recordset::MoveNext(Donde donde)
{
    comprueba_abierto(donde);
    con_base_de_datos(m_sql, donde, [&] {
        m_filas.llama("MoveNext");
        lee_fin();
    });
}

adodb::Field& Recordset::Fields(std::string_view nombre, Donde donde)
{
    comprueba_abierto(donde);
    const auto minuscula = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    for (const auto& campo : m_campos) {
        const auto& suyo = campo->Name();
        if (std::equal(suyo.begin(), suyo.end(), nombre.begin(), nombre.end(),
                [&](char a, char b) { return minuscula(a) == minuscula(b); }))
            return *campo;
    }
    throw adodb::ErrorBaseDatos(adodb::Categoria::instruccion, "QVORComprasAtip",
        "No existe el campo " + std::string(nombre) + ".", m_sql, donde);
}

adodb::Field& Recordset::Fields(std::size_t posicion, Donde donde)
{
    comprueba_abierto(donde);
    if (posicion >= m_campos.size())
        throw adodb::ErrorBaseDatos(adodb::Categoria::instruccion, "QVORComprasAtip",
            "No existe el campo " + std::to_string(posicion) + ".", m_sql, donde);
    return *m_campos[posicion];
}

void Recordset::AddNew(Donde donde)
{
    comprueba_abierto(donde);
    con_base_de_datos(m_sql, donde, [&] { m_filas.llama("AddNew"); });
}

void Recordset::Update(Donde donde)
{
    comprueba_abierto(donde);
    con_base_de_datos(m_sql, donde, [&] { m_filas.llama("Update"); });
}

void Recordset::Close(Donde donde)
{
    comprueba_abierto(donde);
    suelta(donde);
}

void Recordset::suelta(Donde donde)
{
    m_campos.clear();
    m_fin = true;
    if (const auto filas = std::exchange(m_filas, {}))
        con_base_de_datos(m_sql, donde, [&] { filas.llama("Close"); });
}

void Recordset::abandona() noexcept
{
    try {
        suelta(Donde());
    } catch (...) { // NOLINT(bugprone-empty-catch): whoever needs to know closes it himself
    }
}

} // namespace atipicos::ado
