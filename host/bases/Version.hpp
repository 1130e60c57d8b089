#pragma once

#include "platform/adodb/Connection.hpp"

#include <string>

namespace atipicos::bases {

/// Raises an error that names `lugar` unless the table (`Esquema`) holds the version that this program knows.
void comprueba_version(
    adodb::Connection& conexion, const std::string& tabla, const std::string& lugar, Donde donde);

} // namespace atipicos::bases
