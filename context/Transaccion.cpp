#include "context/Transaccion.hpp"

#include <utility>

namespace atipicos {

Transaccion::Transaccion(std::shared_ptr<adodb::Connection> conexion, Donde donde)
    : m_conexion(std::move(conexion))
{
    m_conexion->BeginTrans(donde);
}

Transaccion::~Transaccion()
{
    if (!m_abierta)
        return;
    try {
        m_conexion->RollbackTrans();
    } catch (...) { // NOLINT(bugprone-empty-catch): the error that led here is the one to show; a lost
                    // connection has rolled back by itself
    }
}

void Transaccion::Confirma(Donde donde)
{
    m_conexion->CommitTrans(donde);
    m_abierta = false;
}

} // namespace atipicos
