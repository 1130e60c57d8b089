#pragma once

#include "platform/adodb/Connection.hpp"

#include <string>
#include <vector>

/// What the database itself writes down about charges.
namespace atipicos::bases {

inline constexpr int version_con_historial = 4; ///< of the tables

/// Makes its tables and triggers on the session of management, as the product behind it wants them; the
/// tables of both products are there. On a SQL Server the session stands in `Orvalin` afterwards.
void crea_historial(adodb::Connection& orvalin, Donde donde);

/// The statements by which a session of a file adds to all that is written down who runs the program, and
/// where.
[[nodiscard]] std::vector<std::string> firma_de_fichero();

/// Where the product knows no users: has this session add to all that is written down who runs the program,
/// and where. On a server, which knows that by itself, nothing.
void firma_historial(adodb::Connection& orvalin, Donde donde);

} // namespace atipicos::bases
