#pragma once

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

    void agrega(std::vector<std::string> celdas); ///< line breaks and tabs are shown as blanks
    void escribe(std::ostream& salida) const; ///< titles, a rule, and the rows

private:
    std::vector<Columna> m_columnas;
    std::vector<std::vector<std::string>> m_filas;
    std::vector<std::size_t> m_anchos;
};

/// How many places a text takes on a terminal: its letters, whatever bytes they have.
[[nodiscard]] std::size_t ancho(std::string_view texto) noexcept;

} // namespace atipicos::app
