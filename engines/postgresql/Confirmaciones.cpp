#include "engines/postgresql/Confirmaciones.hpp"

#include <random>
#include <string_view>

namespace atipicos::postgresql {

namespace {

    std::string al_azar() ///< 128 bits
    {
        constexpr std::string_view cifras = "0123456789abcdef";
        std::random_device azar;
        std::string texto;
        for (int i = 0; i < 32; ++i)
            texto += cifras[azar() % cifras.size()];
        return texto;
    }

}

Confirmaciones::Confirmaciones()
    : m_sesion(al_azar())
{
}

Orden& Confirmaciones::escribe()
{
    m_ultima = m_sesion + "-" + std::to_string(++m_numero);
    m_valores = { m_ultima, m_anterior };
    m_orden = { "SELECT confirmacion_anota($1, $2)", m_valores };
    return m_orden;
}

// A key that has been asked for is never one before: it stays until it is swept, and with it the answer.
void Confirmaciones::confirmada() { m_anterior = m_ultima; }

Orden& Confirmaciones::pregunta()
{
    m_valores = { m_ultima };
    m_orden = { "SELECT confirmacion_busca($1)", m_valores };
    return m_orden;
}

} // namespace atipicos::postgresql
