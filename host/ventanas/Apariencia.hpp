#pragma once

#include <cstdint>

namespace atipicos::app {

/// Light or dark, or as the system has it.
enum class Tema : std::uint8_t { sistema, claro, oscuro };

void habla_castellano(); ///< numbers, days and Qt's own texts, once the application is there

void aplica_tema(Tema tema); ///< to the whole program, at once

[[nodiscard]] Tema tema_guardado(); ///< of this person, on this machine
void guarda_tema(Tema tema);

} // namespace atipicos::app
