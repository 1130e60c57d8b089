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

} // namespace atipicos::sql
