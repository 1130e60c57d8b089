#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace atipicos::pruebas {

/// A folder of the test's own, with a blank and an accent in its name, removed with everything in it.
class CarpetaTemporal {
public:
    CarpetaTemporal()
    {
        std::string plantilla = (std::filesystem::temp_directory_path() / "atípicos prueba XXXXXX").string();
        if (mkdtemp(plantilla.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        m_ruta = plantilla;
    }
    CarpetaTemporal(const CarpetaTemporal&) = delete;
    CarpetaTemporal& operator=(const CarpetaTemporal&) = delete;
    ~CarpetaTemporal()
    {
        std::error_code fallo;
        std::filesystem::remove_all(m_ruta, fallo);
    }

    [[nodiscard]] std::filesystem::path operator/(const std::string& nombre) const { return m_ruta / nombre; }
    [[nodiscard]] const std::filesystem::path& ruta() const noexcept { return m_ruta; }

private:
    std::filesystem::path m_ruta;
};

/// All bytes of a file; none where there is no such file.
[[nodiscard]] inline std::string lee_fichero(const std::filesystem::path& fichero)
{
    std::ostringstream contenido;
    contenido << std::ifstream(fichero, std::ios::binary).rdbuf();
    return contenido.str();
}

} // namespace atipicos::pruebas
