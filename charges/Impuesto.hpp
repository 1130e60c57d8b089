#pragma once

#include "runtime/Currency.hpp"

#include <cstdint>

/// The tax of charges: which type applies and how much it comes to.
namespace atipicos {

/// The tax type of charges that the company has configured; 0 or an empty value means no tax. Raises the
/// errors of the company object, 94 for a null, 13 or 6 for a value that is no 16-bit number.
[[nodiscard]] std::int16_t tipo_impuesto_atipicos(Donde donde = Donde::aqui());

/// `porcentaje` / 100 × `importe`, computed in floating point and rounded to `decimales`. What the charge
/// bears: of amounts beyond some 30,000 millions it can be a cent away from `cuota_impuesto`.
[[nodiscard]] Currency importe_impuesto(
    Currency importe, Currency porcentaje, int decimales, Donde donde = Donde::aqui());

/// `porcentaje` / 100 × `importe` to cents: exact, and rounded once, half away from zero. What the entry
/// bears. Error 6 when it does not fit.
[[nodiscard]] Currency cuota_impuesto(Currency importe, Currency porcentaje, Donde donde = Donde::aqui());

/// Units times price: exact to the fourth decimal first, then rounded to cents. Error 6 when it does not fit.
[[nodiscard]] Currency importe_linea(Currency unidades, Currency precio, Donde donde = Donde::aqui());

} // namespace atipicos
