#pragma once

class QWidget;

namespace atipicos {

/// Moves the focus from `desde` to the next field, as Tab does.
void pasa_al_siguiente(QWidget& desde);

} // namespace atipicos
