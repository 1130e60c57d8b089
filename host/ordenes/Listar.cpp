#include "browser/ListaAtipicos.hpp"
#include "host/ordenes/FormatosDeLista.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"
#include "runtime/SalidaSegura.hpp"

#include <iostream>
#include <optional>

namespace atipicos::app {

int listar(const OpcionesComunes& comunes, const OpcionesListar& opciones)
{
    const Sesion sesion(comunes, { .solo_lectura = true });
    const FiltroAtipicos filtro{ opciones.desde.texto(), opciones.hasta.texto(), opciones.almacen,
        opciones.proveedor };
    SalidaSegura salida(opciones.salida);
    std::size_t cuantos = 0;
    std::optional<Progreso> progreso;
    if (!opciones.salida.empty()) // rows that go to the terminal show themselves
        progreso.emplace("Cargos escritos");
    const OrigenLista lista = [&](const CadaCargo& cada) {
        Cargar_Atipicos(filtro, [&](const CargoListado& cargo) {
            Interrupcion::comprueba();
            ++cuantos;
            if (progreso)
                progreso->avanza();
            cada(cargo);
            salida.comprueba(); // a reader who goes away ends the list
        });
        progreso.reset();
    };
    if (opciones.formato == "tabla")
        lista_en_tabla(salida.flujo(), lista);
    else if (opciones.formato == "csv")
        exporta_csv(salida.flujo(), lista);
    else if (opciones.formato == "json")
        lista_en_json(salida.flujo(), lista);
    else
        exporta_xlsx(salida.provisional(), lista);
    salida.termina();
    if (cuantos == 0)
        std::cerr << "No hay cargos entre el " << filtro.FechaI << " y el " << filtro.FechaF << ".\n";
    return hecho;
}

} // namespace atipicos::app
