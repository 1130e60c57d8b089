#pragma once

#include "runtime/Date.hpp"

#include <optional>
#include <string_view>

namespace atipicos {

/// Completes a day that was typed in part: `15` and `15/11` with the month and the year of `partida`, `1511`
/// and `151126` without strokes, a year of two digits in this century, `+3` and `-3` counted in days from
/// `partida`. A part may lack its leading zero, and what follows the last part that was typed may be empty
/// ("15//"). Nothing when that is no day of the calendar, or not to be understood.
[[nodiscard]] std::optional<Date> completa_fecha(std::string_view tecleado, Date partida);

} // namespace atipicos
