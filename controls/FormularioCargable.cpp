#include "controls/FormularioCargable.hpp"

#include "context/trap.hpp"

namespace atipicos {

FormularioCargable::FormularioCargable(const char* nombre, QWidget* parent)
    : Formulario(parent, Qt::Window)
    , m_nombre(nombre)
{
}

void FormularioCargable::Show(int Modal, const Duena& OwnerForm)
{
    const bool la_esperan = isVisible() && isModal();
    if (!la_esperan)
        set_Duena(OwnerForm);
    if (!m_cargado) {
        m_cargado = true;
        trap(std::string(m_nombre) + ":Form_Load", [this] { Form_Load(); });
    }
    if (Modal != 0 && !la_esperan) {
        if (isVisible())
            hide(); // what is on the screen already does not become modal
        exec();
        return;
    }
    show();
    raise();
    activateWindow();
}

void FormularioCargable::done(int resultado)
{
    if (m_cargado) {
        Form_Unload();
        m_cargado = false;
        emit Descargado();
    }
    Formulario::done(resultado);
}

void FormularioCargable::reject() { done(Rejected); }

} // namespace atipicos
