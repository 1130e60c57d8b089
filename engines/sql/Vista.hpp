#pragma once

#include "engines/sql/Tokens.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace atipicos::sql {

/// The tokens of a statement without its blanks and comments, looked at by position. Outside it, also below
/// 0, which wraps around, there are empty symbols. It refers to the tokens.
class Vista {
public:
    explicit Vista(std::vector<Token>& tokens)
    {
        m_tokens.reserve(tokens.size());
        for (auto& token : tokens)
            if (token.clase != Clase::blanco && token.clase != Clase::comentario)
                m_tokens.push_back(&token);
    }

    [[nodiscard]] std::size_t size() const noexcept { return m_tokens.size(); }

    [[nodiscard]] const Token& operator[](std::size_t i) const noexcept
    {
        static constexpr Token ninguno{ Clase::simbolo, {} };
        return i < m_tokens.size() ? *m_tokens[i] : ninguno;
    }

    void cambia(std::size_t i, std::string_view texto) const { m_tokens[i]->texto = texto; }

    [[nodiscard]] bool es(std::size_t i, std::string_view palabra) const noexcept
    {
        const Token& token = (*this)[i];
        return (token.clase == Clase::palabra || token.clase == Clase::simbolo)
            && iguales(token.texto, palabra);
    }

    template <std::size_t n>
    [[nodiscard]] bool es_una_de(
        std::size_t i, const std::array<std::string_view, n>& palabras) const noexcept
    {
        return std::any_of(palabras.begin(), palabras.end(), [&](auto palabra) { return es(i, palabra); });
    }

    [[nodiscard]] bool es_nombre(std::size_t i) const noexcept
    {
        return (*this)[i].clase == Clase::palabra || (*this)[i].clase == Clase::nombre;
    }

    [[nodiscard]] bool es_texto(std::size_t i) const noexcept { return (*this)[i].clase == Clase::texto; }

    [[nodiscard]] bool es_comparacion(std::size_t i) const noexcept
    {
        static constexpr std::array<std::string_view, 8> operadores{ "=", "<>", "<", "<=", ">",
            ">=", "!=", "==" };
        return (*this)[i].clase == Clase::simbolo && es_una_de(i, operadores);
    }

    /// An operator that makes one value of the two beside it.
    [[nodiscard]] bool es_operador(std::size_t i) const noexcept
    {
        static constexpr std::array<std::string_view, 6> operadores{ "+", "-", "*", "/", "%", "||" };
        return (*this)[i].clase == Clase::simbolo && es_una_de(i, operadores);
    }

    [[nodiscard]] std::string_view nombre(std::size_t i) const noexcept ///< without its quotes
    {
        const auto& token = (*this)[i];
        return token.clase == Clase::nombre && token.texto.size() >= 2
            ? token.texto.substr(1, token.texto.size() - 2)
            : token.texto;
    }

    /// The first token of the value that ends at `fin`: a name with its qualifiers, or one token.
    [[nodiscard]] std::size_t inicio_valor(std::size_t fin) const noexcept
    {
        while (es_nombre(fin) && es(fin - 1, ".") && es_nombre(fin - 2))
            fin -= 2;
        return fin;
    }

    /// The last token of the value that begins at `inicio`.
    [[nodiscard]] std::size_t fin_valor(std::size_t inicio) const noexcept
    {
        while (es_nombre(inicio) && es(inicio + 1, ".") && es_nombre(inicio + 2))
            inicio += 2;
        return inicio;
    }

private:
    std::vector<Token*> m_tokens;
};

} // namespace atipicos::sql
