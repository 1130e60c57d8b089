// The claims file: its rows, and what is made of them.
#include "tests/app/ReclamacionesLeidas.hpp"
#include "tests/fuzz/Entrada.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace atipicos;

/// The rows, and at the end what was wrong, read in pieces of that size.
std::vector<std::string> filas(std::string_view entrada, std::size_t tamano)
{
    std::vector<std::string> todas;
    try {
        app::LectorCsv lector(pruebas::en_trozos(entrada, tamano));
        for (app::FilaCsv fila; lector.lee(fila);) {
            fuzz::exige(fila.numero > 0, "rows are counted from 1");
            todas.push_back(std::to_string(fila.numero));
            todas.insert(todas.end(), fila.campos.begin(), fila.campos.end());
        }
    } catch (const Error& error) {
        todas.push_back(error.descripcion());
    }
    return todas;
}

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
    fuzz::exige(filas(entrada, entrada.size()) == filas(entrada, 1 + entrada.size() % 7),
        "pieces make no difference");
    try {
        for (const auto& una : pruebas::lee_reclamaciones(entrada).todas)
            comprueba(una);
    } catch (const Error&) { // headings that cannot be used
    }
    return 0;
}
