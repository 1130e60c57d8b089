#pragma once

#include "runtime/Error.hpp"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace atipicos::sql {

/// What the rewriting must know of a database. Names compare without case.
class Catalogo {
public:
    void agrega_fecha(std::string_view tabla, std::string_view columna); ///< a column that holds dates
    void agrega_base(std::string_view nombre, std::string_view esquema); ///< `nombre.dbo.T` is `esquema.T`

    [[nodiscard]] bool es_fecha(std::string_view tabla, std::string_view columna) const;
    [[nodiscard]] const std::string* esquema(std::string_view base) const; ///< null: not known

private:
    std::unordered_map<std::string, std::unordered_set<std::string>> m_fechas;
    std::unordered_map<std::string, std::string> m_bases;
};

/// A statement written for SQL Server, for a database that knows neither `ISNULL`, nor three-part names,
/// nor regional dates:
///
/// - `ISNULL(a, b)` becomes `IFNULL(a, b)`;
/// - `base.dbo.Tabla` becomes `esquema.Tabla` for the bases of the catalogue;
/// - a regional date text becomes its ISO text where a date column receives it (INSERT, UPDATE) or is
///   compared with it (=, <>, <, <=, >, >=, BETWEEN, IN).
///
/// Everything else, quoted texts above all, stays byte for byte. Raises an error of the database when a text
/// in a date's place is no date, or when anything but blanks follows the first statement.
[[nodiscard]] std::string reescribe(
    std::string_view sql, const Catalogo& catalogo, Donde donde = Donde::aqui());

} // namespace atipicos::sql
