// The rewriting of statements, on a catalogue with a date column and a base to rename.
#include "engines/sql/Reescritura.hpp"
#include "engines/sql/Tokens.hpp"
#include "tests/fuzz/Entrada.hpp"

#include <algorithm>
#include <string>

namespace {

using namespace atipicos;

const sql::Catalogo& catalogo()
{
    static const sql::Catalogo uno = [] {
        sql::Catalogo nuevo;
        nuevo.agrega_fecha("Cargos", "Fecha", 1);
        nuevo.agrega_fecha("Cargos", "Hora", 2);
        nuevo.agrega_base("Bexmor", "dbo.");
        return nuevo;
    }();
    return uno;
}

std::ptrdiff_t textos(const std::vector<sql::Token>& tokens)
{
    return std::count_if(
        tokens.begin(), tokens.end(), [](const auto& uno) { return uno.clase == sql::Clase::texto; });
}

}

int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t tamano)
{
    const auto entrada = fuzz::texto(datos, tamano);
    const auto tokens = sql::separa(entrada);
    std::string juntos;
    for (const auto& uno : tokens)
        juntos += uno.texto;
    fuzz::exige(juntos == entrada, "the tokens put together are the statement");
    try {
        const auto reescrita = sql::reescribe(entrada, catalogo());
        fuzz::exige(textos(sql::separa(reescrita)) == textos(tokens), "no quoted text comes or goes");
    } catch (const Error&) { // a refusal is an answer
    }
    return 0;
}
