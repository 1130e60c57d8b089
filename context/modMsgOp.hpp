#pragma once

#include <string>

/// The wait message of a long operation.
namespace atipicos::modMsgOp {

/// Shows the message, or changes its text when it is already on screen. Empty: the text that asks to wait.
/// What the person types or clicks meanwhile waits until the work is done.
void Mostrar(const std::string& texto = {});

void Ocultar(); ///< nothing happens when it is not on screen

} // namespace atipicos::modMsgOp
