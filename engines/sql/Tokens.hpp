#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Statements taken apart, for the engines that must write them differently for their database.
namespace atipicos::sql {

enum class Clase : std::uint8_t {
    blanco,
    comentario, ///< -- to the end of the line, or /* … */
    palabra, ///< keyword or plain name
    nombre, ///< "name" or [name]
    texto, ///< 'text', a quote inside doubled; also one that is never closed
    numero,
    simbolo, ///< one operator or punctuation mark
};

struct Token {
    Clase clase;
    std::string_view texto; ///< as it stands in the statement, quotes included
};

[[nodiscard]] constexpr bool es_cifra(char c) noexcept { return c >= '0' && c <= '9'; }

/// The tokens of a statement in order; put together they are the statement again, byte for byte.
/// They refer to `sql`, which must stay alive. Never fails: what is no token is a symbol.
[[nodiscard]] std::vector<Token> separa(std::string_view sql);

[[nodiscard]] std::string entre_comillas(std::string_view nombre); ///< "nombre", quotes inside it doubled

/// The first keyword or plain name, past blanks and comments; empty when something else comes first.
[[nodiscard]] std::string_view primera_palabra(std::string_view sql) noexcept;

/// Whether the statement makes a trigger: such a one bears statements of its own, each ended by ";".
[[nodiscard]] bool crea_disparador(std::string_view sql) noexcept;

/// Whether the statement asks, or begins a transaction: what may be done twice without harm.
[[nodiscard]] bool no_cambia_nada(std::string_view sql) noexcept;
/// Whether what is known of the tables may be wrong after it.
[[nodiscard]] bool cambia_el_esquema(std::string_view sql) noexcept;

[[nodiscard]] constexpr char minuscula(char c) noexcept ///< ASCII
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Compared without ASCII case. Here, to be weighed up where it is called: a statement is asked for many
/// words that it does not hold, and nearly all differ in their length or first letter.
[[nodiscard]] constexpr bool iguales(std::string_view a, std::string_view b) noexcept
{
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return minuscula(x) == minuscula(y); });
}

} // namespace atipicos::sql
