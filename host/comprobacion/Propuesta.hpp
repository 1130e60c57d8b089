#pragma once

#include "host/comprobacion/Verificacion.hpp"
#include "host/sesion/OpcionesComunes.hpp"

#include <string>

namespace atipicos::app {

/// The steps that would mend what `verifica` found, for a person to follow: what each is for and, where the
/// program can do it, the command, to be given as it stands. `comunes` says where the databases are.
[[nodiscard]] std::string propone(const Verificacion& verificacion, const OpcionesComunes& comunes);

} // namespace atipicos::app
