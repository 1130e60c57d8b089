#pragma once

#include "host/ordenes/Ordenes.hpp"
#include "host/ventanas/VentanaPrincipal.hpp"

namespace atipicos::app {

/// What of the program is another when it was built without windows.
struct Ventanas {
    int (*principal)(const OpcionesVentana&); ///< when it is given no command
    int (*imprimir)(const OpcionesComunes&, const OpcionesImprimir&);
    DibujaResumen dibuja_resumen;
};

/// The program: reads the command line, runs the command, and returns the exit status.
int ejecuta(int argc, const char* const* argv, const Ventanas& ventanas);

} // namespace atipicos::app
