#pragma once

#include "host/sql/Periodo.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <string>
#include <string_view>

namespace atipicos::app {

/// What charges are added up by.
enum class VistaResumen : std::uint8_t { proveedor, mes, almacen, articulo };

/// The same days of the year before. A range that ends with a month ends with that month also then, whatever
/// its days: with 29 February against 28, and with 28 against 29.
[[nodiscard]] Periodo un_anio_antes(const Periodo& periodo);

/// Which charges of a company are added up, and how.
struct PeticionResumen {
    VistaResumen por = VistaResumen::proveedor;
    Periodo periodo;
    std::int16_t almacen = 0; ///< below 1: all
    std::int32_t proveedor = 0; ///< below 1: all

    friend bool operator==(const PeticionResumen&, const PeticionResumen&) = default;
};

/// The word for a view on the command line and in files: "proveedor", "mes", "almacen", "articulo".
[[nodiscard]] std::string_view palabra(VistaResumen por) noexcept;
/// The view of such a word; by supplier for any other one, which the command line does not let through.
[[nodiscard]] VistaResumen de_palabra(std::string_view palabra) noexcept;
/// What a person calls that by which it adds up: "proveedor", "mes", "almacén", "artículo".
[[nodiscard]] std::string_view nombre_de(VistaResumen por) noexcept;

/// "Cargos por almacén del 01/01/2026 al 31/12/2026, sólo del proveedor 103".
[[nodiscard]] std::string titulo(const PeticionResumen& peticion);

} // namespace atipicos::app
