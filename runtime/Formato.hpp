#pragma once

#include "runtime/Currency.hpp"

#include <string>
#include <string_view>

/// The formatting helper: the one rounding routine, the one writer and the one reader of display
/// numbers, and the number literals of statements.
namespace atipicos {

/// Rounds half away from zero to `decimales` (0 to 4; more leave the amount as it is).
/// Error 5 for negative `decimales`, 6 when the rounded amount does not fit.
[[nodiscard]] Currency Redondear(Currency valor, int decimales, Donde donde = Donde::aqui());

/// Rounds half away from zero to `decimales` (0 to 15), deciding on the decimal value a person would
/// read: the 15 significant digits of the value, or, where those do not reach one digit past the decimal
/// asked for, the shortest text that gives the value back. So 1.005 gives 1.01, 2.675 gives 2.68, and
/// 3.5349999999999997, the floating-point remains of 3.535, gives 3.54.
/// Error 5 for `decimales` out of range, 6 when the value is not finite.
[[nodiscard]] double Redondear(double valor, int decimales, Donde donde = Donde::aqui());

/// A number literal for a statement: plain digits and ".", no exponent, the shortest text that gives
/// the value back ("-12.5", "0", "100000000000000000000"). Error 6 when the value is not finite.
[[nodiscard]] std::string texto_sql(double valor, Donde donde = Donde::aqui());

/// Display text: "." between thousands, "," before decimals ("1.234,56", "-0,50", "0,00").
/// `decimales` from 0 to 15, rounded by `Redondear`; a value that rounds to zero shows no sign.
[[nodiscard]] std::string texto_pantalla(Currency valor, int decimales, Donde donde = Donde::aqui());
[[nodiscard]] std::string texto_pantalla(double valor, int decimales, Donde donde = Donde::aqui());

/// Appends the display text to `destino`: the same, for rows that are built by the hundred thousand.
void anexa_pantalla(std::string& destino, Currency valor, int decimales, Donde donde = Donde::aqui());

/// Reads a display number: optional sign, digits with or without "." between thousands (then in groups
/// of three), optional "," and decimals; blanks around it are ignored. What lies beyond the fourth decimal
/// is rounded half away from zero. Error 13 when it is not a number, 6 when it does not fit.
[[nodiscard]] Currency lee_pantalla(std::string_view texto, Donde donde = Donde::aqui());

} // namespace atipicos
