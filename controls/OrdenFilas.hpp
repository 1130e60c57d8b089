#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace atipicos {

/// What the cells of a column are, to be put in order.
enum class Clase : std::uint8_t { texto, numero, fecha };

/// The order of `celdas` as positions in it: texts as a Spanish dictionary has them, numbers as they are
/// shown ("1.234,50", "7,00 %") by their value, days by the calendar. What is empty, or none of its class,
/// comes first; equal ones stay in the order in which they were.
[[nodiscard]] std::vector<std::size_t> orden_de(
    const std::vector<QString>& celdas, Clase clase, bool descendente);

} // namespace atipicos
