#pragma once

#include "platform/msgbox/MsgBox.hpp"

#include <memory>

namespace atipicos::server {

/// How the component reaches the person in a host that gives it no window: boxes of the system or of its own
/// windows where there is a display, and lines on standard error where there is none, or where the variable
/// QVORCOMPRASATIP_AVISOS says "consola". On lines nobody answers: a question gets its default answer.
[[nodiscard]] std::shared_ptr<MsgBox> nuevos_avisos();

class AvisosConsola final : public MsgBox {
public:
    Respuesta mostrar(const Mensaje& mensaje) override;
};

/// Boxes of the component's windows; null where there are none, or no display to show them on.
[[nodiscard]] std::shared_ptr<MsgBox> avisos_con_ventanas();

} // namespace atipicos::server
