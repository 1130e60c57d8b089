#pragma once

#include "runtime/Error.hpp"

#include <filesystem>
#include <string_view>

namespace atipicos::bases {

/// Writes a new file whole: it has its name when all of it is on the disk, and whoever is killed before
/// leaves nothing. False, with nothing written, when there is already a file of that name, also one that came
/// a moment before. Raises an error that names the file when it cannot be written.
[[nodiscard]] bool escribe_nuevo(
    const std::filesystem::path& fichero, std::string_view contenido, Donde donde = Donde::aqui());

/// Sees to it that the names in a folder survive a power cut; where that is not possible they come to the
/// disk a little later.
void asegura_nombres(const std::filesystem::path& carpeta) noexcept;

} // namespace atipicos::bases
