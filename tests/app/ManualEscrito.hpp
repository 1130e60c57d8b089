#pragma once

#include "tests/support/CarpetaTemporal.hpp"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// The pages of the manual as they are written.
namespace atipicos::pruebas {

inline std::string pagina_del_manual(const std::string& nombre)
{
    return lee_fichero(ATIPICOS_FUENTES "/docs/manual/" + nombre + ".md");
}

/// What stands below each heading of that depth, the headings in their order.
inline std::vector<std::pair<std::string, std::string>> apartados_de(
    const std::string& texto, const std::string& marca)
{
    std::vector<std::pair<std::string, std::string>> apartados;
    std::istringstream flujo(texto);
    for (std::string linea; std::getline(flujo, linea);)
        if (linea.starts_with(marca + " "))
            apartados.emplace_back(linea.substr(marca.size() + 1), "");
        else if (!apartados.empty())
            apartados.back().second += linea + '\n';
    return apartados;
}

} // namespace atipicos::pruebas
