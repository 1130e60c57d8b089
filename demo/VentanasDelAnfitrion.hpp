#pragma once

#include "demo/Grabacion.hpp"
#include "host/sesion/OpcionesComunes.hpp"

namespace atipicos::demo {

/// Takes the pictures of the windows that the program has besides those of a charge: which company and which
/// user, records, what is pending, what is chosen, drafts, boxes. The company of `opciones` has charges.
void graba_ventanas_del_anfitrion(const app::OpcionesComunes& opciones, Grabacion& grabacion);

/// Of the two pictures of a kind of records.
struct NombresDeFichas {
    const char* lista;
    const char* ficha;
};

/// Takes those of all records of a kind and of the first of them, which that command of the main window
/// opens.
void graba_fichas(
    QWidget& principal, const char* orden, const NombresDeFichas& nombres, Grabacion& grabacion);

/// Takes that of the history of the charge that is chosen in the main window.
void graba_historial(QWidget& principal, Grabacion& grabacion);

} // namespace atipicos::demo
