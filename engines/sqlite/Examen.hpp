#pragma once

#include "engines/sqlite/Sesion.hpp"

#include <cstdint>
#include <map>
#include <string>

/// What a file holds, whatever it is for.
namespace atipicos::sqlite {

/// The names of its tables, as they were made.
[[nodiscard]] std::vector<std::string> tablas(Sesion& sesion, Donde donde = Donde::aqui());

/// How many rows each table has.
[[nodiscard]] std::map<std::string, std::int64_t> filas_por_tabla(
    Sesion& sesion, Donde donde = Donde::aqui());

/// Reads all of it. Raises an error that says what is damaged.
void exige_integridad(Sesion& sesion, Donde donde = Donde::aqui());

} // namespace atipicos::sqlite
