#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace atipicos::app {

struct LineaReclamada {
    int fila = 0; ///< of the file, 1-based; the headings are row 1
    std::int32_t articulo = 0; ///< 0: none
    std::string descripcion;
    Currency unidades;
    Currency costo;
    std::string observaciones;
};

/// One charge of the file: consecutive rows with the same reference.
struct Reclamacion {
    std::string referencia;
    int fila = 0; ///< its first row
    std::int16_t almacen = 0;
    std::int32_t proveedor = 0;
    Date fecha;
    std::string observaciones;
    bool franquiciado = false;
    std::vector<LineaReclamada> lineas;
    bool valida = true; ///< false when one of its rows is bad
};

/// Something wrong, or worth knowing, in one place of the file.
struct Reparo {
    int fila = 0;
    std::string columna; ///< empty: the row as a whole
    std::string motivo;
};

struct Reclamaciones {
    std::vector<Reclamacion> todas; ///< valid or not, in the order of the file
    std::vector<Reparo> errores;
    std::vector<Reparo> notas; ///< quotes that became acute accents
};

/// Reads a whole file into memory. Raises an error that names it when it is missing, a folder or not
/// readable.
[[nodiscard]] std::string lee_fichero(const std::filesystem::path& fichero);

/// Reads the contents of a claims file as a Spanish spreadsheet saves it: ";" between fields, decimal comma,
/// UTF-8 with or without mark, dates dd/mm/yyyy, one row a line. The columns are found by their headings:
/// referencia, almacen, proveedor, fecha, observaciones, franquiciado (S or N, empty is N), articulo (empty
/// is none), descripcion, unidades, costo, observaciones_linea. Further rows of a charge repeat its header
/// values or leave them empty.
///
/// What is wrong with a row makes its charge invalid and is told in `errores`; raises an error only when the
/// headings cannot be used. A quote inside a text becomes an acute accent, because texts go into statements
/// as they are; that is told in `notas`.
[[nodiscard]] Reclamaciones lee_reclamaciones(std::string_view contenido);

} // namespace atipicos::app
