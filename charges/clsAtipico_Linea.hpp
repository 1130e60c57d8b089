#pragma once

#include "runtime/Currency.hpp"

#include <cstdint>
#include <string>

namespace atipicos {

/// One line of a charge.
class clsAtipico_Linea {
public:
    std::int32_t NumLinea = 0; ///< line number as loaded; stored lines are numbered by their position
    std::int32_t Cod_Articulo = 0; ///< 0: no article
    std::string Descripcion;
    Currency Unidades;
    Currency Precio;
    std::string Observaciones;
    std::int32_t Id = 0; ///< the caller's own mark; never stored

    /// Copies every field of `clsAtipico_Lin_Org` into this line except `NumLinea`, which stays.
    void Copiar(const clsAtipico_Linea& clsAtipico_Lin_Org);
};

} // namespace atipicos
