#pragma once

#include "engines/sqlite/Connection.hpp"

#include <functional>
#include <string>

namespace atipicos::sqlite {

/// A new database that `llena` fills, as the bytes of its file: nothing is on the disk until somebody writes
/// them there at once. It is held in memory, so it is for databases that are small when they begin.
///
/// Raises what `llena` raises; the rest names `fichero`, the file that it is to be.
[[nodiscard]] std::string imagen(const std::filesystem::path& fichero,
    const std::function<void(const sql::Pareja&)>& llena, Donde donde = Donde::aqui());

} // namespace atipicos::sqlite
