#include "host/documento/DatosCargo.hpp"

#include "engines/sql/Fechas.hpp"
#include "runtime/Formato.hpp"

#include <nlohmann/json.hpp>

namespace atipicos::orvalin {

namespace {

    using Json = nlohmann::ordered_json;

    constexpr int version = 1; ///< goes up when a name changes its meaning or goes away

    Json json_de(const CargoImpreso::Emisor& emisor)
    {
        return { { "nombre", emisor.Nombre }, { "nif", emisor.NIF }, { "domicilio", emisor.Domicilio },
            { "codigo_postal", emisor.CodigoPostal }, { "poblacion", emisor.Poblacion },
            { "provincia", emisor.Provincia } };
    }

    Json json_de(const qvoremp::Almacen& almacen)
    {
        return { { "codigo", almacen.Codigo }, { "nombre", almacen.Nombre },
            { "domicilio", almacen.Domicilio }, { "codigo_postal", almacen.CodigoPostal },
            { "poblacion", almacen.Poblacion } };
    }

    Json json_de(const qvoremp::Proveedor& proveedor)
    {
        return { { "codigo", proveedor.Codigo }, { "nombre", proveedor.Nombre }, { "nif", proveedor.NIF },
            { "domicilio", proveedor.Domicilio }, { "codigo_postal", proveedor.CodigoPostal },
            { "poblacion", proveedor.Poblacion } };
    }

    Json lineas_de(const CargoImpreso& cargo)
    {
        auto lineas = Json::array();
        for (const auto& linea : cargo.lineas)
            lineas.push_back({ { "articulo", linea.Articulo }, { "descripcion", linea.Descripcion },
                { "unidades", linea.Unidades.a_double() }, { "precio", linea.Precio.a_double() },
                { "importe", Redondear(linea.Unidades * linea.Precio, cargo.DecimalesImporte).a_double() },
                { "observaciones", linea.Observ } });
        return lineas;
    }

    Json previsiones_de(const CargoImpreso& cargo)
    {
        auto previsiones = Json::array();
        for (const auto& una : cargo.previsiones)
            previsiones.push_back(
                { { "numero", una.Numero }, { "vencimiento", sql::texto_iso(una.Vencimiento) },
                    { "documento", una.Documento }, { "importe", una.Importe.a_double() } });
        return previsiones;
    }

}

std::string datos_en_json(
    const CargoImpreso& cargo, const qvoremp::Almacen& almacen, const qvoremp::Proveedor& proveedor)
{
    Json json{ { "formato", "atipicos/cargo" }, { "version", version }, { "codigo", cargo.Codigo },
        { "ejercicio", cargo.Ejercicio }, { "fecha", sql::texto_iso(cargo.Fecha) },
        { "emisor", json_de(cargo.emisor) }, { "almacen", json_de(almacen) },
        { "proveedor", json_de(proveedor) }, { "observaciones", cargo.Observ },
        { "lineas", lineas_de(cargo) }, { "importe", cargo.Importe.a_double() },
        { "porcentaje_impuesto", cargo.Impuesto.a_double() },
        { "impuesto", cargo.Impuesto_Importe.a_double() },
        { "total", (cargo.Importe + cargo.Impuesto_Importe).a_double() } };
    json["asiento"] = cargo.Asiento > 0 ? Json(cargo.Asiento) : Json(nullptr);
    json["previsiones"] = previsiones_de(cargo);
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace atipicos::orvalin
