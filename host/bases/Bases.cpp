#include "host/bases/Bases.hpp"

#include "host/bases/Anteriores.hpp"
#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/BasesEnOdbc.hpp"
#include "host/bases/BasesEnPostgresql.hpp"
#include "host/bases/Fallo.hpp"
#include "host/bases/Pasos.hpp"

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
    auto bases = conecta_bases(lugar, opciones, donde);
    if (const auto version = version_de(bases, lugar.texto(), donde); version < guiones::version)
        falla(lugar.texto(),
            "tiene la versión " + std::to_string(version) + " de las tablas y este programa usa la "
                + std::to_string(guiones::version) + ". Actualícelas con: atipicos actualizar "
                + lugar.opcion(),
            donde);
    return bases;
}

Bases conecta_bases(const Lugar& lugar, const OpcionesBases& opciones, Donde donde)
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

std::optional<std::filesystem::path> carpeta_de(const Lugar& lugar)
{
    switch (lugar.clase()) {
    case Lugar::Clase::postgresql:
        return std::nullopt;
    case Lugar::Clase::odbc:
        return carpeta_de_odbc(lugar.direccion());
    case Lugar::Clase::carpeta:
        break;
    }
    return lugar.carpeta();
}

bool hay_bases(const std::filesystem::path& carpeta)
{
    return std::filesystem::exists(carpeta / fichero_empresa) || hay_anteriores(carpeta);
}

} // namespace atipicos::bases
