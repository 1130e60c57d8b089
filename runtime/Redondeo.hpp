#pragma once

#include <cstdint>

/// The rounding routine of the program. Every rounded amount, of money or of floating point, comes to it
/// as a whole number of some small unit.
namespace atipicos {

/// Wide enough for the product of two amounts of money.
__extension__ using entero_ancho = __int128;

/// `valor` / `divisor`, rounded half away from zero. `divisor` is positive.
template <class Entero>
[[nodiscard]] constexpr Entero redondea_cociente(Entero valor, Entero divisor) noexcept
{
    const Entero cociente = valor / divisor;
    const Entero resto = valor % divisor;
    const Entero distancia = resto < 0 ? -resto : resto;
    if (distancia < divisor - distancia)
        return cociente;
    return valor < 0 ? cociente - 1 : cociente + 1;
}

/// 10 to the power of `exponente` (0 to 36; 0 to 18 in 64 bits).
template <class Entero = entero_ancho> [[nodiscard]] constexpr Entero potencia_de_10(int exponente) noexcept
{
    Entero potencia = 1;
    for (int i = 0; i < exponente; ++i)
        potencia *= 10;
    return potencia;
}

} // namespace atipicos
