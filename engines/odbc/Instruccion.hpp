#pragma once

#include "engines/odbc/Servidor.hpp"
#include "platform/adodb/Connection.hpp"
#include "runtime/Variant.hpp"

#include <memory>
#include <optional>
#include <sql.h>
#include <sqlext.h>
#include <string>
#include <type_traits>
#include <vector>

namespace atipicos::odbc {

template <SQLSMALLINT tipo> struct Libera {
    void operator()(SQLHANDLE asa) const noexcept { SQLFreeHandle(tipo, asa); }
};
template <SQLSMALLINT tipo> using Asa = std::unique_ptr<std::remove_pointer_t<SQLHANDLE>, Libera<tipo>>;

/// The error that a driver has just reported on a handle: its own words, its SQLSTATE and the product's
/// number.
[[nodiscard]] adodb::ErrorBaseDatos error_de(
    SQLSMALLINT tipo, SQLHANDLE asa, const Servidor& servidor, const std::string& instruccion, Donde donde);

/// What a column holds.
enum class Tipo : std::uint8_t { Texto, Entero, Moneda, Real, Fecha, Bit };

struct Columna {
    std::string nombre;
    Tipo tipo = Tipo::Texto;
};

/// One statement that has been run.
class Instruccion {
public:
    /// Runs `sql`, which is written as the product wants it.
    Instruccion(SQLHDBC linea, const Servidor& servidor, const std::string& sql, Donde donde);
    /// Asks for the columns of a table's primary key, of which the fourth value is the name.
    [[nodiscard]] static Instruccion clave(
        SQLHDBC linea, const Servidor& servidor, const std::string& tabla, Donde donde);

    [[nodiscard]] std::vector<Columna> describe(Donde donde) const; ///< none when it returns no rows
    [[nodiscard]] std::int32_t afectadas() const; ///< 0 when the driver does not know
    bool avanza(Donde donde); ///< to the next row; false at the end
    [[nodiscard]] Variant lee(
        int columna, Tipo tipo, Donde donde) const; ///< 0-based, once, from left to right

private:
    Instruccion(SQLHDBC linea, const Servidor& servidor, std::string sql, Donde donde, bool);
    void comprueba(SQLRETURN resultado, Donde donde) const;
    [[nodiscard]] Variant lee_fecha(SQLUSMALLINT columna, Donde donde) const;
    /// The text of a value as the driver gives it, in parts; nothing for null.
    template <class Letra>
    [[nodiscard]] std::optional<std::basic_string<Letra>> lee_letras(
        SQLUSMALLINT columna, SQLSMALLINT tipo_c, Donde donde) const;
    [[nodiscard]] std::optional<std::string> lee_texto(SQLUSMALLINT columna, Donde donde) const;

    const Servidor* m_servidor;
    std::string m_sql;
    Asa<SQL_HANDLE_STMT> m_asa;
};

} // namespace atipicos::odbc
