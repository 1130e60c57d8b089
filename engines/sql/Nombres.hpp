#pragma once

#include "engines/sql/Catalogo.hpp"
#include "engines/sql/Vista.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Where a statement names tables, and what they are called in the database.
namespace atipicos::sql {

struct TablaNombrada {
    enum class Uso : std::uint8_t {
        leida, ///< behind FROM or JOIN
        cambiada, ///< behind UPDATE
        llenada, ///< behind INTO
        definida, ///< in CREATE, DROP or ALTER, or behind REFERENCES
        indice, ///< not a table: the name of an index or trigger, which stands among them
    };

    std::size_t primero; ///< position of the first part of its name
    std::size_t ultimo; ///< position of the last one
    std::size_t alias; ///< position of its alias; `ultimo` when it has none
    Uso uso;
};

/// The tables in the order in which they are named. Not among them: functions, and what a WITH calls into
/// being.
[[nodiscard]] std::vector<TablaNombrada> tablas_nombradas(const Vista& vista);

/// What stands before the table's name in the database: the prefix of the base that it names, the own one of
/// a plain name, or nothing.
[[nodiscard]] std::string_view prefijo_de(
    const TablaNombrada& tabla, const Vista& vista, const Catalogo& catalogo);

} // namespace atipicos::sql
