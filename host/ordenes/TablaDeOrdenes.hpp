#pragma once

#include "host/ordenes/LineaDeOrdenes.hpp"

#include <functional>
#include <span>

namespace CLI {
class App;
}

namespace atipicos::app {

/// What the declarations of the commands share.
struct Entorno {
    OpcionesComunes& comunes; ///< one for all: only one command is chosen
    const Ventanas& ventanas;
};

/// A command: its name, its line in the help, and a function that gives `orden` its options and returns what
/// runs when it is chosen. What that raises as a `MalUsada` is wrong usage.
struct Orden {
    const char* nombre;
    const char* ayuda;
    std::function<int()> (*declara)(CLI::App& orden, const Entorno& entorno);
};

/// All of them, in the order of the help. Another command is another line, and its function.
[[nodiscard]] std::span<const Orden> ordenes() noexcept;

} // namespace atipicos::app
