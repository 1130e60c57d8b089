#pragma once

#include "host/sql/Guiones.hpp"
#include "platform/adodb/Connection.hpp"

#include <string>

namespace atipicos::bases {

/// The version that a table (`Esquema`) holds. Raises an error that names `lugar` when it is no table of this
/// program, or when the version is beyond `ultima`: a later program has made or changed the tables.
std::int32_t comprueba_version(adodb::Connection& conexion, const std::string& tabla,
    const std::string& lugar, Donde donde, std::int32_t ultima = guiones::version);

} // namespace atipicos::bases
