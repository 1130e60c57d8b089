#pragma once

#include "tests/support/CarpetaTemporal.hpp"

#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// Where to connect to the driver that answers as SQL Server's, and what it has been told.
class ServidorFingido {
public:
    [[nodiscard]] std::string cadena() const
    {
        return "DRIVER=" ATIPICOS_CONTROLADOR_FINGIDO ";DATABASE=" + (m_carpeta / "dicho").string();
    }

    /// Since the last time; the line itself says "CONECTA".
    [[nodiscard]] std::vector<std::string> dicho()
    {
        std::vector<std::string> todo;
        std::ifstream registro(m_carpeta / "dicho");
        for (std::string linea; std::getline(registro, linea);)
            todo.push_back(linea);
        std::vector<std::string> nuevo(todo.begin() + static_cast<std::ptrdiff_t>(m_leidas), todo.end());
        m_leidas = todo.size();
        return nuevo;
    }

private:
    CarpetaTemporal m_carpeta;
    std::size_t m_leidas = 0;
};

} // namespace atipicos::pruebas
