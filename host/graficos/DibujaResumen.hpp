#pragma once

#include <string>

namespace atipicos::app {

class ResumenCargos;

/// A picture of a summary, bars for its groups and a line through its months, without any display: the bytes
/// of a file. `formato`: "png", "svg" or "pdf". Raises an error where the program was built without windows.
[[nodiscard]] std::string dibuja_resumen(
    const ResumenCargos& resumen, const ResumenCargos& meses, const std::string& formato);

} // namespace atipicos::app
