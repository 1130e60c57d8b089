#pragma once

#include <QString>

class QComboBox;
class QLabel;

namespace atipicos {

/// Has what a label shows read to whoever does not see it, as often as it changes. `nombre`, if any, is said
/// before it ("Total: 131,73"); without one the label is a notice, such as the outcome of a search. The label
/// must have no accessible name of its own, because that would be read instead.
///
/// Of all that is new on the screen Qt 6.4 passes to AT-SPI that the name of a label, or the description of a
/// box, is another, and that a widget has appeared; alerts and announcements it keeps to itself. So notices
/// are labels whose name is their text and whose role is that of a notice.
void anuncia(QLabel& etiqueta, const QString& nombre = {});

/// Has a list that has no label of its own on the screen read by its accessible name: to AT-SPI Qt 6.4 gives
/// what is chosen as the name of a combo box, and only a label says what it is for. This one nobody sees.
void etiqueta_para_leer(QComboBox& lista);

} // namespace atipicos
