#pragma once

#include "host/orvalin/Bases.hpp"

#include <string>

namespace atipicos::orvalin {

/// The databases `Orvalin` and `Bexmor` of a SQL Server, or the schemas of a PostgreSQL database. The
/// password comes from the variable ATIPICOS_ODBC_CLAVE. Drivers differ in whether they can open one
/// read-only: nothing is asked of them.
[[nodiscard]] Bases abre_de_odbc(const std::string& cadena, const OpcionesBases& opciones, Donde donde);

} // namespace atipicos::orvalin
