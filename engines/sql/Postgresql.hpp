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

/// Makes, in a schema that is there, the table `Confirmaciones` and the two functions by which a session
/// finds out whether a transaction was committed whose answer was lost: `confirmacion_anota(clave, anterior)`
/// writes a key in the transaction and takes away the one before, and without one those that nobody will ask
/// for any more; `confirmacion_busca(clave)` gives 1 when the key is there, and otherwise takes it and gives
/// 0: a transaction that was still to write it fails. It waits for one that has written it and has not ended.
/// They have the rights of the owner: who works with the tables needs none on this one.
void crea_confirmaciones_postgresql(
    adodb::Connection& conexion, std::string_view esquema, Donde donde = Donde::aqui());

} // namespace atipicos::sql
