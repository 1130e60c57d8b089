#include "engines/sql/Nombres.hpp"

#include <algorithm>
#include <array>

namespace atipicos::sql {

namespace {

    using Uso = TablaNombrada::Uso;

    constexpr std::array<std::string_view, 18> clausulas{ "WHERE", "INNER", "LEFT", "RIGHT", "FULL", "CROSS",
        "JOIN", "ON", "ORDER", "GROUP", "SET", "VALUES", "SELECT", "UNION", "HAVING", "NATURAL", "FOR",
        "LIMIT" };

    bool es_palabra_de_tabla(const Vista& vista, std::size_t i)
    {
        static constexpr std::array<std::string_view, 4> otras{ "WITH", "OF", "EXISTS", "CASCADE" };
        return vista.es_nombre(i) && !vista.es_una_de(i, clausulas) && !vista.es_una_de(i, otras);
    }

    class Busqueda {
    public:
        explicit Busqueda(const Vista& vista)
            : m_vista(vista)
        {
        }

        std::vector<TablaNombrada> busca()
        {
            if (m_vista.es(0, "WITH"))
                reune_llamadas();
            if (m_vista.es(0, "CREATE") || m_vista.es(0, "DROP") || m_vista.es(0, "ALTER"))
                busca_definida();
            for (std::size_t i = 0; i < m_vista.size(); ++i)
                if (m_vista.es(i, "JOIN") || (m_vista.es(i, "FROM") && !es_de_funcion(i)))
                    anota_lista(i + 1, Uso::leida);
                else if (m_vista.es(i, "INTO"))
                    anota(i + 1, Uso::llenada);
                else if (m_vista.es(i, "UPDATE") && !es_accion(i))
                    anota_lista(m_vista.es(i + 1, "OR") ? i + 3 : i + 1, Uso::cambiada);
                else if (m_vista.es(i, "REFERENCES"))
                    anota(i + 1, Uso::definida);
            return std::move(m_tablas);
        }

    private:
        /// `WITH a AS (…), b AS (…) …`
        void reune_llamadas()
        {
            for (std::size_t i = 1; i < m_vista.size(); ++i)
                if (m_vista.es_nombre(i) && m_vista.es(i + 1, "AS") && m_vista.es(i + 2, "("))
                    m_llamadas.push_back(m_vista.nombre(i));
        }

        /// `CREATE TABLE IF NOT EXISTS t`, `CREATE INDEX i ON t`, `CREATE TRIGGER d AFTER INSERT ON t` …
        void busca_definida()
        {
            static constexpr std::array<std::string_view, 4> clases{ "TABLE", "VIEW", "INDEX", "TRIGGER" };
            std::size_t i = 1;
            while (i < 4 && !m_vista.es_una_de(i, clases))
                ++i;
            if (i == 4)
                return;
            const bool es_indice = m_vista.es(i, "INDEX") || m_vista.es(i, "TRIGGER");
            ++i;
            while (m_vista.es(i, "IF") || m_vista.es(i, "NOT") || m_vista.es(i, "EXISTS"))
                ++i;
            anota(i, es_indice ? Uso::indice : Uso::definida);
            while (es_indice && i < m_vista.size() && !m_vista.es(i, "ON"))
                ++i;
            if (es_indice)
                anota(i + 1, Uso::definida);
        }

        /// `EXTRACT(YEAR FROM x)`, `IS DISTINCT FROM x`: no table follows.
        [[nodiscard]] bool es_de_funcion(std::size_t i) const
        {
            if (m_vista.es(i - 1, "DISTINCT"))
                return true;
            int profundidad = 0;
            for (std::size_t j = i; j-- > 0;) {
                profundidad += m_vista.es(j, ")") ? 1 : m_vista.es(j, "(") ? -1 : 0;
                if (profundidad < 0)
                    return !m_vista.es(j + 1, "SELECT") && m_vista.es_nombre(j - 1);
            }
            return false;
        }

        /// `ON UPDATE CASCADE`, `DO UPDATE SET`, `FOR UPDATE`, `AFTER UPDATE ON t`
        [[nodiscard]] bool es_accion(std::size_t i) const
        {
            static constexpr std::array<std::string_view, 6> antes{ "ON", "DO", "FOR", "AFTER", "BEFORE",
                "OF" };
            return m_vista.es_una_de(i - 1, antes);
        }

        void anota_lista(std::size_t i, Uso uso)
        {
            while (m_vista.es(i, "("))
                ++i;
            while (es_palabra_de_tabla(m_vista, i)) {
                i = anota(i, uso);
                if (!m_vista.es(i, ","))
                    break;
                ++i;
            }
        }

        /// Gives the position behind the table and its alias.
        std::size_t anota(std::size_t i, Uso uso)
        {
            if (!es_palabra_de_tabla(m_vista, i))
                return i;
            TablaNombrada tabla{ i, m_vista.fin_valor(i), 0, uso };
            tabla.alias = tabla.ultimo;
            std::size_t fin = tabla.ultimo + 1;
            const bool es_funcion = uso == Uso::leida && m_vista.es(fin, "(");
            if (uso == Uso::leida || uso == Uso::cambiada || uso == Uso::llenada) {
                const auto alias = m_vista.es(fin, "AS") ? fin + 1 : fin;
                if (es_palabra_de_tabla(m_vista, alias)) {
                    tabla.alias = alias;
                    fin = alias + 1;
                }
            }
            if (!es_funcion && !es_llamada(tabla))
                m_tablas.push_back(tabla);
            return fin;
        }

        [[nodiscard]] bool es_llamada(const TablaNombrada& tabla) const
        {
            return tabla.primero == tabla.ultimo
                && std::any_of(m_llamadas.begin(), m_llamadas.end(),
                    [&](auto nombre) { return iguales(nombre, m_vista.nombre(tabla.ultimo)); });
        }

        const Vista& m_vista;
        std::vector<TablaNombrada> m_tablas;
        std::vector<std::string_view> m_llamadas; ///< by the WITH
    };

    bool es_del_sistema(std::string_view nombre)
    {
        static constexpr std::array<std::string_view, 2> comienzos{ "sqlite_", "pg_" };
        return std::any_of(comienzos.begin(), comienzos.end(),
            [&](auto comienzo) { return iguales(nombre.substr(0, comienzo.size()), comienzo); });
    }

}

std::vector<TablaNombrada> tablas_nombradas(const Vista& vista) { return Busqueda(vista).busca(); }

std::string_view prefijo_de(const TablaNombrada& tabla, const Vista& vista, const Catalogo& catalogo)
{
    if (tabla.primero == tabla.ultimo)
        return es_del_sistema(vista.nombre(tabla.ultimo)) ? std::string_view() : catalogo.propio();
    // Where it stands beside the current database, `dbo.T` would be that one's.
    if (tabla.ultimo == tabla.primero + 2 && iguales(vista.nombre(tabla.primero), "dbo")
        && catalogo.propio().ends_with(".dbo."))
        return catalogo.propio();
    if (tabla.ultimo != tabla.primero + 4 || !iguales(vista.nombre(tabla.primero + 2), "dbo"))
        return {};
    const auto* prefijo = catalogo.base(vista.nombre(tabla.primero));
    return prefijo == nullptr ? std::string_view() : *prefijo;
}

} // namespace atipicos::sql
