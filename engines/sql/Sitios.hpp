#pragma once

#include "engines/sql/Esqueleto.hpp"
#include "engines/sql/Vista.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace atipicos::sql {

/// Where a literal stands in its statement.
struct Sitio {
    enum class Papel : std::uint8_t {
        otro, ///< anywhere else: part of an expression, an argument, a position in ORDER BY …
        asignado, ///< a value of its own in the VALUES of an INSERT, or in SET
        igualado, ///< compared alone with a column alone, by = <> or IN, in a condition
        en_rango, ///< the same by < <= > >= or BETWEEN
    };

    std::size_t token = 0; ///< its position; that of the number when a sign belongs to it
    Papel papel = Papel::otro;
};

/// The places of the literals of a statement, in order. In all roles but `otro` a value that comes apart from
/// the statement means what the literal means. Nothing when statement and literals do not agree on what is
/// one.
[[nodiscard]] std::optional<std::vector<Sitio>> sitios_de(
    const Vista& vista, std::span<const Literal> literales);

} // namespace atipicos::sql
