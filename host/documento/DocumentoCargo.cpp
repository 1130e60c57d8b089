#include "host/documento/DocumentoCargo.hpp"

#include "host/documento/DatosCargo.hpp"
#include "runtime/Formato.hpp"

namespace atipicos::orvalin {

namespace {

    /// "38613 Vilaflor", without a blank too many when one of them is missing.
    std::string poblacion(const std::string& codigo_postal, const std::string& nombre)
    {
        return codigo_postal + (codigo_postal.empty() || nombre.empty() ? "" : " ") + nombre;
    }

    /// How many decimals, from `minimo` on, show the whole of it.
    int decimales_de(Currency valor, int minimo)
    {
        while (minimo < 4 && Redondear(valor, minimo) != valor)
            ++minimo;
        return minimo;
    }

    /// The same for a column, so that its decimal commas stand one below the other.
    int decimales_de(const std::vector<LineaImpresa>& lineas, Currency LineaImpresa::*columna, int minimo)
    {
        for (const auto& linea : lineas)
            minimo = decimales_de(linea.*columna, minimo);
        return minimo;
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
        { "emisor.poblacion", poblacion(emisor.CodigoPostal, emisor.Poblacion) },
        { "emisor.provincia", emisor.Provincia }, { "codigo", cargo.Codigo },
        { "fecha", cargo.Fecha.texto() }, { "almacen.codigo", std::to_string(almacen.Codigo) },
        { "almacen.nombre", almacen.Nombre }, { "almacen.domicilio", almacen.Domicilio },
        { "almacen.poblacion", poblacion(almacen.CodigoPostal, almacen.Poblacion) },
        { "proveedor.codigo", std::to_string(proveedor.Codigo) }, { "proveedor.nombre", proveedor.Nombre },
        { "proveedor.nif", proveedor.NIF }, { "proveedor.domicilio", proveedor.Domicilio },
        { "proveedor.poblacion", poblacion(proveedor.CodigoPostal, proveedor.Poblacion) },
        { "observaciones", cargo.Observ }, { "base", importe(cargo.Importe) },
        { "tipo", texto_pantalla(cargo.Impuesto, decimales_de(cargo.Impuesto, 0)) },
        { "cuota", importe(cargo.Impuesto_Importe) },
        { "total", importe(cargo.Importe + cargo.Impuesto_Importe) },
        { "asiento", numero_o_nada(cargo.Asiento) },
        { "previsiones", numero_o_nada(std::ssize(cargo.previsiones)) } };
    const auto decimales_unidades = decimales_de(cargo.lineas, &LineaImpresa::Unidades, 0);
    const auto decimales_precio = decimales_de(cargo.lineas, &LineaImpresa::Precio, cargo.DecimalesPrecio);
    auto& filas = datos.listas["lineas"];
    for (const auto& linea : cargo.lineas)
        filas.push_back({ { "articulo", numero_o_nada(linea.Articulo) }, { "descripcion", linea.Descripcion },
            { "unidades", texto_pantalla(linea.Unidades, decimales_unidades) },
            { "precio", texto_pantalla(linea.Precio, decimales_precio) },
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
    auto documento = std::make_shared<Documento>(
        "Reclamación " + cargo.Codigo, datos_documento(cargo, almacen, proveedor), plantilla, medidor, donde);
    const auto nombre
        = cargo.Codigo + "-" + std::to_string(cargo.Ejercicio) + "-" + std::to_string(almacen.Codigo);
    documento->set_NombreDeFichero(nombre);
    if (!cargo.emisor.Nombre.empty())
        documento->set_Asunto(documento->titulo() + " de " + cargo.emisor.Nombre);
    documento->Adjunta({ nombre + ".json", "application/json", datos_en_json(cargo, almacen, proveedor) });
    return documento;
}

} // namespace atipicos::orvalin
