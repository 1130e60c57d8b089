#pragma once

#include "host/bases/Actualizacion.hpp"

/// The layout of the program's first version: a file for each product in one folder. Nothing works with it
/// any more; it is turned into the present one.
namespace atipicos::bases {

inline constexpr auto fichero_orvalin = "orvalin.db";
inline constexpr auto fichero_bexmor = "bexmor.db";

[[nodiscard]] bool hay_anteriores(const std::filesystem::path& carpeta);

/// Raises the error that says what to do with them.
[[noreturn]] void pide_actualizar(const std::filesystem::path& carpeta, Donde donde);

/// Makes one file of both, beside them, and puts it in their place when it has been found to hold the same;
/// they are kept under other names. Killed at any moment it leaves them, or the new file, and done again it
/// comes to its end. Raises an error, with nothing changed, when one is missing or somebody else has it open.
Actualizada une_anteriores(
    const std::filesystem::path& carpeta, const OpcionesActualizar& opciones, Donde donde);

/// Gives those that are still there another name, and says which.
std::vector<std::filesystem::path> aparta_anteriores(const std::filesystem::path& carpeta, Donde donde);

} // namespace atipicos::bases
