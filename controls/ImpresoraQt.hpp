#pragma once

#include "platform/report/Report.hpp"
#include "runtime/Error.hpp"

#include <QPrinterInfo>

class QPrinter;

namespace atipicos {

/// The printer of that name, or, with an empty one, the default printer of the system. Raises an `Error` when
/// it is not there (any more).
[[nodiscard]] QPrinterInfo busca_impresora(const std::string& nombre, Donde donde = Donde::aqui());

/// Prints the pages of the report that the printer's own range asks for. Raises an `Error` when the printer
/// fails; the job is then given up as a whole.
void imprime_report(const Report& report, QPrinter& impresora, Donde donde = Donde::aqui());

} // namespace atipicos
