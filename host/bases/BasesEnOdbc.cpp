#include "host/bases/BasesEnOdbc.hpp"

#include "engines/odbc/Connection.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/BasesEnPostgresql.hpp"
#include "host/bases/BasesEnSqlServer.hpp"
#include "host/bases/ClaveOdbc.hpp"
#include "host/bases/Tablas.hpp"
#include "host/bases/Version.hpp"

#include <optional>

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    constexpr auto base = "DATABASE";

    odbc::Opciones opciones_de(std::string cadena, const OpcionesBases& opciones, Donde donde)
    {
        return { .cadena = std::move(cadena),
            .clave = clave_odbc(donde),
            .sesion = { .espera = opciones.espera, .solo_lectura = opciones.solo_lectura },
            .avisa = opciones.avisa_linea };
    }

    /// The folder whose files are meant, if any are.
    std::optional<fs::path> carpeta_de(const std::string& cadena)
    {
        const fs::path fichero(odbc::Cadena(cadena).valor(base));
        return fichero.filename() == fichero_empresa ? std::optional(fichero.parent_path()) : std::nullopt;
    }

    Bases abre_ficheros(
        const std::string& cadena, const fs::path& carpeta, const OpcionesBases& opciones, Donde donde)
    {
        exige_bases(carpeta, donde); // the driver would make what is missing
        odbc::Cadena de_fichero(cadena);
        de_fichero.pon("TIMEOUT", std::to_string(opciones.espera.count()));
        const auto abiertas = opciones_de(de_fichero.texto(), opciones, donde);
        const auto orvalin = odbc::Connection::Abrir(abiertas, donde);
        comprueba_version(*orvalin, "Esquema", (carpeta / fichero_empresa).string(), donde);
        return { orvalin, odbc::Connection::Abrir(abiertas, donde) };
    }

    /// What a session must say to find its tables.
    odbc::AlAbrir entra_en(const std::string& nombre, const std::string& esquema)
    {
        return [nombre, esquema](const odbc::Servidor& servidor) -> std::vector<std::string> {
            if (servidor.nombre == odbc::nombre_sql_server)
                return { "USE " + nombre };
            if (servidor.nombre == odbc::nombre_postgresql)
                return { "SET search_path TO " + esquema };
            return {};
        };
    }

    void exige_conocido(const odbc::Servidor& servidor, const std::string& cadena, Donde donde)
    {
        if (servidor.nombre != odbc::nombre_sql_server && servidor.nombre != odbc::nombre_postgresql)
            throw Error(1000, "Orvalin:Bases",
                "«" + cadena
                    + "»: por ODBC se admiten SQL Server, PostgreSQL y el fichero empresa.db de SQLite.",
                donde);
    }

}

bool crea_por_odbc(const std::string& cadena, bool vacia, Donde donde)
{
    if (const auto carpeta = carpeta_de(cadena)) {
        crea_en_carpeta(*carpeta, vacia, donde); // files of SQLite are the same whoever makes them
        return true;
    }
    const auto conexion = odbc::Connection::Abrir(opciones_de(cadena, {}, donde), donde);
    exige_conocido(conexion->servidor(), cadena, donde);
    return conexion->servidor().nombre == odbc::nombre_sql_server
        ? crea_en_sql_server(*conexion, cadena, vacia, donde)
        : crea_en_postgresql(*conexion, cadena, vacia, donde);
}

Bases abre_de_odbc(const std::string& cadena, const OpcionesBases& opciones, Donde donde)
{
    if (const auto carpeta = carpeta_de(cadena))
        return abre_ficheros(cadena, *carpeta, opciones, donde);
    auto contable = opciones_de(cadena, opciones, donde);
    contable.al_abrir = entra_en("Bexmor", "dbo");
    const auto bexmor = odbc::Connection::Abrir(contable, donde);
    exige_conocido(bexmor->servidor(), cadena, donde);
    comprueba_version(*bexmor, "Esquema", cadena, donde);
    auto de_gestion = opciones_de(cadena, opciones, donde);
    de_gestion.al_abrir = entra_en("Orvalin", "orvalin");
    if (bexmor->servidor().nombre == odbc::nombre_postgresql)
        for (const auto& nombre : nombres_de_bexmor(*bexmor, donde))
            de_gestion.bases.emplace_back(nombre, "dbo");
    const auto orvalin = odbc::Connection::Abrir(de_gestion, donde);
    comprueba_version(*orvalin, "Esquema", cadena, donde);
    return { orvalin, bexmor };
}

} // namespace atipicos::bases
