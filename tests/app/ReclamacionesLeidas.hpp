#pragma once

#include "host/reclamaciones/FicheroReclamaciones.hpp"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace atipicos::pruebas {

/// A text in pieces of at most so many bytes, but for the first, which holds the mark of UTF-8 whole.
inline app::Trozos en_trozos(std::string_view texto, std::size_t tamano = std::string_view::npos)
{
    return [texto, tamano, minimo = std::size_t{ 3 }]() mutable {
        const auto trozo = texto.substr(0, std::max(tamano, std::exchange(minimo, 0)));
        texto.remove_prefix(trozo.size());
        return trozo;
    };
}

struct ReclamacionesLeidas {
    std::vector<app::Reclamacion> todas;
    std::vector<app::Reparo> errores;
    std::vector<app::Reparo> notas;
};

/// All the charges of a claims file.
inline ReclamacionesLeidas lee_reclamaciones(const app::Trozos& trozos)
{
    app::LectorReclamaciones lector(trozos);
    ReclamacionesLeidas leidas;
    while (auto una = lector.siguiente()) {
        leidas.errores.insert(leidas.errores.end(), una->errores.begin(), una->errores.end());
        leidas.notas.insert(leidas.notas.end(), una->notas.begin(), una->notas.end());
        leidas.todas.push_back(std::move(*una));
    }
    return leidas;
}

inline ReclamacionesLeidas lee_reclamaciones(std::string_view texto)
{
    return lee_reclamaciones(en_trozos(texto));
}

} // namespace atipicos::pruebas
