#include "host/bexmor/Biblioteca.hpp"

#include "host/bexmor/Apunte.hpp"
#include "host/bexmor/Asiento.hpp"
#include "host/bexmor/Empresa.hpp"
#include "host/bexmor/Prevision.hpp"
#include "host/bexmor/RegistroImpuesto.hpp"
#include "host/bexmor/ServicioCuentas.hpp"

#include <utility>

namespace atipicos::bexmor {

Biblioteca::Biblioteca(std::shared_ptr<adodb::Connection> conexion)
    : m_conexion(std::move(conexion))
{
}

std::unique_ptr<qvbxemp::Empresa> Biblioteca::NuevaEmpresa(Donde) const
{
    auto empresa = std::make_unique<Empresa>(*this);
    empresa->Conexion = m_conexion;
    return empresa;
}

std::unique_ptr<qvbxemp::Asiento> Biblioteca::NuevoAsiento(const qvbxemp::Empresa& empresa, Donde) const
{
    return std::make_unique<Asiento>(empresa);
}

std::unique_ptr<qvbxemp::Apunte> Biblioteca::NuevoApunte(const qvbxemp::Empresa& empresa, Donde) const
{
    return std::make_unique<Apunte>(empresa);
}

std::unique_ptr<qvbxemp::RegistroImpuesto> Biblioteca::NuevoRegistroImpuesto(
    const qvbxemp::Empresa& empresa, Donde) const
{
    return std::make_unique<RegistroImpuesto>(empresa);
}

std::unique_ptr<qvbxemp::Prevision> Biblioteca::NuevaPrevision(const qvbxemp::Empresa& empresa, Donde) const
{
    return std::make_unique<Prevision>(empresa);
}

std::unique_ptr<qvbxemp::ServicioCuentas> Biblioteca::NuevoServicioCuentas(
    const qvbxemp::Empresa& empresa, Donde) const
{
    return std::make_unique<ServicioCuentas>(empresa);
}

} // namespace atipicos::bexmor
