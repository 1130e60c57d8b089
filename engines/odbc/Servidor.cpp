#include "engines/odbc/Servidor.hpp"

#include "engines/sql/Postgresql.hpp"

#include <algorithm>
#include <array>

namespace atipicos::odbc {

namespace {

    using adodb::Categoria;

    // Texts are equal and ordered as elsewhere: by their letters, not by the language of the server.
    constexpr std::array<sql::TipoEscrito, 1> tipos_sql_server{ {
        { "NVARCHAR", "NVARCHAR", " COLLATE Latin1_General_100_BIN2" },
    } };

    std::array<Servidor, 4> todos()
    {
        const Servidor sql_server{ .nombre = nombre_sql_server,
            .dialecto = { .isnull = "ISNULL", .tipos = tipos_sql_server, .transact = true, .fetch = true },
            .empieza = "BEGIN TRANSACTION",
            .deshace = "IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION",
            .bloqueo_de_tabla = " WITH (UPDLOCK, HOLDLOCK, ROWLOCK)", // held also where there is no row yet
            .transaccion_viva = "SELECT @@TRANCOUNT",
            .pon_punto = "SAVE TRANSACTION u",
            .vuelve_al_punto = "ROLLBACK TRANSACTION u",
            .suelta_punto = "",
            .prefijo_contable = "Bexmor.dbo." };
        const Servidor postgresql{ .nombre = nombre_postgresql,
            .dialecto = sql::dialecto_postgresql(),
            .bloqueo_al_final = "\nFOR UPDATE",
            .bloqueo_de_nada = "SELECT pg_advisory_xact_lock(hashtextextended(",
            .con_puntos = true,
            .fechas
            = "SELECT CASE WHEN table_schema = current_schema() THEN '' ELSE table_schema || '.' END ||"
              " table_name, column_name, ordinal_position - 1 FROM information_schema.columns"
              " WHERE data_type LIKE 'timestamp%' OR data_type = 'date'",
            .bits = "SELECT table_name, column_name FROM information_schema.columns"
                    " WHERE domain_name = 'si_o_no'",
            .prefijo_contable = "dbo." };
        const Servidor sqlite{ .nombre = nombre_sqlite,
            .utf8 = true,
            .empieza = "BEGIN IMMEDIATE",
            .fechas
            = "SELECT CASE t.schema WHEN 'main' THEN '' ELSE t.schema || '.' END || t.name, c.name, c.cid"
              " FROM pragma_table_list t"
              " JOIN pragma_table_xinfo(t.name, t.schema) c WHERE c.type LIKE 'DATE%'",
            .comienzo_de_prueba = "BEGIN",
            .prefijo_contable = "Bexmor_" };
        return { sql_server, postgresql, sqlite, {} };
    }

    struct Clase {
        std::string_view sqlstate; ///< its first characters
        Categoria categoria;
    };
    constexpr std::array<Clase, 12> clases{ {
        { "08", Categoria::conexion }, { "22", Categoria::instruccion }, { "23", Categoria::restriccion },
        { "25006", Categoria::solo_lectura }, { "28", Categoria::conexion }, { "37", Categoria::instruccion },
        { "40", Categoria::bloqueo }, { "42", Categoria::instruccion }, { "55P03", Categoria::bloqueo },
        { "57P", Categoria::conexion }, { "HYT01", Categoria::conexion },
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

std::vector<std::string> Servidor::sesion(const Ajustes& deseados) const
{
    const auto milisegundos = [](std::chrono::milliseconds tiempo) { // 0 would be for ever
        return std::to_string(std::max<std::chrono::milliseconds::rep>(tiempo.count(), 1));
    };
    const auto espera = milisegundos(deseados.espera);
    if (nombre == nombre_sql_server) // NOCOUNT off: the rows affected are asked for
        return { "SET DATEFORMAT dmy", "SET NOCOUNT OFF", "SET XACT_ABORT OFF",
            "SET IMPLICIT_TRANSACTIONS OFF", "SET LOCK_TIMEOUT " + espera };
    std::vector<std::string> todas;
    if (nombre == nombre_postgresql)
        todas = { "SET datestyle TO 'ISO,DMY'", "SET standard_conforming_strings TO on",
            "SET lock_timeout TO " + espera,
            "SET statement_timeout TO " + milisegundos(deseados.espera_instruccion) };
    if (nombre == nombre_sqlite) // its driver waits as the TIMEOUT of the connection string says
        todas = { "PRAGMA foreign_keys=ON", "PRAGMA synchronous=FULL" };
    if (deseados.solo_lectura && nombre == nombre_postgresql)
        todas.emplace_back("SET default_transaction_read_only TO on");
    if (deseados.solo_lectura && nombre == nombre_sqlite)
        todas.emplace_back("PRAGMA query_only=ON");
    return todas;
}

Categoria Servidor::categoria(std::string_view sqlstate, int numero) const
{
    if (nombre == nombre_sqlite)
        return por_numero_sqlite(numero);
    constexpr int espera_agotada = 1222; // SQL Server gives it a general state
    if (nombre == nombre_sql_server && numero == espera_agotada)
        return Categoria::bloqueo;
    // One of its databases is closed to this user: the line is as it was, whatever the state says.
    constexpr int sin_entrada = 916;
    if (nombre == nombre_sql_server && numero == sin_entrada)
        return Categoria::otra;
    constexpr std::array<int, 2> no_existe{ 911, 4060 };
    if (nombre == nombre_sql_server
        && std::find(no_existe.begin(), no_existe.end(), numero) != no_existe.end())
        return Categoria::no_existe;
    const auto clase = std::find_if(
        clases.begin(), clases.end(), [&](const auto& una) { return sqlstate.starts_with(una.sqlstate); });
    return clase == clases.end() ? Categoria::otra : clase->categoria;
}

const Servidor& servidor(std::string_view nombre)
{
    static const auto servidores = todos();
    return *std::find_if(servidores.begin(), servidores.end() - 1,
        [&](const auto& uno) { return nombre.starts_with(uno.nombre); });
}

} // namespace atipicos::odbc
