#pragma once

#include "host/reclamaciones/LectorCsv.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
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

/// Something wrong, or worth knowing, in one place of the file.
struct Reparo {
    int fila = 0;
    std::string columna; ///< empty: the row as a whole
    std::string motivo;
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
    std::vector<Reparo> errores;
    std::vector<Reparo> notas; ///< quotes that became acute accents
};

/// The charges of a claims file as a Spanish spreadsheet saves it, one after the other as the text is read:
/// ";" between fields, decimal comma, UTF-8 with or without mark, dates dd/mm/yyyy, one row a line. The
/// columns are found by their headings: referencia, almacen, proveedor, fecha, observaciones, franquiciado (S
/// or N, empty is N), articulo (empty is none), descripcion, unidades, costo, observaciones_linea. Further
/// rows of a charge repeat its header values or leave them empty.
///
/// What is wrong with a row makes its charge invalid and is told in its `errores`. A quote inside a text
/// becomes an acute accent, because texts go into statements as they are; that is told in its `notas`. Of the
/// charges that have gone by only their references are kept, as digests.
class LectorReclamaciones {
public:
    /// Reads the headings, and raises an `ErrorDeContenido` when they cannot be used.
    explicit LectorReclamaciones(Trozos trozos);
    LectorReclamaciones(const LectorReclamaciones&) = delete;
    LectorReclamaciones& operator=(const LectorReclamaciones&) = delete;
    ~LectorReclamaciones();

    /// The next charge; nothing at the end. Raises an `ErrorDeContenido` when the quotes of a row are out of
    /// place.
    [[nodiscard]] std::optional<Reclamacion> siguiente();

private:
    class Interprete;

    LectorCsv m_csv;
    std::unique_ptr<Interprete> m_interprete;
    FilaCsv m_fila; ///< read already, the first of the next charge
    bool m_hay_fila = false;
};

} // namespace atipicos::app
