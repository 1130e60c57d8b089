#include "host/orvalin/BasesEnOdbc.hpp"

#include "engines/odbc/Connection.hpp"
#include "host/orvalin/NombresDeBexmor.hpp"
#include "host/orvalin/Version.hpp"

#include <cstdlib>

namespace atipicos::orvalin {

namespace {

    constexpr std::string_view postgresql = "PostgreSQL";

    /// What a session must say to find its tables.
    odbc::AlAbrir entra_en(const std::string& base, const std::string& esquema)
    {
        return [base, esquema](const odbc::Servidor& servidor) -> std::vector<std::string> {
            return { servidor.nombre == postgresql ? "SET search_path TO " + esquema : "USE " + base };
        };
    }

    odbc::Opciones opciones_de(
        const std::string& cadena, odbc::AlAbrir al_abrir, const OpcionesBases& opciones)
    {
        const char* clave = std::getenv("ATIPICOS_ODBC_CLAVE");
        return { .cadena = cadena,
            .clave = clave == nullptr ? "" : clave,
            .al_abrir = std::move(al_abrir),
            .espera = opciones.espera };
    }

}

Bases abre_de_odbc(const std::string& cadena, const OpcionesBases& opciones, Donde donde)
{
    const auto bexmor
        = odbc::Connection::Abrir(opciones_de(cadena, entra_en("Bexmor", "dbo"), opciones), donde);
    comprueba_version(*bexmor, "Esquema", cadena, donde);
    auto de_gestion = opciones_de(cadena, entra_en("Orvalin", "orvalin"), opciones);
    if (bexmor->servidor().nombre == postgresql)
        for (const auto& nombre : nombres_de_bexmor(*bexmor, donde))
            de_gestion.bases.emplace_back(nombre, "dbo");
    const auto orvalin = odbc::Connection::Abrir(de_gestion, donde);
    comprueba_version(*orvalin, "Esquema", cadena, donde);
    return { orvalin, bexmor };
}

} // namespace atipicos::orvalin
