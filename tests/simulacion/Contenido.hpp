#pragma once

#include "host/bases/Bases.hpp"
#include "tests/simulacion/Modelo.hpp"

#include <optional>
#include <string>

namespace atipicos::pruebas {

/// The first row in which databases and model differ; nothing when they agree.
[[nodiscard]] std::optional<std::string> compara_filas(const Modelo& modelo, const bases::Bases& bases);

/// What `verificar` says otherwise than the model: it must name every charge without entry of its own, and no
/// other.
[[nodiscard]] std::optional<std::string> compara_verificacion(
    const Modelo& modelo, const bases::Bases& bases);

} // namespace atipicos::pruebas
