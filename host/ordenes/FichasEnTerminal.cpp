#include "host/fichas/Articulos.hpp"
#include "host/fichas/Proveedores.hpp"
#include "host/ordenes/OrdenesDeFichas.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Pregunta.hpp"
#include "host/terminal/Tabla.hpp"

#include <iostream>

namespace atipicos::app {

namespace {

    AmbitoDeFichas ambito_de(const Sesion& sesion)
    {
        return { sesion.bases, sesion.empresa->Codigo(Donde::aqui()), sesion.empresa->EmpresaProveedores() };
    }

    /// What is not given stays as it is.
    template <class T> void pon(T& destino, const std::optional<T>& dado)
    {
        if (dado)
            destino = *dado;
    }

    template <class Ficha> void lista(const std::vector<Ficha>& fichas, Tabla tabla, auto en_fila)
    {
        for (const auto& ficha : fichas)
            tabla.agrega(en_fila(ficha));
        tabla.escribe(std::cout);
    }

    void lista_proveedores(const Sesion& sesion, const std::vector<FichaDeProveedor>& todos)
    {
        const auto formas = formas_de_pago(*sesion.bases.bexmor);
        const auto forma = [&](std::int16_t codigo) {
            for (const auto& una : formas)
                if (una.codigo == codigo)
                    return std::to_string(codigo) + "  " + una.nombre;
            return codigo == 0 ? std::string() : std::to_string(codigo);
        };
        const auto dia = [](std::int16_t cual) { return cual == 0 ? std::string() : std::to_string(cual); };
        const auto derecha = Alineacion::derecha;
        lista(todos,
            Tabla({ { "Código", derecha }, { "Nombre" }, { "NIF" }, { "Domicilio" }, { "C. postal" },
                { "Población" }, { "Forma de pago" }, { "Día", derecha }, { "Día", derecha } }),
            [&](const FichaDeProveedor& f) {
                return std::vector<std::string>{ std::to_string(f.codigo), f.nombre, f.nif, f.domicilio,
                    f.codigo_postal, f.poblacion, forma(f.forma_pago), dia(f.dia_pago_1), dia(f.dia_pago_2) };
            });
    }

    void lista_articulos(const std::vector<FichaDeArticulo>& todos)
    {
        lista(todos, Tabla({ { "Código", Alineacion::derecha }, { "Nombre" }, { "Cuenta de ingresos" } }),
            [](const FichaDeArticulo& f) {
                return std::vector<std::string>{ std::to_string(f.codigo), f.nombre, f.cuenta_ingresos };
            });
    }

    int elimina(const auto& fichas, const std::string& cual, const auto& opciones)
    {
        if (!fichas.lee(opciones.codigo))
            rehusa("No existe " + cual + ".");
        if (!opciones.si && !pregunta("¿Eliminar " + cual + "?")) {
            std::cout << "No se ha eliminado nada.\n";
            return no_hecho;
        }
        fichas.elimina(opciones.codigo);
        std::cout << "Eliminado " << cual << ".\n";
        return hecho;
    }

    int cuenta_guardado(bool nuevo, const std::string& cual, const std::string& nombre)
    {
        std::cout << (nuevo ? "Añadido " : "Cambiado ") << cual << " (" << nombre << ").\n";
        return hecho;
    }

    [[noreturn]] void no_hay(const std::string& cual)
    {
        rehusa("No existe " + cual + ". Para añadirlo dé su nombre con --nombre.");
    }

}

int proveedor(const OpcionesComunes& comunes, const OpcionesProveedor& opciones)
{
    const Sesion sesion(comunes);
    const Proveedores proveedores(ambito_de(sesion));
    const bool cambia = opciones.nombre || opciones.nif || opciones.domicilio || opciones.codigo_postal
        || opciones.poblacion || opciones.forma_pago || opciones.dia_pago_1 || opciones.dia_pago_2;
    if (opciones.codigo == 0 && !cambia) {
        lista_proveedores(sesion, proveedores.todos());
        return hecho;
    }
    const auto codigo = opciones.codigo != 0 ? opciones.codigo : proveedores.libre();
    const auto cual = "el proveedor " + std::to_string(codigo);
    if (opciones.eliminar)
        return elimina(proveedores, cual, opciones);
    const auto antes = proveedores.lee(codigo);
    if (!antes && !opciones.nombre)
        no_hay(cual);
    if (!cambia) {
        lista_proveedores(sesion, { *antes });
        return hecho;
    }
    auto ficha = antes.value_or(FichaDeProveedor{ .codigo = codigo });
    pon(ficha.nombre, opciones.nombre);
    pon(ficha.nif, opciones.nif);
    pon(ficha.domicilio, opciones.domicilio);
    pon(ficha.codigo_postal, opciones.codigo_postal);
    pon(ficha.poblacion, opciones.poblacion);
    pon(ficha.forma_pago, opciones.forma_pago);
    pon(ficha.dia_pago_1, opciones.dia_pago_1);
    pon(ficha.dia_pago_2, opciones.dia_pago_2);
    return cuenta_guardado(proveedores.guarda(ficha), cual, ficha.nombre);
}

int articulo(const OpcionesComunes& comunes, const OpcionesArticulo& opciones)
{
    const Sesion sesion(comunes);
    const Articulos articulos(ambito_de(sesion));
    const bool cambia = opciones.nombre || opciones.cuenta_ingresos;
    if (opciones.codigo == 0 && !cambia) {
        lista_articulos(articulos.todos());
        return hecho;
    }
    const auto codigo = opciones.codigo != 0 ? opciones.codigo : articulos.libre();
    const auto cual = "el artículo " + std::to_string(codigo);
    if (opciones.eliminar)
        return elimina(articulos, cual, opciones);
    const auto antes = articulos.lee(codigo);
    if (!antes && !opciones.nombre)
        no_hay(cual);
    if (!cambia) {
        lista_articulos({ *antes });
        return hecho;
    }
    auto ficha = antes.value_or(FichaDeArticulo{ .codigo = codigo });
    pon(ficha.nombre, opciones.nombre);
    pon(ficha.cuenta_ingresos, opciones.cuenta_ingresos);
    return cuenta_guardado(articulos.guarda(ficha), cual, ficha.nombre);
}

} // namespace atipicos::app
