// The claims file: its rows, and what is made of them.
#include "host/app/FicheroReclamaciones.hpp"
#include "host/app/LectorCsv.hpp"
#include "tests/fuzz/Entrada.hpp"

#include <string>

namespace {

using namespace atipicos;

void exige_sin_comillas(const std::string& texto)
{
    fuzz::exige(texto.find('\'') == std::string::npos, "no quote comes into a statement");
}

void comprueba(const app::Reclamacion& una)
{
    if (!una.valida)
        return;
    fuzz::exige(!una.lineas.empty(), "a valid charge has lines");
    exige_sin_comillas(una.observaciones);
    for (const auto& linea : una.lineas) {
        exige_sin_comillas(linea.descripcion);
        exige_sin_comillas(linea.observaciones);
        fuzz::exige(linea.fila > 1, "the headings are row 1");
    }
}

}

int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t tamano)
{
    const auto entrada = fuzz::texto(datos, tamano);
    try {
        for (const auto& fila : app::lee_csv(entrada))
            fuzz::exige(fila.numero > 0, "rows are counted from 1");
    } catch (const Error&) {
    }
    try {
        for (const auto& una : app::lee_reclamaciones(entrada).todas)
            comprueba(una);
    } catch (const Error&) { // headings that cannot be used
    }
    return 0;
}
