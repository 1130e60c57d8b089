#pragma once

#include "host/resumen/InstruccionResumen.hpp"
#include "host/resumen/ResumenCargos.hpp"
#include "platform/adodb/Connection.hpp"

namespace atipicos::app {

/// Asks the management database for a view, in one statement. Raises its errors, and error 6 for a sum that
/// is more than an amount can hold.
[[nodiscard]] ResumenCargos lee_resumen(adodb::Connection& orvalin, const AmbitoResumen& ambito,
    const PeticionResumen& peticion, Donde donde = Donde::aqui());

} // namespace atipicos::app
