#pragma once

#include "host/bases/Bases.hpp"

#include <string>

namespace atipicos::bases {

/// Through any connection to the database; `lugar` is how errors call it.
bool crea_en_postgresql(adodb::Connection& conexion, const std::string& lugar, bool vacia, Donde donde);
bool crea_en_postgresql(const std::string& direccion, bool vacia, Donde donde);
/// Raises an error that says what to do when the user of a connection may not read the tables. To him those
/// of a schema that he may not use look as if they were not there.
void exige_permiso_postgresql(adodb::Connection& conexion, const std::string& lugar, Donde donde);
[[nodiscard]] Bases abre_de_postgresql(
    const std::string& direccion, const OpcionesBases& opciones, Donde donde);

} // namespace atipicos::bases
