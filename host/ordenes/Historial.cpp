#include "engines/sql/Fechas.hpp"
#include "host/bases/Reparto.hpp"
#include "host/comprobacion/HistorialEnPalabras.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Tabla.hpp"

#include <nlohmann/json.hpp>

#include <iostream>

namespace atipicos::app {

namespace {

    using Json = nlohmann::ordered_json;

    void como_tabla(const std::vector<Suceso>& sucesos)
    {
        Tabla tabla({ { "Cuándo" }, { "Qué" }, { "De qué" }, { "Quién" }, { "Desde" },
            { "Usuario", Alineacion::derecha }, { "Detalle" } });
        for (const auto& uno : sucesos)
            tabla.agrega(
                { uno.momento.texto_regional(), que_fue(uno), de_que_fue(uno), en_una_linea(quien_fue(uno)),
                    en_una_linea(uno.puesto), en_una_linea(uno.usuario), en_una_linea(en_una_frase(uno)) });
        tabla.escribe(std::cout);
    }

    Json json_de(const std::optional<FilaLeida>& fila)
    {
        if (!fila)
            return nullptr;
        auto json = Json::object();
        for (const auto& [columna, valor] : *fila)
            json[columna] = valor;
        return json;
    }

    void como_json(const std::vector<Suceso>& sucesos)
    {
        auto json = Json::array();
        for (const auto& uno : sucesos) {
            Json suyo{ { "momento", sql::texto_iso(uno.momento) }, { "accion", que_fue(uno) },
                { "login", uno.login }, { "puesto", uno.puesto }, { "usuario", uno.usuario } };
            if (uno.que == Suceso::Que::anulacion) {
                suyo["asiento"] = uno.asiento;
            } else {
                suyo["linea"] = uno.linea;
                suyo["antes"] = json_de(uno.antes);
                suyo["despues"] = json_de(uno.despues);
            }
            json.push_back(std::move(suyo));
        }
        std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    }

}

int historial(const OpcionesComunes& comunes, const OpcionesCargo& opciones)
{
    const Sesion sesion(comunes, { .solo_lectura = true });
    const ClaveCargo clave{ opciones.ejercicio, opciones.almacen, opciones.codigo };
    const auto [sucesos, existe]
        = historial_de(*sesion.bases.orvalin, sesion.empresa->Codigo(Donde::aqui()), clave);
    if (sucesos.empty() && !existe)
        no_existe(clave);
    if (opciones.formato == "json")
        como_json(sucesos);
    else if (sucesos.empty())
        std::cout << "El cargo " << clave.Codigo << como_estaba << '\n';
    else
        como_tabla(sucesos);
    if (bases::esta_repartida(*sesion.bases.orvalin))
        std::cerr << ya_no_se_lleva << '\n';
    return hecho;
}

} // namespace atipicos::app
