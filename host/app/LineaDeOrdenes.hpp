#pragma once

#include "host/app/VentanaPrincipal.hpp"

namespace atipicos::app {

/// The program: reads the command line, runs the command (or, without one, `ventana`), and returns the exit
/// status.
int ejecuta(int argc, const char* const* argv, int (*ventana)(const OpcionesVentana&));

} // namespace atipicos::app
