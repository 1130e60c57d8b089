#include "context/frmclsComprasAtipVisor.hpp"

#include "browser/frmCompras_Atipicos_Visor.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"

#include <utility>

namespace atipicos {

frmclsComprasAtipVisor::frmclsComprasAtipVisor() = default;

frmclsComprasAtipVisor::~frmclsComprasAtipVisor()
{
    if (m_form.isNull())
        return;
    m_form->close();
    delete m_form.data();
}

void frmclsComprasAtipVisor::set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) const noexcept
{
    modComun::set_EmpresaOrvalin(std::move(empresa));
}

void frmclsComprasAtipVisor::set_ConexionOrvalin(std::shared_ptr<adodb::Connection> conexion) const noexcept
{
    modComun::set_ConexionOrvalin(std::move(conexion));
}

void frmclsComprasAtipVisor::set_EmpresaBexmor(std::shared_ptr<qvbxemp::Empresa> empresa) const noexcept
{
    modComun::set_EmpresaBexmor(std::move(empresa));
}

void frmclsComprasAtipVisor::set_ConexionBexmor(std::shared_ptr<adodb::Connection> conexion) const noexcept
{
    modComun::set_ConexionBexmor(std::move(conexion));
}

void frmclsComprasAtipVisor::set_AlBuscar(std::function<void(const Busqueda&)> al_buscar)
{
    m_al_buscar = std::move(al_buscar);
}

void frmclsComprasAtipVisor::hace_form()
{
    m_form = new frmCompras_Atipicos_Visor;
    const auto cuenta = [this](const FiltroAtipicos& filtro) {
        if (m_al_buscar)
            m_al_buscar({ Date::de_texto(filtro.FechaI).value_or(Date{}),
                Date::de_texto(filtro.FechaF).value_or(Date{}), filtro.Almacen, filtro.Proveedor });
    };
    QObject::connect(m_form.data(), &frmCompras_Atipicos_Visor::Buscado, m_form.data(), cuenta);
}

void frmclsComprasAtipVisor::Show(int Modal, const Duena& OwnerForm)
{
    trap("frmclsComprasAtipVisor:Show", [&] {
        if (m_form.isNull())
            hace_form();
        m_form->Ejercicio = Ejercicio;
        m_form->Almacen_Inicial = Almacen_Inicial;
        m_form->Proveedor_Inicial = Proveedor_Inicial;
        m_form->Fecha_Inicial = Fecha_Inicial;
        m_form->Fecha_Final = Fecha_Final;
        m_form->Show(Modal, OwnerForm);
    });
}

} // namespace atipicos
