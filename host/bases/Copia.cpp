#include "host/bases/Copia.hpp"

#include "engines/sqlite/Copia.hpp"
#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/CarpetaProvisional.hpp"
#include "host/bases/Fallo.hpp"
#include "host/bases/OrdenDeCopia.hpp"

#include <system_error>

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    /// The path of the copy, in a folder that is there.
    fs::path nombre_de(const fs::path& destino, Donde donde)
    {
        std::error_code fallo;
        if (!destino.has_filename())
            fs::create_directories(destino, fallo);
        auto copia = fs::is_directory(destino, fallo) ? destino / fichero_empresa : destino;
        if (!copia.has_filename() || !fs::is_directory(fs::absolute(copia).parent_path(), fallo))
            falla(copia, "no existe la carpeta en la que hacer la copia.", donde);
        return copia;
    }

    void exige_libre(const fs::path& copia, const fs::path& origen, Donde donde)
    {
        std::error_code fallo;
        if (fs::equivalent(copia, origen, fallo))
            falla(copia, "es la propia base de datos, no un sitio para su copia.", donde);
        if (fs::exists(fs::symlink_status(copia, fallo)))
            falla(copia, "ya existe. Elija otro nombre para la copia.", donde);
    }

}

fs::path copia_bases(const Lugar& lugar, const fs::path& destino, const OpcionesCopiar& opciones, Donde donde)
{
    const auto carpeta = carpeta_de(lugar);
    if (!carpeta)
        falla(lugar.texto(),
            "las bases de datos de un servidor se copian con la orden de su producto: "
                + orden_de_copia(lugar, destino, donde),
            donde);
    exige_bases(*carpeta, donde);
    const auto origen = *carpeta / fichero_empresa;
    auto copia = nombre_de(destino, donde);
    exige_libre(copia, origen, donde);
    const CarpetaProvisional provisional(fs::absolute(copia).parent_path(), donde);
    const auto nueva = provisional / fichero_empresa;
    sqlite::copia(origen, nueva, opciones.avance, donde);
    opciones.comprueba(abre_fichero(nueva, { .solo_lectura = true }, donde));
    if (!coloca(nueva, copia, donde))
        exige_libre(copia, origen, donde);
    return copia;
}

} // namespace atipicos::bases
