#pragma once

#include "host/reclamaciones/Huella.hpp"
#include "host/reclamaciones/LectorCsv.hpp"
#include "host/reclamaciones/Reclamacion.hpp"

#include <array>
#include <unordered_set>

namespace atipicos::app {

/// Reads one row of a claims file after the other into charges. See `LectorReclamaciones`.
class InterpreteReclamaciones {
public:
    enum Columna : std::size_t {
        referencia,
        almacen,
        proveedor,
        fecha,
        observaciones,
        franquiciado,
        articulo,
        descripcion,
        unidades,
        costo,
        observaciones_linea,
        cuantas
    };

    /// Raises an `ErrorDeContenido` when the headings cannot be used.
    explicit InterpreteReclamaciones(const FilaCsv& cabecera);

    /// The charge that begins with a row.
    [[nodiscard]] Reclamacion empieza(const FilaCsv& fila);

    /// Whether the row belongs to the charge before it, or cannot be known not to.
    [[nodiscard]] bool continua(const Reclamacion& actual, const FilaCsv& fila) const;

    void agrega(Reclamacion& actual, const FilaCsv& fila);

private:
    using Orden = std::array<std::size_t, cuantas>; ///< where each column stands

    static Orden orden_de(const FilaCsv& cabecera);
    [[nodiscard]] const std::string& campo(const FilaCsv& fila, Columna columna) const;
    [[nodiscard]] const std::string& campo(Columna columna) const { return campo(*m_fila, columna); }
    [[nodiscard]] bool sin_referencia(const FilaCsv& fila) const;
    void mal(std::size_t columna, const std::string& motivo);
    void comprueba(Reclamacion& actual, const FilaCsv& fila);
    void comprueba_letras();
    void acaba_fila();
    void lee_referencia();
    void lee_cabecera();
    void repite_cabecera();
    void lee_linea();
    std::int32_t codigo(Columna columna, std::int32_t maximo, bool obligatorio);
    Currency importe(Columna columna);
    std::string texto(Columna columna);

    Orden m_orden;
    std::array<std::size_t, cuantas> m_anchos{}; ///< of the texts, 0 for what is none
    Reclamacion* m_actual = nullptr;
    const FilaCsv* m_fila = nullptr;
    bool m_bien = true; ///< the row
    int m_ilegible = 0; ///< a row before, of which it is not known whose it is
    std::unordered_set<Resumen, DispersaResumen> m_vistas;
    std::vector<std::string> m_cabecera; ///< header values of the charge being read, as written
};

} // namespace atipicos::app
