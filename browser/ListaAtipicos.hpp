#pragma once

#include "browser/ColumnasLista.hpp"

#include <cstdint>
#include <functional>
#include <string>

namespace atipicos {

/// Which charges of the current company are listed.
struct FiltroAtipicos {
    std::string FechaI; ///< first day, `dd/mm/yyyy` as typed
    std::string FechaF; ///< last day, `dd/mm/yyyy` as typed
    std::int16_t Almacen = 0; ///< below 1: all
    std::int32_t Proveedor = 0; ///< below 1: all
};

/// The statement of the list. The dates go in as typed: an impossible one is an error of the database.
[[nodiscard]] std::string instruccion_lista(
    const FiltroAtipicos& filtro, std::int16_t empresa, std::int16_t empresa_proveedores);

/// Runs the query and hands over each charge, newest date first, as it comes from the database. The object
/// handed over is reused from row to row. Errors of the database reach the caller.
void Cargar_Atipicos(const FiltroAtipicos& filtro, const std::function<void(const CargoListado&)>& cada,
    ColumnasLista columnas = columnas_lista());

} // namespace atipicos
