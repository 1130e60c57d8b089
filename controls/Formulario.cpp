#include "controls/Formulario.hpp"

#include "controls/Icono.hpp"
#include "controls/Pantalla.hpp"

#include <QAbstractButton>
#include <QKeyEvent>

namespace atipicos {

Formulario::Formulario(QWidget* parent, Qt::WindowFlags tipo)
    : QDialog(parent, tipo)
{
    setAttribute(Qt::WA_KeyboardFocusChange); // as if it had been moved by keys, also before the first one
}

void Formulario::setVisible(bool visible)
{
    if (visible && !isVisible()) {
        pon_iconos(*this);
        cabe_en_pantalla(*this);
    }
    QDialog::setVisible(visible);
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
