#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <string>

namespace atipicos::app {

/// A charge as the main window lists it.
struct CargoResumido {
    std::int16_t ejercicio = 0;
    std::int16_t almacen = 0;
    std::string codigo;
    std::int32_t proveedor = 0;
    std::string nombre_proveedor; ///< empty when there is no such supplier any more
    Date fecha;
    Currency base;
    Currency impuesto;
    std::int32_t asiento = 0; ///< 0 or less: not posted

    [[nodiscard]] Currency total() const { return base + impuesto; }
    friend bool operator==(const CargoResumido&, const CargoResumido&) = default;
};

} // namespace atipicos::app
