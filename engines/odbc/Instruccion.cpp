#include "engines/odbc/Instruccion.hpp"

#include "engines/sql/EnCastellano.hpp"
#include "engines/sql/Fechas.hpp"
#include "engines/sql/Tokens.hpp"
#include "runtime/Unicode.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <limits>
#include <optional>
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
        case Categoria::no_existe:
            return "La base de datos no existe en el servidor, o este usuario no puede entrar en ella";
        case Categoria::instruccion:
            return sql::no_puede;
        case Categoria::restriccion:
            return sql::no_admite;
        default:
            return sql::ha_fallado;
        }
    }

    /// What a column holds.
    enum class Tipo : std::uint8_t { Texto, Entero, Moneda, Real, Fecha, Bit };

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
    return { categoria, "ODBC",
        std::string(en_castellano(categoria)) + " (" + estrecho(texto, largo) + " [SQLSTATE " + sqlstate
            + "]).",
        instruccion, donde };
}

namespace {

    /// One statement, from its handle to its last row.
    class Instruccion {
    public:
        Instruccion(SQLHDBC linea, const Servidor& servidor, std::string sql, Donde donde)
            : m_servidor(servidor)
            , m_sql(std::move(sql))
            , m_donde(donde)
        {
            SQLHANDLE asa = SQL_NULL_HANDLE;
            if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, linea, &asa)))
                throw error_de(SQL_HANDLE_DBC, linea, servidor, m_sql, donde);
            m_asa.reset(asa);
        }

        void ejecuta(std::chrono::seconds limite)
        {
            // Texts may hold braces: they are no escapes of the driver.
            ajusta(SQL_ATTR_NOSCAN, SQL_NOSCAN_ON);
            if (limite.count() > 0)
                ajusta(SQL_ATTR_QUERY_TIMEOUT, static_cast<SQLULEN>(limite.count()));
            if (m_servidor.utf8) {
                auto* texto = reinterpret_cast<SQLCHAR*>(m_sql.data());
                comprueba(SQLExecDirect(asa(), texto, static_cast<SQLINTEGER>(m_sql.size())));
                return;
            }
            auto texto = a_utf16(m_sql);
            comprueba(SQLExecDirectW(asa(), ancho(texto), static_cast<SQLINTEGER>(texto.size())));
        }

        void pide_clave(const TablaNombrada& tabla)
        {
            // Names as a statement has them, which the product may have written down otherwise. SQL Server
            // has not, and so taken could not do without the names of database and schema.
            if (!m_servidor.dialecto.transact)
                ajusta(SQL_ATTR_METADATA_ID, SQL_TRUE);
            auto catalogo = a_utf16(tabla.catalogo);
            auto esquema = a_utf16(tabla.esquema);
            auto nombre = a_utf16(tabla.nombre);
            const auto si_hay = [](std::u16string& parte) { return parte.empty() ? nullptr : ancho(parte); };
            comprueba(SQLPrimaryKeysW(
                asa(), si_hay(catalogo), SQL_NTS, si_hay(esquema), SQL_NTS, ancho(nombre), SQL_NTS));
        }

        [[nodiscard]] Respuesta lee()
        {
            Respuesta respuesta;
            SQLLEN afectadas = 0;
            SQLRowCount(asa(), &afectadas);
            respuesta.afectadas = static_cast<std::int32_t>(std::max<SQLLEN>(afectadas, 0));
            const auto tipos = describe(respuesta.columnas);
            while (!tipos.empty() && avanza()) {
                auto& fila = respuesta.filas.emplace_back();
                fila.reserve(tipos.size());
                for (const auto tipo : tipos)
                    fila.push_back(lee_valor(static_cast<SQLUSMALLINT>(fila.size() + 1), tipo));
            }
            // An error may come behind a first answer.
            for (auto mas = SQLMoreResults(asa()); mas != SQL_NO_DATA; mas = SQLMoreResults(asa()))
                comprueba(mas);
            return respuesta;
        }

    private:
        [[nodiscard]] SQLHSTMT asa() const noexcept { return m_asa.get(); }

        void ajusta(SQLINTEGER atributo, SQLULEN valor) const // a driver may not know it
        {
            // NOLINTNEXTLINE(performance-no-int-to-ptr): ODBC takes numbers so
            SQLSetStmtAttr(asa(), atributo, reinterpret_cast<SQLPOINTER>(valor), SQL_IS_UINTEGER);
        }

        void comprueba(SQLRETURN resultado) const
        {
            if (!SQL_SUCCEEDED(resultado) && resultado != SQL_NO_DATA) // "no data": a change of no rows
                throw error_de(SQL_HANDLE_STMT, asa(), m_servidor, m_sql, m_donde);
        }

        std::vector<Tipo> describe(std::vector<Columna>& columnas) const
        {
            SQLSMALLINT cuantas = 0;
            comprueba(SQLNumResultCols(asa(), &cuantas));
            std::vector<Tipo> tipos;
            for (SQLUSMALLINT i = 1; i <= cuantas; ++i) {
                std::array<SQLWCHAR, 256> nombre{};
                SQLSMALLINT largo = 0;
                SQLSMALLINT tipo = 0;
                comprueba(SQLDescribeColW(
                    asa(), i, nombre.data(), nombre.size(), &largo, &tipo, nullptr, nullptr, nullptr));
                tipos.push_back(tipo_de(tipo, atributo(i, SQL_DESC_TYPE_NAME)));
                columnas.push_back({ estrecho(nombre, largo), tipos.back() == Tipo::Fecha });
                if (tipo == SQL_SMALLINT && *m_servidor.bits != '\0')
                    columnas.back().origen
                        = { atributo(i, SQL_DESC_BASE_TABLE_NAME), atributo(i, SQL_DESC_BASE_COLUMN_NAME) };
            }
            return tipos;
        }

        [[nodiscard]] std::string atributo(SQLUSMALLINT columna, SQLUSMALLINT cual) const
        {
            std::array<SQLWCHAR, 256> texto{};
            SQLSMALLINT bytes = 0;
            SQLColAttributeW(asa(), columna, cual, texto.data(), sizeof texto, &bytes, nullptr);
            return estrecho(texto, static_cast<SQLSMALLINT>(bytes / static_cast<int>(sizeof(SQLWCHAR))));
        }

        bool avanza() const
        {
            const auto resultado = SQLFetch(asa());
            comprueba(resultado);
            return resultado != SQL_NO_DATA;
        }

        [[nodiscard]] Variant lee_valor(SQLUSMALLINT columna, Tipo tipo) const
        {
            if (tipo == Tipo::Fecha)
                return lee_fecha(columna);
            auto leido = lee_texto(columna);
            if (!leido)
                return Nulo{};
            switch (tipo) {
            case Tipo::Entero:
                return entero(*leido);
            case Tipo::Moneda:
                return Currency::de_texto(*leido, m_donde);
            case Tipo::Real:
                return real(*leido);
            case Tipo::Bit:
                return *leido != "0";
            default:
                return std::move(*leido);
            }
        }

        [[nodiscard]] Variant lee_fecha(SQLUSMALLINT columna) const
        {
            SQL_TIMESTAMP_STRUCT leida{};
            SQLLEN largo = 0;
            comprueba(SQLGetData(asa(), columna, SQL_C_TYPE_TIMESTAMP, &leida, sizeof leida, &largo));
            if (largo == SQL_NULL_DATA)
                return Nulo{};
            const auto dia = Date::de_dia(leida.year, leida.month, leida.day);
            if (!dia)
                throw Error::de_ejecucion(numero_error::tipos_no_coinciden, m_donde);
            constexpr SQLUINTEGER por_milesima = 1'000'000;
            return Date(dia->instante() + std::chrono::hours(leida.hour) + std::chrono::minutes(leida.minute)
                + std::chrono::seconds(leida.second)
                + std::chrono::milliseconds(leida.fraction / por_milesima));
        }

        /// The text of a value as the driver gives it; nothing for null.
        [[nodiscard]] std::optional<std::string> lee_texto(SQLUSMALLINT columna) const
        {
            if (m_servidor.utf8)
                return lee_letras<char>(columna, SQL_C_CHAR);
            const auto letras = lee_letras<char16_t>(columna, SQL_C_WCHAR);
            return letras ? std::optional(a_utf8(*letras)) : std::nullopt;
        }

        template <class Letra>
        [[nodiscard]] std::optional<std::basic_string<Letra>> lee_letras(
            SQLUSMALLINT columna, SQLSMALLINT tipo_c) const
        {
            std::basic_string<Letra> todo;
            std::array<Letra, 2'048> parte; // not cleared: it is read as far as the driver has written it
            for (;;) {
                SQLLEN bytes = 0; // of what was left before this part
                const auto resultado = SQLGetData(asa(), columna, tipo_c, parte.data(), sizeof parte, &bytes);
                comprueba(resultado);
                if (bytes == SQL_NULL_DATA)
                    return std::nullopt;
                if (resultado == SQL_NO_DATA)
                    return todo;
                const bool cabe = bytes != SQL_NO_TOTAL && static_cast<std::size_t>(bytes) < sizeof parte;
                todo.append(
                    parte.data(), cabe ? static_cast<std::size_t>(bytes) / sizeof(Letra) : parte.size() - 1);
                if (cabe)
                    return todo;
            }
        }

        const Servidor& m_servidor;
        std::string m_sql;
        Donde m_donde;
        Asa<SQL_HANDLE_STMT> m_asa;
    };

}

Respuesta ejecuta(
    SQLHDBC linea, const Servidor& servidor, const std::string& sql, std::chrono::seconds limite, Donde donde)
{
    Instruccion instruccion(linea, servidor, sql, donde);
    instruccion.ejecuta(limite);
    return instruccion.lee();
}

std::vector<std::string> columnas_clave(
    SQLHDBC linea, const Servidor& servidor, const TablaNombrada& tabla, Donde donde)
{
    constexpr std::size_t nombre_de_columna = 3;
    Instruccion instruccion(linea, servidor, "SQLPrimaryKeys", donde);
    instruccion.pide_clave(tabla);
    std::vector<std::string> columnas;
    for (const auto& fila : instruccion.lee().filas)
        columnas.push_back(CStr(fila[nombre_de_columna], donde));
    return columnas;
}

} // namespace atipicos::odbc
