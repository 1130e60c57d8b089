#include "engines/sql/Reescritura.hpp"

#include "engines/sql/Fechas.hpp"
#include "engines/sql/Tokens.hpp"
#include "platform/adodb/Connection.hpp"

#include <algorithm>
#include <array>
#include <deque>

namespace atipicos::sql {

namespace {

    std::string minusculas(std::string_view texto)
    {
        std::string resultado(texto);
        for (char& c : resultado)
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        return resultado;
    }

    std::string_view sin_comillas(const Token& token)
    {
        return token.clase == Clase::nombre && token.texto.size() >= 2
            ? token.texto.substr(1, token.texto.size() - 2)
            : token.texto;
    }

    /// The statement without blanks and comments, looked at by position. Outside it there are empty symbols.
    class Vista {
    public:
        explicit Vista(std::vector<Token>& tokens)
        {
            m_tokens.reserve(tokens.size());
            for (auto& token : tokens)
                if (token.clase != Clase::blanco && token.clase != Clase::comentario)
                    m_tokens.push_back(&token);
        }

        [[nodiscard]] std::size_t size() const { return m_tokens.size(); }
        [[nodiscard]] const Token& operator[](std::size_t i) const
        {
            static constexpr Token ninguno{ Clase::simbolo, {} };
            return i < m_tokens.size() ? *m_tokens[i] : ninguno; // also below 0, which wraps around
        }
        void cambia(std::size_t i, std::string_view texto) const { m_tokens[i]->texto = texto; }

        [[nodiscard]] bool es(std::size_t i, std::string_view palabra) const
        {
            const Token& token = (*this)[i];
            return (token.clase == Clase::palabra || token.clase == Clase::simbolo)
                && iguales(token.texto, palabra);
        }
        [[nodiscard]] bool es_nombre(std::size_t i) const
        {
            return (*this)[i].clase == Clase::palabra || (*this)[i].clase == Clase::nombre;
        }
        [[nodiscard]] bool es_comparacion(std::size_t i) const
        {
            static constexpr std::array<std::string_view, 8> operadores{ "=", "<>", "<", "<=", ">",
                ">=", "!=", "==" };
            return (*this)[i].clase == Clase::simbolo
                && std::find(operadores.begin(), operadores.end(), (*this)[i].texto) != operadores.end();
        }

    private:
        std::vector<Token*> m_tokens;
    };

    class Reescritor {
    public:
        Reescritor(std::string_view sql, const Catalogo& catalogo, Donde donde)
            : m_sql(sql)
            , m_catalogo(catalogo)
            , m_donde(donde)
            , m_tokens(separa(sql))
            , m_vista(m_tokens)
        {
        }

        std::string reescribe()
        {
            comprueba_una_sola();
            cambia_isnull();
            if (std::any_of(m_tokens.begin(), m_tokens.end(),
                    [](const Token& token) { return token.clase == Clase::texto; })) {
                reune_tablas();
                cambia_fechas_comparadas();
                cambia_fechas_insertadas();
            }
            cambia_nombres();
            std::string resultado;
            resultado.reserve(m_sql.size() + 16);
            for (const auto& token : m_tokens)
                resultado += token.texto;
            return resultado;
        }

    private:
        void comprueba_una_sola() const
        {
            for (std::size_t i = 0; i + 1 < m_vista.size(); ++i)
                if (m_vista.es(i, ";"))
                    falla("Sólo se admite una instrucción en cada ejecución.");
        }

        void cambia_isnull()
        {
            for (std::size_t i = 0; i + 1 < m_vista.size(); ++i)
                if (m_vista.es(i, "ISNULL") && m_vista.es(i + 1, "("))
                    m_vista.cambia(i, "IFNULL");
        }

        void cambia_nombres()
        {
            for (std::size_t i = 0; i + 4 < m_vista.size(); ++i) {
                if (!m_vista.es_nombre(i) || !m_vista.es(i + 1, ".")
                    || !iguales(sin_comillas(m_vista[i + 2]), "dbo") || !m_vista.es(i + 3, ".")
                    || !m_vista.es_nombre(i + 4))
                    continue;
                if (const auto* esquema = m_catalogo.esquema(sin_comillas(m_vista[i]))) {
                    m_vista.cambia(i, *esquema);
                    m_vista.cambia(i + 2, {});
                    m_vista.cambia(i + 3, {});
                }
            }
        }

        /// The tables that the statement names, under their aliases and their own names.
        void reune_tablas()
        {
            for (std::size_t i = 0; i < m_vista.size(); ++i) {
                if (!m_vista.es(i, "FROM") && !m_vista.es(i, "JOIN") && !m_vista.es(i, "UPDATE")
                    && !m_vista.es(i, "INTO"))
                    continue;
                std::size_t j = i + 1;
                while (m_vista.es_nombre(j)) {
                    j = reune_tabla(j);
                    if (!m_vista.es(j, ","))
                        break;
                    ++j;
                }
            }
        }

        std::size_t reune_tabla(std::size_t i)
        {
            while (m_vista.es(i + 1, ".") && m_vista.es_nombre(i + 2)) // the last part of the name counts
                i += 2;
            const auto tabla = sin_comillas(m_vista[i]);
            m_tablas.push_back({ tabla, tabla });
            ++i;
            if (m_vista.es(i, "AS"))
                ++i;
            if (m_vista.es_nombre(i) && !es_clausula(i)) {
                m_tablas.push_back({ sin_comillas(m_vista[i]), tabla });
                ++i;
            }
            return i;
        }

        [[nodiscard]] bool es_clausula(std::size_t i) const
        {
            static constexpr std::array<std::string_view, 16> clausulas{ "WHERE", "INNER", "LEFT", "RIGHT",
                "FULL", "CROSS", "JOIN", "ON", "ORDER", "GROUP", "SET", "VALUES", "SELECT", "UNION", "HAVING",
                "NATURAL" };
            return std::any_of(clausulas.begin(), clausulas.end(),
                [&](std::string_view clausula) { return m_vista.es(i, clausula); });
        }

        /// Whether the name that ends at `fin` (`columna` or `alias.columna`) is a date column.
        [[nodiscard]] bool es_fecha(std::size_t fin) const
        {
            if (!m_vista.es_nombre(fin))
                return false;
            const auto columna = sin_comillas(m_vista[fin]);
            const bool calificada = m_vista.es(fin - 1, ".");
            const auto alias = calificada ? sin_comillas(m_vista[fin - 2]) : std::string_view();
            return std::any_of(m_tablas.begin(), m_tablas.end(), [&](const auto& tabla) {
                return (!calificada || iguales(tabla.alias, alias))
                    && m_catalogo.es_fecha(tabla.nombre, columna);
            });
        }

        [[nodiscard]] bool es_fecha_desde(std::size_t inicio) const
        {
            return es_fecha(m_vista.es(inicio + 1, ".") ? inicio + 2 : inicio);
        }

        void cambia_fechas_comparadas()
        {
            for (std::size_t i = 0; i < m_vista.size(); ++i)
                if (m_vista[i].clase == Clase::texto && comparada_con_fecha(i))
                    cambia_fecha(i);
        }

        [[nodiscard]] bool comparada_con_fecha(std::size_t i) const
        {
            if (m_vista.es_comparacion(i - 1) && es_fecha(i - 2))
                return true;
            if (m_vista.es_comparacion(i + 1) && es_fecha_desde(i + 2))
                return true;
            if (m_vista.es(i + 1, "BETWEEN") && es_fecha_desde(i + 2))
                return true;
            if (m_vista.es(i - 1, "BETWEEN"))
                return es_fecha(sin_not(i - 2));
            if (m_vista.es(i - 1, "AND") && m_vista.es(i - 3, "BETWEEN"))
                return es_fecha(sin_not(i - 4));
            return en_lista_de_fechas(i);
        }

        [[nodiscard]] std::size_t sin_not(std::size_t i) const { return m_vista.es(i, "NOT") ? i - 1 : i; }

        /// `columna IN ('…', '…')`
        [[nodiscard]] bool en_lista_de_fechas(std::size_t i) const
        {
            std::size_t j = i - 1;
            while (m_vista.es(j, ",")
                && (m_vista[j - 1].clase == Clase::texto || m_vista[j - 1].clase == Clase::numero))
                j -= 2;
            return m_vista.es(j, "(") && m_vista.es(j - 1, "IN") && es_fecha(sin_not(j - 2));
        }

        /// `INSERT INTO Tabla (columnas) VALUES (…), (…)` or `… SELECT …`
        void cambia_fechas_insertadas()
        {
            std::size_t i = 0;
            while (i < m_vista.size() && !m_vista.es(i, "INTO"))
                ++i;
            if (!(m_vista.es(0, "INSERT") || m_vista.es(0, "REPLACE")) || i == m_vista.size())
                return;
            while (m_vista.es(i + 2, ".") && m_vista.es_nombre(i + 3))
                i += 2;
            const auto tabla = sin_comillas(m_vista[i + 1]);
            if (!m_vista.es(i + 2, "("))
                return;
            std::vector<bool> son_fechas;
            for (i += 3; m_vista.es_nombre(i); i += 2) {
                son_fechas.push_back(m_catalogo.es_fecha(tabla, sin_comillas(m_vista[i])));
                if (!m_vista.es(i + 1, ","))
                    break;
            }
            i += 2; // past the last column and its parenthesis
            if (m_vista.es(i, "SELECT"))
                cambia_valores(i + 1, son_fechas);
            else if (m_vista.es(i, "VALUES"))
                for (++i; m_vista.es(i, "("); ++i) {
                    i = cambia_valores(i + 1, son_fechas) + 1;
                    if (!m_vista.es(i, ","))
                        break;
                }
        }

        /// Values from `i` on to the end of their list; a value that is one text and no more is changed when
        /// its column holds dates. Returns the position of what ended the list.
        std::size_t cambia_valores(std::size_t i, const std::vector<bool>& son_fechas)
        {
            int profundidad = 0;
            std::size_t columna = 0;
            std::size_t inicio = i;
            for (; i <= m_vista.size(); ++i) {
                const bool acaba = i == m_vista.size()
                    || (profundidad == 0 && (m_vista.es(i, ")") || m_vista.es(i, "FROM")));
                if (acaba || (profundidad == 0 && m_vista.es(i, ","))) {
                    const bool solo = i == inicio + 1 || m_vista.es(inicio + 1, "AS");
                    if (columna < son_fechas.size() && son_fechas[columna] && solo
                        && m_vista[inicio].clase == Clase::texto)
                        cambia_fecha(inicio);
                    ++columna;
                    inicio = i + 1;
                }
                if (acaba)
                    break;
                profundidad += m_vista.es(i, "(") ? 1 : m_vista.es(i, ")") ? -1 : 0;
            }
            return i;
        }

        void cambia_fecha(std::size_t i)
        {
            const auto texto = m_vista[i].texto;
            const auto dentro = texto.size() >= 2 ? texto.substr(1, texto.size() - 2) : std::string_view("?");
            const auto fecha = lee_fecha_regional(dentro);
            if (!fecha)
                falla("La conversión del texto " + std::string(texto) + " en una fecha no es posible.");
            m_vista.cambia(i, m_escritos.emplace_back("'" + texto_iso(*fecha) + "'"));
        }

        [[noreturn]] void falla(std::string descripcion) const
        {
            throw adodb::ErrorBaseDatos(
                adodb::Categoria::instruccion, "SQL", std::move(descripcion), std::string(m_sql), m_donde);
        }

        struct Tabla {
            std::string_view alias;
            std::string_view nombre;
        };

        std::string_view m_sql;
        const Catalogo& m_catalogo;
        Donde m_donde;
        std::vector<Token> m_tokens;
        Vista m_vista;
        std::vector<Tabla> m_tablas;
        std::deque<std::string> m_escritos; ///< texts that tokens refer to; a deque does not move them
    };

}

void Catalogo::agrega_fecha(std::string_view tabla, std::string_view columna)
{
    m_fechas[minusculas(tabla)].insert(minusculas(columna));
}

void Catalogo::agrega_base(std::string_view nombre, std::string_view esquema)
{
    m_bases[minusculas(nombre)] = esquema;
}

bool Catalogo::es_fecha(std::string_view tabla, std::string_view columna) const
{
    const auto lugar = m_fechas.find(minusculas(tabla));
    return lugar != m_fechas.end() && lugar->second.contains(minusculas(columna));
}

const std::string* Catalogo::esquema(std::string_view base) const
{
    const auto lugar = m_bases.find(minusculas(base));
    return lugar == m_bases.end() ? nullptr : &lugar->second;
}

std::string reescribe(std::string_view sql, const Catalogo& catalogo, Donde donde)
{
    return Reescritor(sql, catalogo, donde).reescribe();
}

} // namespace atipicos::sql
