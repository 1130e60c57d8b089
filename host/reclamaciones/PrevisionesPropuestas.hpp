#pragma once

#include "host/sesion/AvisosRecogidos.hpp"
#include "posting/Prevision.hpp"

#include <vector>

namespace atipicos {
struct Contabilizacion;
}

namespace atipicos::app {

/// The forecasts that the terms propose, as a clerk accepts them unchanged; none when none are wanted, and
/// when the terms give none. Raises an error that says so when they cannot be worked out, which `avisos` has
/// to be collecting, and when they do not add up to the amount: the dialog would not accept those either.
[[nodiscard]] std::vector<Prevision> previsiones_propuestas(
    const Contabilizacion& datos, AvisosRecogidos& avisos);

} // namespace atipicos::app
