#pragma once

#include "engines/sql/Catalogo.hpp"
#include "platform/adodb/Connection.hpp"

#include <string_view>

/// What PostgreSQL is told otherwise than SQL Server, whichever client library reaches it.
namespace atipicos::sql {

inline constexpr std::string_view tipo_bit_postgresql = "si_o_no"; ///< the server's own BIT is something else

[[nodiscard]] Dialecto dialecto_postgresql() noexcept;

/// Makes a schema with what statements need in it, ISNULL and the type of BIT columns, and looks for names
/// there until the transaction, which must be open, ends.
void crea_esquema_postgresql(
    adodb::Connection& conexion, std::string_view nombre, Donde donde = Donde::aqui());

} // namespace atipicos::sql
