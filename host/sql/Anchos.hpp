#pragma once

#include <cstddef>
#include <string_view>

namespace atipicos::sql {

/// How many letters a text column takes, as the script that makes its table says: NVARCHAR(n), which counts
/// as UTF-16 does. Error 5 when the script has no such column.
[[nodiscard]] std::size_t ancho_de_texto(
    std::string_view guion, std::string_view tabla, std::string_view columna);

/// Letters of a UTF-8 text as UTF-16 counts them: two for those beyond the basic plane.
[[nodiscard]] std::size_t letras(std::string_view texto) noexcept;

} // namespace atipicos::sql
