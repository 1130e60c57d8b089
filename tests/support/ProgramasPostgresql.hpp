#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What the tests' own servers have in common: the programs of PostgreSQL, run by a user without privileges.
namespace atipicos::pruebas {

/// Of the newest version that is installed; empty when there is none.
[[nodiscard]] std::filesystem::path programas_postgresql();

[[nodiscard]] std::filesystem::path carpeta_de_postgresql(); ///< a new temporary folder of that user
[[nodiscard]] std::string lee_texto(const std::filesystem::path& fichero);

/// Makes the databases of a new server in `carpeta / datos`. Where the variable ATIPICOS_PLANTILLAS names a
/// folder they are copied from those that the first of all the tests has left there.
void crea_cluster(const std::filesystem::path& carpeta, const std::filesystem::path& datos);

/// Runs a program to its end and gives its status; what it writes is added to `salida`.
int ejecuta_como_postgresql(const std::vector<std::string>& orden, const std::filesystem::path& salida);

/// The same, and raises an error with all that was written in `carpeta` when it fails.
void exige_como_postgresql(const std::vector<std::string>& orden, const std::filesystem::path& carpeta);

} // namespace atipicos::pruebas
