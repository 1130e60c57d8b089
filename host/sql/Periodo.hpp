#pragma once

#include "runtime/Date.hpp"

namespace atipicos::app {

/// From one day to another, both of them in.
struct Periodo {
    Date desde;
    Date hasta;

    friend bool operator==(const Periodo&, const Periodo&) = default;
};

} // namespace atipicos::app
