#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::app {

enum class Alineacion : std::uint8_t { izquierda, derecha };

/// Columns of text aligned for a person, two blanks between them.
class Tabla {
public:
    struct Columna {
        std::string titulo;
        Alineacion alineacion = Alineacion::izquierda;
    };

    explicit Tabla(std::vector<Columna> columnas);

    void agrega(std::vector<std::string> celdas); ///< cells by `en_una_linea`
    void escribe(std::ostream& salida) const; ///< titles, a rule, and the rows

    /// Writes the rows, the first time under titles and a rule, and forgets them. Columns keep their width
    /// for those that come after, or grow: of a list that is written in pieces no more is held than a piece.
    void vuelca(std::ostream& salida);

    /// A row that is not kept, in columns as wide as those of the rows that were; a longer cell pushes the
    /// others.
    void escribe_fila(std::ostream& salida, std::vector<std::string> celdas) const;

    [[nodiscard]] std::size_t filas() const noexcept { return m_filas.size(); }

private:
    void escribe_titulos(std::ostream& salida) const;

    std::vector<Columna> m_columnas;
    std::vector<std::vector<std::string>> m_filas;
    std::vector<std::size_t> m_anchos;
    bool m_con_titulos = false; ///< they have been written
};

/// The text with a blank for each line break, tab or other control character, which a terminal would obey.
[[nodiscard]] std::string en_una_linea(std::string texto);

/// How many places a text takes on a terminal: its letters, whatever bytes they have; two for an East Asian
/// one, none for an accent of its own.
[[nodiscard]] std::size_t ancho(std::string_view texto) noexcept;

} // namespace atipicos::app
