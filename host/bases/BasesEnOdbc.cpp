#include "host/bases/BasesEnOdbc.hpp"

#include "engines/odbc/Connection.hpp"
#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/BasesEnPostgresql.hpp"
#include "host/bases/BasesEnSqlServer.hpp"
#include "host/bases/ClaveOdbc.hpp"
#include "host/bases/Fallo.hpp"
#include "host/bases/Historial.hpp"
#include "host/bases/Tablas.hpp"
#include "host/bases/Version.hpp"

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    constexpr auto parametro_base = "DATABASE";

    odbc::Opciones opciones_de(std::string cadena, const OpcionesBases& opciones, Donde donde)
    {
        return { .cadena = std::move(cadena),
            .clave = clave_odbc(donde),
            .sesion = { .espera = opciones.espera, .solo_lectura = opciones.solo_lectura },
            .avisa = opciones.avisa_linea,
            .avisa_espera = opciones.avisa_espera };
    }

    void exige_conocido(const odbc::Servidor& servidor, const std::string& cadena, Donde donde)
    {
        if (servidor.nombre != odbc::nombre_sql_server && servidor.nombre != odbc::nombre_postgresql)
            throw Error(1000, "Orvalin:Bases",
                "«" + cadena
                    + "»: por ODBC se admiten SQL Server, PostgreSQL y el fichero empresa.db de SQLite.",
                donde);
    }

    /// What a session must say to find the tables of management.
    odbc::AlAbrir entra_en_gestion(const std::string& cadena, Donde donde)
    {
        return [cadena, donde](const odbc::Servidor& servidor) -> std::vector<std::string> {
            exige_conocido(servidor, cadena, donde);
            return { servidor.nombre == odbc::nombre_sql_server ? "USE Orvalin"
                                                                : "SET search_path TO orvalin" };
        };
    }

    /// That the tables of a server are there, are ours, and may be read.
    void comprueba_tablas(adodb::Connection& conexion, const std::string& cadena, Donde donde)
    {
        try {
            comprueba_version(conexion, "Esquema", cadena, donde);
        } catch (const Error&) {
            const auto* por_odbc = dynamic_cast<const odbc::Connection*>(&conexion);
            if (por_odbc != nullptr && por_odbc->servidor().nombre == odbc::nombre_postgresql)
                exige_permiso_postgresql(conexion, cadena, donde);
            throw;
        }
    }

    /// The error of a server on which there is no such database.
    [[noreturn]] void faltan(const std::string& cadena, const adodb::ErrorBaseDatos& error, Donde donde)
    {
        if (odbc::Cadena(cadena).tiene(parametro_base))
            falla(cadena,
                "la base de datos que nombra DATABASE no está en el servidor, o este usuario no puede entrar "
                "en "
                "ella. Quite DATABASE de la conexión: las de este programa se llaman Orvalin y Bexmor, y las "
                "crea atipicos crear. ("
                    + error.descripcion() + ")",
                donde);
        falla(cadena,
            "las bases de datos Orvalin y Bexmor no están en este servidor. Créelas con: atipicos crear "
                + Lugar::de_conexion("odbc:" + cadena).opcion() + " (" + error.descripcion() + ")",
            donde);
    }

    /// `accion`, or what to do about databases that are not there.
    template <class Accion> auto exigiendo_bases(const std::string& cadena, Donde donde, Accion accion)
    {
        try {
            return accion();
        } catch (const adodb::ErrorBaseDatos& error) {
            if (error.categoria() != adodb::Categoria::no_existe)
                throw;
            faltan(cadena, error, donde);
        }
    }

    Bases abre_fichero(
        odbc::Opciones abiertas, const fs::path& fichero, const OpcionesBases& opciones, Donde donde)
    {
        odbc::Cadena cadena(abiertas.cadena);
        cadena.pon("TIMEOUT", std::to_string(opciones.espera.count()));
        abiertas.cadena = cadena.texto();
        const auto pareja = odbc::Connection::AbrirPareja(abiertas, {}, donde);
        comprueba_version(*pareja.contabilidad, "Esquema", fichero.string(), donde);
        if (comprueba_version(*pareja.gestion, "Esquema", fichero.string(), donde) >= version_con_historial
            && !opciones.solo_lectura)
            firma_historial(*pareja.gestion, donde);
        return { pareja.gestion, pareja.contabilidad, pareja.transacciones };
    }

}

std::optional<fs::path> carpeta_de_odbc(const std::string& cadena)
{
    const fs::path fichero(odbc::Cadena(cadena).valor(parametro_base));
    return fichero.filename() == fichero_empresa ? std::optional(fichero.parent_path()) : std::nullopt;
}

bool crea_por_odbc(const std::string& cadena, bool vacia, Donde donde)
{
    if (const auto carpeta = carpeta_de_odbc(cadena)) {
        crea_en_carpeta(*carpeta, vacia, donde); // files of SQLite are the same whoever makes them
        return true;
    }
    const auto conexion = exigiendo_bases(
        cadena, donde, [&] { return odbc::Connection::Abrir(opciones_de(cadena, {}, donde), donde); });
    exige_conocido(conexion->servidor(), cadena, donde);
    return conexion->servidor().nombre == odbc::nombre_sql_server
        ? crea_en_sql_server(*conexion, cadena, vacia, donde)
        : crea_en_postgresql(*conexion, cadena, vacia, donde);
}

Bases abre_de_odbc(const std::string& cadena, const OpcionesBases& opciones, Donde donde)
{
    auto abiertas = opciones_de(cadena, opciones, donde);
    if (const auto carpeta = carpeta_de_odbc(cadena)) {
        exige_bases(*carpeta, donde); // the driver would make what is missing
        return abre_fichero(abiertas, *carpeta / fichero_empresa, opciones, donde);
    }
    abiertas.al_abrir = entra_en_gestion(cadena, donde);
    const auto pareja = exigiendo_bases(cadena, donde, [&] {
        return odbc::Connection::AbrirPareja(
            abiertas,
            [&](adodb::Connection& contabilidad) {
                comprueba_tablas(contabilidad, cadena, donde); // before its tables are asked
                return nombres_de_bexmor(contabilidad, donde);
            },
            donde);
    });
    comprueba_tablas(*pareja.gestion, cadena, donde);
    return { pareja.gestion, pareja.contabilidad, pareja.transacciones };
}

} // namespace atipicos::bases
