#pragma once

#include "engines/sql/Forma.hpp"
#include "engines/sql/Tokens.hpp"

#include <span>
#include <string>

namespace atipicos::pruebas {

/// A shape with the values back in the places of its marks.
inline std::string en_literal(const sql::Forma& forma, std::span<const sql::Literal> literales)
{
    std::string texto;
    std::size_t puestos = 0;
    for (const auto& token : sql::separa(forma.texto)) {
        if (token.texto != "?" && token.texto != "$" + std::to_string(puestos + 1)) {
            texto += token.texto;
            continue;
        }
        const auto& valor = forma.valores.at(puestos++);
        const auto& literal = literales[valor.literal];
        std::string sitio;
        texto += valor.es_fecha
            ? "'" + std::string(sql::contenido_de(literal, true, sitio).value_or("no date")) + "'"
            : std::string(literal.texto);
    }
    return puestos == forma.valores.size() ? texto : "marks are missing in: " + forma.texto;
}

} // namespace atipicos::pruebas
