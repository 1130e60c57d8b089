#pragma once

class QWidget;

namespace atipicos {

/// Makes a window that is about to be shown no larger, with its frame, than what its screen has free for
/// windows. One that is maximised or already fits is left alone.
void cabe_en_pantalla(QWidget& ventana);

/// Moves a window that is shown to where all of it is seen, with its frame. One that is maximised or already
/// is there is left alone.
void entra_en_pantalla(QWidget& ventana);

} // namespace atipicos
