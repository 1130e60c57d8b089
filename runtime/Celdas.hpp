#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Cells of grid rows. A row is one text whose cells are separated by tabs.
namespace atipicos {

/// Appends a text; a tab in it becomes a blank, because it would start the next cell.
void anexa_celda(std::string& destino, std::string_view texto);

void anexa_celda(std::string& destino, std::int32_t numero); ///< plain digits

} // namespace atipicos
