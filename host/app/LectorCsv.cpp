#include "host/app/LectorCsv.hpp"

#include "host/app/Ordenes.hpp"
#include "runtime/Error.hpp"

#include <csv.h>

#include <algorithm>
#include <utility>

namespace atipicos::app {

namespace {

    /// The rows of the file with the line on which each begins; a quoted field may go over several lines.
    class Lector {
    public:
        Lector()
        {
            csv_init(&m_csv, CSV_STRICT | CSV_STRICT_FINI);
            csv_set_delim(&m_csv, ';');
        }
        Lector(const Lector&) = delete;
        Lector& operator=(const Lector&) = delete;
        ~Lector() { csv_free(&m_csv); }

        std::vector<FilaCsv> lee(std::string_view contenido)
        {
            for (std::size_t i = 0; i < contenido.size();) {
                const auto fin = fin_de_linea(contenido, i);
                ++m_linea;
                if (!m_a_medias)
                    m_fila.numero = m_linea;
                m_a_medias = true;
                const auto trozo = contenido.substr(i, fin - i);
                if (csv_parse(&m_csv, trozo.data(), trozo.size(), &Lector::campo, &Lector::fin_fila, this)
                    != trozo.size())
                    mal_entrecomillada();
                if (m_fila.campos.empty() && !entre_comillas())
                    m_a_medias = false; // a blank line
                i = fin;
            }
            if (csv_fini(&m_csv, &Lector::campo, &Lector::fin_fila, this) != 0)
                mal_entrecomillada();
            return std::move(m_filas);
        }

    private:
        /// Past the end of the line that begins at `i`: a line feed, a carriage return, or both.
        static std::size_t fin_de_linea(std::string_view contenido, std::size_t i)
        {
            const auto marca = std::min(contenido.find_first_of("\r\n", i), contenido.size() - 1);
            const bool ambos = contenido.substr(marca, 2) == "\r\n";
            return marca + (ambos ? 2 : 1);
        }

        [[nodiscard]] bool entre_comillas() const { return m_csv.quoted != 0; }

        [[noreturn]] void mal_entrecomillada() const
        {
            throw Error(no_hecho, "atipicos",
                "fila " + std::to_string(m_fila.numero)
                    + ": las comillas no están bien puestas (un texto con comillas o con «;» va entre "
                      "comillas, y las de dentro, dobles).");
        }

        static void campo(void* texto, std::size_t tamano, void* lector)
        {
            const auto* inicio = static_cast<const char*>(texto);
            static_cast<Lector*>(lector)->m_fila.campos.emplace_back(inicio == nullptr ? "" : inicio, tamano);
        }

        static void fin_fila(int, void* quien)
        {
            auto* lector = static_cast<Lector*>(quien);
            lector->m_filas.push_back(std::exchange(lector->m_fila, {}));
            lector->m_a_medias = false;
        }

        csv_parser m_csv{};
        std::vector<FilaCsv> m_filas;
        FilaCsv m_fila;
        int m_linea = 0;
        bool m_a_medias = false;
    };

}

std::vector<FilaCsv> lee_csv(std::string_view contenido) { return Lector().lee(contenido); }

} // namespace atipicos::app
