#pragma once

#include "runtime/Error.hpp"

#include <filesystem>

namespace atipicos::bases {

/// A folder inside another, in which a database is made before it gets its name: gone at the end with all
/// that is still in it. One that a killed process has left is swept by the next that is made beside it.
class CarpetaProvisional {
public:
    /// Raises an error that names `carpeta` when it cannot be written.
    explicit CarpetaProvisional(const std::filesystem::path& carpeta, Donde donde = Donde::aqui());
    CarpetaProvisional(const CarpetaProvisional&) = delete;
    CarpetaProvisional& operator=(const CarpetaProvisional&) = delete;
    ~CarpetaProvisional();

    [[nodiscard]] std::filesystem::path operator/(const char* nombre) const { return m_ruta / nombre; }

private:
    std::filesystem::path m_ruta;
    int m_candado = -1; ///< the open folder, locked: it is told by that from one that was left behind
};

/// Gives a complete file another name, durably. False, with nothing changed, when there is already a file of
/// that name, also one that came a moment before. Raises an error that names it when it cannot.
[[nodiscard]] bool coloca(
    const std::filesystem::path& nuevo, const std::filesystem::path& definitivo, Donde donde = Donde::aqui());

} // namespace atipicos::bases
