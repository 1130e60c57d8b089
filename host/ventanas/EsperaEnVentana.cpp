#include "host/ventanas/EsperaEnVentana.hpp"

namespace atipicos::app {

namespace {

    constexpr std::chrono::seconds lo_que_tarda_en_decirlo{ 1 }; ///< a server, that it was a lock

    /// Longer than the engine takes from one question to the next.
    constexpr std::chrono::milliseconds sin_preguntar{ 600 };

}

EsperaEnVentana::EsperaEnVentana(std::chrono::milliseconds bloqueo)
    : m_desde(bloqueo + lo_que_tarda_en_decirlo)
    , m_aviso({ "frmEspera", "El servidor no contesta", "&Dejar de esperar" })
{
    m_reloj.setSingleShot(true);
    m_reloj.setInterval(sin_preguntar);
    QObject::connect(&m_reloj, &QTimer::timeout, &m_reloj, [this] { quita_si_ha_contestado(); });
}

bool EsperaEnVentana::sigue(std::chrono::milliseconds callado)
{
    if (callado < m_desde || m_preguntando)
        return true;
    m_aviso.muestra(
        QStringLiteral("El servidor de la base de datos no contesta. Puede estar trabajando en lo que se le "
                       "ha pedido, o haberse perdido la conexión; lo tecleado sigue en su ventana."),
        QStringLiteral("No contesta desde hace %1 s.")
            .arg(std::chrono::duration_cast<std::chrono::seconds>(callado).count()));
    m_reloj.start();
    m_preguntando = true;
    const bool sigue = m_aviso.atiende();
    m_preguntando = false;
    if (!sigue)
        m_aviso.quita();
    return sigue;
}

void EsperaEnVentana::quita_si_ha_contestado()
{
    if (!m_preguntando)
        m_aviso.quita();
    else
        m_reloj.start();
}

} // namespace atipicos::app
