#include "host/bases/Palabra.hpp"

namespace atipicos::bases {

std::string como_palabra(const std::string& texto)
{
    static constexpr auto sencillos = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_./:=-";
    if (!texto.empty() && texto.find_first_not_of(sencillos) == std::string::npos)
        return texto;
    std::string palabra = "'";
    for (const char c : texto)
        palabra += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return palabra + "'";
}

} // namespace atipicos::bases
