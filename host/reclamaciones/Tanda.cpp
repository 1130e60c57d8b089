#include "host/reclamaciones/Tanda.hpp"

#include <algorithm>
#include <thread>
#include <utility>

namespace atipicos::app {

namespace {

    using std::chrono::milliseconds;

    constexpr std::size_t cuantas_caben = 256;
    constexpr milliseconds cuanto_dura{ 175 }; // a quarter of a second with the wait for the disk
    constexpr milliseconds cuanto_se_ocupa{ 100 };
    constexpr milliseconds un_descanso{ 10 };

}

Tanda::Tanda(std::shared_ptr<sql::Transacciones> transacciones, bool por_serie,
    std::function<Reloj::time_point()> ahora)
    : m_transacciones(std::move(transacciones))
    , m_por_serie(por_serie)
    , m_ahora(std::move(ahora))
{
}

std::chrono::nanoseconds Tanda::la_mas_larga() const { return std::max(m_larga, { m_ahora() - m_ultima }); }

bool Tanda::admite(const Serie& serie) const
{
    if (m_cuantas == 0)
        return true;
    return m_unidad && m_cuantas < m_maximo && (!m_por_serie || serie == m_serie)
        && m_ahora() - m_comienzo + la_mas_larga() <= cuanto_dura;
}

void Tanda::empieza(const Serie& serie)
{
    if (m_cuantas == 0) {
        if (m_transacciones)
            m_unidad.emplace(m_transacciones);
        m_comienzo = m_ahora();
        m_larga = {};
        m_serie = serie;
    } else {
        m_larga = la_mas_larga();
    }
    m_ultima = m_ahora();
    ++m_cuantas;
}

void Tanda::cierra()
{
    m_cuantas = 0;
    if (!m_unidad)
        return;
    const auto maximo = std::min(2 * m_maximo, cuantas_caben);
    m_maximo = 1;
    try {
        m_unidad->confirma();
        m_maximo = maximo;
    } catch (...) {
        m_unidad.reset();
        throw;
    }
    m_unidad.reset();
    m_ocupado += m_ahora() - m_comienzo;
}

void Tanda::descansa()
{
    if (m_ocupado < cuanto_se_ocupa)
        return;
    m_ocupado = {};
    std::this_thread::sleep_for(un_descanso);
}

} // namespace atipicos::app
