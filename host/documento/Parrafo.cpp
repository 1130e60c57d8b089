#include "host/documento/Parrafo.hpp"

#include <algorithm>

namespace atipicos::orvalin {

namespace {

    bool continua_caracter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

    /// Where the character that begins at `desde` ends; accents set apart (U+0300 to U+036F) belong to it.
    std::size_t fin_de_caracter(std::string_view texto, std::size_t desde)
    {
        auto fin = desde + 1;
        while (fin < texto.size()
            && (continua_caracter(texto[fin]) || texto[fin] == '\xCC' || texto[fin] == '\xCD'))
            ++fin;
        return fin;
    }

    class Compositor {
    public:
        Compositor(const Letra& letra, Medida ancho, const Medidor& medidor, Palabras palabras)
            : m_letra(letra)
            , m_ancho(ancho)
            , m_medidor(medidor)
            , m_palabras(palabras)
        {
        }

        /// One line of the text as it was written: one line or more of the page, at least one.
        void renglon(std::string_view texto)
        {
            m_actual.clear();
            if (cabe(texto))
                m_actual = texto;
            else
                while (!texto.empty()) {
                    const auto fin = std::min(texto.find(' '), texto.size());
                    palabra(texto.substr(0, fin));
                    texto.remove_prefix(std::min(fin + 1, texto.size()));
                }
            cierra();
        }

        [[nodiscard]] std::vector<std::string> lineas() && { return std::move(m_lineas); }

    private:
        [[nodiscard]] bool cabe(std::string_view texto) const
        {
            return m_medidor.ancho(texto, m_letra) <= m_ancho;
        }

        void cierra()
        {
            m_lineas.push_back(std::move(m_actual));
            m_actual.clear();
        }

        void palabra(std::string_view texto)
        {
            if (m_actual.empty())
                m_actual = texto;
            else if (auto con = m_actual + ' '; cabe(con.append(texto)))
                m_actual = std::move(con);
            else {
                cierra();
                m_actual = texto;
            }
            while (m_palabras == Palabras::Partidas && !cabe(m_actual))
                if (!corta())
                    return;
        }

        /// Closes a line with the characters of the current one that fit, at least one; the rest is the
        /// current line. False when it is a single character, which cannot be cut.
        bool corta()
        {
            const std::string entera = std::move(m_actual);
            auto fin = fin_de_caracter(entera, 0);
            for (auto hasta = fin; hasta < entera.size(); fin = hasta) {
                hasta = fin_de_caracter(entera, hasta);
                if (!cabe(std::string_view(entera).substr(0, hasta)))
                    break;
            }
            m_actual = entera.substr(0, fin);
            if (fin == entera.size())
                return false;
            cierra();
            m_actual = entera.substr(fin);
            return true;
        }

        const Letra& m_letra;
        Medida m_ancho;
        const Medidor& m_medidor;
        Palabras m_palabras;
        std::string m_actual;
        std::vector<std::string> m_lineas;
    };

    /// Line breaks as '\n', blanks for tabs, and nothing that cannot be printed.
    std::string limpia(std::string_view texto)
    {
        std::string limpio;
        limpio.reserve(texto.size());
        for (std::size_t i = 0; i < texto.size(); ++i) {
            const char c = texto[i];
            if (c == '\r' && i + 1 < texto.size() && texto[i + 1] == '\n')
                continue;
            if (c == '\r' || c == '\n')
                limpio += '\n';
            else if (c == '\t')
                limpio += ' ';
            else if (static_cast<unsigned char>(c) >= 0x20 && c != '\x7F')
                limpio += c;
        }
        limpio.erase(limpio.find_last_not_of(" \n") + 1);
        return limpio;
    }

}

std::vector<std::string> parte_en_lineas(
    std::string_view texto, const Letra& letra, Medida ancho, const Medidor& medidor, Palabras palabras)
{
    const std::string limpio = limpia(texto);
    if (limpio.empty())
        return {};
    Compositor compositor(letra, ancho, medidor, palabras);
    for (std::string_view queda = limpio;;) {
        const auto fin = queda.find('\n');
        compositor.renglon(queda.substr(0, fin));
        if (fin == std::string_view::npos)
            return std::move(compositor).lineas();
        queda.remove_prefix(fin + 1);
    }
}

} // namespace atipicos::orvalin
