#pragma once

#include "engines/sql/Catalogo.hpp"
#include "engines/sql/Forma.hpp"
#include "runtime/Error.hpp"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::sql {

/// A statement written for SQL Server, for a database that knows neither `ISNULL`, nor three-part names,
/// nor regional dates:
///
/// - `ISNULL(a, b)` becomes `IFNULL(a, b)`, or what the catalogue's dialect calls it;
/// - the types in CREATE TABLE become those of the dialect;
/// - `OFFSET n ROWS FETCH NEXT m ROWS ONLY` becomes `LIMIT n , m` where the dialect has it so;
/// - `base.dbo.Tabla` becomes `esquema.Tabla` for the bases of the catalogue;
/// - a regional date text becomes its ISO text where a date column receives it (INSERT, UPDATE) or is
///   compared with it (=, <>, <, <=, >, >=, BETWEEN, IN), text and column each standing alone, not inside an
///   expression or a function;
/// - for Transact-SQL, a text with letters outside ASCII becomes `N'…'`: without the N they would be lost.
///
/// Everything else, quoted texts above all, stays byte for byte. Raises an error of the database when a text
/// in a date's place is no date, or when it is not one statement alone.
[[nodiscard]] std::string reescribe(
    std::string_view sql, const Catalogo& catalogo, Donde donde = Donde::aqui());

/// A statement rewritten for all that differ from it in their values alone.
struct Plantilla {
    std::vector<Trato> tratos; ///< by literal
    Forma forma;
};

/// Rewrites a statement without its values, `literales`, those of its skeleton. Nothing when it is to go as
/// it is: it is no query and no change of rows, or its values are to be seen together with it. Raises the
/// errors of `reescribe`.
[[nodiscard]] std::optional<Plantilla> forma_de(std::string_view sql, std::span<const Literal> literales,
    Numeros numeros, const Catalogo& catalogo, Donde donde = Donde::aqui());

/// Whether a text of Transact-SQL loses letters unless it is written `N'…'`.
[[nodiscard]] bool necesita_n(std::string_view texto) noexcept;

} // namespace atipicos::sql
