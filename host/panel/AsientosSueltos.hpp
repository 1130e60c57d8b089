#pragma once

#include "host/comprobacion/AsientoSinCargo.hpp"
#include "host/panel/Ambito.hpp"

#include <cstddef>
#include <optional>
#include <vector>

namespace atipicos::app {

/// Entries that a charge was posted with, that no charge names any more and nobody has reversed.
struct AsientosSueltos {
    std::vector<AsientoSinCargo> asientos; ///< not classified
    bool hay_mas = false; ///< not all were looked at

    static constexpr std::size_t maximo = 500; ///< entries without charge that are looked at
};

/// Reads the entry that each charge names and the number of each entry, one row at a time: a bit of memory
/// for each. Less than what `verifica` looks at, and much quicker. Nothing when given up.
[[nodiscard]] std::optional<AsientosSueltos> asientos_sueltos(const Ambito& ambito, const Sigue& sigue);

} // namespace atipicos::app
