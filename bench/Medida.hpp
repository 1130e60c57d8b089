#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <stdlib.h>
#include <string>
#include <sys/resource.h>
#include <utility>
#include <vector>

/// What the benchmarks share: a stopwatch, a line of figures, a folder to work in.
namespace atipicos::bench {

class Medida {
public:
    template <class Trabajo> void mide(Trabajo trabajo)
    {
        const auto antes = std::chrono::steady_clock::now();
        trabajo();
        anota(std::chrono::steady_clock::now() - antes);
    }

    void anota(std::chrono::duration<double, std::milli> tardado)
    {
        m_milisegundos.push_back(tardado.count());
    }

    [[nodiscard]] double mediana() const
    {
        auto orden = m_milisegundos;
        std::sort(orden.begin(), orden.end());
        return orden.at(orden.size() / 2);
    }

    void escribe(const char* nombre) const
    {
        const auto [minimo, maximo] = std::minmax_element(m_milisegundos.begin(), m_milisegundos.end());
        std::printf("  %-28s median %9.3f ms   min %9.3f   max %9.3f   (%zu runs)\n", nombre, mediana(),
            *minimo, *maximo, m_milisegundos.size());
    }

private:
    std::vector<double> m_milisegundos;
};

/// The exponent e of time = c × size^e that fits the points best.
[[nodiscard]] inline double exponente(const std::vector<std::pair<double, double>>& puntos)
{
    double sx = 0;
    double sy = 0;
    double sxx = 0;
    double sxy = 0;
    for (const auto& [tamano, tiempo] : puntos) {
        const double x = std::log(tamano);
        const double y = std::log(tiempo);
        sx += x;
        sy += y;
        sxx += x * x;
        sxy += x * y;
    }
    const auto n = static_cast<double>(puntos.size());
    return (n * sxy - sx * sy) / (n * sxx - sx * sx);
}

/// The most memory that this program has had, in MB.
[[nodiscard]] inline double pico_de_memoria()
{
    rusage uso{};
    getrusage(RUSAGE_SELF, &uso);
    return static_cast<double>(uso.ru_maxrss) / 1024;
}

/// A folder beside the program, on the disk that is measured, removed at the end.
class Carpeta {
public:
    Carpeta()
    {
        std::string plantilla = (std::filesystem::current_path() / "bench-XXXXXX").string();
        if (mkdtemp(plantilla.data()) == nullptr)
            throw std::runtime_error("cannot make a folder here");
        m_ruta = plantilla;
    }
    Carpeta(const Carpeta&) = delete;
    Carpeta& operator=(const Carpeta&) = delete;
    ~Carpeta()
    {
        std::error_code da_igual;
        std::filesystem::remove_all(m_ruta, da_igual);
    }
    [[nodiscard]] std::filesystem::path operator/(const char* nombre) const { return m_ruta / nombre; }

private:
    std::filesystem::path m_ruta;
};

} // namespace atipicos::bench
