#pragma once

#include "platform/adodb/Connection.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace atipicos::pruebas {

/// Every row of every table that a script makes, as texts in one order.
[[nodiscard]] std::vector<std::string> vuelca(adodb::Connection& conexion, std::string_view guion);

} // namespace atipicos::pruebas
