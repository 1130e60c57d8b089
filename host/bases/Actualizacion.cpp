#include "host/bases/Actualizacion.hpp"

#include "host/bases/Anteriores.hpp"
#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/Pasos.hpp"
#include "host/bases/Reparto.hpp"

namespace atipicos::bases {

namespace {

    bool reparte_al_fin(const Bases& bases, Donde donde)
    {
        bases.orvalin->BeginTrans(donde);
        try {
            const bool repartida = reparte(*bases.orvalin, donde);
            bases.orvalin->CommitTrans(donde);
            return repartida;
        } catch (...) {
            bases.orvalin->RollbackTrans(donde);
            throw;
        }
    }

}

Actualizada actualiza_bases(const Lugar& lugar, const OpcionesActualizar& opciones, Donde donde)
{
    const auto carpeta = carpeta_de(lugar);
    const bool de_antes = carpeta && hay_anteriores(*carpeta);
    if (de_antes && !std::filesystem::exists(*carpeta / fichero_empresa))
        return une_anteriores(*carpeta, opciones, donde);
    const auto bases = conecta_bases(lugar, {}, donde);
    Actualizada hecha{ da_pasos(bases, pasos(), lugar.texto(), donde), guiones::version };
    hecha.repartida = reparte_al_fin(bases, donde);
    if (de_antes) // whoever united them was killed before he could put them aside
        hecha.apartados = aparta_anteriores(*carpeta, donde);
    return hecha;
}

} // namespace atipicos::bases
