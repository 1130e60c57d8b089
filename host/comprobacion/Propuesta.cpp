#include "host/comprobacion/Propuesta.hpp"

#include "host/bases/Palabra.hpp"

namespace atipicos::app {

namespace {

    std::string paso(const CargoSinAsiento& uno, const OpcionesComunes& comunes)
    {
        const auto& cargo = uno.cargo;
        std::string texto_paso = "El " + texto(cargo)
            + (uno.asiento.numero > 0 ? " nombra el " + texto(uno.asiento) + ", que no es suyo o no existe."
                                      : " no tiene asiento.");
        if (!uno.contabilizable)
            return texto_paso
                + "\n   Sus líneas o su impuesto no están completos: ábralo en el visor con «Modificar», "
                  "complételo\n   y acéptelo; recibirá un asiento nuevo.\n";
        if (!uno.admisible)
            return texto_paso + "\n   No se puede contabilizar: su empresa contable, que es la "
                + std::to_string(uno.asiento.empresa)
                + ", no existe, o su importe no\n   cabe en Contabilidad. Corrija el almacén o el cargo, "
                  "ábralo "
                  "en el visor con «Modificar» y acéptelo.\n";
        if (!uno.impedimento.empty())
            texto_paso += "\n   Antes: " + uno.impedimento;
        return texto_paso
            + "\n   Contabilícelo; recibirá un asiento nuevo, con las previsiones que resulten "
              "de las condiciones\n   del proveedor. Si era de un franquiciado, añada "
              "--franquiciado.\n       atipicos contabilizar "
            + bases::como_palabra(cargo.codigo) + " --ejercicio " + std::to_string(cargo.ejercicio)
            + " --almacen " + std::to_string(cargo.almacen) + " --empresa " + std::to_string(cargo.empresa)
            + " " + comunes.lugar().opcion() + "\n";
    }

}

std::string propone(const Verificacion& verificacion, const OpcionesComunes& comunes)
{
    std::string propuesta;
    int numero = 0;
    for (const auto& uno : verificacion.sin_asiento)
        propuesta += std::to_string(++numero) + ". " + paso(uno, comunes);
    if (const auto otras = verificacion.diferencias.size() - verificacion.sin_asiento.size(); otras > 0)
        propuesta += "Diferencias para las que no hay propuesta: " + std::to_string(otras) + ".\n";
    if (!verificacion.sin_cargo.empty())
        propuesta += "Asientos sin cargo: " + std::to_string(verificacion.sin_cargo.size())
            + ". Véalos, y anule los que sobran, con: atipicos regularizar " + comunes.lugar().opcion()
            + "\n";
    if (propuesta.empty())
        return "Nada que proponer.\n";
    return "Propuesta (no se ha ejecutado nada):\n" + propuesta
        + "Después, compruebe el resultado con: atipicos verificar " + comunes.lugar().opcion() + "\n";
}

} // namespace atipicos::app
