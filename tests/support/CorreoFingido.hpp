#pragma once

#include "tests/support/CarpetaTemporal.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// An `xdg-email` of the test's own, in a PATH that holds nothing else but the shell: it writes down what it
/// is given, keeps a copy of what is attached, and ends as it is told to. Files for it go into a cache of the
/// test's own.
class CorreoFingido {
public:
    /// `estado`: with which it ends; nothing: there is no such program.
    explicit CorreoFingido(std::optional<int> estado = 0)
    {
        namespace fs = std::filesystem;
        fs::create_directory(m_carpeta / "bin");
        if (estado) {
            const auto programa = m_carpeta / "bin" / "xdg-email";
            std::ofstream(programa) << "#!/bin/sh\n"
                                       "for uno in \"$@\"; do printf '%s\\n' \"$uno\"; done >>'"
                                    << (m_carpeta / "dado").string()
                                    << "'\n"
                                       "for ultimo in \"$@\"; do :; done\n"
                                       "/bin/cp \"$ultimo\" '"
                                    << (m_carpeta / "adjunto.pdf").string() << "'\nexit " << *estado << '\n';
            fs::permissions(programa, fs::perms::owner_all);
        }
        pon("PATH", m_carpeta / "bin");
        pon("XDG_CACHE_HOME", m_carpeta / "cache");
    }
    CorreoFingido(const CorreoFingido&) = delete;
    CorreoFingido& operator=(const CorreoFingido&) = delete;
    ~CorreoFingido()
    {
        for (const auto& [nombre, valor] : m_antes)
            valor ? setenv(nombre.c_str(), valor->c_str(), 1) : unsetenv(nombre.c_str());
    }

    /// One argument a line.
    [[nodiscard]] std::vector<std::string> dado() const
    {
        std::ifstream fichero(m_carpeta / "dado");
        std::vector<std::string> lineas;
        for (std::string linea; std::getline(fichero, linea);)
            lineas.push_back(linea);
        return lineas;
    }
    [[nodiscard]] std::string adjunto() const
    {
        std::ifstream fichero(m_carpeta / "adjunto.pdf", std::ios::binary);
        return { std::istreambuf_iterator<char>(fichero), {} };
    }
    [[nodiscard]] std::filesystem::path guardados() const { return m_carpeta / "cache/atipicos/correo"; }

private:
    void pon(const char* nombre, const std::filesystem::path& valor)
    {
        const char* antes = std::getenv(nombre);
        m_antes.emplace_back(nombre, antes == nullptr ? std::nullopt : std::optional<std::string>(antes));
        setenv(nombre, valor.c_str(), 1);
    }

    CarpetaTemporal m_carpeta;
    std::vector<std::pair<std::string, std::optional<std::string>>> m_antes;
};

} // namespace atipicos::pruebas
