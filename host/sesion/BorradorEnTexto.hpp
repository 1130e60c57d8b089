#pragma once

#include "platform/borrador/Borradores.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <string>
#include <string_view>

namespace atipicos::app {

/// Whose charges: the company and user of one place of databases.
struct DuenoDeBorradores {
    std::string lugar; ///< the databases, in one spelling
    std::int16_t empresa = 0;
    std::int32_t usuario = 0;

    friend bool operator==(const DuenoDeBorradores&, const DuenoDeBorradores&) = default;
};

struct BorradorLeido {
    Borrador borrador;
    Date momento; ///< when it was kept
};

/// A draft as it stands in its file: JSON that a person can read, with the number of its format.
[[nodiscard]] std::string borrador_en_texto(
    const Borrador& borrador, Date momento, const DuenoDeBorradores& dueno);

/// Raises an error that says in Spanish why the text is no draft of that owner: damaged, of a format that
/// this program does not know, or somebody else's.
[[nodiscard]] BorradorLeido lee_borrador(std::string_view texto, const DuenoDeBorradores& dueno);

} // namespace atipicos::app
