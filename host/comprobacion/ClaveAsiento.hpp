#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace atipicos::app {

struct ClaveAsiento {
    std::int16_t empresa = 0;
    std::int16_t ejercicio = 0;
    std::int32_t numero = 0;

    friend auto operator<=>(const ClaveAsiento&, const ClaveAsiento&) = default;
};

[[nodiscard]] std::string texto(const ClaveAsiento& asiento); ///< "asiento 5 (empresa contable 1, …)"
[[nodiscard]] std::string nombre_corto(const ClaveAsiento& asiento); ///< company, year and number: "1/2026/5"
/// The entry that such a name means; nothing when it is none.
[[nodiscard]] std::optional<ClaveAsiento> de_nombre_corto(std::string_view nombre);

} // namespace atipicos::app
