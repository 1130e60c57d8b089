#pragma once

#include <QString>

class QWidget;

namespace atipicos {

class VSFlexGrid;

/// Asks for a file and writes the list that `vsCab` shows to it, in the order in which it shows it: as CSV
/// when the name says so, else as a workbook. Gives the file's name; empty when the person gave up.
[[nodiscard]] QString exporta_vsCab(const VSFlexGrid& vsCab, QWidget* ventana);

} // namespace atipicos
