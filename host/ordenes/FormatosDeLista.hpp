#pragma once

#include "browser/ExportarLista.hpp"

#include <cstddef>

/// The list of charges as the program prints it beside the spreadsheets of `browser/ExportarLista`. All of
/// them write it while it is being read.
namespace atipicos::app {

/// Rows that a table holds at a time: as long as there are no more, every column is as wide as its widest
/// cell.
inline constexpr std::size_t filas_por_bloque = 1'000;

/// A table with its totals below; nothing at all for no charge. Of a long list each block of rows is aligned
/// in itself: columns may be wider than in the blocks before, never narrower.
void lista_en_tabla(
    std::ostream& salida, const OrigenLista& lista, ColumnasLista columnas = columnas_lista());

/// An array of objects, amounts as numbers, days as `yyyy-mm-dd`, null for an entry that there is not. What
/// is no UTF-8 becomes U+FFFD.
void lista_en_json(std::ostream& salida, const OrigenLista& lista, ColumnasLista columnas = columnas_lista());

} // namespace atipicos::app
