#pragma once

#include "host/bases/Bases.hpp"

#include <cstdint>
#include <functional>

namespace atipicos::app {

/// Where the panel of the main window reads, and whose charges.
struct Ambito {
    bases::Bases bases;
    std::int16_t empresa = 0;
    std::int16_t empresa_proveedores = 0; ///< under which the suppliers are kept
};

/// Asked between two statements, and every so many rows: false to give up what is left.
using Sigue = std::function<bool()>;

} // namespace atipicos::app
