#include "host/orvalin/BasesEnPostgresql.hpp"

#include "engines/postgresql/Connection.hpp"
#include "engines/sql/Guion.hpp"
#include "host/orvalin/NombresDeBexmor.hpp"
#include "host/orvalin/Version.hpp"
#include "host/sql/Guiones.hpp"

namespace atipicos::orvalin {

namespace {

    // Three-part names end in "dbo.Tabla", and both products have tables of the same names.
    constexpr auto esquema_orvalin = "orvalin";
    constexpr auto esquema_bexmor = "dbo";

    using Conexion = std::shared_ptr<postgresql::Connection>;

    std::vector<Variant> fila(adodb::Connection& conexion, const std::string& sql, Donde donde)
    {
        const auto rs = conexion.CreateRecordset();
        rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly, adodb::CommandType::Text, donde);
        std::vector<Variant> valores;
        for (std::size_t i = 0; i < rs->Count(); ++i)
            valores.push_back(rs->Fields(i, donde).Value(donde));
        return valores;
    }

    /// Whether both schemas are there. Raises an error when anything else is: those tables are somebody's.
    bool estan_creadas(adodb::Connection& conexion, const std::string& direccion, Donde donde)
    {
        const auto hay = fila(conexion,
            "SELECT COUNT(*), SUM(CASE WHEN n.nspname IN ('orvalin', 'dbo') THEN 1 ELSE 0 END),"
            " SUM(CASE WHEN n.nspname IN ('orvalin', 'dbo') AND c.relname ='esquema' THEN 1 ELSE 0 END)"
            " FROM pg_class c INNER JOIN pg_namespace n ON n.oid = c.relnamespace"
            " WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND n.nspname NOT IN ('pg_catalog', 'pg_toast',"
            " 'information_schema') AND NOT EXISTS"
            " (SELECT 1 FROM pg_depend d WHERE d.objid = c.oid AND d.deptype ='e')",
            donde);
        const auto todas = CLng(hay[0], donde);
        if (todas == 0)
            return false;
        if (CLng(hay[1], donde) != todas || CLng(hay[2], donde) != 2)
            throw Error(1000, "Orvalin:Bases",
                "«" + direccion
                    + "»: la base de datos contiene tablas que no son de este programa. Use una vacía.",
                donde);
        for (const auto* esquema : { esquema_orvalin, esquema_bexmor })
            comprueba_version(conexion, std::string(esquema) + ".Esquema", direccion, donde);
        return true;
    }

    void crea_esquema(const Conexion& conexion, const char* nombre,
        std::initializer_list<std::string_view> guiones, Donde donde)
    {
        conexion->crea_esquema(nombre, donde);
        for (const auto guion : guiones)
            sql::ejecuta_guion(*conexion, guion, donde);
    }

    postgresql::Opciones opciones_de(
        const std::string& direccion, const char* esquema, const OpcionesBases& opciones)
    {
        return { .direccion = direccion,
            .esquema = esquema,
            .solo_lectura = opciones.solo_lectura,
            .espera = opciones.espera,
            .sincronizacion_completa = opciones.sincronizacion_completa };
    }

}

bool crea_en_postgresql(const std::string& direccion, bool vacia, Donde donde)
{
    const auto conexion = postgresql::Connection::Abrir(opciones_de(direccion, esquema_bexmor, {}), donde);
    conexion->BeginTrans(donde);
    // Of two that make them at once the second one waits, and finds them made.
    conexion->Execute(
        "SELECT pg_advisory_xact_lock(hashtext('atipicos crear'))", nullptr, adodb::CommandType::Text, donde);
    if (estan_creadas(*conexion, direccion, donde))
        return false;
    if (vacia) {
        crea_esquema(conexion, esquema_bexmor, { guiones::bexmor() }, donde);
        crea_esquema(conexion, esquema_orvalin, { guiones::orvalin() }, donde);
    } else {
        crea_esquema(conexion, esquema_bexmor, { guiones::bexmor(), guiones::muestra_bexmor() }, donde);
        crea_esquema(conexion, esquema_orvalin, { guiones::orvalin(), guiones::muestra_orvalin() }, donde);
    }
    conexion->CommitTrans(donde);
    return true;
}

Bases abre_de_postgresql(const std::string& direccion, const OpcionesBases& opciones, Donde donde)
{
    Bases bases;
    bases.bexmor = postgresql::Connection::Abrir(opciones_de(direccion, esquema_bexmor, opciones), donde);
    comprueba_version(*bases.bexmor, "Esquema", direccion, donde);
    auto de_gestion = opciones_de(direccion, esquema_orvalin, opciones);
    de_gestion.bases = nombres_de_bexmor(*bases.bexmor, donde);
    bases.orvalin = postgresql::Connection::Abrir(de_gestion, donde);
    comprueba_version(*bases.orvalin, "Esquema", direccion, donde);
    return bases;
}

} // namespace atipicos::orvalin
