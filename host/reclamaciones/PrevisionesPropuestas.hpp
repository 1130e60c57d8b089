#pragma once

#include "posting/GenerarPrev.hpp"

#include <vector>

namespace atipicos::app {

[[nodiscard]] bool genera_previsiones(); ///< whether the company is configured to forecast its payments

/// The forecasts that the terms propose, as a clerk accepts them unchanged; none when none are wanted.
[[nodiscard]] std::vector<Prevision> previsiones_propuestas(const Contabilizacion& datos);

} // namespace atipicos::app
