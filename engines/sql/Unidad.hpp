#pragma once

#include "engines/sql/Transacciones.hpp"

#include <memory>

namespace atipicos::sql {

/// Many transactions of a session that are committed together, in one durable commit, or not at all. Each of
/// them can be undone alone. It holds the locks of all of them until it ends, so it is to be short.
class Unidad {
public:
    /// Raises an error while a transaction or another unit is open, and when it cannot begin.
    explicit Unidad(std::shared_ptr<Transacciones> transacciones, Donde donde = Donde::aqui());
    Unidad(const Unidad&) = delete;
    Unidad& operator=(const Unidad&) = delete;
    ~Unidad(); ///< undoes what was not committed

    /// Undoes the transaction that was committed last, whole; the ones before it stay. Nothing when it was
    /// rolled back or undone already.
    void deshace_ultima(Donde donde = Donde::aqui());

    void confirma(Donde donde = Donde::aqui()); ///< commits all; when that fails nothing of it is kept

private:
    std::shared_ptr<Transacciones> m_transacciones;
    bool m_abierta = true;
};

} // namespace atipicos::sql
