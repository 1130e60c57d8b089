#pragma once

#include "charges/ClaveCargo.hpp"
#include "runtime/Currency.hpp"

#include <cstdint>
#include <functional>
#include <string>

namespace atipicos {

/// One stored line of a charge, with the amount that is shown for it.
struct LineaDetalle {
    std::string Codigo;
    std::int32_t Cod_Articulo = 0;
    std::string Descripcion;
    Currency Unidades;
    Currency Precio;
    Currency Importe; ///< units × price to four decimals, whatever has been stored
    std::string Observ;
};

[[nodiscard]] std::string instruccion_detalle(const ClaveCargo& clave, std::int16_t empresa);

/// Appends the seven cells of the details grid, separated by tabs. `decimales_precio`: 0 to 4.
void anexa_fila(std::string& destino, const LineaDetalle& linea, int decimales_precio);

/// Hands over the lines of the charge in order of line number. Errors of the database reach the caller.
void Cargar_Detalles(const ClaveCargo& clave, const std::function<void(const LineaDetalle&)>& cada);

} // namespace atipicos
