#include "engines/odbc/Servidor.hpp"

#include <algorithm>
#include <array>

namespace atipicos::odbc {

namespace {

    using adodb::Categoria;

    constexpr std::string_view sql_server = "Microsoft SQL Server";
    constexpr std::string_view postgresql = "PostgreSQL";
    constexpr std::string_view sqlite = "SQLite";

    // The schema of a PostgreSQL database is made by the engine for it, and has ISNULL as a function.
    constexpr std::array<Servidor, 4> servidores{ {
        { .nombre = sql_server,
            .empieza = "BEGIN TRANSACTION",
            .deshace = "IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION",
            .bloqueo_de_tabla = " WITH (UPDLOCK, HOLDLOCK, ROWLOCK)", // held also where there is no row yet
            .transaccion_viva = "SELECT @@TRANCOUNT" },
        { .nombre = postgresql,
            .empieza = "BEGIN",
            .deshace = "ROLLBACK",
            .bloqueo_al_final = "\nFOR UPDATE",
            .bloqueo_de_nada = "SELECT pg_advisory_xact_lock(hashtextextended(",
            .con_puntos = true,
            .fechas = "SELECT table_name, column_name, ordinal_position - 1 FROM information_schema.columns"
                      " WHERE data_type LIKE 'timestamp%' OR data_type = 'date'" },
        { .nombre = sqlite,
            .utf8 = true,
            .isnull = "IFNULL",
            .empieza = "BEGIN IMMEDIATE",
            .deshace = "ROLLBACK",
            .fechas = "SELECT t.name, c.name, c.cid FROM pragma_table_list t"
                      " JOIN pragma_table_xinfo(t.name, t.schema) c WHERE c.type LIKE 'DATE%'" },
        { .nombre = {}, .empieza = "BEGIN", .deshace = "ROLLBACK" },
    } };

    struct Clase {
        std::string_view sqlstate; ///< its first characters
        Categoria categoria;
    };
    constexpr std::array<Clase, 12> clases{ {
        { "08", Categoria::conexion }, { "22", Categoria::instruccion }, { "23", Categoria::restriccion },
        { "25006", Categoria::solo_lectura }, { "28", Categoria::conexion }, { "37", Categoria::instruccion },
        { "40", Categoria::bloqueo }, { "42", Categoria::instruccion }, { "55P03", Categoria::bloqueo },
        { "57P", Categoria::conexion }, { "HYT", Categoria::bloqueo },
        { "S", Categoria::instruccion }, // S0002 and the like, of drivers that speak an older ODBC
    } };

    Categoria por_numero_sqlite(int numero)
    {
        switch (numero & 0xff) {
        case 1:
            return Categoria::instruccion;
        case 5:
        case 6:
            return Categoria::bloqueo;
        case 8:
            return Categoria::solo_lectura;
        case 19:
            return Categoria::restriccion;
        default:
            return Categoria::otra;
        }
    }

}

std::vector<std::string> Servidor::sesion(std::chrono::milliseconds espera) const
{
    const auto milisegundos = std::to_string(std::max<std::chrono::milliseconds::rep>(espera.count(), 1));
    if (nombre == sql_server) // NOCOUNT off: the rows affected are asked for
        return { "SET DATEFORMAT dmy", "SET NOCOUNT OFF", "SET XACT_ABORT OFF",
            "SET IMPLICIT_TRANSACTIONS OFF", "SET LOCK_TIMEOUT " + milisegundos };
    if (nombre == postgresql)
        return { "SET datestyle TO 'ISO,DMY'", "SET standard_conforming_strings TO on",
            "SET lock_timeout TO " + milisegundos };
    if (nombre == sqlite)
        return { "PRAGMA foreign_keys=ON",
            "PRAGMA synchronous=FULL" }; // its driver waits as its TIMEOUT says
    return {};
}

Categoria Servidor::categoria(std::string_view sqlstate, int numero) const
{
    if (nombre == sqlite)
        return por_numero_sqlite(numero);
    constexpr int espera_agotada = 1222; // SQL Server gives it a general state
    if (nombre == sql_server && numero == espera_agotada)
        return Categoria::bloqueo;
    const auto clase = std::find_if(
        clases.begin(), clases.end(), [&](const auto& una) { return sqlstate.starts_with(una.sqlstate); });
    return clase == clases.end() ? Categoria::otra : clase->categoria;
}

const Servidor& servidor(std::string_view nombre)
{
    return *std::find_if(servidores.begin(), servidores.end() - 1,
        [&](const auto& uno) { return nombre.starts_with(uno.nombre); });
}

} // namespace atipicos::odbc
