#include "engines/odbc/Vigia.hpp"

#include <utility>

namespace atipicos::odbc {

namespace {

    constexpr std::chrono::milliseconds entre_dos_miradas{ 500 };

}

Vigia::Vigia(sql::AvisoEspera avisa)
    : m_avisa(std::move(avisa))
{
    if (m_avisa)
        m_hilo = std::thread([this] { vigila(); });
}

Vigia::~Vigia()
{
    if (!m_hilo.joinable())
        return;
    {
        const std::scoped_lock cerrado(m_cerrojo);
        m_acaba = true;
    }
    m_fin.notify_one();
    m_hilo.join();
}

// It looks by itself: to wake it up at each statement would cost more than many of them.
void Vigia::empieza()
{
    if (!m_avisa)
        return;
    const std::scoped_lock cerrado(m_cerrojo);
    m_desde = Reloj::now();
    m_dura = true;
}

void Vigia::termina()
{
    if (!m_avisa)
        return;
    const std::scoped_lock cerrado(m_cerrojo); // and whoever is being told has been
    m_dura = false;
}

void Vigia::vigila()
{
    std::unique_lock cerrado(m_cerrojo);
    while (!m_fin.wait_for(cerrado, entre_dos_miradas, [this] { return m_acaba; }))
        if (m_dura)
            m_avisa(std::chrono::duration_cast<std::chrono::milliseconds>(Reloj::now() - m_desde));
}

} // namespace atipicos::odbc
