#pragma once

#include "platform/adodb/Connection.hpp"

/// Tables that a server spreads over several nodes.
namespace atipicos::bases {

/// Spreads what is not spread yet when the server is one that can, in the transaction of the connection; both
/// products are there. Whether anything has been.
bool reparte(adodb::Connection& conexion, Donde donde);

/// Whether charges stand on several nodes. The database keeps no trail of them then.
[[nodiscard]] bool esta_repartida(adodb::Connection& conexion, Donde donde = Donde::aqui());

} // namespace atipicos::bases
