#pragma once

#include "controls/VSFlexGrid.hpp"

/// The columns of the two grids of the charge browser.
namespace atipicos {

void prepara_vsCab(VSFlexGrid& rejilla); ///< list: thirteen columns, each orders the rows by its heading
void prepara_vsDetalles(VSFlexGrid& rejilla); ///< lines of a charge: seven columns

} // namespace atipicos
