#include "host/terminal/MsgBoxConsola.hpp"

#include <ostream>

namespace atipicos::app {

namespace {

    const char* palabra(Icono icono)
    {
        switch (icono) {
        case Icono::critico:
            return "error";
        case Icono::pregunta:
            return "pregunta";
        case Icono::exclamacion:
            return "aviso";
        case Icono::informacion:
            break;
        }
        return "información";
    }

    std::string con_saltos_de_linea(const std::string& texto)
    {
        std::string resultado;
        for (std::size_t i = 0; i < texto.size(); ++i) {
            if (texto[i] == '\r' && i + 1 < texto.size() && texto[i + 1] == '\n')
                continue;
            resultado += texto[i] == '\r' ? '\n' : texto[i];
        }
        return resultado;
    }

}

MsgBoxConsola::MsgBoxConsola(std::ostream& salida) noexcept
    : m_salida(salida)
{
}

Respuesta MsgBoxConsola::mostrar(const Mensaje& mensaje)
{
    if (mensaje.icono == Icono::critico || mensaje.icono == Icono::exclamacion)
        ++m_errores;
    m_salida << '[' << palabra(mensaje.icono) << "] " << mensaje.titulo << ": "
             << con_saltos_de_linea(mensaje.texto) << std::endl;
    return mensaje.por_defecto;
}

} // namespace atipicos::app
