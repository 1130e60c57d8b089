#pragma once

#include "platform/report/Lienzo.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace atipicos::orvalin {

enum class Palabras : std::uint8_t { Partidas, Enteras };

/// `texto` (UTF-8) in lines no wider than `ancho`, broken at blanks and at its own line breaks. A word that
/// is wider is cut between characters, or, `Enteras`, left on a line of its own. No character is lost but the
/// blanks at which lines end; a tab counts as a blank. Empty text gives no line.
[[nodiscard]] std::vector<std::string> parte_en_lineas(
    std::string_view texto, const Letra& letra, Medida ancho, const Medidor& medidor, Palabras palabras);

} // namespace atipicos::orvalin
