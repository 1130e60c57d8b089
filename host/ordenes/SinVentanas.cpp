#include "host/graficos/DibujaResumen.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/ventanas/VentanaPrincipal.hpp"
#include "runtime/Error.hpp"

#include <iostream>

namespace atipicos::app {

int ventana_principal(const OpcionesVentana& /*opciones*/)
{
    std::cerr
        << "atipicos: Falta la orden; este programa se ha compilado sin ventanas.\nVea: atipicos --help\n";
    return mal_usado;
}

int imprimir(const OpcionesComunes& /*comunes*/, const OpcionesImprimir& /*opciones*/)
{
    throw Error(no_hecho, "atipicos", "Este programa se ha compilado sin ventanas, y sin ellas no imprime.");
}

std::string dibuja_resumen(
    const ResumenCargos& /*resumen*/, const ResumenCargos& /*meses*/, const std::string& formato)
{
    rehusa("Este programa se ha compilado sin ventanas, y sin ellas no dibuja (" + formato
        + "). Los números los da con --formato tabla, csv, json o xlsx.");
}

} // namespace atipicos::app
