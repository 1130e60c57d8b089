#include "engines/sql/Unidad.hpp"

#include <utility>

namespace atipicos::sql {

Unidad::Unidad(std::shared_ptr<Transacciones> transacciones, Donde donde)
    : m_transacciones(std::move(transacciones))
{
    m_transacciones->empieza_unidad(donde);
}

Unidad::~Unidad()
{
    if (!m_abierta)
        return;
    try {
        m_transacciones->deshace_unidad(Donde{});
    } catch (...) { // NOLINT(bugprone-empty-catch): a session that cannot even roll back has lost it anyway
    }
}

void Unidad::deshace_ultima(Donde donde) { m_transacciones->deshace_ultima(donde); }

void Unidad::confirma(Donde donde)
{
    m_transacciones->confirma_unidad(donde);
    m_abierta = false;
}

} // namespace atipicos::sql
