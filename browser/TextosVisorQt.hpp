#pragma once

#include "browser/ColumnasLista.hpp"
#include "charges/ClaveCargo.hpp"

#include <QString>

#include <cstddef>
#include <string>

/// What the charge browser tells beside its list.
namespace atipicos::textos_visor {

[[nodiscard]] QString sin_buscar(); ///< how the list is filled
[[nodiscard]] QString sin_atipicos(); ///< the search has found none

[[nodiscard]] std::string leyendo(std::size_t cuantos); ///< while a long list is being read

/// How many charges are listed, and their totals: "…" for one that is too large.
[[nodiscard]] QString resumen(const TotalesLista& totales);
[[nodiscard]] QString por_que_falta_una_suma(const TotalesLista& totales); ///< empty when none is missing

[[nodiscard]] QString va_al_abierto(const ClaveCargo& clave); ///< which charge F6 goes to
[[nodiscard]] QString eliminado(const ClaveCargo& clave); ///< until the list has been read again

} // namespace atipicos::textos_visor
