#include "engines/odbc/Instruccion.hpp"

#include "engines/odbc/Unicode.hpp"
#include "engines/sql/Fechas.hpp"
#include "engines/sql/Tokens.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <limits>
#include <sqlucode.h>

namespace atipicos::odbc {

namespace {

    using adodb::Categoria;

    static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

    SQLWCHAR* ancho(std::u16string& texto) { return reinterpret_cast<SQLWCHAR*>(texto.data()); }

    template <std::size_t n> std::string estrecho(const std::array<SQLWCHAR, n>& letras, SQLSMALLINT cuantas)
    {
        const auto total = std::clamp<std::size_t>(static_cast<std::size_t>(cuantas), 0, n - 1);
        return a_utf8({ reinterpret_cast<const char16_t*>(letras.data()), total });
    }

    const char* en_castellano(Categoria categoria)
    {
        switch (categoria) {
        case Categoria::bloqueo:
            return "La base de datos está bloqueada por otro usuario";
        case Categoria::solo_lectura:
            return "La base de datos es de sólo lectura";
        case Categoria::conexion:
            return "No hay conexión con el servidor de la base de datos";
        default:
            return nullptr;
        }
    }

    Tipo tipo_de(SQLSMALLINT tipo, std::string_view nombre)
    {
        if (sql::iguales(nombre, "MONEY")) // a driver may take its own type for a floating number
            return Tipo::Moneda;
        switch (tipo) {
        case SQL_BIT:
            return Tipo::Bit;
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT:
            return Tipo::Entero;
        case SQL_DECIMAL:
        case SQL_NUMERIC:
            return Tipo::Moneda;
        case SQL_REAL:
        case SQL_FLOAT:
        case SQL_DOUBLE:
            return Tipo::Real;
        case SQL_TYPE_DATE:
        case SQL_TYPE_TIMESTAMP:
            return Tipo::Fecha;
        default:
            return Tipo::Texto;
        }
    }

    Variant entero(std::string_view texto)
    {
        std::int64_t valor = 0;
        std::from_chars(texto.data(), texto.data() + texto.size(), valor);
        using Limites = std::numeric_limits<std::int32_t>;
        if (valor < Limites::min() || valor > Limites::max())
            return static_cast<double>(valor);
        return static_cast<std::int32_t>(valor);
    }

    Variant real(std::string_view texto)
    {
        double valor = 0;
        const auto leido = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
        return leido.ec == std::errc() ? Variant(valor) : Variant(texto);
    }

}

adodb::ErrorBaseDatos error_de(
    SQLSMALLINT tipo, SQLHANDLE asa, const Servidor& servidor, const std::string& instruccion, Donde donde)
{
    std::array<SQLWCHAR, 6> estado{};
    std::array<SQLWCHAR, 2'000> texto{};
    SQLINTEGER numero = 0;
    SQLSMALLINT largo = 0;
    if (!SQL_SUCCEEDED(
            SQLGetDiagRecW(tipo, asa, 1, estado.data(), &numero, texto.data(), texto.size(), &largo)))
        return { Categoria::otra, "ODBC", "El controlador no dice qué ha fallado.", instruccion, donde };
    const auto sqlstate = estrecho(estado, 5);
    const auto categoria = servidor.categoria(sqlstate, numero);
    std::string descripcion = estrecho(texto, largo) + " [SQLSTATE " + sqlstate + "]";
    if (const auto* comienzo = en_castellano(categoria))
        descripcion = std::string(comienzo) + " (" + descripcion + ").";
    return { categoria, "ODBC", std::move(descripcion), instruccion, donde };
}

Instruccion::Instruccion(SQLHDBC linea, const Servidor& servidor, std::string sql, Donde donde, bool)
    : m_servidor(&servidor)
    , m_sql(std::move(sql))
{
    SQLHANDLE asa = SQL_NULL_HANDLE;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, linea, &asa)))
        throw error_de(SQL_HANDLE_DBC, linea, servidor, m_sql, donde);
    m_asa.reset(asa);
    // Texts may hold braces: they are no escapes of the driver.
    SQLSetStmtAttr(asa, SQL_ATTR_NOSCAN, reinterpret_cast<SQLPOINTER>(SQL_NOSCAN_ON), SQL_IS_UINTEGER);
}

Instruccion::Instruccion(SQLHDBC linea, const Servidor& servidor, const std::string& sql, Donde donde)
    : Instruccion(linea, servidor, sql, donde, true)
{
    if (servidor.utf8) {
        auto* texto = reinterpret_cast<SQLCHAR*>(m_sql.data());
        comprueba(SQLExecDirect(m_asa.get(), texto, static_cast<SQLINTEGER>(m_sql.size())), donde);
        return;
    }
    auto texto = a_utf16(sql);
    comprueba(SQLExecDirectW(m_asa.get(), ancho(texto), static_cast<SQLINTEGER>(texto.size())), donde);
}

Instruccion Instruccion::clave(SQLHDBC linea, const Servidor& servidor, const std::string& tabla, Donde donde)
{
    Instruccion una(linea, servidor, "SQLPrimaryKeys", donde, true);
    // A name as a statement has it, which the product may have written down otherwise.
    SQLSetStmtAttr(
        una.m_asa.get(), SQL_ATTR_METADATA_ID, reinterpret_cast<SQLPOINTER>(SQL_TRUE), SQL_IS_UINTEGER);
    auto nombre = a_utf16(tabla);
    una.comprueba(SQLPrimaryKeysW(una.m_asa.get(), nullptr, 0, nullptr, 0, ancho(nombre), SQL_NTS), donde);
    return una;
}

void Instruccion::comprueba(SQLRETURN resultado, Donde donde) const
{
    if (!SQL_SUCCEEDED(resultado) && resultado != SQL_NO_DATA) // "no data": a change of no rows
        throw error_de(SQL_HANDLE_STMT, m_asa.get(), *m_servidor, m_sql, donde);
}

std::vector<Columna> Instruccion::describe(Donde donde) const
{
    SQLSMALLINT cuantas = 0;
    comprueba(SQLNumResultCols(m_asa.get(), &cuantas), donde);
    std::vector<Columna> todas;
    for (SQLUSMALLINT i = 1; i <= cuantas; ++i) {
        std::array<SQLWCHAR, 256> nombre{};
        std::array<SQLWCHAR, 64> nombre_tipo{};
        SQLSMALLINT largo = 0;
        SQLSMALLINT bytes = 0;
        SQLSMALLINT tipo = 0;
        comprueba(SQLDescribeColW(
                      m_asa.get(), i, nombre.data(), nombre.size(), &largo, &tipo, nullptr, nullptr, nullptr),
            donde);
        SQLColAttributeW(
            m_asa.get(), i, SQL_DESC_TYPE_NAME, nombre_tipo.data(), sizeof nombre_tipo, &bytes, nullptr);
        todas.push_back({ estrecho(nombre, largo),
            tipo_de(tipo, estrecho(nombre_tipo, static_cast<SQLSMALLINT>(bytes / 2))) });
    }
    return todas;
}

std::int32_t Instruccion::afectadas() const
{
    SQLLEN filas = 0;
    SQLRowCount(m_asa.get(), &filas);
    return filas < 0 ? 0 : static_cast<std::int32_t>(filas);
}

bool Instruccion::avanza(Donde donde)
{
    const auto resultado = SQLFetch(m_asa.get());
    comprueba(resultado, donde);
    return resultado != SQL_NO_DATA;
}

Variant Instruccion::lee(int columna, Tipo tipo, Donde donde) const
{
    const auto numero = static_cast<SQLUSMALLINT>(columna + 1);
    if (tipo == Tipo::Fecha)
        return lee_fecha(numero, donde);
    auto leido = lee_texto(numero, donde);
    if (!leido)
        return Nulo{};
    auto& texto = *leido;
    switch (tipo) {
    case Tipo::Entero:
        return entero(texto);
    case Tipo::Moneda:
        return Currency::de_texto(texto, donde);
    case Tipo::Real:
        return real(texto);
    case Tipo::Bit:
        return texto != "0";
    default:
        return std::move(texto);
    }
}

Variant Instruccion::lee_fecha(SQLUSMALLINT columna, Donde donde) const
{
    SQL_TIMESTAMP_STRUCT leida{};
    SQLLEN largo = 0;
    comprueba(SQLGetData(m_asa.get(), columna, SQL_C_TYPE_TIMESTAMP, &leida, sizeof leida, &largo), donde);
    if (largo == SQL_NULL_DATA)
        return Nulo{};
    const auto dia = Date::de_dia(leida.year, leida.month, leida.day);
    if (!dia)
        throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
    constexpr SQLUINTEGER por_milesima = 1'000'000;
    return Date(dia->instante() + std::chrono::hours(leida.hour) + std::chrono::minutes(leida.minute)
        + std::chrono::seconds(leida.second) + std::chrono::milliseconds(leida.fraction / por_milesima));
}

std::optional<std::string> Instruccion::lee_texto(SQLUSMALLINT columna, Donde donde) const
{
    if (m_servidor->utf8)
        return lee_letras<char>(columna, SQL_C_CHAR, donde);
    const auto letras = lee_letras<char16_t>(columna, SQL_C_WCHAR, donde);
    return letras ? std::optional(a_utf8(*letras)) : std::nullopt;
}

template <class Letra>
std::optional<std::basic_string<Letra>> Instruccion::lee_letras(
    SQLUSMALLINT columna, SQLSMALLINT tipo_c, Donde donde) const
{
    std::basic_string<Letra> todo;
    std::array<Letra, 2'048> parte{};
    for (;;) {
        SQLLEN bytes = 0; // of what was left before this part
        const auto resultado = SQLGetData(m_asa.get(), columna, tipo_c, parte.data(), sizeof parte, &bytes);
        comprueba(resultado, donde);
        if (bytes == SQL_NULL_DATA)
            return std::nullopt;
        if (resultado == SQL_NO_DATA)
            return todo;
        const bool cabe = bytes != SQL_NO_TOTAL && static_cast<std::size_t>(bytes) < sizeof parte;
        todo.append(parte.data(), cabe ? static_cast<std::size_t>(bytes) / sizeof(Letra) : parte.size() - 1);
        if (cabe)
            return todo;
    }
}

} // namespace atipicos::odbc
