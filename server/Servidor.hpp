#pragma once

#include "automation/com.hpp"

namespace atipicos::server {

/// What the whole component knows about its use: how much of it is held, and by which thread.
///
/// All objects belong to the thread that made the first of them; calls from another are refused, until
/// nothing is held any more. Holds themselves may be taken and given up from any thread.
namespace servidor {

    void retiene() noexcept; ///< an object or a lock of the host holds the component
    void suelta() noexcept;
    [[nodiscard]] bool en_uso() noexcept;

    [[nodiscard]] bool hilo_ajeno() noexcept;

    /// Gives the component its message boxes and its clock, on first use.
    void prepara();

    /// Drops the references to the host's objects, while the component is being unloaded. At the end of the
    /// process there is nobody left to give them back to.
    void olvida() noexcept;

}

} // namespace atipicos::server
