#include "engines/sqlite/Instruccion.hpp"

#include "engines/sql/EnCastellano.hpp"
#include "engines/sql/Fechas.hpp"
#include "engines/sql/Tokens.hpp"

#include <cmath>
#include <limits>
#include <string_view>
#include <variant>

namespace atipicos::sqlite {

namespace {

    using adodb::Categoria;

    struct Clasificacion {
        Categoria categoria;
        const char* en_castellano; ///< what SQLite's own words stand behind
    };

    Clasificacion clasifica(int codigo)
    {
        switch (codigo & 0xff) {
        case SQLITE_CONSTRAINT:
            return { Categoria::restriccion, sql::no_admite };
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return { Categoria::bloqueo, "La base de datos está bloqueada por otro usuario" };
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return { Categoria::solo_lectura, "La base de datos es de sólo lectura" };
        case SQLITE_FULL:
            return { Categoria::otra, "No queda sitio en el disco para la base de datos" };
        case SQLITE_IOERR:
            return { Categoria::conexion, "No se puede leer o escribir la base de datos" };
        case SQLITE_CANTOPEN:
            return { Categoria::conexion, "No se puede abrir la base de datos" };
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            return { Categoria::conexion, "El fichero no es una base de datos o está dañado" };
        case SQLITE_ERROR:
        case SQLITE_RANGE:
        case SQLITE_MISMATCH:
        case SQLITE_TOOBIG:
            return { Categoria::instruccion, sql::no_puede };
        default:
            return { Categoria::otra, sql::ha_fallado };
        }
    }

    struct Ligadura {
        sqlite3_stmt* instruccion;
        int parametro;

        int operator()(std::monostate) const { return sqlite3_bind_null(instruccion, parametro); }
        int operator()(Nulo) const { return sqlite3_bind_null(instruccion, parametro); }
        int operator()(bool valor) const { return sqlite3_bind_int(instruccion, parametro, valor ? 1 : 0); }
        int operator()(std::int32_t valor) const { return sqlite3_bind_int(instruccion, parametro, valor); }
        int operator()(double valor) const { return sqlite3_bind_double(instruccion, parametro, valor); }
        int operator()(Currency valor) const
        {
            return sqlite3_bind_double(instruccion, parametro, valor.a_double());
        }
        int operator()(Date valor) const { return (*this)(sql::texto_iso(valor)); }
        int operator()(const std::string& valor) const
        {
            return sqlite3_bind_text64(
                instruccion, parametro, valor.data(), valor.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
        }
        int operator()(const std::shared_ptr<Objeto>&) const { return SQLITE_MISMATCH; }
    };

    std::string_view texto_de(sqlite3_stmt* instruccion, int columna)
    {
        const auto* texto = reinterpret_cast<const char*>(sqlite3_column_text(instruccion, columna));
        return texto == nullptr
            ? std::string_view()
            : std::string_view(texto, static_cast<std::size_t>(sqlite3_column_bytes(instruccion, columna)));
    }

    Variant entero(std::int64_t valor)
    {
        using Limites = std::numeric_limits<std::int32_t>;
        if (valor < Limites::min() || valor > Limites::max())
            return static_cast<double>(valor);
        return static_cast<std::int32_t>(valor);
    }

    Currency moneda(std::int64_t valor, Donde donde)
    {
        constexpr std::int64_t limite = std::numeric_limits<std::int64_t>::max() / Currency::escala;
        if (valor > limite || valor < -limite)
            throw Error::de_ejecucion(numero_error::desbordamiento, donde);
        return Currency::de_crudo(valor * Currency::escala);
    }

    Currency moneda(double valor, Donde donde)
    {
        const double diezmilesimas = std::nearbyint(valor * Currency::escala);
        constexpr double limite = 1e15; // 15 digits: no shorter decimal gives the same double
        if (std::fabs(diezmilesimas) < limite && diezmilesimas / Currency::escala == valor)
            return Currency::de_crudo(static_cast<std::int64_t>(diezmilesimas));
        return Currency::de_double(valor, donde);
    }

    Variant fecha(std::string_view texto)
    {
        const auto leida = sql::lee_iso(texto);
        return leida ? Variant(*leida) : Variant(texto); // another program's text is handed on as it is
    }

}

adodb::ErrorBaseDatos error_de(sqlite3* base, const std::string& instruccion, Donde donde)
{
    const auto clasificacion = clasifica(sqlite3_extended_errcode(base));
    return { clasificacion.categoria, "SQLite",
        std::string(clasificacion.en_castellano) + " (" + sqlite3_errmsg(base) + ").", instruccion, donde };
}

Instruccion::Instruccion(sqlite3* base, const std::string& sql, Donde donde)
    : m_base(base)
{
    sqlite3_stmt* instruccion = nullptr;
    if (sql.find('\0') != std::string::npos)
        throw adodb::ErrorBaseDatos(Categoria::instruccion, "SQLite",
            "La instrucción contiene un carácter nulo, que la base de datos no admite.", sql, donde);
    if (sqlite3_prepare_v2(base, sql.c_str(), static_cast<int>(sql.size()) + 1, &instruccion, nullptr)
        != SQLITE_OK)
        throw error_de(base, sql, donde);
    m_instruccion.reset(instruccion);
}

bool Instruccion::avanza(Donde donde)
{
    if (!m_instruccion)
        return false;
    const int resultado = sqlite3_step(m_instruccion.get());
    if (resultado == SQLITE_ROW)
        return true;
    if (resultado == SQLITE_DONE)
        return false;
    throw error_de(m_base, sqlite3_sql(m_instruccion.get()), donde);
}

void Instruccion::comprueba(int resultado, Donde donde) const
{
    if (resultado != SQLITE_OK)
        throw error_de(m_base, sqlite3_sql(m_instruccion.get()), donde);
}

void Instruccion::liga(int parametro, const Variant& valor, Donde donde)
{
    comprueba(std::visit(Ligadura{ m_instruccion.get(), parametro }, valor.valor()), donde);
}

bool Instruccion::liga(int parametro, const sql::Literal& literal, bool es_fecha, Donde donde)
{
    using Clase = sql::Literal::Clase;
    if (literal.clase == Clase::decimal) {
        comprueba(sqlite3_bind_double(get(), parametro, sql::real_de(literal)), donde);
    } else if (literal.clase != Clase::texto) {
        comprueba(sqlite3_bind_int64(get(), parametro, sql::entero_de(literal)), donde);
    } else {
        std::string sitio;
        const auto texto = sql::contenido_de(literal, es_fecha, sitio);
        if (!texto)
            return false;
        comprueba(sqlite3_bind_text64(get(), parametro, texto->data(), texto->size(),
                      texto->data() == sitio.data() ? SQLITE_TRANSIENT : SQLITE_STATIC, SQLITE_UTF8),
            donde);
    }
    return true;
}

const std::vector<Tipo>& Instruccion::tipos()
{
    const int vez = get() == nullptr ? m_de_vez : sqlite3_stmt_status(get(), SQLITE_STMTSTATUS_REPREPARE, 0);
    if (vez != m_de_vez) {
        m_tipos.clear();
        for (int i = 0; i < sqlite3_column_count(get()); ++i)
            m_tipos.push_back(tipo_declarado(sqlite3_column_decltype(get(), i)));
        m_de_vez = vez;
    }
    return m_tipos;
}

std::string_view Instruccion::texto() const noexcept
{
    return get() == nullptr ? std::string_view() : std::string_view(sqlite3_sql(get()));
}

void Instruccion::descansa() noexcept
{
    prestada = false;
    if (get() == nullptr)
        return;
    sqlite3_reset(get());
    sqlite3_clear_bindings(get());
}

Tipo tipo_declarado(const char* declarado) noexcept
{
    const std::string_view tipo = declarado == nullptr ? std::string_view() : std::string_view(declarado);
    const auto es
        = [&](std::string_view nombre) { return sql::iguales(tipo.substr(0, nombre.size()), nombre); };
    if (es("MONEY") || es("DECIMAL") || es("NUMERIC"))
        return Tipo::Moneda;
    if (es("DATE"))
        return Tipo::Fecha;
    return es("BIT") ? Tipo::Bit : Tipo::Segun;
}

Variant valor_de(sqlite3_stmt* instruccion, int columna, Tipo tipo, Donde donde)
{
    switch (sqlite3_column_type(instruccion, columna)) {
    case SQLITE_INTEGER: {
        const std::int64_t valor = sqlite3_column_int64(instruccion, columna);
        if (tipo == Tipo::Moneda)
            return moneda(valor, donde);
        return tipo == Tipo::Bit ? Variant(valor != 0) : entero(valor);
    }
    case SQLITE_FLOAT: {
        const double valor = sqlite3_column_double(instruccion, columna);
        return tipo == Tipo::Moneda ? Variant(moneda(valor, donde)) : Variant(valor);
    }
    case SQLITE_NULL:
        return Nulo{};
    default: {
        const auto texto = texto_de(instruccion, columna);
        return tipo == Tipo::Fecha ? fecha(texto) : Variant(texto);
    }
    }
}

} // namespace atipicos::sqlite
