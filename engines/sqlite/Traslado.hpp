#pragma once

#include "engines/sqlite/Sesion.hpp"

#include <functional>
#include <string>

namespace atipicos::sqlite {

/// Adds everything that a file holds to another: its tables, with their keys and computed columns, indexes,
/// triggers and views, and every row, value for value. The names of tables and indexes get `prefijo` before
/// them, also where they name each other. `cada_fila` is told each row.
///
/// Raises an error when a name is taken. Belongs into a transaction of `destino`, and wants its foreign keys
/// to be off.
void traslada(Sesion& origen, Sesion& destino, const std::string& prefijo,
    const std::function<void()>& cada_fila, Donde donde = Donde::aqui());

} // namespace atipicos::sqlite
