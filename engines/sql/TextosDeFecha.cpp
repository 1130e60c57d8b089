#include "engines/sql/TextosDeFecha.hpp"

#include "engines/sql/Tokens.hpp"

#include <algorithm>
#include <array>
#include <forward_list>
#include <string>
#include <string_view>

namespace atipicos::sql {

namespace {

    class BuscadorDeFechas {
    public:
        BuscadorDeFechas(const Vista& vista, const Catalogo& catalogo)
            : m_vista(vista)
            , m_catalogo(catalogo)
        {
        }

        std::vector<std::size_t> busca(const std::vector<TablaNombrada>& nombradas)
        {
            reune_tablas(nombradas);
            reune_comparados();
            reune_insertados();
            return std::move(m_textos);
        }

    private:
        /// The tables that the statement names, under their aliases and their own names.
        void reune_tablas(const std::vector<TablaNombrada>& nombradas)
        {
            for (const auto& una : nombradas) {
                const auto& nombre = m_nombres.emplace_front(
                    std::string(prefijo_de(una, m_vista, m_catalogo)).append(m_vista.nombre(una.ultimo)));
                m_tablas.push_back({ m_vista.nombre(una.ultimo), nombre });
                if (una.alias != una.ultimo)
                    m_tablas.push_back({ m_vista.nombre(una.alias), nombre });
            }
        }

        /// Whether the name that ends at `fin` (`columna` or `alias.columna`) is a date column.
        [[nodiscard]] bool es_fecha(std::size_t fin) const
        {
            if (!m_vista.es_nombre(fin))
                return false;
            const auto columna = m_vista.nombre(fin);
            const bool calificada = m_vista.es(fin - 1, ".");
            const auto alias = calificada ? m_vista.nombre(fin - 2) : std::string_view();
            return std::any_of(m_tablas.begin(), m_tablas.end(), [&](const auto& tabla) {
                return (!calificada || iguales(tabla.alias, alias))
                    && m_catalogo.es_fecha(tabla.nombre, columna);
            });
        }

        [[nodiscard]] bool es_fecha_hasta(std::size_t fin) const
        {
            return es_fecha(fin) && !m_vista.es_operador(m_vista.inicio_valor(fin) - 1);
        }

        [[nodiscard]] bool es_fecha_desde(std::size_t inicio) const
        {
            const auto fin = m_vista.fin_valor(inicio);
            return es_fecha(fin) && !m_vista.es_operador(fin + 1);
        }

        void reune_comparados()
        {
            for (std::size_t i = 0; i < m_vista.size(); ++i)
                if (m_vista.es_texto(i) && comparada_con_fecha(i))
                    m_textos.push_back(i);
        }

        [[nodiscard]] bool comparada_con_fecha(std::size_t i) const
        {
            if (m_vista.es_operador(i - 1) || m_vista.es_operador(i + 1))
                return false;
            if (m_vista.es_comparacion(i - 1) && es_fecha_hasta(i - 2))
                return true;
            if (m_vista.es_comparacion(i + 1) && es_fecha_desde(i + 2))
                return true;
            return entre_fechas(i) || en_lista_de_fechas(i);
        }

        [[nodiscard]] std::size_t sin_not(std::size_t i) const { return m_vista.es(i, "NOT") ? i - 1 : i; }

        /// `columna BETWEEN 'i' AND …`, `columna BETWEEN … AND 'i'`, `'i' BETWEEN columna AND …`
        [[nodiscard]] bool entre_fechas(std::size_t i) const
        {
            if (m_vista.es(i - 1, "BETWEEN"))
                return es_fecha_hasta(sin_not(i - 2));
            if (m_vista.es(i - 1, "AND")) {
                const auto entre = m_vista.inicio_valor(i - 2) - 1;
                return m_vista.es(entre, "BETWEEN") && es_fecha_hasta(sin_not(entre - 1));
            }
            const auto entre = m_vista.es(i + 1, "NOT") ? i + 2 : i + 1;
            return m_vista.es(entre, "BETWEEN") && es_fecha_desde(entre + 1);
        }

        /// `columna IN ('…', '…')`
        [[nodiscard]] bool en_lista_de_fechas(std::size_t i) const
        {
            std::size_t j = i - 1;
            while (m_vista.es(j, ",") && m_vista[j - 1].clase != Clase::simbolo)
                j -= 2;
            return m_vista.es(j, "(") && m_vista.es(j - 1, "IN") && es_fecha_hasta(sin_not(j - 2));
        }

        /// `INSERT INTO Tabla (columnas) VALUES (…), (…)` or `… SELECT …`
        void reune_insertados()
        {
            std::size_t i = 0;
            while (i < m_vista.size() && !m_vista.es(i, "INTO"))
                ++i;
            if (!(m_vista.es(0, "INSERT") || m_vista.es(0, "REPLACE")) || i == m_vista.size())
                return;
            const TablaNombrada destino{ i + 1, m_vista.fin_valor(i + 1), 0, TablaNombrada::Uso::llenada };
            i = destino.ultimo;
            const auto tabla
                = std::string(prefijo_de(destino, m_vista, m_catalogo)).append(m_vista.nombre(i));
            std::vector<bool> son_fechas;
            if (m_vista.es(++i, "(")) {
                do {
                    ++i;
                    son_fechas.push_back(m_catalogo.es_fecha(tabla, m_vista.nombre(i)));
                    ++i;
                } while (m_vista.es(i, ","));
                ++i;
            } else {
                son_fechas = m_catalogo.fechas_por_lugar(tabla);
            }
            if (m_vista.es(i, "VALUES"))
                reune_de_filas(i + 1, son_fechas);
            else
                reune_de_selecciones(i, son_fechas);
        }

        void reune_de_filas(std::size_t i, const std::vector<bool>& son_fechas)
        {
            for (; m_vista.es(i, "("); ++i) {
                i = reune_de_valores(i + 1, son_fechas) + 1;
                if (!m_vista.es(i, ","))
                    break;
            }
        }

        /// The lists of the SELECTs that stand one below the other, not of those inside parentheses.
        void reune_de_selecciones(std::size_t i, const std::vector<bool>& son_fechas)
        {
            for (int profundidad = 0; i < m_vista.size(); ++i) {
                if (profundidad == 0 && m_vista.es(i, "SELECT"))
                    i = reune_de_valores(i + 1, son_fechas) - 1;
                else
                    profundidad += m_vista.es(i, "(") ? 1 : m_vista.es(i, ")") ? -1 : 0;
            }
        }

        /// Values from `i` on to the end of their list; a value that is one text and no more is one of them
        /// when its column holds dates. Returns the position of what ended the list.
        std::size_t reune_de_valores(std::size_t i, const std::vector<bool>& son_fechas)
        {
            static constexpr std::array<std::string_view, 7> finales{ ")", "FROM", "WHERE", "UNION", "EXCEPT",
                "INTERSECT", ";" };
            int profundidad = 0;
            std::size_t columna = 0;
            std::size_t inicio = i;
            for (; i <= m_vista.size(); ++i) {
                const bool acaba = i == m_vista.size() || (profundidad == 0 && m_vista.es_una_de(i, finales));
                if (acaba || (profundidad == 0 && m_vista.es(i, ","))) {
                    const bool solo = i == inicio + 1 || m_vista.es(inicio + 1, "AS");
                    if (columna < son_fechas.size() && son_fechas[columna] && solo
                        && m_vista.es_texto(inicio))
                        m_textos.push_back(inicio);
                    ++columna;
                    inicio = i + 1;
                }
                if (acaba)
                    break;
                profundidad += m_vista.es(i, "(") ? 1 : m_vista.es(i, ")") ? -1 : 0;
            }
            return i;
        }

        struct Tabla {
            std::string_view alias;
            std::string_view nombre;
        };

        const Vista& m_vista;
        const Catalogo& m_catalogo;
        std::forward_list<std::string> m_nombres; ///< that the tables refer to; a list does not move them
        std::vector<Tabla> m_tablas;
        std::vector<std::size_t> m_textos;
    };

}

std::vector<std::size_t> textos_de_fecha(
    const Vista& vista, const std::vector<TablaNombrada>& tablas, const Catalogo& catalogo)
{
    return BuscadorDeFechas(vista, catalogo).busca(tablas);
}

} // namespace atipicos::sql
