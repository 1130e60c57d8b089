#include "host/comprobacion/HistorialEnPalabras.hpp"

#include <array>
#include <utility>

namespace atipicos::app {

namespace {

    using Que = Suceso::Que;

    /// The columns of a header and of a line, in their order, and what people call them. Who and when is told
    /// elsewhere, or again with each change.
    constexpr std::array<std::pair<const char*, const char*>, 16> nombres{ { { "Proveedor", "Proveedor" },
        { "Fecha", "Fecha" }, { "Importe", "Importe" }, { "Impuesto", "Tipo de impuesto" },
        { "Impuesto_Importe", "Impuesto" }, { "Asiento", "Asiento" }, { "EmpContable", "Empresa contable" },
        { "EjContable", "Ejercicio contable" }, { "Cod_Compra", "Compra" }, { "Documento", "Documento" },
        { "Tipo", "Tipo" }, { "Cod_Articulo", "Artículo" }, { "Descripcion", "Descripción" },
        { "Unidades", "Unidades" }, { "Precio", "Precio" }, { "Observ", "Observaciones" } } };

    std::string valor(const std::optional<FilaLeida>& fila, const char* columna)
    {
        if (!fila)
            return {};
        const auto lugar = fila->find(columna);
        return lugar == fila->end() ? std::string() : lugar->second;
    }

    std::string o_vacio(const std::string& texto) { return texto.empty() ? "vacío" : texto; }

}

std::string que_fue(const Suceso& suceso)
{
    switch (suceso.que) {
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

std::string de_que_fue(const Suceso& suceso)
{
    if (suceso.que == Que::anulacion)
        return "asiento";
    return suceso.linea == 0 ? "cabecera" : "línea " + std::to_string(suceso.linea);
}

std::string quien_fue(const Suceso& suceso) { return suceso.login.empty() ? "otro programa" : suceso.login; }

std::vector<DatoCambiado> lo_cambiado(const Suceso& suceso)
{
    std::vector<DatoCambiado> datos;
    if (suceso.que == Que::cambio && !suceso.despues)
        return datos; // what it became nobody has written down
    for (const auto& [columna, nombre] : nombres) {
        DatoCambiado dato{ nombre, valor(suceso.antes, columna), valor(suceso.despues, columna) };
        if (suceso.que == Que::alta)
            dato.antes.clear();
        const auto dice_algo = [](const std::string& texto) { return !texto.empty() && texto != "0"; };
        if (suceso.que == Que::cambio ? dato.antes != dato.despues
                                      : dice_algo(dato.antes) || dice_algo(dato.despues))
            datos.push_back(std::move(dato));
    }
    return datos;
}

std::string en_una_frase(const Suceso& suceso)
{
    if (suceso.que == Que::anulacion)
        return suceso.asiento;
    std::string texto;
    for (const auto& dato : lo_cambiado(suceso)) {
        texto += (texto.empty() ? "" : "; ") + dato.nombre + " ";
        texto += suceso.que == Que::cambio ? o_vacio(dato.antes) + " → " + o_vacio(dato.despues)
            : suceso.que == Que::alta      ? dato.despues
                                           : dato.antes;
    }
    return texto;
}

} // namespace atipicos::app
