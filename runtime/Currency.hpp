#pragma once

#include "runtime/Error.hpp"

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace atipicos {

/// An exact amount of money: a whole number of ten-thousandths in 64 bits, from
/// -922337203685477.5808 to 922337203685477.5807.
///
/// Sums and comparisons are exact; a product rounds once, half away from zero, at the fourth
/// decimal. A result that does not fit raises error 6 and leaves the operands as they were.
/// Nothing converts from or to `double` silently: `de_double` and `a_double` say so by name.
class Currency {
public:
    static constexpr int decimales = 4;
    static constexpr std::int64_t escala = 10'000;

    constexpr Currency() noexcept = default; ///< zero
    [[nodiscard]] static constexpr Currency de_crudo(std::int64_t diezmilesimas) noexcept
    {
        Currency valor;
        valor.m_crudo = diezmilesimas;
        return valor;
    }

    [[nodiscard]] static constexpr Currency de_entero(std::int32_t entero) noexcept
    {
        return de_crudo(entero * escala);
    }

    /// Reads `-1234.5`: optional sign, digits, optional point and decimals; what lies beyond the fourth
    /// decimal is rounded half away from zero. Error 13 when it is not such a number, 6 when it does not fit.
    [[nodiscard]] static Currency de_texto(std::string_view texto, Donde donde = Donde::aqui());

    /// The nearest amount to the decimal value that a person would read (see `Redondear`).
    /// Error 6 when it does not fit or is not finite.
    [[nodiscard]] static Currency de_double(double valor, Donde donde = Donde::aqui());

    [[nodiscard]] constexpr std::int64_t crudo() const noexcept { return m_crudo; }
    [[nodiscard]] double a_double() const noexcept; ///< the nearest double
    [[nodiscard]] std::string texto() const; ///< always four decimals: `-1234.5000`

    friend constexpr auto operator<=>(Currency, Currency) noexcept = default;

private:
    std::int64_t m_crudo = 0;
};

/// The right operand of an operation on money: an amount and the line that asked for the operation,
/// so that an overflow is reported with it.
struct Operando {
    Operando(
        Currency importe, Donde lugar = Donde::aqui()) noexcept // implicit: that is how it catches the line
        : valor(importe)
        , donde(lugar)
    {
    }
    Currency valor;
    Donde donde;
};

[[nodiscard]] Currency operator+(Currency a, Operando b); ///< error 6
[[nodiscard]] Currency operator-(Currency a, Operando b); ///< error 6
[[nodiscard]] Currency operator*(Currency a, Operando b); ///< rounded at the fourth decimal; error 6
inline Currency& operator+=(Currency& a, Operando b) { return a = a + b; }
inline Currency& operator-=(Currency& a, Operando b) { return a = a - b; }

} // namespace atipicos
