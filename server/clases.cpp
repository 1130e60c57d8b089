#include "charges/clsAtipico.hpp"
#include "runtime/Variant.hpp"
#include "server/Contexto.hpp"
#include "server/Declara.hpp"

namespace atipicos::server {

namespace {

    constexpr bool opcional = true;
    constexpr bool por_referencia = true;

    Valor linea_de(void* lineas, std::int32_t posicion)
    {
        const auto& coleccion = *static_cast<const clsAtipico_Lineas*>(lineas);
        if (posicion > coleccion.Count())
            return {};
        return detalle::valor(coleccion.Item(CInt(posicion))); // error 6 beyond the last position there is
    }

    Clase declara_lineas()
    {
        using C = clsAtipico_Lineas;
        Clase clase{ publica("clsAtipico_Lineas"), {}, nuevo<C> };
        clase.miembros = {
            metodo<[](const C& c) { return c.Count(); }>("Count"),
            metodo<[](C& c, std::int16_t i) { c.Remove(i); }>("Remove", { { "intIndex" } }),
            metodo<[](C& c, std::int32_t articulo, const std::string& descripcion, Currency unidades,
                       Currency precio, const std::string& observaciones, std::int32_t id,
                       std::int16_t posicion) {
                return c.Add(articulo, descripcion, unidades, precio, observaciones, id, posicion);
            }>("Add",
                { { "lngCod_Articulo", opcional, por_referencia },
                    { "strDescripcion", opcional, por_referencia },
                    { "curUnidades", opcional, por_referencia }, { "curPrecio", opcional, por_referencia },
                    { "strObservaciones", opcional, por_referencia }, { "lngId", opcional, por_referencia },
                    { "intPosicion", opcional, por_referencia } }),
            metodo<[](C& c, const std::shared_ptr<clsAtipico_Linea>& linea) { c.AddByClass(*linea); }>(
                "AddByClass", { { "clsLinea" } }),
            metodo<[](C& c) { c.Clear(); }>("Clear"),
            metodo<[](const C& c, std::int16_t i) { return c.Item(i); }>("Item", { { "intIndex" } }),
            metodo<[](const C& c) { return c.Clone(); }>("Clone"),
        };
        clase.por_defecto = 6; // Item
        clase.elemento = linea_de;
        return clase;
    }

    Clase declara_linea()
    {
        using C = clsAtipico_Linea;
        return { publica("clsAtipico_Linea"),
            {
                campo<&C::NumLinea>("NumLinea"),
                campo<&C::Cod_Articulo>("Cod_Articulo"),
                campo<&C::Descripcion>("Descripcion"),
                campo<&C::Unidades>("Unidades"),
                campo<&C::Precio>("Precio"),
                campo<&C::Observaciones>("Observaciones"),
                campo<&C::Id>("Id"),
                metodo<[](C& c, const std::shared_ptr<C>& origen) { c.Copiar(*origen); }>(
                    "Copiar", { { "clsAtipico_Lin_Org" } }),
            },
            nuevo<C> };
    }

    Clase declara_cargo()
    {
        using C = clsAtipico;
        return { publica("clsAtipico"),
            {
                campo<&C::Cod_Ejercicio>("Cod_Ejercicio"),
                campo<&C::Cod_Almacen>("Cod_Almacen"),
                campo<&C::Codigo>("Codigo"),
                campo<&C::Proveedor>("Proveedor"),
                campo<&C::Fecha>("Fecha"),
                campo<&C::Importe>("Importe"),
                campo<&C::Asiento>("Asiento"),
                campo<&C::EmpContable>("EmpContable"),
                campo<&C::EjContable>("EjContable"),
                campo<&C::Hora>("Hora"),
                campo<&C::Observ>("Observ"),
                campo<&C::Cod_Compra>("Cod_Compra"),
                campo<&C::Documento>("Documento"),
                campo<&C::AplicarImpuesto>("AplicarImpuesto"),
                campo<&C::Impuesto>("Impuesto"),
                campo<&C::Tipo>("Tipo"),
                campo<&C::Lineas>("Lineas"),
                solo_asigna<[](C&, const Despacho& d) { contexto::pone_ConexionOrvalin(d); }>(
                    "ConexionOrvalin"),
                solo_asigna<[](C&, const Despacho& d) { contexto::pone_EmpresaOrvalin(d); }>(
                    "EmpresaOrvalin"),
                metodo<[](const C& c, std::int16_t ejercicio, std::int16_t almacen,
                           const std::string& codigo) { return c.Existe(ejercicio, almacen, codigo); }>(
                    "Existe", { { "intEjercicio" }, { "intAlmacen" }, { "strCodigo" } }),
                metodo<[](C& c) { return c.Insertar(); }>("Insertar"),
                metodo<[](C& c) { return c.Modificar_Atipico(); }>("Modificar_Atipico"),
                metodo<[](C& c) { c.Eliminar_Atipico(); }>("Eliminar_Atipico"),
                metodo<[](C& c, bool toma, std::int16_t ejercicio) {
                    return c.Devuelve_Codigo(toma, ejercicio);
                }>("Devuelve_Codigo", { { "bolMod" }, { "intEjercicio" } }),
            },
            nuevo<C> };
    }

}

template <> const Clase& clase_de<clsAtipico_Lineas>()
{
    static const Clase clase = declara_lineas();
    return clase;
}

template <> const Clase& clase_de<clsAtipico_Linea>()
{
    static const Clase clase = declara_linea();
    return clase;
}

template <> const Clase& clase_de<clsAtipico>()
{
    static const Clase clase = declara_cargo();
    return clase;
}

const ClasePublica& publica(std::string_view nombre)
{
    std::size_t i = 0;
    while (clases_publicas.at(i).nombre != nombre)
        ++i;
    return clases_publicas.at(i);
}

const std::vector<const Clase*>& clases()
{
    static const auto todas = [] {
        const auto sin_ventanas
            = { &clase_de<clsAtipico_Lineas>(), &clase_de<clsAtipico_Linea>(), &clase_de<clsAtipico>() };
        std::vector<const Clase*> lista;
        for (const auto& una : clases_publicas) {
            for (const auto* clase : sin_ventanas)
                if (clase->publica.nombre == una.nombre)
                    lista.push_back(clase);
            if (const auto* clase = clase_con_ventanas(una.nombre))
                lista.push_back(clase);
        }
        return lista;
    }();
    return todas;
}

} // namespace atipicos::server
