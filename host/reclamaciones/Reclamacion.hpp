#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstddef>
#include <cstdint>
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

/// Something wrong, or worth knowing, in one place of the file.
struct Reparo {
    int fila = 0;
    std::string columna; ///< empty: the row as a whole
    std::string motivo;
};

/// One charge of the file: consecutive rows with the same reference. What it keeps of a long one is bounded.
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
    bool repetida
        = false; ///< its reference has come before: a further part of a claim that is bad as a whole
    std::vector<Reparo> errores;
    std::vector<Reparo> notas; ///< quotes that became acute accents
};

inline constexpr std::size_t lineas_que_caben = 32'767; ///< in a charge

/// Adds to the errors of a claim, up to as many as a person reads, and makes it invalid.
void repara(Reclamacion& reclamacion, int fila, std::string_view columna, const std::string& motivo);

/// The digest of what a claim says, in hexadecimal: equal for equal values, however they are written.
[[nodiscard]] std::string contenido_de(const Reclamacion& reclamacion);

} // namespace atipicos::app
