#pragma once

#include "runtime/Error.hpp"

#include <string>

namespace atipicos::bases {

/// The password for ODBC: the variable ATIPICOS_ODBC_CLAVE, or the first line of the file that the variable
/// ATIPICOS_ODBC_FICHERO_CLAVE names; empty without either. Raises an error when that file cannot be read, or
/// can be read by others.
[[nodiscard]] std::string clave_odbc(Donde donde = Donde::aqui());

} // namespace atipicos::bases
