#pragma once

#include "browser/CargoListado.hpp"

#include <QString>

#include <vector>

class QWidget;

namespace atipicos {

class VSFlexGrid;

/// Asks for a file and writes the list that `vsCab` shows to it, in the order in which it shows it: as CSV
/// when the name says so, else as a workbook. The data of its rows are their places in `cargos`. Gives the
/// file's name; empty when the person gave up.
[[nodiscard]] QString exporta_vsCab(
    const VSFlexGrid& vsCab, const std::vector<CargoListado>& cargos, QWidget* ventana);

} // namespace atipicos
