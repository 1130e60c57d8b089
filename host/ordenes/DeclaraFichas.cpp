#include "host/ordenes/DeclaraFichas.hpp"

#include "host/ordenes/Argumentos.hpp"
#include "host/ordenes/OrdenesDeFichas.hpp"

#include <memory>

namespace atipicos::app {

namespace {

    /// A number of the record, which may be left out.
    void agrega_dato(
        CLI::App& orden, const char* nombre, std::optional<std::int16_t>& destino, const char* ayuda)
    {
        solo_numero(*orden.add_option(nombre, destino, ayuda), std::numeric_limits<std::int16_t>::max());
    }

    void exige_codigo(bool eliminar, std::int32_t codigo)
    {
        if (eliminar && codigo == 0)
            throw MalUsada("Falta CODIGO.");
    }

}

std::function<int()> declara_proveedor(CLI::App& orden, const Entorno& entorno)
{
    agrega_comunes(orden, entorno.comunes);
    const auto opciones = std::make_shared<OpcionesProveedor>();
    agrega_numero(orden, "CODIGO", opciones->codigo, "Código del proveedor; sin él, todos, o uno nuevo");
    orden.add_option("--nombre", opciones->nombre, "Su nombre");
    orden.add_option("--nif", opciones->nif, "Su NIF");
    orden.add_option("--domicilio", opciones->domicilio, "Su domicilio");
    orden.add_option("--codigo-postal", opciones->codigo_postal, "Su código postal");
    orden.add_option("--poblacion", opciones->poblacion, "Su población");
    agrega_dato(orden, "--forma-pago", opciones->forma_pago, "Su forma de pago; 0, la de la empresa");
    agrega_dato(orden, "--dia-pago", opciones->dia_pago_1, "Día del mes en el que paga; 0, ninguno");
    agrega_dato(orden, "--otro-dia-pago", opciones->dia_pago_2, "Otro día del mes; 0, ninguno");
    orden.add_flag("--eliminar", opciones->eliminar, "Lo elimina, si ningún cargo lo nombra");
    orden.add_flag("--si", opciones->si, "Sin preguntar");
    return [&comunes = entorno.comunes, opciones] {
        exige_codigo(opciones->eliminar, opciones->codigo);
        return proveedor(comunes, *opciones);
    };
}

std::function<int()> declara_articulo(CLI::App& orden, const Entorno& entorno)
{
    agrega_comunes(orden, entorno.comunes);
    const auto opciones = std::make_shared<OpcionesArticulo>();
    agrega_numero(orden, "CODIGO", opciones->codigo, "Código del artículo; sin él, todos, o uno nuevo");
    orden.add_option("--nombre", opciones->nombre, "Su nombre");
    orden.add_option(
        "--cuenta", opciones->cuenta_ingresos, "Su cuenta de ingresos, en vez de la del almacén");
    orden.add_flag("--eliminar", opciones->eliminar, "Lo elimina, si ningún cargo lo nombra");
    orden.add_flag("--si", opciones->si, "Sin preguntar");
    return [&comunes = entorno.comunes, opciones] {
        exige_codigo(opciones->eliminar, opciones->codigo);
        return articulo(comunes, *opciones);
    };
}

} // namespace atipicos::app
