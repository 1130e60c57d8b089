#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Cells of grid rows and of files. A row of a grid is one text whose cells are separated by tabs.
namespace atipicos {

/// Appends a text; a tab in it becomes a blank, because it would start the next cell.
void anexa_celda(std::string& destino, std::string_view texto);

void anexa_celda(std::string& destino, std::int32_t numero); ///< plain digits

/// Appends a field of a CSV file as spreadsheets want it: between quotes, those inside doubled, where it
/// needs them.
void anexa_campo_csv(std::string& linea, std::string_view texto);

} // namespace atipicos
