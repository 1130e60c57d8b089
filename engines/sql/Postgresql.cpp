#include "engines/sql/Postgresql.hpp"

#include "engines/sql/Tokens.hpp"

#include <array>
#include <string>

namespace atipicos::sql {

namespace {

    constexpr std::array<TipoEscrito, 6> tipos_escritos{ {
        { "AS", "SMALLINT GENERATED ALWAYS AS", " STORED" }, // every computed column is of this type
        { "BIT", tipo_bit_postgresql },
        { "DATETIME", "TIMESTAMP(3)" },
        { "MONEY", "NUMERIC(19,4)" },
        { "NVARCHAR", "VARCHAR", " COLLATE \"C\"" }, // one order of texts, whatever the server's language
        { "TINYINT", "SMALLINT" },
    } };

}

Dialecto dialecto_postgresql() noexcept
{
    return { .isnull = "ISNULL", .tipos = tipos_escritos, .fetch = true };
}

void crea_esquema_postgresql(adodb::Connection& conexion, std::string_view nombre, Donde donde)
{
    const auto esquema = entre_comillas(nombre);
    for (const auto& sql : { "CREATE SCHEMA " + esquema, "SET LOCAL search_path TO " + esquema,
             std::string("CREATE FUNCTION \"isnull\"(anycompatible, anycompatible) RETURNS anycompatible"
                         " LANGUAGE sql IMMUTABLE PARALLEL SAFE AS 'SELECT COALESCE($1, $2)'"),
             "CREATE DOMAIN " + std::string(tipo_bit_postgresql) + " AS SMALLINT CHECK (VALUE IN (0, 1))" })
        conexion.Execute(sql, nullptr, adodb::CommandType::Text, donde);
}

void crea_confirmaciones_postgresql(adodb::Connection& conexion, std::string_view esquema, Donde donde)
{
    const auto en = entre_comillas(esquema) + ".";
    const auto funcion = [&](const std::string& cabeza, const std::string& cuerpo) {
        return "CREATE FUNCTION " + en + cabeza
            + " LANGUAGE sql SECURITY DEFINER SET search_path = pg_catalog AS '" + cuerpo + "'";
    };
    const auto tabla = en + "confirmaciones";
    const std::array<std::string, 3> instrucciones{ "CREATE TABLE " + tabla
            + " (clave VARCHAR(60) PRIMARY KEY, guardada SMALLINT NOT NULL DEFAULT 1,"
              " momento TIMESTAMP(3) NOT NULL DEFAULT localtimestamp)",
        // Those that another session sweeps are left to it: nobody waits here.
        funcion("confirmacion_anota(text, text) RETURNS void",
            "DELETE FROM " + tabla + " WHERE clave = $2; DELETE FROM " + tabla
                + " WHERE $2 = '''' AND clave IN (SELECT clave FROM " + tabla
                + " WHERE momento < localtimestamp - interval ''7 days'' FOR UPDATE SKIP LOCKED);"
                  " INSERT INTO "
                + tabla + " (clave) VALUES ($1)"),
        // It writes in either case: where a commit waits for a standby, the answer does too.
        funcion("confirmacion_busca(text) RETURNS smallint",
            "INSERT INTO " + tabla
                + " (clave, guardada) VALUES ($1, 0) ON CONFLICT (clave) DO UPDATE"
                  " SET momento = localtimestamp RETURNING guardada") };
    for (const auto& sql : instrucciones)
        conexion.Execute(sql, nullptr, adodb::CommandType::Text, donde);
}

} // namespace atipicos::sql
