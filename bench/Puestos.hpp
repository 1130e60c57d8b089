#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <iostream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace atipicos::bench {

/// Both ends of a pipe, to begin together by.
class Tubo {
public:
    Tubo()
    {
        if (pipe(m_extremos.data()) != 0)
            throw std::runtime_error("no pipe");
    }
    Tubo(const Tubo&) = delete;
    Tubo& operator=(const Tubo&) = delete;
    ~Tubo()
    {
        close(m_extremos[0]);
        cierra_entrada();
    }
    void escribe() const
    {
        if (write(m_extremos[1], "", 1) != 1)
            throw std::runtime_error("nobody reads");
    }
    /// Waits for a byte; false when nobody can write any longer.
    [[nodiscard]] bool lee() const
    {
        char byte = 0;
        return read(m_extremos[0], &byte, 1) == 1;
    }
    void cierra_entrada()
    {
        if (const int entrada = std::exchange(m_extremos[1], -1); entrada >= 0)
            close(entrada);
    }

private:
    std::array<int, 2> m_extremos{};
};

/// Saves a second of `puestos` processes. Each makes what it works with, saves once to have read what a
/// session reads only once, waits for all others and then does its share.
/// @param abre  makes, for the workstation of a number from 0, what saves the charge of a number from 0
template <class Abre> double por_segundo(std::size_t puestos, std::size_t cargos, Abre abre)
{
    Tubo listos;
    Tubo salida;
    for (std::size_t puesto = 0; puesto < puestos; ++puesto)
        if (fork() == 0) {
            try {
                salida.cierra_entrada();
                const auto guarda_uno = abre();
                guarda_uno(puesto);
                listos.escribe();
                static_cast<void>(salida.lee());
                for (std::size_t i = puesto + puestos; i < cargos; i += puestos)
                    guarda_uno(i);
                _exit(0);
            } catch (const std::exception& error) {
                std::cerr << error.what() << '\n';
                _exit(1);
            }
        }
    listos.cierra_entrada();
    for (std::size_t puesto = 0; puesto < puestos; ++puesto)
        if (!listos.lee())
            throw std::runtime_error("a workstation could not begin");
    const auto antes = std::chrono::steady_clock::now();
    salida.cierra_entrada();
    int estado = 0;
    for (std::size_t puesto = 0; puesto < puestos; ++puesto)
        if (wait(&estado) < 0 || estado != 0)
            throw std::runtime_error("a workstation failed");
    return static_cast<double>(cargos - puestos)
        / std::chrono::duration<double>(std::chrono::steady_clock::now() - antes).count();
}

} // namespace atipicos::bench
