#include "host/bases/BasesEnCarpeta.hpp"

#include "engines/sqlite/Imagen.hpp"
#include "host/bases/Anteriores.hpp"
#include "host/bases/Fallo.hpp"
#include "host/bases/FicheroNuevo.hpp"
#include "host/bases/Historial.hpp"
#include "host/bases/Tablas.hpp"
#include "host/bases/Version.hpp"

#include <string>
#include <system_error>

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    constexpr auto ya_existe = "ya existe. Elija otra carpeta o retire antes esa base de datos.";

    void prepara_carpeta(const fs::path& carpeta, Donde donde)
    {
        std::error_code fallo;
        fs::create_directories(carpeta, fallo);
        if (!fs::is_directory(carpeta, fallo))
            falla(carpeta, "no se puede crear la carpeta.", donde);
        if (fs::exists(fs::symlink_status(carpeta / fichero_empresa, fallo)))
            falla(carpeta / fichero_empresa, ya_existe, donde);
        if (hay_anteriores(carpeta))
            pide_actualizar(carpeta, donde);
    }

    void llena(const sql::Pareja& pareja, bool vacia, Donde donde)
    {
        pareja.gestion->BeginTrans(donde);
        pareja.contabilidad->BeginTrans(donde);
        crea_tablas_bexmor(*pareja.contabilidad, vacia, donde);
        crea_tablas_orvalin(*pareja.gestion, vacia, donde);
        crea_historial(*pareja.gestion, donde);
        pareja.gestion->CommitTrans(donde);
        pareja.contabilidad->CommitTrans(donde);
    }

}

void crea_en_carpeta(const fs::path& carpeta, bool vacia, Donde donde)
{
    prepara_carpeta(carpeta, donde);
    const auto fichero = carpeta / fichero_empresa;
    const auto imagen = sqlite::imagen(
        fichero, [&](const sql::Pareja& pareja) { llena(pareja, vacia, donde); }, donde);
    if (!escribe_nuevo(fichero, imagen, donde))
        falla(fichero, ya_existe, donde); // another made it meanwhile
}

void exige_bases(const fs::path& carpeta, Donde donde)
{
    if (fs::exists(carpeta / fichero_empresa))
        return;
    if (hay_anteriores(carpeta))
        pide_actualizar(carpeta, donde);
    falla(carpeta,
        "no hay ninguna base de datos en esta carpeta. Créela con: atipicos crear " + Lugar(carpeta).opcion(),
        donde);
}

Bases abre_de_carpeta(const fs::path& carpeta, const OpcionesBases& opciones, Donde donde)
{
    exige_bases(carpeta, donde);
    return abre_fichero(carpeta / fichero_empresa, opciones, donde);
}

Bases abre_fichero(const fs::path& fichero, const OpcionesBases& opciones, Donde donde)
{
    const auto pareja
        = sqlite::Connection::AbrirPareja({ .fichero = fichero,
                                              .solo_lectura = opciones.solo_lectura,
                                              .espera = opciones.espera,
                                              .sincronizacion_completa = opciones.sincronizacion_completa,
                                              .sigue = opciones.sigue },
            {}, donde);
    Bases bases{ pareja.gestion, pareja.contabilidad, pareja.transacciones };
    for (const auto& conexion : { bases.orvalin, bases.bexmor })
        if (comprueba_version(*conexion, "Esquema", fichero.string(), donde) >= version_con_historial
            && !opciones.solo_lectura && conexion == bases.orvalin)
            firma_historial(*conexion, donde);
    return bases;
}

} // namespace atipicos::bases
