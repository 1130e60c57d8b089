#pragma once

#include "host/comprobacion/AsientoContabilizado.hpp"
#include "host/comprobacion/CargosLeidos.hpp"
#include "host/comprobacion/CuentasProveedores.hpp"
#include "host/comprobacion/SinCargo.hpp"

#include <cstdint>
#include <optional>
#include <span>

namespace atipicos::app {

/// Whose an entry is.
class Pertenencia {
public:
    Pertenencia(const CuentasProveedores& cuentas, const Almacenes& almacenes)
        : m_cuentas(cuentas)
        , m_almacenes(almacenes)
    {
    }

    /// Of the charges that name an entry, the one that it was made for; null when none bears its document.
    /// Codes are unique in a warehouse only, so several may: amount and day tell them apart, then whose the
    /// accounts are, the lines and the warehouse. Should all that be the same, it is the one saved last: a
    /// number is given again only after the save that had it first was lost.
    [[nodiscard]] CargoLeido* dueno(const AsientoContabilizado& asiento,
        std::span<const std::uint32_t> candidatos, CargosLeidos& cargos) const;

    /// The supplier whose accounts the entry bears, when they are certainly not those of the charge's.
    [[nodiscard]] std::optional<std::int32_t> otro_proveedor(
        const CargoLeido& cargo, const AsientoContabilizado& asiento) const;

private:
    const CuentasProveedores& m_cuentas;
    const Almacenes& m_almacenes;
};

} // namespace atipicos::app
