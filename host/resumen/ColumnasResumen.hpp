#pragma once

#include "host/resumen/ResumenCargos.hpp"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

/// The columns of a summary, each said once: the grid, the terminal's table and the files go through them.
namespace atipicos::app {

enum class DatoResumen : std::uint8_t {
    codigo,
    nombre,
    cuantos,
    base,
    impuesto,
    total,
    parte,
    antes,
    cambio
};

struct ColumnaResumen {
    DatoResumen dato;
    const char* titulo; ///< to a person
    const char* nombre; ///< heading in files, where it stands alone
    const char* clave; ///< in JSON
};

/// Nothing where there is no such value.
using ValorResumen = std::variant<std::monostate, std::string, std::int64_t, Currency>;

[[nodiscard]] std::vector<ColumnaResumen> columnas_resumen(VistaResumen por);

/// Whether the column has a text rather than a number.
[[nodiscard]] constexpr bool es_texto(const ColumnaResumen& columna) noexcept
{
    return columna.dato == DatoResumen::codigo || columna.dato == DatoResumen::nombre;
}

/// What files hold of a group; percentages to the fourth decimal.
[[nodiscard]] ValorResumen valor_de(
    const ResumenCargos& resumen, const GrupoResumen& grupo, const ColumnaResumen& columna);

/// What a person is shown of a group, of the total too.
[[nodiscard]] std::string celda_de(
    const ResumenCargos& resumen, const GrupoResumen& grupo, const ColumnaResumen& columna);

} // namespace atipicos::app
