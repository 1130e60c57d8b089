#include "host/bases/BasesEnSqlServer.hpp"

#include "engines/sql/Guion.hpp"
#include "host/bases/Tablas.hpp"
#include "host/bases/Version.hpp"
#include "host/sql/Guiones.hpp"

#include <array>

namespace atipicos::bases {

namespace {

    constexpr std::array<const char*, 2> las_dos{ "Bexmor", "Orvalin" };

    void ejecuta(adodb::Connection& conexion, const std::string& sql, Donde donde)
    {
        conexion.Execute(sql, nullptr, adodb::CommandType::Text, donde);
    }

    /// Whether a database has the tables. Raises an error when it has others: those are somebody's.
    bool esta_creada(
        adodb::Connection& conexion, const std::string& base, const std::string& lugar, Donde donde)
    {
        const auto hay = primera_fila(conexion,
            "SELECT COUNT(*), COUNT(CASE WHEN name = 'Esquema' THEN 1 END) FROM " + base
                + ".sys.objects WHERE type IN ('U', 'V') AND is_ms_shipped = 0",
            donde);
        if (CLng(hay[0], donde) == 0)
            return false;
        if (CLng(hay[1], donde) == 0)
            falla_ajena(lugar + ";DATABASE=" + base, donde);
        comprueba_version(conexion, base + ".dbo.Esquema", lugar + ";DATABASE=" + base, donde);
        return true;
    }

}

bool crea_en_sql_server(adodb::Connection& conexion, const std::string& lugar, bool vacia, Donde donde)
{
    // Of two that make them at once the second one waits, and finds them made. It lets go with the session.
    ejecuta(conexion,
        "DECLARE @logrado INT EXEC @logrado = sp_getapplock @Resource = 'atipicos crear', "
        "@LockMode = 'Exclusive', @LockOwner = 'Session' "
        "IF @logrado < 0 RAISERROR('Otro usuario está creando las bases de datos.', 16, 1)",
        donde);
    for (const std::string base : las_dos)
        ejecuta(conexion,
            std::string("IF DB_ID('").append(base).append("') IS NULL CREATE DATABASE ").append(base), donde);
    const std::array<bool, 2> creadas{ esta_creada(conexion, las_dos[0], lugar, donde),
        esta_creada(conexion, las_dos[1], lugar, donde) };
    if (creadas[0] != creadas[1])
        throw Error(1000, "Orvalin:Bases",
            "«" + lugar + "»: sólo una de las bases de datos Orvalin y Bexmor tiene sus tablas.", donde);
    if (creadas[0])
        return false;
    for (const std::string base : las_dos) // who reads does not wait for who writes, as everywhere else
        ejecuta(conexion, "ALTER DATABASE " + base + " SET READ_COMMITTED_SNAPSHOT ON", donde);
    conexion.BeginTrans(donde);
    ejecuta(conexion, "USE Bexmor", donde);
    crea_tablas_bexmor(conexion, vacia, donde);
    sql::ejecuta_guion(conexion, guiones::historial_sqlserver_bexmor(), donde);
    sql::ejecuta_guion(conexion, guiones::derechos_sqlserver_bexmor(), donde);
    ejecuta(conexion, "USE Orvalin", donde);
    crea_tablas_orvalin(conexion, vacia, donde);
    sql::ejecuta_guion(conexion, guiones::historial_sqlserver(), donde);
    sql::ejecuta_guion(conexion, guiones::derechos_sqlserver(), donde);
    conexion.CommitTrans(donde);
    return true;
}

} // namespace atipicos::bases
