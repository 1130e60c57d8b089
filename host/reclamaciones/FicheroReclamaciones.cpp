#include "host/reclamaciones/FicheroReclamaciones.hpp"

#include "host/reclamaciones/InterpreteReclamaciones.hpp"

namespace atipicos::app {

LectorReclamaciones::LectorReclamaciones(Trozos trozos)
    : m_csv(std::move(trozos))
{
    if (!m_csv.lee(m_fila))
        throw ErrorDeContenido("el fichero está vacío.");
    m_interprete = std::make_unique<InterpreteReclamaciones>(m_fila);
    m_hay_fila = m_csv.lee(m_fila);
}

LectorReclamaciones::~LectorReclamaciones() = default;

std::optional<Reclamacion> LectorReclamaciones::siguiente()
{
    if (!m_hay_fila)
        return std::nullopt;
    Reclamacion una = m_interprete->empieza(m_fila);
    while ((m_hay_fila = m_csv.lee(m_fila)) && m_interprete->continua(una, m_fila))
        m_interprete->agrega(una, m_fila);
    return una;
}

} // namespace atipicos::app
