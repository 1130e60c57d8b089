#pragma once

#include "platform/adodb/Connection.hpp"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::odbc {

/// What stands behind a driver, by the name that it gives, and how that product wants to be spoken to.
struct Servidor {
    std::string_view nombre; ///< as the driver says it
    bool utf8 = false; ///< its driver takes texts as bytes; the others as UTF-16
    const char* isnull = "ISNULL"; ///< the function
    const char* empieza = ""; ///< begins a transaction that others cannot overtake
    const char* deshace = "";
    const char* bloqueo_de_tabla = ""; ///< written behind the table of a query that locks its rows
    const char* bloqueo_al_final = ""; ///< written behind such a query
    const char* bloqueo_de_nada
        = ""; ///< beginning of a query that locks a row which is not there yet, by a text
    bool con_puntos = false; ///< a failed statement must be undone by a savepoint
    const char* fechas
        = ""; ///< query for table, column and place of dates; empty: it reads regional ones itself
    const char* transaccion_viva = ""; ///< query that gives 0 when the product has undone it by itself

    /// Statements that set up a session which waits no longer than `espera` for another user.
    [[nodiscard]] std::vector<std::string> sesion(std::chrono::milliseconds espera) const;

    /// What kind of thing an error is.
    [[nodiscard]] adodb::Categoria categoria(std::string_view sqlstate, int numero) const;
};

/// The one of that name; one without peculiarities when it is not known.
[[nodiscard]] const Servidor& servidor(std::string_view nombre);

} // namespace atipicos::odbc
