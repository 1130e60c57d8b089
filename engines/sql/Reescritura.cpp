#include "engines/sql/Reescritura.hpp"

#include "engines/sql/Fechas.hpp"
#include "engines/sql/Nombres.hpp"
#include "engines/sql/Sitios.hpp"
#include "engines/sql/TextosDeFecha.hpp"
#include "engines/sql/UnaSola.hpp"
#include "platform/adodb/Connection.hpp"

#include <algorithm>
#include <array>
#include <forward_list>

namespace atipicos::sql {

namespace {

    /// A quick look, without taking the statement apart, at whether there is anything to do at all.
    bool puede_cambiar(std::string_view sql)
    {
        for (std::size_t i = 0; i < sql.size(); ++i) {
            const char c = minuscula(sql[i]);
            if (c == '\'' || c == ';' || (c == 'i' && iguales(sql.substr(i, 6), "ISNULL"))
                || (c == 'd' && iguales(sql.substr(i, 3), "dbo"))
                || (c == 'c' && iguales(sql.substr(i, 6), "CREATE"))
                || (c == 'f' && iguales(sql.substr(i, 5), "FETCH"))
                || (c == 'a' && iguales(sql.substr(i, 5), "ALTER")))
                return true;
        }
        return false;
    }

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
            cambia();
            return junta();
        }

        std::optional<Plantilla> forma(std::span<const Literal> literales, Numeros numeros)
        {
            static constexpr std::array<std::string_view, 4> con_forma{ "SELECT", "INSERT", "UPDATE",
                "DELETE" };
            if (!m_vista.es_una_de(0, con_forma))
                return std::nullopt;
            const auto sitios = sitios_de(m_vista, literales);
            Plantilla plantilla;
            if (!sitios)
                return std::nullopt;
            for (const auto& sitio : *sitios)
                plantilla.tratos.push_back(trato_de(sitio.papel, numeros));
            cambia();
            for (std::size_t i = 0; i < literales.size(); ++i)
                if (viaja(plantilla.tratos[i], literales[i]))
                    abre((*sitios)[i].token, i, literales[i], numeros, plantilla.forma);
            plantilla.forma.texto = junta();
            return plantilla;
        }

    private:
        void cambia()
        {
            if (!es_una_sola(m_sql, m_vista, m_catalogo.dialecto().transact))
                falla("Sólo se admite una instrucción en cada ejecución.");
            cambia_isnull();
            cambia_tipos();
            cambia_limite();
            const auto tablas = tablas_nombradas(m_vista);
            if (std::any_of(m_tokens.begin(), m_tokens.end(),
                    [](const Token& token) { return token.clase == Clase::texto; }))
                for (const auto texto : textos_de_fecha(m_vista, tablas, m_catalogo))
                    cambia_fecha(texto);
            cambia_tablas(tablas);
            cambia_nombres();
        }

        /// What becomes of a literal in such a place. How a server looks for a range of rows depends on its
        /// limits, which it is told only in a text.
        [[nodiscard]] Trato trato_de(Sitio::Papel papel, Numeros numeros) const
        {
            const bool con_tipo = numeros == Numeros::con_tipo;
            if (papel == Sitio::Papel::otro
                || (papel == Sitio::Papel::en_rango && con_tipo && m_vista.es(0, "SELECT")))
                return Trato::queda;
            return papel == Sitio::Papel::igualado && !con_tipo ? Trato::viaja_si_no_es_bit : Trato::viaja;
        }

        /// Puts a mark in the place of a literal.
        void abre(std::size_t token, std::size_t cual, const Literal& literal, Numeros numeros, Forma& forma)
        {
            const bool es_fecha = std::find(m_fechas.begin(), m_fechas.end(), token) != m_fechas.end();
            forma.valores.push_back({ cual, es_fecha });
            if (literal.texto.front() == '-')
                m_vista.cambia(token - 1, {});
            m_vista.cambia(token,
                numeros == Numeros::segun_valor
                    ? std::string_view("?")
                    : m_escritos.emplace_front("$" + std::to_string(forma.valores.size())));
        }

        [[nodiscard]] std::string junta() const
        {
            std::string resultado;
            resultado.reserve(m_sql.size() + 16);
            std::string_view anterior;
            for (const auto& token : m_tokens) {
                if (m_catalogo.dialecto().transact && token.clase == Clase::texto && necesita_n(token.texto)
                    && !iguales(anterior, "N"))
                    resultado += 'N';
                resultado += token.texto;
                anterior = token.texto;
            }
            return resultado;
        }

        void cambia_isnull()
        {
            for (std::size_t i = 0; i + 1 < m_vista.size(); ++i)
                if (m_vista.es(i, "ISNULL") && m_vista.es(i + 1, "("))
                    m_vista.cambia(i, m_catalogo.dialecto().isnull);
        }

        /// How many rows are wanted: the numbers stay where they are, so that they are the same values.
        void cambia_limite()
        {
            static constexpr std::array<std::string_view, 8> palabras{ "OFFSET", {}, "ROWS", "FETCH", "NEXT",
                {}, "ROWS", "ONLY" };
            static constexpr std::array<std::string_view, 8> limite{ "LIMIT", {}, "," };
            const auto es_limite = [&](std::size_t i) {
                for (std::size_t j = 0; j < palabras.size(); ++j)
                    if (!palabras[j].empty() && !m_vista.es(i + j, palabras[j]))
                        return false;
                return true;
            };
            if (m_catalogo.dialecto().fetch)
                return;
            for (std::size_t i = 0; i < m_vista.size(); ++i)
                if (es_limite(i))
                    for (std::size_t j = 0; j < palabras.size(); ++j)
                        if (!palabras[j].empty())
                            m_vista.cambia(i + j, limite[j]);
        }

        /// The words of a CREATE or ALTER TABLE that stand for a type, which no quoted name does.
        void cambia_tipos()
        {
            const auto& tipos = m_catalogo.dialecto().tipos;
            if (tipos.empty() || !(m_vista.es(0, "CREATE") || m_vista.es(0, "ALTER"))
                || !m_vista.es(1, "TABLE"))
                return;
            for (std::size_t i = 3; i < m_vista.size(); ++i)
                for (const auto& tipo : tipos)
                    if (m_vista.es(i, tipo.aqui) && !m_vista.es(i - 1, "(") && !m_vista.es(i - 1, ",")) {
                        cambia_tipo(i, tipo);
                        break;
                    }
        }

        void cambia_tipo(std::size_t i, const TipoEscrito& tipo)
        {
            m_vista.cambia(i, tipo.alli);
            const auto fin = m_vista.es(i + 1, "(") ? i + 3 : i;
            auto& escrito = m_escritos.emplace_front(m_vista[fin].texto);
            m_vista.cambia(fin, escrito += tipo.tras);
        }

        /// Tables get the names that they have in the database. One that would be called otherwise than by
        /// what stands before the point keeps its given name as an alias, for its columns.
        void cambia_tablas(const std::vector<TablaNombrada>& tablas)
        {
            const bool sin_alias = crea_disparador(m_sql); // no alias is understood inside a trigger
            for (const auto& tabla : tablas) {
                const auto prefijo = prefijo_de(tabla, m_vista, m_catalogo);
                if (prefijo.empty())
                    continue;
                const auto nombre = m_vista[tabla.ultimo].texto;
                const bool delante = prefijo.back() == '.';
                if (delante && tabla.uso == TablaNombrada::Uso::indice)
                    continue; // it stands beside its table
                auto& escrito = m_escritos.emplace_front(delante ? prefijo : std::string_view());
                if (delante)
                    escrito += nombre;
                else
                    escrito = entre_comillas(std::string(prefijo).append(m_vista.nombre(tabla.ultimo)));
                const bool con_columnas
                    = tabla.uso == TablaNombrada::Uso::leida || tabla.uso == TablaNombrada::Uso::cambiada;
                if (!delante && con_columnas && tabla.alias == tabla.ultimo && !sin_alias)
                    escrito.append(" AS ").append(nombre);
                for (auto i = tabla.primero; i < tabla.ultimo; ++i)
                    m_vista.cambia(i, {});
                m_vista.cambia(tabla.ultimo, escrito);
            }
        }

        /// What is left of three-part names: those that stand before a column.
        void cambia_nombres()
        {
            for (std::size_t i = 0; i + 4 < m_vista.size(); ++i) {
                if (!m_vista.es(i + 1, ".") || !m_vista.es(i + 3, ".") || !m_vista.es_nombre(i)
                    || !iguales(m_vista.nombre(i + 2), "dbo") || !m_vista.es_nombre(i + 4))
                    continue;
                const auto* prefijo = m_catalogo.base(m_vista.nombre(i));
                if (prefijo == nullptr)
                    continue;
                const bool delante = prefijo->ends_with('.');
                m_vista.cambia(i, delante ? std::string_view(*prefijo) : std::string_view());
                for (const auto j : { i + 1, i + 2, i + 3 })
                    m_vista.cambia(j, {});
            }
        }

        void cambia_fecha(std::size_t i)
        {
            const auto texto = m_vista[i].texto;
            if (texto.size() < 2 || texto.back() != '\'')
                return; // never closed: the database says what it thinks of that
            const auto fecha = lee_fecha_regional(texto.substr(1, texto.size() - 2));
            if (!fecha)
                falla("La conversión del texto " + std::string(texto) + " en una fecha no es posible.");
            auto& escrito = m_escritos.emplace_front(1, '\'');
            escrito += texto_iso(*fecha);
            escrito += '\'';
            m_vista.cambia(i, escrito);
            m_fechas.push_back(i);
        }

        [[noreturn]] void falla(std::string descripcion) const
        {
            throw adodb::ErrorBaseDatos(
                adodb::Categoria::instruccion, "SQL", std::move(descripcion), std::string(m_sql), m_donde);
        }

        std::string_view m_sql;
        const Catalogo& m_catalogo;
        Donde m_donde;
        std::vector<Token> m_tokens;
        Vista m_vista;
        std::vector<std::size_t> m_fechas; ///< the texts that have become dates
        std::forward_list<std::string> m_escritos; ///< texts that tokens refer to; a list does not move them
    };

}

bool necesita_n(std::string_view texto) noexcept
{
    return std::any_of(
        texto.begin(), texto.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

std::string reescribe(std::string_view sql, const Catalogo& catalogo, Donde donde)
{
    if (!catalogo.dialecto().transact && catalogo.propio().empty() && !puede_cambiar(sql))
        return std::string(sql);
    return Reescritor(sql, catalogo, donde).reescribe();
}

std::optional<Plantilla> forma_de(std::string_view sql, std::span<const Literal> literales, Numeros numeros,
    const Catalogo& catalogo, Donde donde)
{
    return Reescritor(sql, catalogo, donde).forma(literales, numeros);
}

} // namespace atipicos::sql
