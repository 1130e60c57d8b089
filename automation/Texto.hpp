#pragma once

#include "automation/com.hpp"

#include <new>
#include <string>
#include <string_view>

/// Texts between UTF-8, as this component keeps them, and UTF-16, as automation passes them. What is no
/// character becomes U+FFFD.
namespace atipicos::automation {

using TextoAncho = std::basic_string<OLECHAR>;
using VistaAncha = std::basic_string_view<OLECHAR>;

namespace detalle {

    inline constexpr char32_t no_valido = 0xFFFD;

    inline void anexa_utf8(std::string& texto, char32_t c)
    {
        const auto pon
            = [&texto](char32_t byte) { texto += static_cast<char>(static_cast<unsigned char>(byte)); };
        if (c < 0x80) {
            pon(c);
        } else if (c < 0x800) {
            pon(0xC0 | c >> 6);
            pon(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            pon(0xE0 | c >> 12);
            pon(0x80 | (c >> 6 & 0x3F));
            pon(0x80 | (c & 0x3F));
        } else {
            pon(0xF0 | c >> 18);
            pon(0x80 | (c >> 12 & 0x3F));
            pon(0x80 | (c >> 6 & 0x3F));
            pon(0x80 | (c & 0x3F));
        }
    }

    inline void anexa_utf16(TextoAncho& texto, char32_t c)
    {
        if (c < 0x10000) {
            texto += static_cast<OLECHAR>(c);
            return;
        }
        texto += static_cast<OLECHAR>(0xD800 + ((c - 0x10000) >> 10));
        texto += static_cast<OLECHAR>(0xDC00 + ((c - 0x10000) & 0x3FF));
    }

    /// The character that begins at `i`, which moves past it; past one byte when it is none.
    inline char32_t toma_utf8(std::string_view texto, std::size_t& i)
    {
        const auto primero = static_cast<unsigned char>(texto[i++]);
        if (primero < 0x80)
            return primero;
        const int siguen = primero >= 0xF0 ? 3 : primero >= 0xE0 ? 2 : 1;
        if (primero < 0xC2 || primero > 0xF4)
            return no_valido;
        char32_t c = primero & (0x3Fu >> siguen);
        std::size_t j = i;
        for (int n = 0; n < siguen; ++n, ++j) {
            if (j >= texto.size() || (static_cast<unsigned char>(texto[j]) & 0xC0) != 0x80)
                return no_valido;
            c = c << 6 | (static_cast<unsigned char>(texto[j]) & 0x3F);
        }
        const char32_t minimo = siguen == 1 ? 0x80 : siguen == 2 ? 0x800 : 0x10000;
        if (c < minimo || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000))
            return no_valido;
        i = j;
        return c;
    }

}

[[nodiscard]] inline std::string utf8(VistaAncha ancho)
{
    std::string texto;
    texto.reserve(ancho.size());
    for (std::size_t i = 0; i < ancho.size(); ++i) {
        const auto unidad = static_cast<char16_t>(ancho[i]);
        char32_t c = unidad;
        if (unidad >= 0xD800 && unidad < 0xE000) {
            const bool alta = unidad < 0xDC00 && i + 1 < ancho.size();
            const char16_t baja = alta ? static_cast<char16_t>(ancho[i + 1]) : char16_t{ 0 };
            const bool pareja = baja >= 0xDC00 && baja < 0xE000;
            c = pareja ? 0x10000 + ((static_cast<char32_t>(unidad) - 0xD800) << 10) + (baja - 0xDC00u)
                       : detalle::no_valido;
            i += pareja ? 1 : 0;
        }
        detalle::anexa_utf8(texto, c);
    }
    return texto;
}

[[nodiscard]] inline std::string utf8(BSTR texto)
{
    return texto == nullptr ? std::string() : utf8(VistaAncha(texto, SysStringLen(texto)));
}

[[nodiscard]] inline TextoAncho utf16(std::string_view texto)
{
    TextoAncho ancho;
    ancho.reserve(texto.size());
    for (std::size_t i = 0; i < texto.size();)
        detalle::anexa_utf16(ancho, detalle::toma_utf8(texto, i));
    return ancho;
}

/// A new text that belongs to whoever receives it.
[[nodiscard]] inline BSTR bstr(std::string_view texto)
{
    const auto ancho = utf16(texto);
    auto* nuevo = SysAllocStringLen(ancho.data(), static_cast<UINT>(ancho.size()));
    if (nuevo == nullptr)
        throw std::bad_alloc();
    return nuevo;
}

} // namespace atipicos::automation
