#pragma once

#include "host/bases/Lugar.hpp"
#include "platform/report/Lienzo.hpp"
#include "runtime/Error.hpp"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// What a printed document looks like, as its template file says. `documento_cargo.json` explains itself.
namespace atipicos::orvalin {

struct Estilo {
    Letra letra;
    Color color = 0;
    Medida linea = 0; ///< height of a line
};

/// A text with fields in it, "NIF {proveedor.nif}", and how it is written.
struct ParrafoPlantilla {
    Estilo estilo;
    std::string texto;
};

/// Paragraphs one below the other in a column, or, without paragraphs, a coloured box. Places are counted
/// from the page or from the upper edge of what the piece belongs to.
struct Pieza {
    Recuadro lugar; ///< of a text the height is that of its lines
    std::vector<ParrafoPlantilla> parrafos;
    bool a_la_derecha = false;
    Color relleno = 0;
};

struct Columna {
    ParrafoPlantilla titulo;
    Pieza celda;
};

/// One part of what flows from page to page.
struct Seccion {
    enum class Tipo : std::uint8_t { Parrafo, Tabla, Grupo };

    Tipo tipo = Tipo::Parrafo;
    std::string si; ///< shown only when this field is not empty; "": always
    bool unida = false; ///< on the same page as the end of what comes before, if a page can hold it
    Medida separacion = 0; ///< above it
    std::vector<Pieza> piezas; ///< of a paragraph one, of a group all
    // Of a table:
    std::string lista; ///< the list whose elements are its rows
    std::vector<Columna> columnas;
    Color fondo_titulos = 0xFFFFFF;
    Color filete = 0xFFFFFF; ///< the line below each row
    Medida margen = 0; ///< above and below the text of a row
};

struct Plantilla {
    Tamano papel = A4;
    Medida cuerpo_hasta = 0; ///< where what flows ends
    Medida separacion = 0; ///< between the heading and what flows
    std::vector<Pieza> cabecera; ///< of every page
    std::vector<Pieza> primera; ///< of the first page, besides
    std::vector<Pieza> pie; ///< of every page
    std::vector<Seccion> cuerpo;

    /// Reads a template. Raises an `Error` that names `nombre` and what is wrong with it.
    [[nodiscard]] static Plantilla de_texto(
        std::string_view json, const std::string& nombre, Donde donde = Donde::aqui());
    [[nodiscard]] static Plantilla de_fichero(
        const std::filesystem::path& fichero, Donde donde = Donde::aqui());

    /// The `documento_cargo.json` of the folder of the databases, or, where it has none, the program's own.
    [[nodiscard]] static Plantilla de_lugar(const bases::Lugar& lugar, Donde donde = Donde::aqui());

    /// The one that the program brings with it.
    [[nodiscard]] static const Plantilla& de_serie();
};

} // namespace atipicos::orvalin
