#pragma once

class QWidget;

namespace atipicos {

/// Writes the text of a control in the colour of what is wrong, or in its own again. The colour can be read
/// on the background that the theme has; after a change of theme it has to be asked for anew.
void pon_de_aviso(QWidget& control, bool mal);

} // namespace atipicos
