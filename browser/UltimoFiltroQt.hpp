#pragma once

#include "browser/ListaAtipicos.hpp"

/// The filter of the last search, kept for each user of each company on this machine. A range until today
/// stays one until today.
namespace atipicos {

[[nodiscard]] FiltroAtipicos filtro_de_este_anio(); ///< from 1 January to today, of all

[[nodiscard]] FiltroAtipicos ultimo_filtro(); ///< that of this year when the user has not searched yet
void guarda_filtro(const FiltroAtipicos& filtro);

} // namespace atipicos
