#pragma once

#include "platform/adodb/Connection.hpp"

namespace atipicos {

/// A transaction on a connection of the host: rolled back when it is destroyed without `Confirma`.
/// The connection must outlive it.
class Transaccion {
public:
    explicit Transaccion(adodb::Connection& conexion, Donde donde = Donde::aqui());
    Transaccion(const Transaccion&) = delete;
    Transaccion& operator=(const Transaccion&) = delete;
    ~Transaccion();

    void Confirma(Donde donde = Donde::aqui()); ///< commits; when that fails the transaction is still open

private:
    adodb::Connection& m_conexion;
    bool m_abierta = true;
};

} // namespace atipicos
