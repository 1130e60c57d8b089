#pragma once

#include "host/reclamaciones/LectorCsv.hpp"
#include "host/reclamaciones/Reclamacion.hpp"

#include <memory>
#include <optional>

namespace atipicos::app {

class InterpreteReclamaciones;

/// The charges of a claims file as a Spanish spreadsheet saves it, one after the other as the text is read:
/// ";" between fields, decimal comma, UTF-8 with or without mark, dates dd/mm/yyyy, one row a line. The
/// columns are found by their headings: referencia, almacen, proveedor, fecha, observaciones, franquiciado (S
/// or N, empty is N), articulo (empty is none), descripcion, unidades, costo, observaciones_linea. Further
/// rows of a charge repeat its header values or leave them empty.
///
/// A text that its column would not take, and more lines than a charge holds, are wrong. What is wrong with a
/// row makes its charge invalid and is told in its `errores`. A quote inside a text becomes an acute accent,
/// because texts go into statements as they are; that is told in its `notas`. Of the charges that have gone
/// by only their references are kept, as digests.
class LectorReclamaciones {
public:
    /// Reads the headings, and raises an `ErrorDeContenido` when they cannot be used.
    explicit LectorReclamaciones(Trozos trozos);
    LectorReclamaciones(const LectorReclamaciones&) = delete;
    LectorReclamaciones& operator=(const LectorReclamaciones&) = delete;
    ~LectorReclamaciones();

    /// The next charge; nothing at the end. Raises the errors of `LectorCsv::lee`.
    [[nodiscard]] std::optional<Reclamacion> siguiente();

private:
    LectorCsv m_csv;
    std::unique_ptr<InterpreteReclamaciones> m_interprete;
    FilaCsv m_fila; ///< read already, the first of the next charge
    bool m_hay_fila = false;
};

} // namespace atipicos::app
