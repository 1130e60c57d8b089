#pragma once

#include "engines/sql/Catalogo.hpp"
#include "platform/adodb/Connection.hpp"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::odbc {

/// What every session is to be like.
struct Ajustes {
    std::chrono::milliseconds espera{ 5000 }; ///< how long to wait for another user's lock
    std::chrono::seconds espera_instruccion{ 120 }; ///< the longest that one statement may take
    bool solo_lectura = false; ///< SQL Server knows no such session: its roles are for that
};

/// What stands behind a driver, by the name that it gives, and how that product wants to be spoken to.
struct Servidor {
    std::string_view nombre = {}; ///< as the driver says it
    bool utf8 = false; ///< its driver takes texts as bytes; the others as UTF-16
    sql::Dialecto dialecto = {};
    const char* empieza = "BEGIN"; ///< begins a transaction that others cannot overtake
    const char* deshace = "ROLLBACK"; ///< must not fail when the product has undone it by itself
    const char* bloqueo_de_tabla = ""; ///< written behind the table of a query that locks its rows
    const char* bloqueo_al_final = ""; ///< written behind such a query
    /// Beginning of a query that locks a row which is not there yet, by a text.
    const char* bloqueo_de_nada = "";
    /// An error spoils the transaction: a failed statement must be undone by a savepoint, and of a failed
    /// commit nothing is left.
    bool con_puntos = false;
    /// Query for table, column and place of dates; empty: it reads regional ones itself.
    const char* fechas = "";
    /// Query for table and column of what was declared BIT and its driver takes for small numbers.
    const char* bits = "";
    const char* transaccion_viva = ""; ///< query that gives 0 when the product has undone it by itself
    /// Fails inside a transaction; where that is undone, begins one that takes no lock. Where nothing can be
    /// asked.
    const char* comienzo_de_prueba = "";

    const char* pon_punto = "SAVEPOINT u"; ///< of a unit
    const char* vuelve_al_punto = "ROLLBACK TO u";
    const char* suelta_punto = "RELEASE u"; ///< empty: a new one takes its place
    /// What stands before the accounting tables in a session that they share with management. Empty: it is
    /// not known how to share one.
    const char* prefijo_contable = "";

    /// Statements that set up a session.
    [[nodiscard]] std::vector<std::string> sesion(const Ajustes& deseados) const;

    /// What kind of thing an error is.
    [[nodiscard]] adodb::Categoria categoria(std::string_view sqlstate, int numero) const;
};

inline constexpr std::string_view nombre_sql_server = "Microsoft SQL Server";
inline constexpr std::string_view nombre_postgresql = "PostgreSQL";
inline constexpr std::string_view nombre_sqlite = "SQLite";

/// The one of that name; one without peculiarities when it is not known.
[[nodiscard]] const Servidor& servidor(std::string_view nombre);

} // namespace atipicos::odbc
