#include "runtime/Celdas.hpp"

#include <algorithm>
#include <array>
#include <charconv>

namespace atipicos {

void anexa_celda(std::string& destino, std::string_view texto)
{
    const auto inicio = static_cast<std::ptrdiff_t>(destino.size());
    destino.append(texto);
    std::replace(destino.begin() + inicio, destino.end(), '\t', ' ');
}

void anexa_celda(std::string& destino, std::int32_t numero)
{
    std::array<char, 12> cifras{};
    const auto fin = std::to_chars(cifras.data(), cifras.data() + cifras.size(), numero).ptr;
    destino.append(cifras.data(), fin);
}

void anexa_campo_csv(std::string& linea, std::string_view texto)
{
    if (texto.find_first_of(";\"\r\n") == std::string_view::npos) {
        linea += texto;
        return;
    }
    linea += '"';
    for (const char c : texto) {
        linea += c;
        if (c == '"')
            linea += c;
    }
    linea += '"';
}

} // namespace atipicos
