#pragma once

#include "host/resumen/PeticionResumen.hpp"

#include <cstdint>
#include <string>

namespace atipicos::app {

/// The company whose charges are added up, and the one under which its suppliers are kept.
struct AmbitoResumen {
    std::int16_t empresa = 1;
    std::int16_t empresa_proveedores = 1;
};

/// The one statement of a view. The database groups and adds up; there is a row for each group and period,
/// with the fields
///
/// - `Clave`: the group's code; by month, a day, because no function that takes a month out of a date is the
///   same everywhere;
/// - `Antes`: 0, or 1 for the same days of the year before;
/// - `Cuantos`: charges; by article, lines;
/// - `Base` and `Impuesto`: sums, as texts of whole numbers, because only whole numbers are added up exactly
///   by every database. In ten-thousandths; by article the base in cents, each line rounded as a charge
///   rounds it, and the tax in cents by ten-thousandths of a percent, to be rounded once;
/// - `Nombre`: of the catalogue, empty when it is gone; by month there is none.
[[nodiscard]] std::string instruccion_resumen(const PeticionResumen& peticion, const AmbitoResumen& ambito);

} // namespace atipicos::app
