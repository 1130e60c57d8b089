#pragma once

#include "platform/msgbox/MsgBox.hpp"

#include <iosfwd>

namespace atipicos::app {

/// Message boxes on a terminal: icon, title and text on one stream; the answer is the default button.
class MsgBoxConsola final : public MsgBox {
public:
    explicit MsgBoxConsola(std::ostream& salida) noexcept;

    Respuesta mostrar(const Mensaje& mensaje) override;
    [[nodiscard]] int errores() const noexcept
    {
        return m_errores;
    } ///< boxes with the critical or warning icon

private:
    std::ostream& m_salida;
    int m_errores = 0;
};

} // namespace atipicos::app
