#pragma once

#include "runtime/Date.hpp"

namespace atipicos {

/// The time of day as the component sees it.
class Reloj {
public:
    Reloj() = default;
    Reloj(const Reloj&) = delete;
    Reloj& operator=(const Reloj&) = delete;
    virtual ~Reloj() = default;

    [[nodiscard]] virtual Date ahora() const = 0; ///< local date and time
    [[nodiscard]] Date hoy() const { return ahora().solo_dia(); }
};

} // namespace atipicos
