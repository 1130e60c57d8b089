#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/Reparto.hpp"
#include "host/ordenes/Ordenes.hpp"

#include <iostream>

namespace atipicos::app {

int crear(const OpcionesComunes& comunes, bool vacia)
{
    const auto lugar = comunes.lugar();
    if (!bases::crea_bases(lugar, vacia)) {
        std::cout << "Ya estaban creadas en " << lugar.texto() << "; no se ha cambiado nada.\n";
        return hecho;
    }
    std::cout << (lugar.clase() == bases::Lugar::Clase::carpeta
            ? "Creada " + (lugar.carpeta() / bases::fichero_empresa).string()
            : "Creadas en " + lugar.texto());
    std::cout << (vacia ? ", sin datos.\n" : ", con la empresa de muestra.\n");
    if (lugar.clase() != bases::Lugar::Clase::carpeta
        && bases::esta_repartida(*bases::abre_bases(lugar, { .solo_lectura = true }).orvalin))
        std::cout << repartida;
    return hecho;
}

} // namespace atipicos::app
