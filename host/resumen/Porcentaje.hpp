#pragma once

#include "runtime/Currency.hpp"

#include <optional>
#include <string>

/// Percentages worked out from amounts, without floating point, and told no better than they are.
namespace atipicos::app {

/// How many percent of `todo` (its size, whatever its sign) `parte` is, rounded at the fourth decimal;
/// nothing of zero, nor where it is too large to be told.
[[nodiscard]] std::optional<Currency> porcentaje(Currency parte, Currency todo);

/// "12,3 %", rounded half away from zero. What is not zero is never told as "0,0 %", and what is less than
/// everything never as "100,0 %": "<0,1 %", ">-0,1 %", ">99,9 %". "–" where there is no percentage.
[[nodiscard]] std::string texto_parte(Currency parte, Currency todo);

/// The same for a change, with its sign: "+12,3 %".
[[nodiscard]] std::string texto_cambio(Currency antes, Currency ahora);

} // namespace atipicos::app
