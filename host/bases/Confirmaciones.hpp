#pragma once

#include "platform/adodb/Connection.hpp"

namespace atipicos::bases {

/// Makes, on the session of management, what a session needs to find out whether a commit was done whose
/// answer was lost. Only PostgreSQL is asked for that: on the others nothing is made.
void crea_confirmaciones(adodb::Connection& orvalin, Donde donde);

} // namespace atipicos::bases
