#pragma once

#include "controls/VSFlexGrid.hpp"

/// The grid of the lines of a charge that is keyed in.
namespace atipicos {

void prepara_vsCargos(VSFlexGrid& rejilla); ///< six columns, and a hidden one for the account

/// Appends a row, or rewrites the six visible cells of one.
/// @param fila   1-based; the number of rows, heading included, for one more
/// @param texto  its cells, separated by tabs
void pon_fila(VSFlexGrid& rejilla, int fila, const QString& texto);

} // namespace atipicos
