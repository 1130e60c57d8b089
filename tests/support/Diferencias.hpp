#pragma once

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

/// Texts that a person can compare: blocks separated by an empty line, each with its title in the first line.
namespace atipicos::pruebas {

struct Bloque {
    std::string titulo;
    std::vector<std::string> lineas;
};

inline std::vector<Bloque> bloques(const std::string& texto)
{
    std::vector<Bloque> todos;
    bool dentro = false;
    std::istringstream flujo(texto);
    for (std::string linea; std::getline(flujo, linea);) {
        if (linea.empty()) {
            dentro = false;
        } else if (dentro) {
            todos.back().lineas.push_back(linea);
        } else {
            todos.push_back({ linea, {} });
            dentro = true;
        }
    }
    return todos;
}

/// The lines that one has and the other has not, in their order: "  - " those of `esperado`, "  + " those of
/// `hallado`. As few as there can be.
inline std::string lineas_distintas(
    const std::vector<std::string>& esperado, const std::vector<std::string>& hallado)
{
    const auto n = esperado.size();
    const auto m = hallado.size();
    // How many lines the rests of both have in common, from the i-th and the j-th on.
    std::vector<std::vector<std::size_t>> comunes(n + 1, std::vector<std::size_t>(m + 1, 0));
    for (auto i = n; i-- > 0;)
        for (auto j = m; j-- > 0;)
            comunes[i][j] = esperado[i] == hallado[j] ? comunes[i + 1][j + 1] + 1
                                                      : std::max(comunes[i + 1][j], comunes[i][j + 1]);
    std::string texto;
    for (std::size_t i = 0, j = 0; i < n || j < m;) {
        if (i < n && j < m && esperado[i] == hallado[j]) {
            ++i;
            ++j;
        } else if (j == m || (i < n && comunes[i + 1][j] >= comunes[i][j + 1])) {
            texto += "  - " + esperado[i++] + '\n';
        } else {
            texto += "  + " + hallado[j++] + '\n';
        }
    }
    return texto;
}

/// What differs, block by block under its title; empty when nothing does.
inline std::string diferencias(const std::string& esperado, const std::string& hallado)
{
    std::map<std::string, std::vector<std::string>> hallados;
    std::vector<std::string> orden_hallado;
    for (auto& bloque : bloques(hallado)) {
        orden_hallado.push_back(bloque.titulo);
        hallados[bloque.titulo] = std::move(bloque.lineas);
    }
    std::string texto;
    std::vector<std::string> orden_esperado;
    for (const auto& bloque : bloques(esperado)) {
        orden_esperado.push_back(bloque.titulo);
        const auto lugar = hallados.find(bloque.titulo);
        if (lugar == hallados.end()) {
            texto += bloque.titulo + ": falta\n";
            continue;
        }
        if (const auto distintas = lineas_distintas(bloque.lineas, lugar->second); !distintas.empty())
            texto += bloque.titulo + '\n' + distintas;
        hallados.erase(lugar);
    }
    for (const auto& titulo : orden_hallado)
        if (hallados.contains(titulo))
            texto += titulo + ": sobra\n";
    if (texto.empty() && orden_esperado != orden_hallado)
        texto = "El orden:\n" + lineas_distintas(orden_esperado, orden_hallado);
    return texto;
}

} // namespace atipicos::pruebas
