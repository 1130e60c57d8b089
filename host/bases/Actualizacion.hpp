#pragma once

#include "host/bases/Bases.hpp"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace atipicos::bases {

struct OpcionesActualizar {
    /// What must be said in the same words of databases that are copied and of their copy.
    std::function<std::string(const Bases&)> examina;
    std::function<void(std::uint64_t hechas, std::uint64_t total)> avance = {}; ///< rows copied
};

struct Actualizada {
    std::int32_t desde = 0; ///< the version that they had
    std::int32_t hasta = 0;
    std::vector<std::filesystem::path> apartados = {}; ///< files of the former layout, as they are called now
    bool repartida = false; ///< its tables were spread over the nodes of the server just now
};

/// Brings the databases of a place to the present version in one transaction, from whichever earlier one.
/// Nothing is changed when they have it already, nor on an error; but the tables of a server that has come to
/// be one of several nodes are spread over them, in a transaction of its own. An error is raised when a later
/// program has made them.
Actualizada actualiza_bases(
    const Lugar& lugar, const OpcionesActualizar& opciones, Donde donde = Donde::aqui());

} // namespace atipicos::bases
