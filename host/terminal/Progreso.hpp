#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace atipicos::app {

/// A line on standard error that says how far long work has come. It appears when the work lasts more than a
/// second and standard error is a terminal, and is wiped when it is destroyed.
class Progreso {
public:
    explicit Progreso(std::string texto, std::size_t total = 0); ///< 0: not known beforehand
    Progreso(const Progreso&) = delete;
    Progreso& operator=(const Progreso&) = delete;
    ~Progreso();

    void avanza(std::size_t cuantos = 1);
    void aparta(); ///< wipes the line before something else is written there; it comes back by itself
    static void aparta_el_de_ahora(); ///< the same, for who does not know whether there is one
    void va_por(std::size_t hechos, std::size_t total);

private:
    using Reloj = std::chrono::steady_clock;

    void escribe();

    std::string m_texto;
    std::size_t m_total;
    std::size_t m_hechos = 0;
    bool m_terminal;
    bool m_escrito = false;
    Reloj::time_point m_proxima;
    Progreso* m_anterior; ///< which was there when this one began
};

} // namespace atipicos::app
