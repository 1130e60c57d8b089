#include "controls/Formulario.hpp"

#include "controls/Icono.hpp"
#include "controls/Pantalla.hpp"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QWindow>

#include <utility>

namespace atipicos {

Formulario::Formulario(QWidget* parent, Qt::WindowFlags tipo)
    : QDialog(parent, tipo)
    , m_tipo(windowFlags())
    , m_duena(parent)
{
    setAttribute(Qt::WA_KeyboardFocusChange); // as if it had been moved by keys, also before the first one
}

Formulario::~Formulario() = default;

void Formulario::set_Duena(const Duena& duena)
{
    auto* const ventana = duena.ventana();
    if (duena == m_duena && ventana == parentWidget())
        return;
    auto ajena = duena.ajena();
    const QByteArray sitio = isVisible() ? saveGeometry() : QByteArray();
    setParent(ventana, duena.por_hWnd() ? m_tipo | Qt::Dialog : m_tipo);
    if (ajena) {
        winId(); // it has to be a window of the system to be owned by one
        windowHandle()->setTransientParent(ajena.get());
    }
    m_ajena = std::move(ajena);
    m_duena = duena;
    if (!sitio.isEmpty())
        restoreGeometry(sitio);
}

void Formulario::setVisible(bool visible)
{
    if (visible && !isVisible()) {
        pon_iconos(*this);
        cabe_en_pantalla(*this);
        m_por_colocar = true;
    }
    QDialog::setVisible(visible);
}

/// What the window manager puts around a form is known once it has been given the keys.
bool Formulario::event(QEvent* evento)
{
    if (evento->type() == QEvent::WindowActivate && std::exchange(m_por_colocar, false))
        entra_en_pantalla(*this);
    return QDialog::event(evento);
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
