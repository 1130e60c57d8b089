#pragma once

#include "engines/odbc/Servidor.hpp"
#include "runtime/Variant.hpp"

#include <memory>
#ifdef _WIN32 // the headers of ODBC do not stand alone there
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>
#include <string>
#include <type_traits>
#include <utility>
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

struct Columna {
    std::string nombre;
    bool es_fecha = false;
    /// Table and column that it comes from, of a small number where that may be a BIT.
    std::pair<std::string, std::string> origen = {};
};

/// All that a statement has answered: many drivers can do nothing else on a line before it has been read.
struct Respuesta {
    std::vector<Columna> columnas; ///< none when it returns no rows
    std::vector<std::vector<Variant>> filas;
    std::int32_t afectadas = 0; ///< 0 when the driver does not know
};

/// Runs a statement that is written as the product wants it. `limite`: the longest that it may take; 0: the
/// session says it.
[[nodiscard]] Respuesta ejecuta(SQLHDBC linea, const Servidor& servidor, const std::string& sql,
    std::chrono::seconds limite, Donde donde);

/// A table as a statement names it.
struct TablaNombrada {
    std::string catalogo; ///< without quotes; empty: it is not named
    std::string esquema;
    std::string nombre;
    std::string calificada; ///< all of it as it stands there
};

/// The columns of a table's primary key.
[[nodiscard]] std::vector<std::string> columnas_clave(
    SQLHDBC linea, const Servidor& servidor, const TablaNombrada& tabla, Donde donde);

} // namespace atipicos::odbc
