#pragma once

#include "demo/Grabacion.hpp"
#include "host/sesion/OpcionesComunes.hpp"

namespace atipicos::demo {

/// Takes the pictures of the windows that the program has besides those of a charge: which company and which
/// user, records, what is pending, what is chosen, drafts, boxes. The company of `opciones` has charges.
void graba_ventanas_del_anfitrion(const app::OpcionesComunes& opciones, Grabacion& grabacion);

} // namespace atipicos::demo
