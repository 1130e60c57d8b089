#include "controls/Formulario.hpp"

#include <QAbstractButton>
#include <QKeyEvent>

namespace atipicos {

Formulario::Formulario(QWidget* parent, Qt::WindowFlags tipo)
    : QDialog(parent, tipo)
{
}

void Formulario::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() != Qt::Key_Return && tecla->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(tecla);
        return;
    }
    auto* boton = qobject_cast<QAbstractButton*>(focusWidget());
    if (boton != nullptr && !tecla->isAutoRepeat())
        boton->click();
}

} // namespace atipicos
