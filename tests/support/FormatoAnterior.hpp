#pragma once

#include "engines/sql/Guion.hpp"
#include "engines/sql/Tokens.hpp"
#include "engines/sqlite/Connection.hpp"
#include "engines/sqlite/Examen.hpp"
#include "engines/sqlite/Instruccion.hpp"
#include "host/sql/Guiones.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/VersionDos.hpp"

#include <filesystem>
#include <string>
#include <string_view>

namespace atipicos::pruebas {

namespace anterior {

    inline std::string columnas(sqlite::Sesion& sesion, const std::string& tabla)
    {
        std::string lista;
        sqlite::Instruccion consulta(
            sesion.base(), "SELECT name FROM pragma_table_xinfo(?) WHERE hidden = 0 ORDER BY cid", Donde());
        consulta.liga(1, tabla, Donde());
        while (consulta.avanza(Donde()))
            lista += (lista.empty() ? "" : ", ")
                + CStr(sqlite::valor_de(consulta.get(), 0, sqlite::Tipo::Segun, Donde()));
        return lista;
    }

    /// One of the two files, with all that is committed still in its log.
    inline void hace(const std::filesystem::path& empresa, const std::string& prefijo, std::string_view guion,
        const std::filesystem::path& fichero)
    {
        const CarpetaTemporal aqui;
        const auto conexion = sqlite::Connection::Abrir(
            { .fichero = aqui / "x.db", .crear = true, .sincronizacion_completa = false });
        auto& sesion = conexion->sesion();
        sql::ejecuta_guion(*conexion, guion);
        if (prefijo.empty())
            for (const auto& una : hacia_version_2())
                sesion.ejecuta(una, nullptr, Donde());
        sesion.ejecuta("PRAGMA wal_autocheckpoint=0", nullptr, Donde());
        sesion.ejecuta("PRAGMA foreign_keys=OFF", nullptr, Donde());
        sesion.ejecuta("ATTACH '" + sqlite::uri(empresa, "ro") + "' AS e", nullptr, Donde());
        for (const auto& tabla : sqlite::tablas(sesion)) {
            const auto lista = columnas(sesion, tabla);
            sesion.ejecuta("DELETE FROM main." + tabla, nullptr, Donde());
            sesion.ejecuta("INSERT INTO main." + tabla + " (" + lista + ") SELECT " + lista + " FROM e."
                    + prefijo + tabla,
                nullptr, Donde());
        }
        sesion.ejecuta("UPDATE main.Esquema SET Version = 1", nullptr, Donde());
        std::filesystem::copy_file(aqui / "x.db", fichero);
        std::filesystem::copy_file(aqui / "x.db-wal", fichero.string() + "-wal");
    }

}

/// Makes the two files of the program's first version in a folder, with what a company of today holds. As
/// that version left them, all of it is still in their logs.
inline void hace_formato_anterior(const std::filesystem::path& empresa, const std::filesystem::path& carpeta)
{
    std::filesystem::create_directories(carpeta);
    anterior::hace(empresa, "", guiones::orvalin(), carpeta / "orvalin.db");
    anterior::hace(empresa, "Bexmor_", guiones::bexmor(), carpeta / "bexmor.db");
}

} // namespace atipicos::pruebas
