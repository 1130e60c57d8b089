#pragma once

class QWidget;

namespace atipicos {

/// Makes a window that is about to be shown no larger, with its frame, than what its screen has free for
/// windows. One that is maximised or already fits is left alone.
void cabe_en_pantalla(QWidget& ventana);

} // namespace atipicos
