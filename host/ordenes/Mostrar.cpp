#include "engines/sql/Fechas.hpp"
#include "host/comprobacion/AsientoConsultado.hpp"
#include "host/comprobacion/CargoConsultado.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Tabla.hpp"
#include "runtime/Formato.hpp"

#include <nlohmann/json.hpp>

#include <iostream>

namespace atipicos::app {

namespace {

    using Json = nlohmann::ordered_json;

    /// A charge with everything that hangs on it.
    struct Expediente {
        CargoConsultado cargo;
        std::vector<LineaDetalle> lineas;
        AsientoConsultado asiento;
    };

    Expediente lee(Sesion& sesion, const ClaveCargo& clave)
    {
        auto cargo = busca_cargo(clave);
        if (!cargo)
            no_existe(clave);
        Expediente expediente;
        expediente.cargo = *std::move(cargo);
        Cargar_Detalles(clave, [&](const LineaDetalle& linea) { expediente.lineas.push_back(linea); });
        if (expediente.cargo.cabecera.Asiento > 0)
            expediente.asiento = consulta_asiento(*sesion.bases.bexmor, expediente.cargo.asiento());
        return expediente;
    }

    /// A to E, as a bookkeeper calls the lines of the entry of a charge; `lineas` is how many income lines it
    /// has.
    char letra(std::size_t indice, std::size_t apuntes, std::size_t lineas)
    {
        if (indice == 0)
            return 'A';
        if (indice <= lineas)
            return 'B';
        if (indice + 1 == apuntes)
            return 'E';
        return indice + 2 == apuntes ? 'D' : 'C';
    }

    void escribe_cabecera(const CargoConsultado& cargo, int decimales)
    {
        const auto& c = cargo.cabecera;
        std::cout << "Cargo " << c.Codigo << " del " << c.Fecha.texto() << "\n  Almacén        "
                  << c.Cod_Almacen << "  " << c.Nombre_Almacen << "\n  Proveedor      " << c.Proveedor << "  "
                  << c.Nombre_Proveedor << "\n  Registrado     " << cargo.Hora.texto_regional() << " por "
                  << c.Usuario << "  " << c.Nombre_Usuario << '\n';
        if (!c.Observ.empty())
            std::cout << "  Observaciones  " << en_una_linea(c.Observ) << '\n';
        std::cout << "  Importe        " << texto_pantalla(c.Importe, decimales) << " + impuesto "
                  << texto_pantalla(c.Impuesto_Importe, decimales) << " (" << texto_pantalla(c.Impuesto, 2)
                  << " %) = " << texto_pantalla(c.Importe + c.Impuesto_Importe, decimales) << '\n';
    }

    void escribe_lineas(const std::vector<LineaDetalle>& lineas, int decimales_precio)
    {
        const auto derecha = Alineacion::derecha;
        Tabla tabla({ { "Línea", derecha }, { "Artículo", derecha }, { "Descripción" },
            { "Unidades", derecha }, { "Precio", derecha }, { "Importe", derecha }, { "Observaciones" } });
        int numero = 0;
        for (const auto& linea : lineas)
            tabla.agrega({ std::to_string(++numero),
                linea.Cod_Articulo == 0 ? "" : std::to_string(linea.Cod_Articulo), linea.Descripcion,
                texto_pantalla(linea.Unidades, 3), texto_pantalla(linea.Precio, decimales_precio),
                texto_pantalla(linea.Importe, 2), linea.Observ });
        std::cout << '\n';
        tabla.escribe(std::cout);
    }

    void escribe_asiento(const Expediente& expediente)
    {
        const auto clave = expediente.cargo.asiento();
        std::cout << "\nAsiento " << clave.numero << " de la empresa contable " << clave.empresa
                  << ", ejercicio " << clave.ejercicio << '\n';
        if (!expediente.asiento.existe) {
            std::cout << "  No existe en Contabilidad. Compruébelo con: atipicos verificar\n";
            return;
        }
        const auto derecha = Alineacion::derecha;
        Tabla tabla({ { "" }, { "Cuenta" }, { "Nombre" }, { "Concepto" }, { "Documento" }, { "Dpto." },
            { "Debe", derecha }, { "Haber", derecha } });
        Currency debe;
        Currency haber;
        for (std::size_t i = 0; i < expediente.asiento.apuntes.size(); ++i) {
            const auto& apunte = expediente.asiento.apuntes[i];
            const auto importe = [](Currency valor) {
                return valor == Currency() ? std::string() : texto_pantalla(valor, 2);
            };
            tabla.agrega(
                { std::string(1, letra(i, expediente.asiento.apuntes.size(), expediente.lineas.size())),
                    apunte.cuenta, apunte.nombre, apunte.concepto, apunte.documento, apunte.departamento,
                    importe(apunte.debe), importe(apunte.haber) });
            debe += apunte.debe;
            haber += apunte.haber;
        }
        tabla.agrega({ "", "", "", debe == haber ? "Cuadra" : "NO CUADRA", "", "", texto_pantalla(debe, 2),
            texto_pantalla(haber, 2) });
        tabla.escribe(std::cout);
    }

    void escribe_registros(const std::vector<RegistroConsultado>& registros)
    {
        const auto derecha = Alineacion::derecha;
        Tabla tabla({ { "Registro de impuesto: apunte", derecha }, { "Documento" }, { "Tipo", derecha },
            { "Base", derecha }, { "Cuota", derecha }, { "Total impuesto", derecha } });
        for (const auto& uno : registros)
            tabla.agrega({ std::to_string(uno.linea), uno.documento, std::to_string(uno.tipo),
                texto_pantalla(uno.base, 2), texto_pantalla(uno.cuota, 2), texto_pantalla(uno.total, 2) });
        std::cout << '\n';
        tabla.escribe(std::cout);
    }

    void escribe_previsiones(const std::vector<PrevisionConsultada>& previsiones)
    {
        const auto derecha = Alineacion::derecha;
        Tabla tabla({ { "Previsión", derecha }, { "Vencimiento" }, { "Importe", derecha }, { "Documento" },
            { "Cuenta" }, { "Banco" } });
        Currency suma;
        for (const auto& una : previsiones) {
            tabla.agrega(
                { std::to_string(una.numero), una.vencimiento.texto(), texto_pantalla(una.importe, 2),
                    una.tipo_doc.empty() ? "SIN ESPECIFICAR" : una.tipo_doc, una.cuenta, una.banco });
            suma += una.importe;
        }
        tabla.agrega({ "", "Suma", texto_pantalla(suma, 2), "", "", "" });
        std::cout << '\n';
        tabla.escribe(std::cout);
    }

    void como_texto(const Expediente& expediente, const orvalin::Empresa& empresa)
    {
        escribe_cabecera(expediente.cargo, empresa.DecimalesImporte());
        escribe_lineas(expediente.lineas, empresa.DecimalesPrecio());
        if (expediente.cargo.cabecera.Asiento <= 0) {
            std::cout << "\nSin asiento.\n";
            return;
        }
        escribe_asiento(expediente);
        if (!expediente.asiento.registros.empty())
            escribe_registros(expediente.asiento.registros);
        if (!expediente.asiento.previsiones.empty())
            escribe_previsiones(expediente.asiento.previsiones);
    }

    Json json_de(const ApunteConsultado& uno)
    {
        return { { "linea", uno.linea }, { "cuenta", uno.cuenta }, { "nombre", uno.nombre },
            { "concepto", uno.concepto }, { "documento", uno.documento },
            { "departamento", uno.departamento }, { "debe", uno.debe.a_double() },
            { "haber", uno.haber.a_double() } };
    }

    Json json_de(const Expediente& expediente)
    {
        const auto& c = expediente.cargo.cabecera;
        Json json{ { "codigo", c.Codigo }, { "almacen", c.Cod_Almacen }, { "proveedor", c.Proveedor },
            { "nombre_proveedor", c.Nombre_Proveedor }, { "fecha", sql::texto_iso(c.Fecha) },
            { "importe", c.Importe.a_double() }, { "impuesto", c.Impuesto_Importe.a_double() },
            { "porcentaje_impuesto", c.Impuesto.a_double() }, { "observaciones", c.Observ },
            { "usuario", c.Usuario } };
        json["lineas"] = Json::array();
        for (const auto& linea : expediente.lineas)
            json["lineas"].push_back(
                { { "articulo", linea.Cod_Articulo }, { "descripcion", linea.Descripcion },
                    { "unidades", linea.Unidades.a_double() }, { "precio", linea.Precio.a_double() },
                    { "importe", linea.Importe.a_double() }, { "observaciones", linea.Observ } });
        json["asiento"] = nullptr;
        if (!expediente.asiento.existe)
            return json;
        const auto clave = expediente.cargo.asiento();
        Json asiento{ { "empresa", clave.empresa }, { "ejercicio", clave.ejercicio },
            { "numero", clave.numero } };
        asiento["apuntes"] = Json::array();
        for (const auto& uno : expediente.asiento.apuntes)
            asiento["apuntes"].push_back(json_de(uno));
        asiento["impuestos"] = Json::array();
        for (const auto& uno : expediente.asiento.registros)
            asiento["impuestos"].push_back({ { "linea", uno.linea }, { "tipo", uno.tipo },
                { "base", uno.base.a_double() }, { "cuota", uno.cuota.a_double() } });
        asiento["previsiones"] = Json::array();
        for (const auto& una : expediente.asiento.previsiones)
            asiento["previsiones"].push_back(
                { { "importe", una.importe.a_double() }, { "vencimiento", sql::texto_iso(una.vencimiento) },
                    { "documento", una.tipo_doc }, { "cuenta", una.cuenta }, { "banco", una.banco } });
        json["asiento"] = std::move(asiento);
        return json;
    }

}

int mostrar(const OpcionesComunes& comunes, const OpcionesCargo& opciones)
{
    Sesion sesion(comunes, { .solo_lectura = true });
    const auto expediente = lee(sesion, { opciones.ejercicio, opciones.almacen, opciones.codigo });
    if (opciones.formato == "json")
        std::cout << json_de(expediente).dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    else
        como_texto(expediente, *sesion.empresa);
    return hecho;
}

} // namespace atipicos::app
