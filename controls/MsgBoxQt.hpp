#pragma once

#include "platform/msgbox/MsgBox.hpp"

namespace atipicos {

/// Message boxes as windows, over whatever window the person is in.
class MsgBoxQt final : public MsgBox {
public:
    /// Closing a question by Escape or its frame answers No.
    Respuesta mostrar(const Mensaje& mensaje) override;
};

} // namespace atipicos
