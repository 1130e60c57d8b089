#include "host/reclamaciones/Codificacion.hpp"

namespace atipicos::app {

namespace {

    unsigned byte_de(std::string_view texto, std::size_t i) { return static_cast<unsigned char>(texto[i]); }

    /// Bytes of the letter that begins with `c`; 0: none does.
    std::size_t largo_de(unsigned c)
    {
        if (c < 0x80)
            return 1;
        if (c >= 0xC2 && c < 0xE0)
            return 2;
        if (c >= 0xE0 && c < 0xF0)
            return 3;
        return c >= 0xF0 && c < 0xF5 ? 4 : 0;
    }

    /// Overlong forms, surrogates and what lies beyond Unicode.
    bool prohibida(unsigned c, unsigned d)
    {
        return (c == 0xE0 && d < 0xA0) || (c == 0xED && d >= 0xA0) || (c == 0xF0 && d < 0x90)
            || (c == 0xF4 && d >= 0x90);
    }

    bool continua(std::string_view texto, std::size_t i)
    {
        return i < texto.size() && (byte_de(texto, i) & 0xC0U) == 0x80U;
    }

    bool es_utf8(std::string_view texto)
    {
        for (std::size_t i = 0; i < texto.size();) {
            const unsigned c = byte_de(texto, i);
            const auto largo = largo_de(c);
            if (largo == 0)
                return false;
            for (std::size_t j = i + 1; j < i + largo; ++j)
                if (!continua(texto, j))
                    return false;
            if (largo >= 3 && prohibida(c, byte_de(texto, i + 1)))
                return false;
            i += largo;
        }
        return true;
    }

}

Codificacion codificacion_de(std::string_view texto) noexcept
{
    if (es_utf8(texto))
        return Codificacion::utf8;
    for (std::size_t i = 0; i < texto.size(); ++i)
        if (byte_de(texto, i) >= 0xC2 && continua(texto, i + 1))
            return Codificacion::desconocida;
    return Codificacion::latin1;
}

bool empieza_en_utf16(std::string_view comienzo) noexcept
{
    if (comienzo.size() < 2)
        return false;
    const auto marca = comienzo.substr(0, 2);
    return marca == "\xFF\xFE" || marca == "\xFE\xFF" || (marca[0] == '\0') != (marca[1] == '\0');
}

} // namespace atipicos::app
