#pragma once

#include "host/bases/Bases.hpp"

#include <cstdint>
#include <functional>

namespace atipicos::bases {

struct OpcionesCopiar {
    std::function<void(std::uint64_t hechas, std::uint64_t total)> avance = {}; ///< pages copied
    std::function<void(const Bases&)> comprueba = {}; ///< is given the copy before it gets its name
};

/// Copies the file of a company as it stands at this moment, while others go on working, and gives the path
/// of the copy: `destino`, or `empresa.db` in it when it is a folder (or ends in "/": it is made then). The
/// copy gets its name only when it is complete and has been checked.
///
/// Raises an error when the name is taken, or the copy cannot be made; nothing is left then. A server's
/// databases are copied by the server's own command: the error for them says which.
std::filesystem::path copia_bases(const Lugar& lugar, const std::filesystem::path& destino,
    const OpcionesCopiar& opciones, Donde donde = Donde::aqui());

} // namespace atipicos::bases
