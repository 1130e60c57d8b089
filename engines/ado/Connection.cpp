#include "engines/ado/Connection.hpp"

#include "engines/ado/Conversion.hpp"
#include "engines/ado/Recordset.hpp"

#include <utility>

namespace atipicos::ado {

using automation::Despacho;
using automation::Valor;

// The host may lend another connection while it answers a call, which takes this object away: calls hold what
// they need.

Connection::Connection(Despacho conexion)
    : m_conexion(std::move(conexion))
{
}

void Connection::Execute(const std::string& sql, std::int32_t* afectadas, adodb::CommandType, Donde donde)
{
    con_base_de_datos(sql, donde, [&, conexion = m_conexion] {
        Valor cuantas;
        conexion.llama("Execute", sql, Valor::referencia(cuantas), opcion_texto);
        if (afectadas != nullptr)
            *afectadas = cuantas.es_vacio() ? 0 : CLng(variant_de(cuantas.get(), donde), donde);
    });
}

void Connection::BeginTrans(Donde donde)
{
    con_base_de_datos({}, donde, [conexion = m_conexion] { conexion.llama("BeginTrans"); });
}

void Connection::CommitTrans(Donde donde)
{
    con_base_de_datos({}, donde, [conexion = m_conexion] { conexion.llama("CommitTrans"); });
}

void Connection::RollbackTrans(Donde donde)
{
    con_base_de_datos({}, donde, [conexion = m_conexion] { conexion.llama("RollbackTrans"); });
}

std::unique_ptr<adodb::Recordset> Connection::CreateRecordset()
{
    return std::make_unique<Recordset>(m_conexion);
}

} // namespace atipicos::ado
