#include "runtime/Unicode.hpp"

#include <cstddef>
#include <cstdint>

namespace atipicos {

namespace {

    constexpr char32_t sustituto = 0xfffd;

    /// Takes one character off the front of `utf8`.
    char32_t toma(std::string_view& utf8)
    {
        const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(utf8[i]); };
        const char32_t primero = byte(0);
        const std::size_t largo = primero < 0x80 ? 1
            : primero < 0xc2                     ? 0
            : primero < 0xe0                     ? 2
            : primero < 0xf0                     ? 3
            : primero < 0xf5                     ? 4
                                                 : 0;
        char32_t letra = largo <= 1 ? primero : primero & (0x7fU >> largo);
        bool vale = largo != 0 && largo <= utf8.size();
        for (std::size_t i = 1; vale && i < largo; ++i) {
            vale = (byte(i) & 0xc0) == 0x80;
            letra = (letra << 6) | (byte(i) & 0x3f);
        }
        constexpr char32_t minimo[]{ 0, 0, 0x80, 0x800, 0x10000 };
        vale = vale && letra >= minimo[largo] && letra <= 0x10ffff && (letra < 0xd800 || letra > 0xdfff);
        utf8.remove_prefix(vale ? largo : 1);
        return vale ? letra : sustituto;
    }

    void anexa(std::string& destino, char32_t letra)
    {
        const auto byte
            = [&](char32_t valor) { destino += static_cast<char>(static_cast<std::uint8_t>(valor)); };
        if (letra < 0x80) {
            byte(letra);
            return;
        }
        if (letra < 0x800) {
            byte(0xc0 | (letra >> 6));
        } else if (letra < 0x10000) {
            byte(0xe0 | (letra >> 12));
            byte(0x80 | ((letra >> 6) & 0x3f));
        } else {
            byte(0xf0 | (letra >> 18));
            byte(0x80 | ((letra >> 12) & 0x3f));
            byte(0x80 | ((letra >> 6) & 0x3f));
        }
        byte(0x80 | (letra & 0x3f));
    }

}

std::u16string a_utf16(std::string_view utf8)
{
    std::u16string texto;
    texto.reserve(utf8.size());
    while (!utf8.empty()) {
        const char32_t letra = toma(utf8);
        if (letra < 0x10000) {
            texto += static_cast<char16_t>(letra);
            continue;
        }
        texto += static_cast<char16_t>(0xd800 + ((letra - 0x10000) >> 10));
        texto += static_cast<char16_t>(0xdc00 + ((letra - 0x10000) & 0x3ff));
    }
    return texto;
}

std::string a_utf8(std::u16string_view utf16)
{
    std::string texto;
    texto.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const char32_t una = utf16[i];
        const bool alta = una >= 0xd800 && una < 0xdc00;
        const char32_t otra = alta && i + 1 < utf16.size() ? utf16[i + 1] : 0;
        if (otra >= 0xdc00 && otra < 0xe000) {
            anexa(texto, 0x10000 + ((una - 0xd800) << 10) + (otra - 0xdc00));
            ++i;
        } else {
            anexa(texto, una >= 0xd800 && una < 0xe000 ? sustituto : una);
        }
    }
    return texto;
}

} // namespace atipicos
