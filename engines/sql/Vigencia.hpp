#pragma once

#include "engines/sql/Tokens.hpp"

#include <string_view>
#include <utility>

namespace atipicos::sql {

/// Whether what a connection has read of its database's catalogue still holds. Reading it costs more than
/// most statements: a transaction that is undone makes it void only if it had changed the catalogue.
class Vigencia {
public:
    [[nodiscard]] bool vale() const noexcept { return m_vale; }
    void leido() noexcept { m_vale = true; }
    void caduca() noexcept { m_vale = false; }

    void ejecutada(std::string_view sql) noexcept ///< a statement that did not fail
    {
        if (!cambia_el_esquema(sql))
            return;
        m_vale = false;
        m_cambiado = true;
    }
    void confirmada() noexcept { m_cambiado = false; } ///< the transaction
    void deshecha_en_parte() noexcept ///< what is left of the transaction may have changed the catalogue too
    {
        if (m_cambiado)
            m_vale = false;
    }
    void deshecha() noexcept
    {
        if (std::exchange(m_cambiado, false))
            m_vale = false;
    }

private:
    bool m_vale = false;
    bool m_cambiado = false; ///< since the last end of a transaction
};

} // namespace atipicos::sql
