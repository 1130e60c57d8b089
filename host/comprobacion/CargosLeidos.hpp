#pragma once

#include "host/comprobacion/ClaveAsiento.hpp"
#include "host/comprobacion/CodigoCargo.hpp"
#include "platform/adodb/Connection.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace atipicos::app {

/// Of the amounts of lines, in their order: the same for the same ones, hardly ever for others.
class HuellaImportes {
public:
    void agrega(Currency importe) noexcept
    {
        m_valor = (m_valor ^ static_cast<std::uint64_t>(importe.crudo())) * 0x9E3779B97F4A7C15U;
        m_valor ^= m_valor >> 29U;
    }
    [[nodiscard]] std::uint32_t valor() const noexcept { return static_cast<std::uint32_t>(m_valor); }

private:
    std::uint64_t m_valor = 0;
};

/// What checking needs to remember of a charge, in few bytes, because there may be a million of them.
struct CargoLeido {
    std::int64_t numero = 0; ///< in its code; below 0: see `CargosLeidos::codigo`
    Date fecha;
    Date hora;
    Currency importe;
    Currency porcentaje;
    Currency impuesto;
    ClaveAsiento asiento; ///< the one that it names; number 0: none
    std::int32_t proveedor = 0;
    std::uint32_t lineas = 0; ///< `HuellaImportes` of its lines
    std::int16_t empresa = 0;
    std::int16_t ejercicio = 0;
    std::int16_t almacen = 0;
    bool con_lineas = false;
    bool completo = true; ///< its lines and its tax are in order
    bool asiento_visto = false; ///< the entry that it names exists
    bool con_asiento = false; ///< and is its own

    [[nodiscard]] Currency total() const { return importe + impuesto; }
    [[nodiscard]] ClaveSerie serie() const { return { empresa, ejercicio, almacen }; }
};
static_assert(sizeof(CargoLeido) <= 80);

/// The charges of all companies, to be found by their key and by the entry that they name.
class CargosLeidos {
public:
    explicit CargosLeidos(adodb::Connection& orvalin); ///< reads their headers

    [[nodiscard]] std::vector<CargoLeido>& todos() noexcept { return m_cargos; }
    [[nodiscard]] const std::vector<CargoLeido>& todos() const noexcept { return m_cargos; }

    [[nodiscard]] std::string codigo(const CargoLeido& cargo) const;
    [[nodiscard]] ClaveContenida clave(const CargoLeido& cargo) const;

    [[nodiscard]] CargoLeido* busca(const ClaveContenida& clave); ///< null when there is none

    /// Positions in `todos` of the charges that name an entry.
    [[nodiscard]] std::span<const std::uint32_t> nombran(const ClaveAsiento& asiento) const;

private:
    void ordena();
    [[nodiscard]] std::int64_t numero_o_raro(const std::string& codigo) const;

    std::vector<CargoLeido> m_cargos; ///< by key
    std::vector<std::string> m_raros; ///< codes that are not "AT" and a number, sorted
    std::vector<std::uint32_t> m_por_asiento;
};

/// Reads the lines of all charges: `cada` is told each with the charge that it belongs to, those of a charge
/// one after the other in their order; `suelta` each that belongs to none.
struct LineaLeida {
    std::int32_t numero = 0;
    Currency importe;
};
void lee_lineas_de(CargosLeidos& cargos, adodb::Connection& orvalin,
    const std::function<void(CargoLeido&, const LineaLeida&)>& cada,
    const std::function<void(const ClaveContenida&)>& suelta);

} // namespace atipicos::app
