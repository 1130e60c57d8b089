#pragma once

#include "platform/msgbox/MsgBox.hpp"

#include <deque>
#include <ostream>
#include <string>
#include <vector>

namespace atipicos {

inline std::ostream& operator<<(std::ostream& salida, const Mensaje& mensaje)
{
    return salida << "«" << mensaje.titulo << "»: " << mensaje.texto << " (icon "
                  << static_cast<int>(mensaje.icono) << ", buttons " << static_cast<int>(mensaje.botones)
                  << ", default " << static_cast<int>(mensaje.por_defecto) << ")";
}

namespace pruebas {

    /// Keeps what was said and answers in advance; without an answer it presses the default button.
    class MsgBoxDePrueba final : public MsgBox {
    public:
        std::vector<Mensaje> dichos;
        std::deque<Respuesta> respuestas;

        Respuesta mostrar(const Mensaje& mensaje) override
        {
            dichos.push_back(mensaje);
            if (respuestas.empty())
                return mensaje.por_defecto;
            const Respuesta respuesta = respuestas.front();
            respuestas.pop_front();
            return respuesta;
        }
    };

}

} // namespace atipicos
