#include "host/bases/Acceso.hpp"

#include "host/bases/BasesEnCarpeta.hpp"
#include "host/bases/Producto.hpp"
#include "host/bases/Tablas.hpp"
#include "host/bases/Usuario.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

#include <sys/stat.h>
#include <unistd.h>

namespace atipicos::bases {

namespace {

    constexpr auto en_postgresql
        = "SELECT SESSION_USER, CASE WHEN orvalin.actua_por_otros() THEN 1 ELSE 0 END, CASE WHEN "
          "has_table_privilege(SESSION_USER, 'orvalin.Proveedores_Cargos_Atipicos', 'INSERT') THEN 1 ELSE 0 "
          "END";
    constexpr auto en_sql_server
        = "SELECT ORIGINAL_LOGIN(), CASE WHEN IS_MEMBER('db_owner') = 1 OR IS_MEMBER('atipicos_suplencia') = "
          "1 "
          "THEN 1 ELSE 0 END, HAS_PERMS_BY_NAME('dbo.Proveedores_Cargos_Atipicos', 'OBJECT', 'INSERT')";

    bool es_suyo(const Lugar& lugar)
    {
        const auto carpeta = carpeta_de(lugar);
        struct stat datos { };
        return geteuid() == 0 || !carpeta || stat((*carpeta / fichero_empresa).c_str(), &datos) != 0
            || datos.st_uid == geteuid();
    }

    void ejecuta(const Bases& bases, const std::string& sql, std::int32_t* afectadas, Donde donde)
    {
        bases.orvalin->Execute(sql, afectadas, adodb::CommandType::Text, donde);
    }

}

Acceso acceso_de(const Bases& bases, const Lugar& lugar, Donde donde)
{
    Acceso acceso;
    const auto producto = producto_de(*bases.orvalin);
    if (producto == Producto::sqlite) {
        acceso.login = usuario_de_la_maquina();
        acceso.por_otros = es_suyo(lugar);
    } else {
        const auto dicho = primera_fila(
            *bases.orvalin, producto == Producto::postgresql ? en_postgresql : en_sql_server, donde);
        acceso.login = CStr(dicho[0], donde);
        acceso.por_otros = CLng(dicho[1], donde) != 0;
        acceso.registra = CLng(dicho[2], donde) != 0;
    }
    const auto rs = adodb::consulta(
        *bases.orvalin, "SELECT Usuario FROM Accesos WHERE Login =" + sql::literal(acceso.login), donde);
    if (!rs->Eof())
        acceso.usuario = CLng(rs->Fields("Usuario", donde).Value(donde), donde);
    return acceso;
}

std::vector<Asignacion> accesos(const Bases& bases, Donde donde)
{
    std::vector<Asignacion> todas;
    const auto rs
        = adodb::consulta(*bases.orvalin, "SELECT Login, Usuario FROM Accesos ORDER BY Login", donde);
    for (; !rs->Eof(); rs->MoveNext(donde))
        todas.push_back(
            { adodb::texto(*rs, "Login", donde), CLng(rs->Fields("Usuario", donde).Value(donde), donde) });
    return todas;
}

void asigna_acceso(const Bases& bases, const Asignacion& asignacion, Donde donde)
{
    const auto usuario = std::to_string(asignacion.usuario);
    const auto login = sql::literal(asignacion.login, donde);
    std::int32_t cambiadas = 0;
    ejecuta(bases, "UPDATE Accesos SET Usuario =" + usuario + " WHERE Login =" + login, &cambiadas, donde);
    if (cambiadas == 0)
        ejecuta(bases, "INSERT INTO Accesos (Login, Usuario) VALUES (" + login + ", " + usuario + ")",
            nullptr, donde);
}

bool quita_acceso(const Bases& bases, const std::string& login, Donde donde)
{
    std::int32_t quitadas = 0;
    ejecuta(bases, "DELETE FROM Accesos WHERE Login =" + sql::literal(login, donde), &quitadas, donde);
    return quitadas > 0;
}

} // namespace atipicos::bases
