#include "host/comprobacion/Pertenencia.hpp"

#include <tuple>

namespace atipicos::app {

CargoLeido* Pertenencia::dueno(const AsientoContabilizado& asiento, std::span<const std::uint32_t> candidatos,
    CargosLeidos& cargos) const
{
    if (asiento.apuntes.empty())
        return nullptr;
    const auto documento = asiento.documento();
    HuellaImportes ingresos;
    for (std::size_t i = 1; i < asiento.fin_de_ingresos(); ++i)
        ingresos.agrega(asiento.apuntes[i].haber);
    const auto merito = [&](const CargoLeido& cargo) {
        const auto& primero = asiento.apuntes.front();
        const bool mismo
            = cargo.total() == primero.debe && cargo.fecha.solo_dia() == asiento.fecha.solo_dia();
        return std::tuple(mismo,
            m_cuentas.es_suya(cargo.empresa, asiento.clave.empresa, cargo.proveedor, primero.cuenta),
            cargo.lineas == ingresos.valor(), m_almacenes.ingresa(cargo.empresa, cargo.almacen, asiento),
            cargo.hora);
    };
    CargoLeido* mejor = nullptr;
    for (const auto i : candidatos) {
        auto& cargo = cargos.todos()[i];
        if (cargos.codigo(cargo) != documento)
            continue;
        if (mejor == nullptr || (candidatos.size() > 1 && merito(*mejor) < merito(cargo)))
            mejor = &cargo;
    }
    return mejor;
}

std::optional<std::int32_t> Pertenencia::otro_proveedor(
    const CargoLeido& cargo, const AsientoContabilizado& asiento) const
{
    const auto& apuntes = asiento.apuntes;
    const auto es_suya = [&](const std::string& cuenta) {
        return m_cuentas.es_suya(cargo.empresa, asiento.clave.empresa, cargo.proveedor, cuenta);
    };
    if (apuntes.size() < 2 || es_suya(apuntes.front().cuenta) || es_suya(apuntes[apuntes.size() - 2].cuenta))
        return std::nullopt;
    return m_cuentas.de_quien(
        cargo.empresa, asiento.clave.empresa, apuntes.front().cuenta, apuntes[apuntes.size() - 2].cuenta);
}

} // namespace atipicos::app
