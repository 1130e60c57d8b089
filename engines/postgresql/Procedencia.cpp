#include "engines/postgresql/Procedencia.hpp"

#include <algorithm>

namespace atipicos::postgresql {

Procedencia::Procedencia(const std::string& consulta, const sql::Catalogo& catalogo, const Tablas& tablas)
    : m_catalogo(catalogo)
    , m_tablas(tablas)
    , m_tokens(sql::separa(consulta))
    , m_vista(m_tokens)
    , m_nombradas(sql::tablas_nombradas(m_vista))
{
    std::erase_if(m_nombradas, [](const auto& una) { return una.uso != sql::TablaNombrada::Uso::leida; });
    lee_columnas();
}

int Procedencia::profundidad(std::size_t i) const
{
    int abiertos = 0;
    for (std::size_t j = 0; j < i; ++j)
        abiertos += m_vista.es(j, "(") ? 1 : m_vista.es(j, ")") ? -1 : 0;
    return abiertos;
}

const TablaConClave* Procedencia::tabla() const
{
    // The query's own FROM before those of queries inside it.
    const auto suya = std::find_if(m_nombradas.begin(), m_nombradas.end(),
        [&](const auto& una) { return profundidad(una.primero) == 0; });
    if (suya != m_nombradas.end())
        return tabla_de(*suya);
    return m_nombradas.empty() ? nullptr : tabla_de(m_nombradas.front());
}

const TablaConClave* Procedencia::tabla_de(const sql::TablaNombrada& nombrada) const
{
    std::string nombre(sql::prefijo_de(nombrada, m_vista, m_catalogo));
    if (nombre.empty() && nombrada.ultimo == nombrada.primero + 2) // `esquema.Tabla`
        nombre = std::string(m_vista.nombre(nombrada.primero)) + '.';
    return m_tablas.tabla(nombre.append(m_vista.nombre(nombrada.ultimo)));
}

bool Procedencia::la_nombra(const sql::TablaNombrada& nombrada, std::string_view de) const
{
    return de.empty() || sql::iguales(m_vista.nombre(nombrada.alias), de);
}

bool Procedencia::es_bit(std::size_t columna, std::string_view nombre) const
{
    Pedida pedida{ {}, nombre };
    if (m_pedidas)
        pedida = columna < m_pedidas->size() ? (*m_pedidas)[columna] : Pedida{};
    return std::any_of(m_nombradas.begin(), m_nombradas.end(), [&](const auto& una) {
        const auto* tabla = la_nombra(una, pedida.de) ? tabla_de(una) : nullptr;
        return tabla != nullptr && tabla->bits.contains(pedida.nombre);
    });
}

/// `SELECT [DISTINCT] a, t.b AS c, f(d) FROM …`
void Procedencia::lee_columnas()
{
    std::size_t i = m_vista.es(0, "SELECT") ? 1 : m_vista.size();
    i += m_vista.es(i, "DISTINCT") || m_vista.es(i, "ALL") ? 1U : 0U;
    std::vector<Pedida> todas;
    while (i < m_vista.size() && !m_vista.es(i, "FROM")) {
        const auto inicio = i;
        int abiertos = 0;
        for (; i < m_vista.size() && (abiertos > 0 || (!m_vista.es(i, ",") && !m_vista.es(i, "FROM"))); ++i)
            abiertos += m_vista.es(i, "(") ? 1 : m_vista.es(i, ")") ? -1 : 0;
        if (m_vista.es(i - 1, "*") && (i - 1 == inicio || m_vista.es(i - 2, ".")))
            return;
        const auto fin = m_vista.fin_valor(inicio);
        const bool sola = m_vista.es_nombre(inicio)
            && (fin + 1 == i || (m_vista.es(fin + 1, "AS") && fin + 3 == i)
                || (m_vista.es_nombre(fin + 1) && fin + 2 == i));
        todas.push_back(sola
                ? Pedida{ fin > inicio ? m_vista.nombre(fin - 2) : std::string_view(), m_vista.nombre(fin) }
                : Pedida{});
        i += m_vista.es(i, ",") ? 1U : 0U;
    }
    m_pedidas = std::move(todas);
}

} // namespace atipicos::postgresql
