#include "host/terminal/EsperaServidor.hpp"

#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"

#include <ostream>

namespace atipicos::app {

namespace {

    constexpr std::chrono::seconds primera{ 3 };

}

bool EsperaServidor::operator()(std::chrono::milliseconds callado)
{
    if (callado < m_anterior)
        m_proxima = {};
    m_anterior = callado;
    if (callado < primera)
        return true;
    if (Interrupcion::senal() != 0)
        return false;
    if (callado >= m_proxima) { // each time twice as long after the last
        m_proxima = 2 * callado;
        Progreso::aparta_el_de_ahora();
        *m_salida << "atipicos: El servidor de la base de datos no contesta desde hace "
                  << std::chrono::duration_cast<std::chrono::seconds>(callado).count()
                  << " s. Se le espera; Ctrl-C deja de esperar." << std::endl;
    }
    return true;
}

} // namespace atipicos::app
