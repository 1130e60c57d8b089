#pragma once

#include "runtime/Error.hpp"
#include "runtime/Redondeo.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The decimal value of a double or of a text: what a person reads, as a whole number and a power of ten.
namespace atipicos {

/// `cifras` × 10^`exponente`.
struct Decimal {
    entero_ancho cifras = 0;
    int exponente = 0;
};

/// The decimal value a person would read in `valor` when it is to be rounded to `decimales`: its 15
/// significant digits or, where those do not reach one digit past that decimal, the shortest digits that give
/// the value back. Error 6 when the value is not finite.
[[nodiscard]] Decimal decimal_leido(double valor, int decimales, Donde donde);

/// Reads optional sign, digits, and optional `separador` and decimals (at least one digit in all).
/// Nothing when the text is anything else. Only the first 36 significant
/// digits are kept: no rounding half away from zero depends on what follows them.
[[nodiscard]] std::optional<Decimal> lee_decimal(std::string_view texto, char separador);

/// The plain digits of a display number ("-1.234,5" gives "-1234.5"), read as `lee_pantalla` does; nothing
/// when it is no such number.
[[nodiscard]] std::optional<std::string> cifras_de_pantalla(std::string_view texto);

/// The value in units of 10^-`decimales`, rounded half away from zero; nothing beyond 37 digits.
[[nodiscard]] std::optional<entero_ancho> en_unidades(Decimal decimal, int decimales) noexcept;

} // namespace atipicos
