#include "host/bases/Bases.hpp"

#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/BasesEnOdbc.hpp"
#include "host/bases/BasesEnPostgresql.hpp"

namespace atipicos::bases {

bool crea_bases(const Lugar& lugar, bool vacia, Donde donde)
{
    switch (lugar.clase()) {
    case Lugar::Clase::postgresql:
        return crea_en_postgresql(lugar.direccion(), vacia, donde);
    case Lugar::Clase::odbc:
        return crea_por_odbc(lugar.direccion(), vacia, donde);
    case Lugar::Clase::carpeta:
        break;
    }
    crea_en_carpeta(lugar.carpeta(), vacia, donde);
    return true;
}

Bases abre_bases(const Lugar& lugar, const OpcionesBases& opciones, Donde donde)
{
    switch (lugar.clase()) {
    case Lugar::Clase::postgresql:
        return abre_de_postgresql(lugar.direccion(), opciones, donde);
    case Lugar::Clase::odbc:
        return abre_de_odbc(lugar.direccion(), opciones, donde);
    case Lugar::Clase::carpeta:
        break;
    }
    return abre_de_carpeta(lugar.carpeta(), opciones, donde);
}

} // namespace atipicos::bases
