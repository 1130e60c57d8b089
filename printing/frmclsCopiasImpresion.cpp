#include "printing/frmclsCopiasImpresion.hpp"

#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "printing/frmImpresora.hpp"

#include <utility>

namespace atipicos {

frmclsCopiasImpresion::frmclsCopiasImpresion() = default;

frmclsCopiasImpresion::~frmclsCopiasImpresion() { delete m_form.data(); }

void frmclsCopiasImpresion::set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) const noexcept
{
    modComun::set_EmpresaOrvalin(std::move(empresa));
}

void frmclsCopiasImpresion::set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) const noexcept
{
    modComun::set_ConexionOrvalin(std::move(conexion));
}

void frmclsCopiasImpresion::Show(int Modal, const Duena& OwnerForm)
{
    trap("frmclsCopiasImpresion:Show", [&] {
        if (m_form.isNull())
            m_form = new frmImpresora;
        m_form->set_EmpresaOrvalin(modComun::EmpresaOrvalin());
        m_form->set_Destino(Destino);
        m_form->Show(Modal, OwnerForm);
        if (!m_form.isNull()) // else it has gone with its owner meanwhile
            Destino = m_form->Destino();
    });
}

} // namespace atipicos
