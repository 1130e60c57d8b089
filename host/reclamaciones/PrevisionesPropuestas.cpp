#include "host/reclamaciones/PrevisionesPropuestas.hpp"

#include "host/sesion/OpcionesComunes.hpp"
#include "posting/GenerarPrev.hpp"
#include "runtime/Formato.hpp"

#include <utility>

namespace atipicos::app {

namespace {

    std::string en_letras(Currency importe)
    {
        return texto_pantalla(importe, importe.crudo() % 100 == 0 ? 2 : 4);
    }

    [[noreturn]] void rehusa(const Contabilizacion& datos, const std::string& motivo)
    {
        throw Error(no_hecho, "atipicos",
            "las condiciones de pago del proveedor " + std::to_string(datos.Proveedor) + " " + motivo
                + " Revise su forma de pago y sus días de pago.");
    }

}

std::vector<Prevision> previsiones_propuestas(const Contabilizacion& datos, AvisosRecogidos& avisos)
{
    if (!datos.GenerarPrevisiones)
        return {};
    const auto propuesta = GenerarPrev(datos);
    if (auto motivo = avisos.toma(); !motivo.empty()) {
        motivo += motivo.ends_with('.') ? "" : ".";
        rehusa(datos, "no dan previsiones: " + motivo);
    }
    if (!propuesta.previsiones.empty() && propuesta.suma != datos.Importe)
        rehusa(datos,
            "dan previsiones por " + en_letras(propuesta.suma) + " y el cargo suma "
                + en_letras(datos.Importe) + ".");
    std::vector<Prevision> previsiones;
    for (const auto& una : propuesta.previsiones)
        previsiones.push_back(una.prevision);
    return previsiones;
}

} // namespace atipicos::app
