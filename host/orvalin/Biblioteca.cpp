#include "host/orvalin/Biblioteca.hpp"

#include "host/documento/ImpresionCargo.hpp"
#include "host/orvalin/Fichas.hpp"

#include <utility>

namespace atipicos::orvalin {

Biblioteca::Biblioteca(
    std::shared_ptr<adodb::Connection> conexion, std::shared_ptr<SalidaReport> salida, Plantilla plantilla)
    : m_conexion(std::move(conexion))
    , m_salida(std::move(salida))
    , m_plantilla(std::make_shared<const Plantilla>(std::move(plantilla)))
{
}

std::unique_ptr<qvoremp::Almacen> Biblioteca::NuevoAlmacen(const qvoremp::Empresa& empresa, Donde) const
{
    return std::make_unique<FichaAlmacen>(m_conexion, empresa);
}

std::unique_ptr<qvoremp::Proveedor> Biblioteca::NuevoProveedor(const qvoremp::Empresa& empresa, Donde) const
{
    return std::make_unique<FichaProveedor>(m_conexion, empresa);
}

std::unique_ptr<qvoremp::ImpresionCargo> Biblioteca::NuevaImpresionCargo(
    const qvoremp::Empresa& empresa, Donde donde) const
{
    if (!m_salida)
        throw Error::de_ejecucion(numero_error::objeto_no_establecido, donde);
    return std::make_unique<ImpresionCargo>(m_conexion, empresa, m_salida, m_plantilla);
}

} // namespace atipicos::orvalin
