#pragma once

#include "host/resumen/ResumenCargos.hpp"
#include "host/terminal/Aspecto.hpp"

#include <iosfwd>

namespace atipicos::app {

/// The summary for a person at a terminal: its title, its table with the total below, and a bar of characters
/// for each group, as wide as `aspecto` has room for. Nothing but the title for no charges.
void resumen_en_terminal(std::ostream& salida, const ResumenCargos& resumen, const Aspecto& aspecto);

/// A bar for `valor`, of which `mayor` would fill `lugares`, in eighths of a place; what is not zero is seen.
/// Amounts that are paid back have a bar of another pattern.
[[nodiscard]] std::string barra(Currency valor, Currency mayor, std::size_t lugares);

} // namespace atipicos::app
