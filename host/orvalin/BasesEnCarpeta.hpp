#pragma once

#include "host/orvalin/Bases.hpp"

namespace atipicos::orvalin {

void crea_en_carpeta(const std::filesystem::path& carpeta, bool vacia, Donde donde);
[[nodiscard]] Bases abre_de_carpeta(
    const std::filesystem::path& carpeta, const OpcionesBases& opciones, Donde donde);

} // namespace atipicos::orvalin
