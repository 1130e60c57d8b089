#pragma once

#include <string>
#include <vector>

namespace atipicos::pruebas {

struct TextoHostil {
    const char* nombre;
    std::string texto; ///< UTF-8, or not even that
};

/// In lines, as what is pasted by mistake is: a table, a whole document.
inline std::string megabyte()
{
    std::string texto;
    while (texto.size() < 1'000'000)
        texto += std::string(99, 'M') + '\n';
    return texto;
}

/// Texts that have broken other programs.
inline std::vector<TextoHostil> textos_hostiles()
{
    return {
        { "quote", "d'origen" },
        { "closing_quote_and_a_statement", "x'); DELETE FROM Proveedores_Cargos_Atipicos; --" },
        { "double_quotes_and_semicolon", "\"a\";b;\"\"" },
        { "tab", "uno\tdos" },
        { "line_breaks", "uno\r\ndos\ntres" },
        { "nul", std::string("uno\0dos", 7) },
        { "right_to_left", "\u202eABC\u202c \u200fשלום" },
        { "beyond_the_basic_plane", "😀🧾 e\u0301" },
        { "markup_and_marks", "<b>x</b> &amp; %1 %s %n %DOCUMENTO% {codigo}" },
        { "number_like", "-1e308" },
        { "date_like", "31/02/2026" },
        { "megabyte", megabyte() },
        { "megabyte_in_one_word", std::string(1'000'000, 'M') },
        { "digits", std::string(10'000, '9') },
    };
}

} // namespace atipicos::pruebas
