#pragma once

#include <string>

namespace atipicos::app {

/// Asks on the terminal; only "s" or "sí" is a yes. Raises an error that names `--si` where there is no
/// terminal to answer on, and an `Interrumpido` when a signal comes first.
[[nodiscard]] bool pregunta(const std::string& texto);

} // namespace atipicos::app
