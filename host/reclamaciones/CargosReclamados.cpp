#include "host/reclamaciones/CargosReclamados.hpp"

#include "charges/clsAtipico.hpp"
#include "charges/Impuesto.hpp"
#include "editor/GuardarAtipico.hpp"

namespace atipicos::app {

namespace {

    /// What there is under the code, of those known or else of the catalogue; null when there is nothing.
    template <class Codigo, class Ficha, class Pregunta>
    const Ficha* conocida(std::map<Codigo, Ficha>& conocidas, Codigo codigo, Pregunta pregunta)
    {
        const auto lugar = conocidas.find(codigo);
        if (lugar != conocidas.end())
            return &lugar->second;
        auto hallada = pregunta(codigo);
        return hallada ? &conocidas.emplace(codigo, std::move(*hallada)).first->second : nullptr;
    }

}

void CargosReclamados::prepara(Reclamacion& reclamacion, clsAtipico& cargo, CargoTecleado& tecleado)
{
    if (conocida(m_almacenes, reclamacion.almacen, [&](auto codigo) { return m_catalogos.almacen(codigo); })
        == nullptr)
        repara(reclamacion, reclamacion.fila, "almacen",
            "no existe el almacén " + std::to_string(reclamacion.almacen) + ".");
    const auto* proveedor = conocida(
        m_proveedores, reclamacion.proveedor, [&](auto codigo) { return m_catalogos.proveedor(codigo); });
    if (proveedor == nullptr)
        repara(reclamacion, reclamacion.fila, "proveedor",
            "no existe el proveedor " + std::to_string(reclamacion.proveedor) + ".");
    tecleado = { "", reclamacion.almacen, reclamacion.proveedor, proveedor == nullptr ? "" : *proveedor,
        reclamacion.fecha, reclamacion.observaciones, reclamacion.franquiciado, {}, {} };
    for (const auto& linea : reclamacion.lineas)
        agrega_linea(reclamacion, linea, cargo, tecleado);
}

void CargosReclamados::agrega_linea(
    Reclamacion& reclamacion, const LineaReclamada& linea, clsAtipico& cargo, CargoTecleado& tecleado)
{
    orvalin::Articulo articulo;
    if (linea.articulo != 0) {
        if (const auto* hallado = conocida(
                m_articulos, linea.articulo, [&](auto codigo) { return m_catalogos.articulo(codigo); }))
            articulo = *hallado;
        else
            repara(reclamacion, linea.fila, "articulo",
                "no existe el artículo " + std::to_string(linea.articulo) + ".");
    }
    cargo.Lineas->Add(linea.articulo, linea.descripcion.empty() ? articulo.Nombre : linea.descripcion,
        linea.unidades, linea.costo, linea.observaciones);
    try {
        const Currency importe = importe_linea(linea.unidades, linea.costo);
        tecleado.Cargos.push_back({ importe, articulo.CtaIngresosAtipicos });
        tecleado.Total += importe;
    } catch (const Error&) {
        repara(reclamacion, linea.fila, "costo", "unidades por costo no cabe en un importe.");
    }
}

} // namespace atipicos::app
