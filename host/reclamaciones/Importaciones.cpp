#include "host/reclamaciones/Importaciones.hpp"

#include "host/sesion/OpcionesComunes.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

#include <utility>

namespace atipicos::app {

Importaciones::Importaciones(
    std::shared_ptr<adodb::Connection> conexion, std::int16_t empresa, std::string huella)
    : m_conexion(std::move(conexion))
    , m_empresa(empresa)
    , m_huella(std::move(huella))
{
}

std::unique_ptr<adodb::Recordset> Importaciones::consulta(
    const std::string& que, const std::string& condicion) const
{
    auto rs = m_conexion->CreateRecordset();
    rs->Open("SELECT " + que + " FROM Importaciones WHERE Cod_Empresa =" + std::to_string(m_empresa)
            + " AND Huella =" + sql::literal(m_huella) + condicion,
        adodb::CursorType::Static, adodb::LockType::ReadOnly);
    return rs;
}

bool Importaciones::hay_alguna() const
{
    return !consulta("MIN(Referencia) AS Primera")->Fields("Primera").Value().es_nulo();
}

std::optional<Importada> Importaciones::busca(const std::string& referencia) const
{
    std::optional<Importada> ultima;
    const auto rs = consulta("Vez, Cod_Ejercicio, Cod_Almacen, Codigo",
        " AND Referencia =" + sql::literal(referencia) + " ORDER BY Vez");
    for (; !rs->Eof(); rs->MoveNext())
        ultima = { adodb::entero(*rs, "Vez"),
            { adodb::entero(*rs, "Cod_Ejercicio"), adodb::entero(*rs, "Cod_Almacen"),
                adodb::texto(*rs, "Codigo") } };
    return ultima;
}

void Importaciones::anota(adodb::Connection& conexion, const std::string& referencia, std::int16_t vez,
    const ClaveAtipico& clave) const
{
    try {
        conexion.Execute("INSERT INTO Importaciones (Huella, Referencia, Vez, Cod_Empresa, Cod_Ejercicio, "
                         "Cod_Almacen, Codigo) VALUES ("
            + sql::literal(m_huella) + ", " + sql::literal(referencia) + ", " + std::to_string(vez) + ", "
            + std::to_string(m_empresa) + ", " + std::to_string(clave.Ejercicio) + ", "
            + std::to_string(clave.Almacen) + ", " + sql::literal(clave.Codigo) + ")");
    } catch (const adodb::ErrorBaseDatos& error) {
        if (error.categoria() != adodb::Categoria::restriccion)
            throw;
        const auto otra = busca(referencia); // the key guards it, so that only a conflict costs a look
        if (!otra || otra->vez != vez)
            throw;
        throw Error(no_hecho, "atipicos",
            "Otro proceso acaba de registrar «" + referencia + "» de este fichero como " + otra->clave.Codigo
                + ".");
    }
}

} // namespace atipicos::app
