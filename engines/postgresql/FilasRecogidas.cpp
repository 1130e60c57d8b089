#include "engines/postgresql/FilasRecogidas.hpp"

namespace atipicos::postgresql {

void FilasRecogidas::agrega(const PGresult* respuesta)
{
    m_columnas = static_cast<std::size_t>(PQnfields(respuesta));
    std::vector<std::uint32_t> largos;
    largos.reserve(m_columnas);
    for (int i = 0; i < static_cast<int>(m_columnas); ++i) {
        if (PQgetisnull(respuesta, 0, i) != 0) {
            largos.push_back(nulo);
            continue;
        }
        const auto largo = static_cast<std::uint32_t>(PQgetlength(respuesta, 0, i));
        m_textos.append(PQgetvalue(respuesta, 0, i), largo);
        largos.push_back(largo);
    }
    m_largos.insert(m_largos.end(), largos.begin(), largos.end()); // all of the row or nothing
}

bool FilasRecogidas::avanza()
{
    if (m_celda == m_largos.size())
        return false;
    m_actual.assign(m_columnas, {});
    for (auto& celda : m_actual) {
        const auto largo = m_largos[m_celda++];
        if (largo == nulo)
            continue;
        celda = std::string_view(m_textos.data() + m_leido, largo);
        m_leido += largo;
    }
    return true;
}

} // namespace atipicos::postgresql
