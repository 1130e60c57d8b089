#pragma once

#include "platform/report/Lienzo.hpp"

#include <cstddef>
#include <vector>

/// Which part of a document goes on which page. Numbers only: nothing here knows what is printed.
namespace atipicos::orvalin {

inline constexpr std::size_t sin_tabla = static_cast<std::size_t>(-1);

/// What is never cut: a line of text, a row of one line, a group of totals.
struct Tira {
    Medida alto = 0;
    Medida separacion = 0; ///< above it, unless it is the first of its page
    std::size_t tabla = sin_tabla; ///< the table whose column heads have to stand above it
};

/// Strips that stay on one page if a page can hold them; else they are cut wherever a page ends.
using Bloque = std::vector<Tira>;

struct Papel {
    Medida primera = 0; ///< height for strips on the first page
    Medida resto = 0; ///< and on the others
    std::vector<Medida> cabeceras; ///< height of the column heads of each table
};

/// Where a strip stands.
struct Colocada {
    std::size_t tira = 0; ///< its number, counted through all blocks
    Medida y = 0; ///< from the top of what the page has for strips
    std::size_t cabecera = sin_tabla; ///< the table whose column heads end where it begins

    friend bool operator==(const Colocada&, const Colocada&) = default;
};

using PaginaRepartida = std::vector<Colocada>;

/// All strips in order; at least one page. A strip higher than a page has one to itself and overflows.
[[nodiscard]] std::vector<PaginaRepartida> reparte(const std::vector<Bloque>& bloques, const Papel& papel);

} // namespace atipicos::orvalin
