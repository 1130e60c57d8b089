#include "host/bases/BasesEnPostgresql.hpp"

#include "engines/postgresql/Connection.hpp"
#include "engines/sql/Postgresql.hpp"
#include "engines/sql/Tokens.hpp"
#include "host/bases/Confirmaciones.hpp"
#include "host/bases/Derechos.hpp"
#include "host/bases/Fallo.hpp"
#include "host/bases/Historial.hpp"
#include "host/bases/Reparto.hpp"
#include "host/bases/Tablas.hpp"
#include "host/bases/Version.hpp"

namespace atipicos::bases {

namespace {

    // Three-part names end in "dbo.Tabla", and both products have tables of the same names.
    constexpr auto esquema_orvalin = "orvalin";
    constexpr auto esquema_bexmor = "dbo";

    /// That the tables are there, are ours, and may be read.
    void comprueba_tablas(
        adodb::Connection& conexion, const std::string& tabla, const std::string& direccion, Donde donde)
    {
        try {
            comprueba_version(conexion, tabla, direccion, donde);
        } catch (const Error&) {
            exige_permiso_postgresql(conexion, direccion, donde);
            throw;
        }
    }

    /// Whether both schemas are there. Raises an error when anything else is: those tables are somebody's.
    bool estan_creadas(adodb::Connection& conexion, const std::string& direccion, Donde donde)
    {
        const auto hay = primera_fila(conexion,
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
            falla_ajena(direccion, donde);
        for (const auto* esquema : { esquema_orvalin, esquema_bexmor })
            comprueba_tablas(conexion, std::string(esquema) + ".Esquema", direccion, donde);
        return true;
    }

    /// `accion`, or what to do about a database that is not there.
    template <class Accion> auto exigiendo_base(const std::string& direccion, Donde donde, Accion accion)
    {
        try {
            return accion();
        } catch (const adodb::ErrorBaseDatos& error) {
            if (error.categoria() != adodb::Categoria::no_existe)
                throw;
            falla(direccion,
                error.descripcion()
                    + " Créela en el servidor con createdb, y después sus tablas con: atipicos crear "
                    + Lugar::de_conexion(direccion).opcion(),
                donde);
        }
    }

    /// Both are asked, if they are there, while the server has not answered.
    sql::SigueEsperando mientras_sigan(
        const sql::SigueEsperando& esperando, const sql::SigueTrabajando& trabajando)
    {
        if (!trabajando)
            return esperando;
        return [esperando, trabajando](std::chrono::milliseconds callado) {
            return trabajando() && (!esperando || esperando(callado));
        };
    }

    postgresql::Opciones opciones_de(
        const std::string& direccion, const char* esquema, const OpcionesBases& opciones)
    {
        return { .direccion = direccion,
            .esquema = esquema,
            .solo_lectura = opciones.solo_lectura,
            .espera = opciones.espera,
            .avisa = opciones.avisa_linea,
            .sigue_esperando = mientras_sigan(opciones.sigue_esperando, opciones.sigue),
            .sigue_intentando = opciones.sigue_intentando,
            .sincronizacion_completa = opciones.sincronizacion_completa };
    }

}

void exige_permiso_postgresql(adodb::Connection& conexion, const std::string& lugar, Donde donde)
{
    const auto usuario = primera_fila(conexion,
        "SELECT CURRENT_USER, COUNT(*) FROM pg_namespace n LEFT JOIN pg_class c"
        " ON c.relnamespace = n.oid AND c.relname ='esquema' WHERE n.nspname IN ('orvalin', 'dbo')"
        " AND (NOT has_schema_privilege(n.oid, 'USAGE') OR NOT has_table_privilege(c.oid, 'SELECT'))",
        donde);
    if (CLng(usuario[1], donde) == 0)
        return;
    const auto nombre = CStr(usuario[0], donde);
    falla(lugar,
        "el usuario «" + nombre
            + "» no tiene permiso para usar estas tablas. Su propietario se lo da ejecutando"
              " permisos_postgresql.sql y después GRANT atipicos_consulta TO "
            + sql::entre_comillas(nombre) + " para consultar, o GRANT atipicos_puesto TO "
            + sql::entre_comillas(nombre) + " para registrar cargos.",
        donde);
}

bool crea_en_postgresql(adodb::Connection& conexion, const std::string& lugar, bool vacia, Donde donde)
{
    conexion.BeginTrans(donde);
    // Of two that make them at once the second one waits, and finds them made.
    conexion.Execute(
        "SELECT pg_advisory_xact_lock(hashtext('atipicos crear'))", nullptr, adodb::CommandType::Text, donde);
    if (estan_creadas(conexion, lugar, donde)) {
        conexion.RollbackTrans(donde);
        return false;
    }
    sql::crea_esquema_postgresql(conexion, esquema_bexmor, donde);
    crea_tablas_bexmor(conexion, vacia, donde);
    sql::crea_esquema_postgresql(conexion, esquema_orvalin, donde);
    crea_tablas_orvalin(conexion, vacia, donde);
    crea_historial(conexion, donde);
    crea_derechos(conexion, donde);
    crea_confirmaciones(conexion, donde);
    reparte(conexion, donde);
    conexion.CommitTrans(donde);
    return true;
}

bool crea_en_postgresql(const std::string& direccion, bool vacia, Donde donde)
{
    const auto conexion = exigiendo_base(direccion, donde,
        [&] { return postgresql::Connection::Abrir(opciones_de(direccion, esquema_bexmor, {}), donde); });
    return crea_en_postgresql(*conexion, direccion, vacia, donde);
}

Bases abre_de_postgresql(const std::string& direccion, const OpcionesBases& opciones, Donde donde)
{
    const auto pareja = exigiendo_base(direccion, donde, [&] {
        return postgresql::Connection::AbrirPareja(
            opciones_de(direccion, esquema_orvalin, opciones),
            [&](adodb::Connection& contabilidad) {
                comprueba_tablas(contabilidad, "Esquema", direccion, donde);
                return nombres_de_bexmor(contabilidad, donde);
            },
            donde);
    });
    comprueba_tablas(*pareja.gestion, "Esquema", direccion, donde);
    return { pareja.gestion, pareja.contabilidad, pareja.transacciones };
}

} // namespace atipicos::bases
