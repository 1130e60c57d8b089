#pragma once

#include "runtime/Currency.hpp"

#include <optional>
#include <string>

namespace atipicos {

/// What a charge comes to with the tax that its save will add, told while it is keyed in.
class ImpuestoDelCargo {
public:
    void Leer() noexcept; ///< the company's rate; one that cannot be read is left to the save to tell

    /// Base, rate and amount of the tax, and the two together, worked out as the save does. Empty without a
    /// rate, and for amounts that do not fit.
    [[nodiscard]] std::string texto(Currency base) const;

private:
    struct Tipo {
        Currency porcentaje;
        int decimales = 2; ///< of amounts
    };

    std::optional<Tipo> m_tipo;
};

} // namespace atipicos
