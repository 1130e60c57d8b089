#pragma once

#include <cstdint>
#include <string>

namespace atipicos {

/// Which charge of the current company is meant.
struct ClaveCargo {
    std::int16_t Ejercicio = 0;
    std::int16_t Almacen = 0;
    std::string Codigo;
};

} // namespace atipicos
