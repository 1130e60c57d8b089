#pragma once

#include "runtime/Error.hpp"

#include <filesystem>
#include <string>

namespace atipicos::bases {

/// Raises the error of a place where databases are, or should be: "«lugar»: motivo".
[[noreturn]] inline void falla(const std::string& lugar, const std::string& motivo, Donde donde)
{
    throw Error(1000, "Orvalin:Bases", "«" + lugar + "»: " + motivo, donde);
}
[[noreturn]] inline void falla(const std::filesystem::path& ruta, const std::string& motivo, Donde donde)
{
    falla(ruta.string(), motivo, donde);
}

} // namespace atipicos::bases
