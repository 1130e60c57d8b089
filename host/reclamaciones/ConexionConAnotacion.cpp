#include "host/reclamaciones/ConexionConAnotacion.hpp"

#include <utility>

namespace atipicos::app {

ConexionConAnotacion::ConexionConAnotacion(std::shared_ptr<adodb::Connection> real)
    : m_real(std::move(real))
{
}

void ConexionConAnotacion::Execute(
    const std::string& sql, std::int32_t* afectadas, adodb::CommandType tipo, Donde donde)
{
    m_real->Execute(sql, afectadas, tipo, donde);
}

void ConexionConAnotacion::BeginTrans(Donde donde) { m_real->BeginTrans(donde); }

void ConexionConAnotacion::CommitTrans(Donde donde)
{
    if (const auto pendiente = std::exchange(anotacion, nullptr))
        pendiente(*m_real);
    m_real->CommitTrans(donde);
}

void ConexionConAnotacion::RollbackTrans(Donde donde)
{
    anotacion = nullptr;
    m_real->RollbackTrans(donde);
}

std::unique_ptr<adodb::Recordset> ConexionConAnotacion::CreateRecordset()
{
    return m_real->CreateRecordset();
}

} // namespace atipicos::app
