#pragma once

#include "host/comprobacion/AsientoContabilizado.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <string>

namespace atipicos::app {

/// What an entry without charge is, as far as the data tell.
enum class Procedencia : std::uint8_t {
    eliminado, ///< its number was given out, and no charge has it: deleted, or never stored
    cambiado, ///< the charge has an entry of its own by now
    perdido, ///< management has not come as far as its number
    dudoso, ///< it may be that of a charge without entry
    saldado, ///< another entry, made by hand, cancels it
};

/// An entry that a charge was posted with, and no charge has.
struct AsientoSinCargo {
    ClaveAsiento asiento;
    Date fecha;
    std::string documento; ///< the code of the charge
    std::string cuenta; ///< of the supplier
    Currency importe; ///< with tax
    Procedencia procedencia = Procedencia::dudoso;
    std::string explicacion = {}; ///< what it is, for a person

    /// Whether to reverse it without being asked for it by name.
    [[nodiscard]] bool sobra() const noexcept
    {
        return procedencia == Procedencia::eliminado || procedencia == Procedencia::cambiado;
    }
};

/// What such an entry says of itself: not yet what it is.
[[nodiscard]] AsientoSinCargo sin_clasificar(const AsientoContabilizado& asiento);

/// What an account of an accounting company has too much, all years together.
struct SaldoQueSobra {
    std::int16_t empresa = 0;
    std::string cuenta;
    Currency importe; ///< debit less credit
};

} // namespace atipicos::app
