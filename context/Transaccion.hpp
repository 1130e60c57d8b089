#pragma once

#include "platform/adodb/Connection.hpp"

#include <memory>

namespace atipicos {

/// A transaction on a connection of the host: rolled back when it is destroyed without `Confirma`. It ends on
/// the connection on which it began, which it holds.
class Transaccion {
public:
    explicit Transaccion(std::shared_ptr<adodb::Connection> conexion, Donde donde = Donde::aqui());
    Transaccion(const Transaccion&) = delete;
    Transaccion& operator=(const Transaccion&) = delete;
    ~Transaccion();

    void Confirma(Donde donde = Donde::aqui()); ///< commits; when that fails the transaction is still open

private:
    std::shared_ptr<adodb::Connection> m_conexion;
    bool m_abierta = true;
};

} // namespace atipicos
