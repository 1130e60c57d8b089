#pragma once

#include "engines/odbc/Instruccion.hpp"

#include <string>

/// Statements that the engine writes itself, as each product wants them.
namespace atipicos::odbc {

/// A query whose rows stay locked for others until the transaction ends.
[[nodiscard]] std::string con_bloqueo(const std::string& consulta, const Servidor& servidor);

/// A value as it stands in a statement. Parameters would need the type of each column: SQL Server takes no
/// text for money. Raises error 13 for an object.
[[nodiscard]] std::string literal(
    const Variant& valor, const Servidor& servidor, Donde donde = Donde::aqui());

/// The table behind the first FROM of a query.
[[nodiscard]] TablaNombrada tabla_de(const std::string& consulta);

} // namespace atipicos::odbc
