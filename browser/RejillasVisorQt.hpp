#pragma once

#include "browser/ColumnasLista.hpp"
#include "controls/VSFlexGrid.hpp"

/// The columns of the grids of the charge browser.
namespace atipicos {

/// The list: each column orders the rows by its heading.
void prepara_vsCab(VSFlexGrid& rejilla, ColumnasLista lista = columnas_lista());
void prepara_vsDetalles(VSFlexGrid& rejilla); ///< lines of a charge: seven columns
void prepara_vsPrevisiones(VSFlexGrid& rejilla); ///< payment forecasts of a charge

} // namespace atipicos
