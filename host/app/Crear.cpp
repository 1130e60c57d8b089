#include "host/app/Ordenes.hpp"
#include "host/orvalin/Bases.hpp"

#include <iostream>

namespace atipicos::app {

int crear(const OpcionesComunes& comunes, bool vacia)
{
    orvalin::crea_bases(comunes.datos, vacia);
    std::cout << "Creadas " << (comunes.datos / "orvalin.db").string() << " y "
              << (comunes.datos / "bexmor.db").string()
              << (vacia ? ", sin datos.\n" : ", con la empresa de muestra.\n");
    return hecho;
}

} // namespace atipicos::app
