#include "browser/ExportarLista.hpp"
#include "engines/sql/Fechas.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/terminal/Progreso.hpp"
#include "host/terminal/Tabla.hpp"
#include "runtime/Formato.hpp"
#include "runtime/SalidaSegura.hpp"

#include <nlohmann/json.hpp>

#include <array>
#include <iostream>
#include <optional>

namespace atipicos::app {

namespace {

    constexpr std::array<bool, 13> numericas{ false, true, false, true, false, false, true, true, true, true,
        true, false, false };

    struct Totales {
        std::size_t cargos = 0;
        Currency importe;
        Currency impuesto;

        void suma(const CargoListado& cargo)
        {
            ++cargos;
            importe += cargo.Importe;
            impuesto += cargo.Impuesto_Importe;
        }
    };

    void como_tabla(std::ostream& salida, const OrigenLista& lista)
    {
        std::vector<Tabla::Columna> columnas;
        for (std::size_t i = 0; i < titulos_lista.size(); ++i)
            columnas.push_back(
                { titulos_lista[i], numericas[i] ? Alineacion::derecha : Alineacion::izquierda });
        Tabla tabla(std::move(columnas));
        Totales totales;
        lista([&](const CargoListado& cargo) {
            tabla.agrega(celdas_lista(cargo));
            totales.suma(cargo);
        });
        if (totales.cargos == 0)
            return;
        tabla.escribe(salida);
        salida << totales.cargos << " cargos, importe " << texto_pantalla(totales.importe, 2) << ", impuesto "
               << texto_pantalla(totales.impuesto, 2) << '\n';
    }

    void como_json(std::ostream& salida, const OrigenLista& lista)
    {
        auto cargos = nlohmann::ordered_json::array();
        lista([&](const CargoListado& cargo) {
            nlohmann::ordered_json uno;
            uno["codigo"] = cargo.Codigo;
            uno["almacen"] = cargo.Cod_Almacen;
            uno["nombre_almacen"] = cargo.Nombre_Almacen;
            uno["proveedor"] = cargo.Proveedor;
            uno["nombre_proveedor"] = cargo.Nombre_Proveedor;
            uno["fecha"] = sql::texto_iso(cargo.Fecha);
            uno["importe"] = cargo.Importe.a_double();
            uno["impuesto"] = cargo.Impuesto_Importe.a_double();
            uno["porcentaje_impuesto"] = cargo.Impuesto.a_double();
            uno["asiento"]
                = cargo.Asiento > 0 ? nlohmann::ordered_json(cargo.Asiento) : nlohmann::ordered_json();
            uno["usuario"] = cargo.Usuario;
            uno["nombre_usuario"] = cargo.Nombre_Usuario;
            uno["observaciones"] = cargo.Observ;
            cargos.push_back(std::move(uno));
        });
        salida << cargos.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
    }

}

int listar(const OpcionesComunes& comunes, const OpcionesListar& opciones)
{
    const Sesion sesion(comunes, { .solo_lectura = true });
    FiltroAtipicos filtro{ opciones.desde.texto(), opciones.hasta.texto(), opciones.almacen,
        opciones.proveedor };
    std::size_t cuantos = 0;
    std::optional<Progreso> progreso;
    if (opciones.formato != "csv" || !opciones.salida.empty()) // rows that go to the terminal show themselves
        progreso.emplace("Leyendo cargos");
    const OrigenLista lista = [&](const CadaCargo& cada) {
        Cargar_Atipicos(filtro, [&](const CargoListado& cargo) {
            Interrupcion::comprueba();
            ++cuantos;
            if (progreso)
                progreso->avanza();
            cada(cargo);
        });
        progreso.reset(); // before what has been read is written
    };
    SalidaSegura salida(opciones.salida);
    if (opciones.formato == "tabla")
        como_tabla(salida.flujo(), lista);
    else if (opciones.formato == "csv")
        exporta_csv(salida.flujo(), lista);
    else if (opciones.formato == "json")
        como_json(salida.flujo(), lista);
    else
        exporta_xlsx(salida.provisional(), lista);
    salida.termina();
    if (cuantos == 0)
        std::cerr << "No hay cargos entre el " << filtro.FechaI << " y el " << filtro.FechaF << ".\n";
    return hecho;
}

} // namespace atipicos::app
