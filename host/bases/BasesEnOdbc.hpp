#pragma once

#include "host/bases/Bases.hpp"

#include <string>

/// Through ODBC, by what its connection string says and its driver answers: the databases `Orvalin` and
/// `Bexmor` of a SQL Server, the schemas of a PostgreSQL database, or the file `empresa.db` that DATABASE
/// names. Both are reached over one line. The password comes from `clave_odbc`.
namespace atipicos::bases {

/// The folder whose file is meant, if one is.
[[nodiscard]] std::optional<std::filesystem::path> carpeta_de_odbc(const std::string& cadena);

bool crea_por_odbc(const std::string& cadena, bool vacia, Donde donde);
[[nodiscard]] Bases abre_de_odbc(const std::string& cadena, const OpcionesBases& opciones, Donde donde);

} // namespace atipicos::bases
