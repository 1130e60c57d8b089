#include "host/orvalin/PrevisionesCargo.hpp"

#include "host/documento/CargoImpreso.hpp"

#include <utility>

namespace atipicos::orvalin {

PrevisionesCargo::PrevisionesCargo(
    std::shared_ptr<adodb::Connection> conexion, std::shared_ptr<const qvoremp::Empresa> empresa)
    : m_conexion(std::move(conexion))
    , m_empresa(std::move(empresa))
{
}

std::vector<qvoremp::PrevisionCargo> PrevisionesCargo::lee(
    std::int16_t ejercicio, std::int16_t almacen, const std::string& codigo, Donde donde) const
{
    return lee_previsiones(*m_conexion, *m_empresa, ejercicio, almacen, codigo, donde);
}

} // namespace atipicos::orvalin
