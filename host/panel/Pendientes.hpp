#pragma once

#include "host/panel/Ambito.hpp"
#include "host/panel/AsientosSueltos.hpp"
#include "host/panel/CargoResumido.hpp"

#include <optional>
#include <string>
#include <vector>

namespace atipicos::app {

/// Charges that should have an entry and have none; none where the company does not post its charges.
struct SinAsiento {
    std::vector<CargoResumido> cargos; ///< newest first
    bool hay_mas = false;

    static constexpr std::size_t maximo = 100;
};

struct PrevisionProxima {
    Date vencimiento;
    Currency importe;
    std::string cuenta;
    std::string nombre_cuenta; ///< whom it is of
    ClaveAsiento asiento;
};

/// Forecasts that fall due from today on, in the accounting companies of the company's warehouses.
struct Proximas {
    Date desde;
    Date hasta;
    std::int64_t cuantas = 0;
    Currency importe;
    std::vector<PrevisionProxima> primeras; ///< in the order in which they fall due

    static constexpr std::size_t maximo = 200;
    static constexpr int dias = 30;
};

/// What needs attention.
struct Pendientes {
    SinAsiento sin_asiento;
    AsientosSueltos sueltos;
    Proximas proximas;
};

/// One statement over the charges; no index is needed, and none would be quicker.
[[nodiscard]] SinAsiento cargos_sin_asiento(const Ambito& ambito);
[[nodiscard]] Proximas previsiones_proximas(const Ambito& ambito, Date hoy);

} // namespace atipicos::app
