#pragma once

#include "engines/sql/Esqueleto.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::sql {

/// What becomes of a literal when its statement is taken apart into shape and values.
enum class Trato : std::uint8_t {
    queda, ///< it stays in the text
    viaja, ///< it is a value
    /// A value, unless it is 0, 1 or -1: SQLite weighs a column that is compared with one of them otherwise
    /// when it chooses how to look for the rows, and so finds them in another order.
    viaja_si_no_es_bit,
};

[[nodiscard]] bool viaja(Trato trato, const Literal& literal) noexcept;

/// A statement as the database wants it, without the values that come apart from it.
struct Forma {
    struct Valor {
        std::size_t literal; ///< which of those of the statement
        bool es_fecha; ///< it stands where a date is wanted
    };

    std::string texto; ///< with a mark for each value: `?`, or `$1`, `$2` … where they have types
    std::vector<Valor> valores; ///< in the order of the marks
};

/// The number that a literal says: a whole one, and a decimal one that has a single double.
[[nodiscard]] std::int64_t entero_de(const Literal& literal) noexcept;
[[nodiscard]] double real_de(const Literal& literal) noexcept;

/// What a literal says: a number with its sign, a text without its quotes, a date as the database keeps it.
/// `sitio` holds what stands nowhere else. Nothing when a date is wanted and it is none.
[[nodiscard]] std::optional<std::string_view> contenido_de(
    const Literal& literal, bool es_fecha, std::string& sitio);

} // namespace atipicos::sql
