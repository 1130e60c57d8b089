#include "engines/sql/Fechas.hpp"
#include "host/bases/Reparto.hpp"
#include "host/comprobacion/CargoConsultado.hpp"
#include "host/comprobacion/HistorialCargo.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Tabla.hpp"

#include <nlohmann/json.hpp>

#include <iostream>
#include <set>
#include <string_view>

namespace atipicos::app {

namespace {

    using Json = nlohmann::ordered_json;
    using Que = Suceso::Que;

    std::string palabra(Que que)
    {
        switch (que) {
        case Que::alta:
            return "alta";
        case Que::cambio:
            return "cambio";
        case Que::baja:
            return "baja";
        case Que::anulacion:
            break;
        }
        return "anulación";
    }

    std::string parte(const Suceso& suceso)
    {
        if (suceso.que == Que::anulacion)
            return "asiento";
        return suceso.linea == 0 ? "cabecera" : "línea " + std::to_string(suceso.linea);
    }

    /// Told elsewhere, or again with each change: who and when.
    bool se_dice_aparte(const std::string& columna)
    {
        static const std::set<std::string> aparte{ "Usuario", "Hora" };
        return aparte.contains(columna);
    }

    /// What it was and what it became, in words: all of it, or of a change what differs.
    std::string detalle(const Suceso& suceso)
    {
        if (suceso.que == Que::anulacion)
            return suceso.asiento;
        const FilaLeida vacia;
        const auto& antes = suceso.antes ? *suceso.antes : vacia;
        const auto& despues = suceso.despues ? *suceso.despues : vacia;
        std::string texto;
        for (const auto& [columna, valor] : suceso.despues ? despues : antes) {
            const auto anterior = antes.find(columna);
            const bool difiere = suceso.que == Que::cambio && anterior != antes.end();
            if (se_dice_aparte(columna)
                || (difiere ? anterior->second == valor : valor.empty() || valor == "0"))
                continue;
            texto += (texto.empty() ? "" : "; ") + columna + " ";
            if (difiere)
                texto += (anterior->second.empty() ? "vacío" : anterior->second) + " → ";
            texto += valor.empty() ? "vacío" : valor;
        }
        return texto;
    }

    std::string quien(const Suceso& suceso) { return suceso.login.empty() ? "otro programa" : suceso.login; }

    void como_tabla(const std::vector<Suceso>& sucesos)
    {
        Tabla tabla({ { "Cuándo" }, { "Qué" }, { "De qué" }, { "Quién" }, { "Desde" },
            { "Usuario", Alineacion::derecha }, { "Detalle" } });
        for (const auto& uno : sucesos)
            tabla.agrega(
                { uno.momento.texto_regional(), palabra(uno.que), parte(uno), en_una_linea(quien(uno)),
                    en_una_linea(uno.puesto), en_una_linea(uno.usuario), en_una_linea(detalle(uno)) });
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
            Json suyo{ { "momento", sql::texto_iso(uno.momento) }, { "accion", palabra(uno.que) },
                { "login", uno.login }, { "puesto", uno.puesto }, { "usuario", uno.usuario } };
            if (uno.que == Que::anulacion) {
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
    const auto sucesos = historial_de(clave);
    if (sucesos.empty() && !busca_cargo(clave))
        no_existe(clave);
    if (opciones.formato == "json")
        como_json(sucesos);
    else if (sucesos.empty())
        std::cout << "El cargo " << clave.Codigo
                  << " está como estaba cuando se empezó a llevar el historial.\n";
    else
        como_tabla(sucesos);
    if (bases::esta_repartida(*sesion.bases.orvalin))
        std::cerr
            << "Esta base de datos está repartida entre varios nodos: no lleva el historial desde que lo "
               "está.\n";
    return hecho;
}

} // namespace atipicos::app
