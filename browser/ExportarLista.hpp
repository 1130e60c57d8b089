#pragma once

#include "browser/ColumnasLista.hpp"

#include <filesystem>
#include <functional>
#include <iosfwd>

/// The list of charges for spreadsheets, written charge by charge as it comes.
namespace atipicos {

using CadaCargo = std::function<void(const CargoListado&)>;
using OrigenLista = std::function<void(const CadaCargo&)>; ///< hands over each charge in turn

/// ";" between fields, decimal comma, UTF-8, a heading row.
void exporta_csv(std::ostream& salida, const OrigenLista& lista, ColumnasLista columnas = columnas_lista());

/// A sheet with numbers as numbers and dates as dates. Raises an error when a charge does not fit in a sheet
/// or the file cannot be written, and leaves what has been written of it.
void exporta_xlsx(const std::filesystem::path& fichero, const OrigenLista& lista,
    ColumnasLista columnas = columnas_lista());

} // namespace atipicos
