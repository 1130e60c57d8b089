#include "host/panel/NombresPlanos.hpp"

#include <sstream>

namespace atipicos::app {

namespace {

    constexpr unsigned char primera_de_dos = 0xC3; ///< U+00C0 to U+00FF
    constexpr unsigned char primera_de_tilde = 0xCC; ///< U+0300 to U+033F: accents that follow their letter
    constexpr unsigned char segunda_de_tilde = 0xCD; ///< and up to U+036F
    constexpr unsigned char ultima_tilde = 0xAF;

    /// Of U+00C0 to U+00DF; the small letters stand 32 further on. A dot: it stays as it is.
    constexpr std::string_view letras = "aaaaaa.ceeeeiiii.nooooo.ouuuuy..";
    constexpr std::string_view minusculas = "aaaaaa.ceeeeiiii.nooooo.ouuuuy.y";

    /// The plain letter of a pair of bytes; 0 when it has none.
    char sin_tilde(unsigned char segunda)
    {
        const auto lugar = static_cast<std::size_t>(segunda - 0x80);
        if (segunda < 0x80 || lugar >= letras.size() + minusculas.size())
            return 0;
        const char letra = lugar < letras.size() ? letras[lugar] : minusculas[lugar - letras.size()];
        return letra == '.' ? char{ 0 } : letra;
    }

    bool es_tilde(unsigned char primera, unsigned char segunda)
    {
        return primera == primera_de_tilde || (primera == segunda_de_tilde && segunda <= ultima_tilde);
    }

}

std::string plano(std::string_view texto)
{
    std::string resultado;
    resultado.reserve(texto.size());
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const auto primera = static_cast<unsigned char>(texto[i]);
        const auto segunda = i + 1 < texto.size() ? static_cast<unsigned char>(texto[i + 1]) : 0U;
        const char letra
            = primera == primera_de_dos ? sin_tilde(static_cast<unsigned char>(segunda)) : char{ 0 };
        if (letra != 0) {
            resultado += letra;
            ++i;
        } else if (es_tilde(primera, static_cast<unsigned char>(segunda))) {
            ++i;
        } else {
            resultado
                += texto[i] >= 'A' && texto[i] <= 'Z' ? static_cast<char>(texto[i] - 'A' + 'a') : texto[i];
        }
    }
    return resultado;
}

std::vector<std::string> palabras(std::string_view plano)
{
    std::istringstream flujo{ std::string(plano) };
    std::vector<std::string> todas;
    for (std::string una; flujo >> una;)
        todas.push_back(una);
    return todas;
}

} // namespace atipicos::app
