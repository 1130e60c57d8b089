#include "host/terminal/EsperaServidor.hpp"

#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"

#include <iostream>

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
    if (Interrupcion::senal() != 0 && m_quien == Quien::programa)
        return false;
    if (callado >= m_proxima) { // each time twice as long after the last
        m_proxima = 2 * callado;
        Progreso::aparta_el_de_ahora();
        *m_salida << "atipicos: El servidor de la base de datos no contesta desde hace "
                  << std::chrono::duration_cast<std::chrono::seconds>(callado).count()
                  << (m_quien == Quien::programa
                             ? " s. Se le espera; Ctrl-C deja de esperar."
                             : " s. Se le espera; pulsar Ctrl-C dos veces termina el programa.")
                  << std::endl;
    }
    return true;
}

std::function<void(std::chrono::milliseconds)> espera_de_controlador()
{
    return [espera = EsperaServidor(std::cerr, EsperaServidor::Quien::controlador)](
               std::chrono::milliseconds callado) mutable { static_cast<void>(espera(callado)); };
}

} // namespace atipicos::app
