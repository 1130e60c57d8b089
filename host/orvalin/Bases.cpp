#include "host/orvalin/Bases.hpp"

#include "host/orvalin/BasesEnCarpeta.hpp"
#include "host/orvalin/BasesEnPostgresql.hpp"

namespace atipicos::orvalin {

bool crea_bases(const Lugar& lugar, bool vacia, Donde donde)
{
    if (lugar.clase() == Lugar::Clase::postgresql)
        return crea_en_postgresql(lugar.direccion(), vacia, donde);
    crea_en_carpeta(lugar.carpeta(), vacia, donde);
    return true;
}

Bases abre_bases(const Lugar& lugar, const OpcionesBases& opciones, Donde donde)
{
    return lugar.clase() == Lugar::Clase::postgresql ? abre_de_postgresql(lugar.direccion(), opciones, donde)
                                                     : abre_de_carpeta(lugar.carpeta(), opciones, donde);
}

} // namespace atipicos::orvalin
