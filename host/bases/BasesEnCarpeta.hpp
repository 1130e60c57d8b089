#pragma once

#include "host/bases/Bases.hpp"

/// The databases of both products in one file of a folder: the tables of management as they are called, those
/// of accounting with "Bexmor_" before their names.
namespace atipicos::bases {

inline constexpr auto fichero_empresa = "empresa.db";

/// Raises an error that says what to do when the file is not in the folder.
void exige_bases(const std::filesystem::path& carpeta, Donde donde);
void crea_en_carpeta(const std::filesystem::path& carpeta, bool vacia, Donde donde);
[[nodiscard]] Bases abre_de_carpeta(
    const std::filesystem::path& carpeta, const OpcionesBases& opciones, Donde donde);
[[nodiscard]] Bases abre_fichero(
    const std::filesystem::path& fichero, const OpcionesBases& opciones, Donde donde);

} // namespace atipicos::bases
