#include "host/sesion/ReintentoEnTerminal.hpp"

#include <iostream>
#include <utility>

namespace atipicos::app {

std::shared_ptr<const ReintentoServidor> reintenta_en_terminal(bases::OpcionesBases& opciones)
{
    const auto reintento = std::make_shared<ReintentoServidor>(std::cerr);
    opciones.sigue_intentando = [reintento](const sql::Reintento& como) {
        return reintento->sigue(como.desde, como.limite, como.motivo);
    };
    opciones.avisa_linea = [reintento, avisa = std::move(opciones.avisa_linea)](sql::Linea que) {
        if (que == sql::Linea::reanudada)
            reintento->reanudada();
        if (avisa)
            avisa(que);
    };
    return reintento;
}

} // namespace atipicos::app
