#pragma once

#include "platform/adodb/Connection.hpp"

#include <string_view>

namespace atipicos::sql {

/// Runs the statements of a script in order, each as `Execute` does. An error names the line of the script
/// (1-based) on which the failing statement begins.
void ejecuta_guion(adodb::Connection& conexion, std::string_view guion, Donde donde = Donde::aqui());

} // namespace atipicos::sql
