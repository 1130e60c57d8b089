#include "host/bases/Tablas.hpp"

#include "engines/sql/Guion.hpp"
#include "host/sql/Guiones.hpp"
#include "platform/adodb/campos.hpp"

namespace atipicos::bases {

void crea_tablas_bexmor(adodb::Connection& conexion, bool vacia, Donde donde)
{
    sql::ejecuta_guion(conexion, guiones::bexmor(), donde);
    sql::ejecuta_guion(conexion, guiones::regularizaciones(), donde);
    sql::ejecuta_guion(conexion, guiones::incompletos(), donde);
    if (!vacia)
        sql::ejecuta_guion(conexion, guiones::muestra_bexmor(), donde);
}

void crea_tablas_orvalin(adodb::Connection& conexion, bool vacia, Donde donde)
{
    sql::ejecuta_guion(conexion, guiones::orvalin(), donde);
    sql::ejecuta_guion(conexion, guiones::accesos(), donde);
    if (!vacia)
        sql::ejecuta_guion(conexion, guiones::muestra_orvalin(), donde);
}

std::vector<std::string> nombres_de_bexmor(adodb::Connection& bexmor, Donde donde)
{
    std::vector<std::string> nombres;
    const auto rs = adodb::consulta(
        bexmor, "SELECT DISTINCT Valor FROM Parametros WHERE Clave ='ODBCBaseDatos'", donde);
    for (; !rs->Eof(); rs->MoveNext(donde))
        nombres.push_back(CStr(rs->Fields("Valor", donde).Value(donde), donde));
    return nombres;
}

std::vector<Variant> primera_fila(adodb::Connection& conexion, const std::string& sql, Donde donde)
{
    const auto rs = adodb::consulta(conexion, sql, donde);
    std::vector<Variant> valores;
    for (std::size_t i = 0; i < rs->Count(); ++i)
        valores.push_back(rs->Fields(i, donde).Value(donde));
    return valores;
}

void falla_ajena(const std::string& lugar, Donde donde)
{
    throw Error(1000, "Orvalin:Bases",
        "«" + lugar + "»: la base de datos contiene tablas que no son de este programa. Use una vacía.",
        donde);
}

} // namespace atipicos::bases
