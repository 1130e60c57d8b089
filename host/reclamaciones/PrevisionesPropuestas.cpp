#include "host/reclamaciones/PrevisionesPropuestas.hpp"

#include "context/claves.hpp"
#include "context/modComun.hpp"

#include <utility>

namespace atipicos::app {

bool genera_previsiones() { return CBool(modComun::EmpresaOrvalin().Parametro(claves::GenerarPrevPagos)); }

std::vector<Prevision> previsiones_propuestas(const Contabilizacion& datos)
{
    std::vector<Prevision> previsiones;
    if (datos.GenerarPrevisiones)
        for (auto& propuesta : GenerarPrev(datos).previsiones)
            previsiones.push_back(std::move(propuesta.prevision));
    return previsiones;
}

} // namespace atipicos::app
