#include "context/frmclsCompras_Atipicos.hpp"

#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "editor/frmCompras_Atipicos.hpp"

#include <utility>

namespace atipicos {

frmclsCompras_Atipicos::frmclsCompras_Atipicos() = default;

frmclsCompras_Atipicos::~frmclsCompras_Atipicos()
{
    if (m_form.isNull())
        return;
    m_form->close();
    delete m_form.data();
}

void frmclsCompras_Atipicos::set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) const noexcept
{
    modComun::set_EmpresaOrvalin(std::move(empresa));
}

void frmclsCompras_Atipicos::set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) const noexcept
{
    modComun::set_ConexionOrvalin(std::move(conexion));
}

void frmclsCompras_Atipicos::set_EmpresaBexmor(std::shared_ptr<qvbxemp::Empresa> empresa) const noexcept
{
    modComun::set_EmpresaBexmor(std::move(empresa));
}

void frmclsCompras_Atipicos::set_ConexionBexmor(std::shared_ptr<adodb::Connection> conexion) const noexcept
{
    modComun::set_ConexionBexmor(std::move(conexion));
}

void frmclsCompras_Atipicos::Show(int Modal, const Duena& OwnerForm)
{
    trap("frmclsCompras_Atipicos:Show", [&] {
        if (m_form.isNull())
            m_form = new frmCompras_Atipicos;
        m_form->Show(Modal, OwnerForm);
    });
}

bool frmclsCompras_Atipicos::sin_guardar() const
{
    const auto* form = m_form.data();
    return form != nullptr && form->isVisible() && form->hay_lineas();
}

} // namespace atipicos
