#include "host/bases/ClaveOdbc.hpp"

#include "host/bases/Fallo.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    std::string primera_linea(const fs::path& fichero, Donde donde)
    {
        std::error_code fallo;
        const auto permisos = fs::status(fichero, fallo).permissions();
        std::ifstream flujo(fichero);
        if (fallo || !flujo)
            falla(fichero, "no se puede leer el fichero de la contraseña.", donde);
        if ((permisos & (fs::perms::group_all | fs::perms::others_all)) != fs::perms::none)
            falla(fichero,
                "otros usuarios pueden leer el fichero de la contraseña. Evítelo con: chmod 600 "
                    + fichero.string(),
                donde);
        std::string linea;
        std::getline(flujo, linea);
        return linea;
    }

}

std::string clave_odbc(Donde donde)
{
    if (const char* clave = std::getenv("ATIPICOS_ODBC_CLAVE"); clave != nullptr)
        return clave;
    if (const char* fichero = std::getenv("ATIPICOS_ODBC_FICHERO_CLAVE"); fichero != nullptr)
        return primera_linea(fichero, donde);
    return {};
}

} // namespace atipicos::bases
