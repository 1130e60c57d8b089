#include "host/app/Ordenes.hpp"
#include "runtime/Error.hpp"

namespace atipicos::app {

int imprimir(const OpcionesComunes&, const OpcionesImprimir&)
{
    throw Error(no_hecho, "atipicos", "Este programa se ha compilado sin ventanas, y sin ellas no imprime.");
}

} // namespace atipicos::app
