#include "host/terminal/Progreso.hpp"

#include <iostream>
#include <unistd.h>
#include <utility>

namespace atipicos::app {

namespace {

    Progreso* el_de_ahora = nullptr;

}

Progreso::Progreso(std::string texto, std::size_t total)
    : m_texto(std::move(texto))
    , m_total(total)
    , m_terminal(isatty(STDERR_FILENO) == 1)
    , m_proxima(Reloj::now() + std::chrono::seconds(1))
    , m_anterior(std::exchange(el_de_ahora, this))
{
}

Progreso::~Progreso()
{
    aparta();
    el_de_ahora = m_anterior;
}

void Progreso::aparta_el_de_ahora()
{
    if (el_de_ahora != nullptr)
        el_de_ahora->aparta();
}

void Progreso::aparta()
{
    if (std::exchange(m_escrito, false))
        std::cerr << "\r\x1b[K" << std::flush;
}

void Progreso::avanza(std::size_t cuantos)
{
    m_hechos += cuantos;
    escribe();
}

void Progreso::va_por(std::size_t hechos, std::size_t total)
{
    m_hechos = hechos;
    m_total = total;
    escribe();
}

void Progreso::escribe()
{
    const auto ahora = Reloj::now();
    if (!m_terminal || ahora < m_proxima)
        return;
    m_proxima = ahora + std::chrono::milliseconds(100);
    m_escrito = true;
    std::cerr << '\r' << m_texto << ": " << m_hechos;
    if (m_total > 0)
        std::cerr << " de " << m_total;
    std::cerr << std::flush;
}

} // namespace atipicos::app
