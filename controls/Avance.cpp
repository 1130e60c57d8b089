#include "controls/Avance.hpp"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

namespace atipicos {

void pasa_al_siguiente(QWidget& desde)
{
    QWidget& enfocado = desde.focusProxy() != nullptr ? *desde.focusProxy() : desde;
    QKeyEvent tabulador(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QCoreApplication::sendEvent(&enfocado, &tabulador);
}

} // namespace atipicos
