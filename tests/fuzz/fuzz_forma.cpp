// Statements taken apart into shape and values, for databases that are told types and for those that are not.
#include "engines/sql/Formas.hpp"
#include "tests/fuzz/Entrada.hpp"
#include "tests/support/EnLiteral.hpp"

#include <algorithm>
#include <optional>
#include <string>

namespace {

using namespace atipicos;

const sql::Catalogo& catalogo()
{
    static const sql::Catalogo uno = [] {
        sql::Catalogo nuevo;
        nuevo.agrega_fecha("Cargos", "Fecha", 1);
        nuevo.agrega_fecha("Cargos", "Hora", 2);
        nuevo.agrega_base("Bexmor", "Bexmor_");
        return nuevo;
    }();
    return uno;
}

std::optional<std::string> en_texto(const std::string& entrada)
{
    try {
        return sql::reescribe(entrada, catalogo());
    } catch (const Error&) { // a refusal is an answer
        return std::nullopt;
    }
}

void prueba(sql::Formas<int>& formas, const std::string& entrada)
{
    const auto esperado = en_texto(entrada);
    try {
        const auto* una = formas.busca(entrada, catalogo(), Donde{});
        if (una == nullptr)
            return;
        const auto literales = formas.literales();
        for (const auto& valor : una->forma.valores) {
            const auto& literal = literales[valor.literal];
            std::string sitio;
            if (!sql::contenido_de(literal, valor.es_fecha, sitio)) {
                fuzz::exige(!esperado, "a date that is none is refused in the text too");
                return;
            }
            if (literal.clase == sql::Literal::Clase::entero
                || literal.clase == sql::Literal::Clase::entero_largo)
                fuzz::exige(
                    sql::entero_de(literal) == std::stoll(std::string(literal.texto)), "a whole number");
        }
        fuzz::exige(pruebas::en_literal(una->forma, literales) == esperado,
            "the values put back into the shape are the statement");
    } catch (const Error&) {
        fuzz::exige(!esperado, "only what is refused as a text is refused");
    }
}

}

/// The statements of the input, with a null between them, one after the other: a shape may come from one and
/// serve the next.
int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t tamano)
{
    auto resto = fuzz::texto(datos, tamano);
    sql::Formas<int> con_tipo(sql::Numeros::con_tipo);
    sql::Formas<int> segun_valor(sql::Numeros::segun_valor);
    while (!resto.empty()) {
        const auto fin = std::min(resto.find('\0'), resto.size());
        const std::string una(resto.substr(0, fin));
        prueba(con_tipo, una);
        prueba(segun_valor, una);
        resto.remove_prefix(std::min(fin + 1, resto.size()));
    }
    return 0;
}
