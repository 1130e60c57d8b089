#include "host/sql/Anchos.hpp"

#include "runtime/Error.hpp"

#include <charconv>
#include <string>

namespace atipicos::sql {

std::size_t ancho_de_texto(std::string_view guion, std::string_view tabla, std::string_view columna)
{
    static constexpr std::string_view tipo = " NVARCHAR(";
    const auto inicio = guion.find("CREATE TABLE " + std::string(tabla) + " (");
    const auto fin = guion.find("\n);", inicio);
    const auto nombre = guion.find("\n    " + std::string(columna) + " ", inicio);
    if (inicio != std::string_view::npos && nombre < fin) {
        const auto linea = guion.substr(nombre + 1, guion.find('\n', nombre + 1) - nombre - 1);
        std::size_t ancho = 0;
        if (const auto lugar = linea.find(tipo); lugar != std::string_view::npos) {
            const auto cifras = linea.substr(lugar + tipo.size());
            std::from_chars(cifras.data(), cifras.data() + cifras.size(), ancho);
        }
        if (ancho > 0)
            return ancho;
    }
    throw Error::de_ejecucion(numero_error::argumento_no_valido);
}

std::size_t letras(std::string_view texto) noexcept
{
    std::size_t cuantas = 0;
    for (const char c : texto) {
        const auto byte = static_cast<unsigned char>(c);
        cuantas += (byte & 0xC0U) == 0x80U ? 0 : byte >= 0xF0U ? 2 : 1;
    }
    return cuantas;
}

} // namespace atipicos::sql
