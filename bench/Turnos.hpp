#pragma once

#include "bench/Medida.hpp"

#include <cstddef>
#include <functional>
#include <vector>

namespace atipicos::bench {

/// Who is measured, and how it does the task of a number.
struct Corredor {
    const char* nombre;
    std::function<void(std::size_t)> corre;
    Medida medida = {};
};

/// All in turns, and each of them as often the first.
inline void por_turnos(std::size_t veces, std::vector<Corredor>& corredores)
{
    for (std::size_t vez = 0; vez < veces; ++vez)
        for (std::size_t i = 0; i < corredores.size(); ++i) {
            auto& uno = corredores[(vez + i) % corredores.size()];
            uno.medida.mide([&] { uno.corre(vez); });
        }
}

/// The figures of each, and the ratios of the first to the others.
inline void escribe(const std::vector<Corredor>& corredores)
{
    for (const auto& uno : corredores)
        uno.medida.escribe(uno.nombre);
    for (std::size_t i = 1; i < corredores.size(); ++i)
        std::printf("  ratio of medians to the %s %.3f\n", corredores[i].nombre,
            corredores[0].medida.mediana() / corredores[i].medida.mediana());
}

} // namespace atipicos::bench
