#pragma once

#include "browser/CargoListado.hpp"
#include "browser/ExportarLista.hpp"
#include "browser/ListaAtipicos.hpp"

#include <QString>

#include <vector>

class QWidget;

namespace atipicos {

class VSFlexGrid;

/// What a file with the list is called: "Atípicos 2026-11-01 a 2026-11-30", and the warehouse and supplier
/// where it has been narrowed to them.
[[nodiscard]] QString nombre_de_fichero(const FiltroAtipicos& filtro);

/// Asks for a file, proposing its name without ending, and writes the list to it: as CSV when the name says
/// so, else as a workbook. Gives the file's name; empty when the person gave up, and then the list was not
/// asked for. Raises an `Error` when the file cannot be written.
[[nodiscard]] QString exporta_lista(const OrigenLista& lista, const QString& nombre, QWidget* ventana);

/// The same with the list that `vsCab` shows, in the order in which it shows it. The data of its rows are
/// their places in `cargos`.
[[nodiscard]] QString exporta_vsCab(const VSFlexGrid& vsCab, const std::vector<CargoListado>& cargos,
    const QString& nombre, QWidget* ventana);

} // namespace atipicos
