#pragma once

#include "host/bases/Bases.hpp"

namespace atipicos::bases {

/// The one file of a company. Its accounting tables are called `Bexmor_…`, those of management as they are
/// named.
inline constexpr auto fichero_empresa = "empresa.db";

/// Raises an error that says how to make it when it is not in the folder.
void exige_bases(const std::filesystem::path& carpeta, Donde donde);
void crea_en_carpeta(const std::filesystem::path& carpeta, bool vacia, Donde donde);
[[nodiscard]] Bases abre_de_carpeta(
    const std::filesystem::path& carpeta, const OpcionesBases& opciones, Donde donde);

} // namespace atipicos::bases
