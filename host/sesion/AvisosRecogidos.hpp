#pragma once

#include "platform/msgbox/MsgBox.hpp"

#include <memory>
#include <string>

namespace atipicos::app {

/// While it lives, the error boxes of the component are kept instead of shown, for whoever tells them with
/// the place that they belong to. Questions get their default answer; what only informs is dropped.
class AvisosRecogidos {
public:
    explicit AvisosRecogidos(std::shared_ptr<MsgBox> despues); ///< in force again afterwards
    AvisosRecogidos(const AvisosRecogidos&) = delete;
    AvisosRecogidos& operator=(const AvisosRecogidos&) = delete;
    ~AvisosRecogidos();

    [[nodiscard]] bool hay() const noexcept; ///< since the last `toma`

    /// Their texts in order, each once, without the line of the source that they begin with.
    [[nodiscard]] std::string toma();

private:
    class Caja;

    std::shared_ptr<Caja> m_caja;
    std::shared_ptr<MsgBox> m_despues;
};

} // namespace atipicos::app
