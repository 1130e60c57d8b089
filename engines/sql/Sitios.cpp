#include "engines/sql/Sitios.hpp"

#include <array>

namespace atipicos::sql {

namespace {

    using Papel = Sitio::Papel;

    class Situador {
    public:
        Situador(const Vista& vista, std::span<const Literal> literales)
            : m_vista(vista)
            , m_literales(literales)
            , m_de_token(vista.size(), ninguno)
        {
        }

        std::optional<std::vector<Sitio>> situa()
        {
            if (!empareja())
                return std::nullopt;
            if (m_vista.es(0, "INSERT"))
                situa_insertados();
            else if (m_vista.es(0, "UPDATE"))
                situa_asignados();
            if (!m_con_valores)
                situa_comparados(0, m_vista.size());
            return std::move(m_sitios);
        }

    private:
        static constexpr std::size_t ninguno = static_cast<std::size_t>(-1);

        /// The literals end where tokens end; texts are literals, all of them.
        bool empareja()
        {
            for (std::size_t i = 0; i < m_vista.size(); ++i) {
                const auto& token = m_vista[i];
                const bool es_texto = token.clase == Clase::texto;
                if (!es_texto && token.clase != Clase::numero)
                    continue;
                const auto cual = m_sitios.size();
                if (cual < m_literales.size() && es_este(token.texto, m_literales[cual].texto)) {
                    m_de_token[i] = cual;
                    m_sitios.push_back({ i });
                } else if (es_texto) {
                    return false;
                }
            }
            return m_sitios.size() == m_literales.size();
        }

        static bool es_este(std::string_view token, std::string_view literal)
        {
            return token.data() + token.size() == literal.data() + literal.size()
                && token.size() + (literal.front() == '-' ? 1 : 0) == literal.size();
        }

        [[nodiscard]] bool es_literal(std::size_t i) const
        {
            return i < m_de_token.size() && m_de_token[i] != ninguno;
        }

        /// The first token of the literal at `i`.
        [[nodiscard]] std::size_t inicio(std::size_t i) const
        {
            return m_literales[m_de_token[i]].texto.front() == '-' ? i - 1 : i;
        }

        /// The literal that begins at `i`; `ninguno` when none does.
        [[nodiscard]] std::size_t literal_desde(std::size_t i) const
        {
            const auto cual = m_vista.es(i, "-") ? i + 1 : i;
            return es_literal(cual) && inicio(cual) == i ? cual : ninguno;
        }

        void pon(std::size_t i, Papel papel) { m_sitios[m_de_token[i]].papel = papel; }

        /// `INSERT INTO tabla (columnas) VALUES (…), (…)`
        void situa_insertados()
        {
            if (!m_vista.es(1, "INTO"))
                return;
            auto i = m_vista.fin_valor(2) + 1;
            if (m_vista.es(i, "("))
                i = cierre(i) + 1;
            if (!m_vista.es(i, "VALUES"))
                return;
            m_con_valores = true;
            do {
                const auto fin = cierre(++i);
                if (!m_vista.es(i, "("))
                    return;
                situa_lista(i + 1, fin);
                situa_comparados(i + 1, fin); // in the queries that stand there for a value
                i = fin + 1;
            } while (m_vista.es(i, ","));
        }

        void situa_lista(std::size_t i, std::size_t fin)
        {
            for (int profundidad = 0; i < fin; ++i) {
                const auto cual = literal_desde(i);
                const bool empieza = m_vista.es(i - 1, "(") || m_vista.es(i - 1, ",");
                if (profundidad == 0 && empieza && cual != ninguno
                    && (cual + 1 == fin || m_vista.es(cual + 1, ",")))
                    pon(cual, Papel::asignado);
                profundidad += m_vista.es(i, "(") ? 1 : m_vista.es(i, ")") ? -1 : 0;
            }
        }

        /// The parenthesis that closes the one at `i`; the end when none does.
        [[nodiscard]] std::size_t cierre(std::size_t i) const
        {
            for (int profundidad = 0; i < m_vista.size(); ++i) {
                profundidad += m_vista.es(i, "(") ? 1 : m_vista.es(i, ")") ? -1 : 0;
                if (profundidad <= 0)
                    return i;
            }
            return i;
        }

        /// `UPDATE tabla SET columna = …, columna = … WHERE …`
        void situa_asignados()
        {
            auto i = m_vista.fin_valor(1) + 1;
            if (!m_vista.es(i, "SET"))
                return;
            do {
                const auto igual = m_vista.fin_valor(i + 1) + 1;
                if (!m_vista.es_nombre(i + 1) || !m_vista.es(igual, "="))
                    return;
                const auto cual = literal_desde(igual + 1);
                i = fin_de_asignacion(igual + 1);
                if (cual != ninguno && cual + 1 == i)
                    pon(cual, Papel::asignado);
            } while (m_vista.es(i, ","));
        }

        [[nodiscard]] std::size_t fin_de_asignacion(std::size_t i) const
        {
            for (int profundidad = 0; i < m_vista.size(); ++i) {
                if (profundidad == 0 && (m_vista.es(i, ",") || m_vista.es(i, "WHERE")))
                    return i;
                profundidad += m_vista.es(i, "(") ? 1 : m_vista.es(i, ")") ? -1 : 0;
            }
            return i;
        }

        void situa_comparados(std::size_t desde, std::size_t hasta)
        {
            std::vector<bool> condicion{ false }; // by depth: behind WHERE or ON, in no function's arguments
            for (std::size_t i = desde; i < hasta; ++i) {
                if (m_vista.es(i, "(")) {
                    condicion.push_back(condicion.back() && acaba_antes(i));
                } else if (m_vista.es(i, ")")) {
                    condicion.pop_back();
                    if (condicion.empty())
                        return; // no statement that any database reads
                } else if (m_vista.es(i, "WHERE") || m_vista.es(i, "ON")) {
                    condicion.back() = true;
                } else if (acaba_condicion(i)) {
                    condicion.back() = false;
                } else if (condicion.back() && m_vista.es(i, "IN") && m_vista.es(i + 1, "(")) {
                    situa_lista_de_in(i);
                } else if (condicion.back() && es_literal(i)) {
                    situa_comparado(i);
                }
            }
        }

        /// Words behind which a condition is over.
        [[nodiscard]] bool acaba_condicion(std::size_t i) const
        {
            static constexpr std::array<std::string_view, 20> palabras{ "SELECT", "FROM", "GROUP", "ORDER",
                "HAVING", "LIMIT", "UNION", "EXCEPT", "INTERSECT", "JOIN", "INNER", "LEFT", "RIGHT", "FULL",
                "CROSS", "NATURAL", "FOR", "WINDOW", "RETURNING", "SET" };
            return m_vista.es_una_de(i, palabras);
        }

        /// Whether an operand of AND begins at `i`.
        [[nodiscard]] bool acaba_antes(std::size_t i) const
        {
            static constexpr std::array<std::string_view, 5> antes{ "WHERE", "ON", "AND", "OR", "(" };
            return m_vista.es_una_de(i - 1, antes) || (m_vista.es(i - 1, "NOT") && acaba_antes(i - 1));
        }

        /// Whether an operand of AND is over before `i`.
        [[nodiscard]] bool empieza_otro(std::size_t i) const
        {
            static constexpr std::array<std::string_view, 5> despues{ "AND", "OR", ")", "WHERE", "ON" };
            return i == m_vista.size() || m_vista.es_una_de(i, despues) || acaba_condicion(i);
        }

        [[nodiscard]] bool columna_hasta(std::size_t fin) const
        {
            return m_vista.es_nombre(fin) && acaba_antes(m_vista.inicio_valor(fin));
        }

        [[nodiscard]] bool columna_desde(std::size_t principio) const
        {
            return m_vista.es_nombre(principio) && empieza_otro(m_vista.fin_valor(principio) + 1);
        }

        [[nodiscard]] bool columna_de(
            std::size_t operador) const ///< `columna [NOT] BETWEEN`, `columna [NOT] IN`
        {
            return columna_hasta(m_vista.es(operador - 1, "NOT") ? operador - 2 : operador - 1);
        }

        void situa_comparado(std::size_t i)
        {
            const auto antes = inicio(i) - 1;
            if (m_vista.es_comparacion(antes) && columna_hasta(antes - 1) && empieza_otro(i + 1))
                pon(i, papel_de(antes));
            else if (acaba_antes(inicio(i)) && m_vista.es_comparacion(i + 1) && columna_desde(i + 2))
                pon(i, papel_de(i + 1));
            else if (m_vista.es(antes, "BETWEEN") && columna_de(antes) && m_vista.es(i + 1, "AND")
                && empieza_otro(fin_de_valor(i + 2) + 1))
                pon(i, Papel::en_rango);
            else if (m_vista.es(antes, "AND") && empieza_otro(i + 1)) {
                const auto entre = inicio_de_valor(antes - 1) - 1;
                if (m_vista.es(entre, "BETWEEN") && columna_de(entre))
                    pon(i, Papel::en_rango);
            }
        }

        [[nodiscard]] Papel papel_de(std::size_t comparacion) const
        {
            static constexpr std::array<std::string_view, 4> iguales{ "=", "==", "<>", "!=" };
            return m_vista.es_una_de(comparacion, iguales) ? Papel::igualado : Papel::en_rango;
        }

        /// The last token of the name or literal that begins at `i`.
        [[nodiscard]] std::size_t fin_de_valor(std::size_t i) const
        {
            const auto cual = literal_desde(i);
            return cual != ninguno ? cual : m_vista.fin_valor(i);
        }

        /// The first token of the name or literal that ends at `fin`.
        [[nodiscard]] std::size_t inicio_de_valor(std::size_t fin) const
        {
            return es_literal(fin) ? inicio(fin) : m_vista.inicio_valor(fin);
        }

        /// `columna IN (…, …)`, of literals alone
        void situa_lista_de_in(std::size_t in)
        {
            const auto fin = cierre(in + 1);
            if (!columna_de(in) || !empieza_otro(fin + 1))
                return;
            std::vector<std::size_t> valores;
            for (std::size_t i = in + 1; i < fin; ++i) { // from the parenthesis or comma before each value
                const auto cual = literal_desde(i + 1);
                if (cual == ninguno || (cual + 1 != fin && !m_vista.es(cual + 1, ",")))
                    return;
                valores.push_back(cual);
                i = cual;
            }
            for (const auto i : valores)
                pon(i, Papel::igualado);
        }

        const Vista& m_vista;
        std::span<const Literal> m_literales;
        std::vector<std::size_t> m_de_token; ///< the literal of each token
        std::vector<Sitio> m_sitios;
        bool m_con_valores = false;
    };

}

std::optional<std::vector<Sitio>> sitios_de(const Vista& vista, std::span<const Literal> literales)
{
    return Situador(vista, literales).situa();
}

} // namespace atipicos::sql
