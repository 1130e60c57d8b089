#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace atipicos::sql {

/// A value as it stands in a statement.
struct Literal {
    enum class Clase : std::uint8_t {
        texto,
        entero, ///< of 32 bits
        entero_largo, ///< of at most 18 digits
        decimal, ///< with a point
    };

    std::string_view texto; ///< with its quotes, or with the minus sign before it
    Clase clase = Clase::texto;
    bool con_dobles = false; ///< it holds a quote, which is written twice
};

/// What a database wants to know of a number that does not stand in the statement.
enum class Numeros : std::uint8_t {
    con_tipo, ///< its type: numbers of two types make two skeletons
    segun_valor, ///< nothing: each is what it is, a decimal one a double
};

/// A statement without its values: each literal replaced by a mark, in one quick pass that asks for no
/// memory.
///
/// It says no rather than guess: to comments, parameters, `;`, `$`, prefixed texts, what is never closed, and
/// whatever else databases read in different ways. What has such things in it has no skeleton. A number too
/// long to be exact stays in the skeleton, and so does a minus sign that may be an operator.
class Esqueleto {
public:
    static constexpr std::size_t maximo_de_literales = 64;
    static constexpr std::size_t maximo_de_texto = 32'000; ///< of the whole statement, in bytes

    explicit Esqueleto(Numeros numeros) noexcept
        : m_numeros(numeros)
    {
    }

    /// Reads a statement, which must stay alive while its literals are used; false: it has no skeleton.
    [[nodiscard]] bool lee(std::string_view sql) noexcept;

    [[nodiscard]] std::string_view texto() const noexcept { return { m_texto.data(), m_escrito }; }
    [[nodiscard]] std::span<const Literal> literales() const noexcept
    {
        return { m_literales.data(), m_cuantos };
    }

private:
    [[nodiscard]] bool lee_pieza() noexcept;
    [[nodiscard]] bool lee_menos(char siguiente) noexcept;
    [[nodiscard]] bool lee_nombre(char cierre) noexcept;
    [[nodiscard]] bool lee_texto() noexcept;
    [[nodiscard]] bool lee_numero(std::size_t inicio) noexcept;
    [[nodiscard]] bool anota(std::size_t inicio, Literal::Clase clase, bool con_dobles) noexcept;
    [[nodiscard]] bool acaba_aqui() const noexcept;
    void copia(std::size_t hasta) noexcept;

    [[nodiscard]] char en(std::size_t i) const noexcept { return i < m_sql.size() ? m_sql[i] : '\0'; }

    [[nodiscard]] char anterior() const noexcept { return m_lugar == 0 ? '\0' : m_sql[m_lugar - 1]; }

    Numeros m_numeros;
    std::string_view m_sql;
    std::size_t m_lugar = 0; ///< the next character to read
    std::size_t m_copiado = 0; ///< up to which it stands in the skeleton
    std::size_t m_escrito = 0;
    std::size_t m_cuantos = 0;
    std::array<char, maximo_de_texto> m_texto;
    std::array<Literal, maximo_de_literales> m_literales;
};

} // namespace atipicos::sql
