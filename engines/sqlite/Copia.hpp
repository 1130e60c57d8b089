#pragma once

#include "runtime/Error.hpp"

#include <cstdint>
#include <filesystem>
#include <functional>

namespace atipicos::sqlite {

/// How far long work has come.
using Avance = std::function<void(std::uint64_t hechos, std::uint64_t total)>;

/// Copies a database as it stands at this moment into a new file, while others go on writing: nobody waits
/// for it, and it starts over for nobody. The copy is on the disk when this returns, and has been read again:
/// it is whole and has as many rows in each table. `avance` is told pages.
///
/// Raises an error that names both; what it has written until then stays.
void copia(const std::filesystem::path& origen, const std::filesystem::path& destino, const Avance& avance,
    Donde donde = Donde::aqui());

} // namespace atipicos::sqlite
