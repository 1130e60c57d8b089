#pragma once

#include "host/bases/Bases.hpp"
#include "host/terminal/ReintentoServidor.hpp"

#include <memory>

namespace atipicos::app {

/// Has a session of a command try to open a lost line again, and say so on standard error.
std::shared_ptr<const ReintentoServidor> reintenta_en_terminal(bases::OpcionesBases& opciones);

} // namespace atipicos::app
