#pragma once

#include "host/orvalin/Bases.hpp"

#include <string>

namespace atipicos::orvalin {

bool crea_en_postgresql(const std::string& direccion, bool vacia, Donde donde);
[[nodiscard]] Bases abre_de_postgresql(
    const std::string& direccion, const OpcionesBases& opciones, Donde donde);

} // namespace atipicos::orvalin
