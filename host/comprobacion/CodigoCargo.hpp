#pragma once

#include <cstdint>
#include <string>
#include <tuple>

/// What a charge is called.
namespace atipicos::app {

using ClaveSerie = std::tuple<std::int16_t, std::int16_t, std::int16_t>; ///< company, year, warehouse

struct ClaveContenida {
    std::int16_t empresa = 0;
    std::int16_t ejercicio = 0;
    std::int16_t almacen = 0;
    std::string codigo;

    [[nodiscard]] ClaveSerie serie() const { return { empresa, ejercicio, almacen }; }
    friend auto operator<=>(const ClaveContenida&, const ClaveContenida&) = default;
};

/// The number in a code, or 0 when it is not "AT" and a number.
[[nodiscard]] std::int64_t numero_de(const std::string& codigo);

[[nodiscard]] std::string codigo_de(std::int64_t numero); ///< the code with that number

[[nodiscard]] std::string texto(const ClaveContenida& cargo); ///< "cargo AT260001 (empresa 1, …)"

} // namespace atipicos::app
