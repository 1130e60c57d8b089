#pragma once

#include "platform/adodb/Connection.hpp"

#include <string>

namespace atipicos::bases {

/// Makes the databases `Orvalin` and `Bexmor` of a SQL Server, or fills them when they are there and empty.
/// False, with nothing changed, when they hold the tables already. On an error no table is left behind.
bool crea_en_sql_server(adodb::Connection& conexion, const std::string& lugar, bool vacia, Donde donde);

} // namespace atipicos::bases
