#pragma once

#include "runtime/Date.hpp"

/// Days on which payments fall due.
namespace atipicos {

/// The day `intDia`/`intMes`/`intAnio`, or the nearest earlier one of that month when the month is too
/// short for it (day 31 gives the 30th, in February the 28th or 29th). Error 13 when there is none at all,
/// as for day 0.
[[nodiscard]] Date FechaValida(int intDia, int intMes, int intAnio, Donde donde = Donde::aqui());

/// `fecha` moved onto the pay days of the month, 0 meaning none. One pay day gives that day of the same
/// month, even when it has passed. With two, a date before the first moves to the first, one from the first
/// to the second (both included) to the second, and a later one to the first of the next month.
/// Errors as `FechaValida`.
[[nodiscard]] Date AjustarDiaPago(Date fecha, int intDiaPago1, int intDiaPago2, Donde donde = Donde::aqui());

} // namespace atipicos
