#pragma once

#include "platform/adodb/Connection.hpp"

/// What a database holds whoever works with it to, whatever his program says.
namespace atipicos::bases {

inline constexpr int version_con_derechos = 5; ///< of the tables; with entries known to be incomplete

/// Makes the triggers for it on the session of management, as the product behind it wants them: each login is
/// its own user, counters go forward; on PostgreSQL entries balance and posted ones get no more lines. A
/// file knows no users and gets none. The tables of both products and the trail are there. On a SQL Server
/// the session stands in `Orvalin` afterwards.
void crea_derechos(adodb::Connection& orvalin, Donde donde);

} // namespace atipicos::bases
