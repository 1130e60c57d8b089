#pragma once

#include "engines/postgresql/Enlace.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace atipicos::postgresql {

/// The keys by which a commit is known whose answer was lost. Each transaction that has changed something
/// writes one of its own, which says as long as it is there that all of it is. A session leaves its last one.
///
/// To ask for a key takes it, where it is not there: the transaction that was to write it can then not be
/// committed any more, should it still be on its way. See `sql::crea_confirmaciones_postgresql`.
class Confirmaciones {
public:
    static constexpr auto tabla = "Confirmaciones"; ///< where the session's schema has it keys are written

    Confirmaciones();

    /// What goes before the commit. It is valid until the next call, as `pregunta` is.
    [[nodiscard]] Orden& escribe();
    void confirmada(); ///< the one that was to be written last is

    /// What gives 1 when the transaction of the last key is committed, and 0 when it never will be.
    [[nodiscard]] Orden& pregunta();

private:
    std::string m_sesion; ///< with which nobody else's keys begin
    std::uint64_t m_numero = 0;
    std::string m_anterior; ///< there, and of no use any more
    std::string m_ultima;
    std::vector<Texto> m_valores;
    Orden m_orden;
};

} // namespace atipicos::postgresql
