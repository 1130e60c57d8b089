#pragma once

#include "platform/report/Salida.hpp"

#include <memory>

namespace atipicos::app {

/// Where the documents go that windows bring out. What goes to the screen is shown in the component's viewer,
/// modally, because it is asked for by modal forms.
[[nodiscard]] std::shared_ptr<SalidaReport> salida_de_ventanas();

} // namespace atipicos::app
