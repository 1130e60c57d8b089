#pragma once

#include "host/resumen/ResumenCargos.hpp"

#include <iosfwd>

/// The numbers of a summary for other programs.
namespace atipicos::app {

/// ";" between fields, decimal comma, UTF-8, a heading row; a row for each group, none for the total.
void resumen_en_csv(std::ostream& salida, const ResumenCargos& resumen);

/// An object: what was asked for, "grupos" and "total". Amounts are numbers; null for a percentage that there
/// is not.
void resumen_en_json(std::ostream& salida, const ResumenCargos& resumen);

/// A sheet with numbers as numbers; a row for each group, none for the total. Raises an error when a name is
/// longer than a cell.
void resumen_en_xlsx(std::ostream& salida, const ResumenCargos& resumen);

} // namespace atipicos::app
