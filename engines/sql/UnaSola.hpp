#pragma once

#include "engines/sql/Vista.hpp"

namespace atipicos::sql {

/// Whether `sql`, which `vista` has taken apart, is one statement and no more, as far as its words tell:
/// nothing but blanks behind ";". With `transact`, where no ";" is needed, no word either that would begin
/// another statement behind a query or a change of rows. The body of a trigger belongs to its statement.
[[nodiscard]] bool es_una_sola(std::string_view sql, const Vista& vista, bool transact) noexcept;

} // namespace atipicos::sql
