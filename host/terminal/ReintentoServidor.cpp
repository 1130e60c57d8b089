#include "host/terminal/ReintentoServidor.hpp"

#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"

#include <ostream>

namespace atipicos::app {

namespace {

    constexpr std::chrono::seconds otra_vez{ 10 }; ///< until it is said again, and then twice as long

    constexpr std::chrono::seconds sin_motivo{ 3 }; ///< a server that does not even refuse

    std::string segundos(std::chrono::milliseconds tiempo)
    {
        return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(tiempo).count()) + " s";
    }

}

bool ReintentoServidor::sigue(
    std::chrono::milliseconds desde, std::chrono::milliseconds limite, const std::string& motivo)
{
    m_desde = desde;
    if (m_dejado)
        return false;
    if (m_proxima.count() == 0 && (!motivo.empty() || desde >= sin_motivo)) {
        di("Se ha perdido la conexión con el servidor de la base de datos"
            + (motivo.empty() ? "" : " (" + motivo + ")") + ". Se intenta reanudar durante "
            + segundos(limite) + " como mucho; Ctrl-C deja de intentarlo.");
        m_proxima = otra_vez;
    } else if (m_proxima.count() > 0 && desde >= m_proxima) {
        m_proxima = 2 * desde;
        di("No se puede conectar desde hace " + segundos(desde)
            + ". Se sigue intentando; Ctrl-C deja de intentarlo.");
    }
    m_dejado = Interrupcion::senal() != 0 || desde >= limite;
    if (m_dejado)
        di("Se ha dejado de intentar a los " + segundos(desde) + ".");
    return !m_dejado;
}

void ReintentoServidor::reanudada()
{
    di(m_proxima.count() == 0 ? "La conexión con el servidor de la base de datos se perdió y se ha reanudado."
                              : "Conexión reanudada a los " + segundos(m_desde) + ".");
    m_proxima = {};
    m_desde = {};
    m_dejado = false;
}

void ReintentoServidor::di(const std::string& texto)
{
    Progreso::aparta_el_de_ahora();
    *m_salida << "atipicos: " << texto << std::endl;
}

} // namespace atipicos::app
