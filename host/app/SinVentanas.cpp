#include "host/app/VentanaPrincipal.hpp"

#include <iostream>

namespace atipicos::app {

int ventana_principal(const OpcionesVentana& /*opciones*/)
{
    std::cerr
        << "atipicos: Falta la orden; este programa se ha compilado sin ventanas.\nVea: atipicos --help\n";
    return mal_usado;
}

} // namespace atipicos::app
