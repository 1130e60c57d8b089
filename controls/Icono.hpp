#pragma once

#include <QIcon>

class QWidget;

namespace atipicos {

/// One of the component's own drawings (controls/iconos), sharp at any size. What has no colour of its own in
/// it is drawn in the colour that texts have at the moment, so that it follows every change of theme.
/// An empty icon where there is no drawing of that name.
[[nodiscard]] QIcon icono(const QString& nombre);

/// Gives each button and action of `ventana` whose name is that of a command (cmdAceptar, cmdImprimir…) the
/// drawing of that command; one that has an icon keeps it.
void pon_iconos(QWidget& ventana);

} // namespace atipicos
