#pragma once

#include "host/bases/Bases.hpp"

namespace atipicos::bases {

inline constexpr auto fichero_orvalin = "orvalin.db";
inline constexpr auto fichero_bexmor = "bexmor.db";

/// Raises an error that says how to make them when neither of both is in the folder.
void exige_bases(const std::filesystem::path& carpeta, Donde donde);
void crea_en_carpeta(const std::filesystem::path& carpeta, bool vacia, Donde donde);
[[nodiscard]] Bases abre_de_carpeta(
    const std::filesystem::path& carpeta, const OpcionesBases& opciones, Donde donde);

} // namespace atipicos::bases
