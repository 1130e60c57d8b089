#include "host/orvalin/DocumentoCargo.hpp"

#include "runtime/Formato.hpp"

namespace atipicos::orvalin {

namespace {

    /// "38613 Vilaflor", without a blank too many when one of them is missing.
    std::string poblacion(const std::string& codigo_postal, const std::string& nombre)
    {
        return codigo_postal + (codigo_postal.empty() || nombre.empty() ? "" : " ") + nombre;
    }

    /// As few decimals as say it: "12", "12,5", "12,485".
    std::string cantidad(Currency valor)
    {
        int decimales = 4;
        while (decimales > 0 && Redondear(valor, decimales - 1) == valor)
            --decimales;
        return texto_pantalla(valor, decimales);
    }

    std::string precio(Currency valor, int decimales)
    {
        while (decimales < 4 && Redondear(valor, decimales) != valor)
            ++decimales; // what is multiplied is what is shown
        return texto_pantalla(valor, decimales);
    }

    std::string numero_o_nada(std::int64_t numero) { return numero > 0 ? std::to_string(numero) : ""; }

}

DatosDocumento datos_documento(
    const CargoImpreso& cargo, const qvoremp::Almacen& almacen, const qvoremp::Proveedor& proveedor)
{
    const auto importe = [&](Currency valor) { return texto_pantalla(valor, cargo.DecimalesImporte); };
    const auto& emisor = cargo.emisor;
    DatosDocumento datos;
    datos.campos = { { "emisor.nombre", emisor.Nombre }, { "emisor.nif", emisor.NIF },
        { "emisor.domicilio", emisor.Domicilio },
        { "emisor.poblacion", poblacion(emisor.CodigoPostal, emisor.Poblacion) }, { "codigo", cargo.Codigo },
        { "fecha", cargo.Fecha.texto() }, { "almacen.codigo", std::to_string(almacen.Codigo) },
        { "almacen.nombre", almacen.Nombre }, { "almacen.domicilio", almacen.Domicilio },
        { "almacen.poblacion", poblacion(almacen.CodigoPostal, almacen.Poblacion) },
        { "proveedor.codigo", std::to_string(proveedor.Codigo) }, { "proveedor.nombre", proveedor.Nombre },
        { "proveedor.nif", proveedor.NIF }, { "proveedor.domicilio", proveedor.Domicilio },
        { "proveedor.poblacion", poblacion(proveedor.CodigoPostal, proveedor.Poblacion) },
        { "observaciones", cargo.Observ }, { "base", importe(cargo.Importe) },
        { "tipo", cantidad(cargo.Impuesto) }, { "cuota", importe(cargo.Impuesto_Importe) },
        { "total", importe(cargo.Importe + cargo.Impuesto_Importe) },
        { "asiento", numero_o_nada(cargo.Asiento) },
        { "previsiones", numero_o_nada(std::ssize(cargo.previsiones)) } };
    auto& filas = datos.listas["lineas"];
    for (const auto& linea : cargo.lineas)
        filas.push_back({ { "articulo", numero_o_nada(linea.Articulo) }, { "descripcion", linea.Descripcion },
            { "unidades", cantidad(linea.Unidades) },
            { "precio", precio(linea.Precio, cargo.DecimalesPrecio) },
            { "importe", importe(Redondear(linea.Unidades * linea.Precio, cargo.DecimalesImporte)) },
            { "observaciones", linea.Observ } });
    auto& vencimientos = datos.listas["previsiones"];
    for (const auto& prevision : cargo.previsiones)
        vencimientos.push_back({ { "numero", std::to_string(prevision.Numero) },
            { "vencimiento", prevision.Vencimiento.texto() }, { "documento", prevision.Documento },
            { "importe", importe(prevision.Importe) } });
    return datos;
}

std::shared_ptr<const Report> documento_cargo(const CargoImpreso& cargo, const qvoremp::Almacen& almacen,
    const qvoremp::Proveedor& proveedor, const Plantilla& plantilla, const Medidor& medidor, Donde donde)
{
    return std::make_shared<Documento>(
        "Reclamación " + cargo.Codigo, datos_documento(cargo, almacen, proveedor), plantilla, medidor, donde);
}

} // namespace atipicos::orvalin
