#include "context/modComun.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/ordenes/Uso.hpp"
#include "host/resumen/LecturaResumen.hpp"
#include "host/resumen/ResumenEnFichero.hpp"
#include "host/resumen/ResumenEnTerminal.hpp"
#include "host/sesion/Sesion.hpp"
#include "runtime/SalidaSegura.hpp"

#include <iostream>
#include <unistd.h>

namespace atipicos::app {

namespace {

    PeticionResumen peticion_de(const OpcionesResumen& opciones)
    {
        const auto hasta = opciones.hasta.value_or(modComun::reloj().hoy());
        const auto desde = opciones.desde.value_or(Date::de_dia(hasta.anio(), 1, 1).value_or(hasta));
        if (desde > hasta)
            throw MalUsada("--desde: es un día posterior a hoy; falta --hasta.");
        return { de_palabra(opciones.por), { desde, hasta }, opciones.almacen, opciones.proveedor };
    }

}

int resumen(const OpcionesComunes& comunes, const OpcionesResumen& opciones, DibujaResumen dibuja)
{
    const Sesion sesion(comunes, { .solo_lectura = true });
    const AmbitoResumen ambito{ sesion.empresa->Codigo(), sesion.empresa->EmpresaProveedores() };
    auto& orvalin = *sesion.bases.orvalin;
    auto peticion = peticion_de(opciones);
    const auto entero = lee_resumen(orvalin, ambito, peticion);
    const auto contado
        = opciones.primeros > 0 ? entero.primeros(static_cast<std::size_t>(opciones.primeros)) : entero;
    SalidaSegura salida(opciones.salida);
    if (opciones.formato == "csv") {
        resumen_en_csv(salida.flujo(), contado);
    } else if (opciones.formato == "json") {
        resumen_en_json(salida.flujo(), contado);
    } else if (opciones.formato == "xlsx") {
        resumen_en_xlsx(salida.flujo(), contado);
    } else if (opciones.formato == "tabla") {
        resumen_en_terminal(
            salida.flujo(), contado, opciones.salida.empty() ? aspecto_de(STDOUT_FILENO) : Aspecto{});
    } else {
        peticion.por = VistaResumen::mes;
        const auto meses = lee_resumen(orvalin, ambito, peticion);
        salida.flujo() << dibuja(contado, meses, opciones.formato);
    }
    salida.termina();
    if (entero.total().ahora.cuantos == 0)
        std::cerr << "No hay cargos entre el " << peticion.periodo.desde.texto() << " y el "
                  << peticion.periodo.hasta.texto() << ".\n";
    return hecho;
}

} // namespace atipicos::app
