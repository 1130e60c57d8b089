#pragma once

#include <cstddef>

namespace atipicos::app {

/// What there is to write on.
struct Aspecto {
    std::size_t ancho = 80; ///< places of a line
    bool es_terminal = false; ///< somebody is reading while it is written
    bool color = false; ///< and sees colours, and has not asked for none (NO_COLOR)
};

/// That of an open file, by its number: a file or a pipe has 80 places and no colour.
[[nodiscard]] Aspecto aspecto_de(int descriptor);

} // namespace atipicos::app
