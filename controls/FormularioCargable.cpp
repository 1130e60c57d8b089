#include "controls/FormularioCargable.hpp"

#include "context/trap.hpp"

namespace atipicos {

FormularioCargable::FormularioCargable(const char* nombre, QWidget* parent)
    : Formulario(parent, Qt::Window)
    , m_nombre(nombre)
{
}

void FormularioCargable::Show(int Modal, QWidget* OwnerForm)
{
    if (!m_cargado) {
        setParent(OwnerForm, windowFlags());
        m_cargado = true;
        trap(std::string(m_nombre) + ":Form_Load", [this] { Form_Load(); });
    }
    if (Modal != 0) {
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
