#include "host/bases/Actualizacion.hpp"

#include "host/bases/Anteriores.hpp"
#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/Pasos.hpp"

namespace atipicos::bases {

Actualizada actualiza_bases(const Lugar& lugar, const OpcionesActualizar& opciones, Donde donde)
{
    const auto carpeta = carpeta_de(lugar);
    const bool de_antes = carpeta && hay_anteriores(*carpeta);
    if (de_antes && !std::filesystem::exists(*carpeta / fichero_empresa))
        return une_anteriores(*carpeta, opciones, donde);
    const auto desde = da_pasos(conecta_bases(lugar, {}, donde), pasos(), lugar.texto(), donde);
    Actualizada hecha{ desde, guiones::version };
    if (de_antes) // whoever united them was killed before he could put them aside
        hecha.apartados = aparta_anteriores(*carpeta, donde);
    return hecha;
}

} // namespace atipicos::bases
