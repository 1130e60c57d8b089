#include "browser/EliminarAtipico.hpp"
#include "host/comprobacion/CargoConsultado.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Pregunta.hpp"

#include <iostream>

namespace atipicos::app {

namespace {

    bool confirma(std::int32_t asiento)
    {
        return pregunta("Deberá ir a contabilidad y eliminar manualmente el asiento asociado "
            + (asiento > 0 ? std::to_string(asiento) : std::string())
            + ".\n\n¿Está seguro que desea eliminar el atípico seleccionado?");
    }

}

int eliminar(const OpcionesComunes& comunes, const OpcionesCargo& opciones)
{
    const Sesion sesion(comunes);
    const ClaveCargo clave{ opciones.ejercicio, opciones.almacen, opciones.codigo };
    const auto cargo = busca_cargo(clave);
    if (!cargo)
        no_existe(clave);
    const auto asiento = cargo->cabecera.Asiento;
    if (!opciones.si && !confirma(asiento)) {
        std::cout << "No se ha eliminado nada.\n";
        return no_hecho;
    }
    if (!EliminarAtipico(clave))
        return no_hecho;
    std::cout << "Eliminado el cargo " << clave.Codigo << ".\n";
    if (asiento > 0)
        std::cout << "Su asiento " << asiento << " de la empresa contable " << cargo->EmpContable
                  << " sigue en Contabilidad; elimínelo allí con sus previsiones de pago, o anúlelo con: "
                     "atipicos regularizar\n";
    return hecho;
}

} // namespace atipicos::app
