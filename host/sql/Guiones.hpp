#pragma once

#include <string_view>

/// The SQL scripts of this folder, as they are read by a person.
namespace atipicos::guiones {

[[nodiscard]] std::string_view orvalin(); ///< schema of the management database
[[nodiscard]] std::string_view bexmor(); ///< schema of the accounting database
[[nodiscard]] std::string_view importaciones_3(); ///< version 3 of the claims that are remembered
[[nodiscard]] std::string_view muestra_orvalin(); ///< sample company, management side
[[nodiscard]] std::string_view muestra_bexmor(); ///< sample company, accounting side
[[nodiscard]] std::string_view accesos(); ///< management: which user each login is
[[nodiscard]] std::string_view regularizaciones(); ///< accounting: what has been reversed
[[nodiscard]] std::string_view incompletos(); ///< accounting: entries that could not be stored whole
// What holds for whoever works with the tables of a server.
[[nodiscard]] std::string_view derechos_postgresql();
[[nodiscard]] std::string_view derechos_sqlserver(); ///< the part in Orvalin
[[nodiscard]] std::string_view derechos_sqlserver_bexmor();
[[nodiscard]] std::string_view repartir_citus(); ///< spreads the tables of a PostgreSQL server over its nodes
// What has been done to charges, and the triggers that write it down, as each product wants them.
[[nodiscard]] std::string_view historial_postgresql();
[[nodiscard]] std::string_view historial_sqlite();
[[nodiscard]] std::string_view historial_sqlserver(); ///< the part in Orvalin
[[nodiscard]] std::string_view historial_sqlserver_bexmor();

/// Version of both schemas, as their table `Esquema` holds it.
inline constexpr int version = 6;

} // namespace atipicos::guiones
