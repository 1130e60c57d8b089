#pragma once

#include "host/sesion/OpcionesComunes.hpp"

namespace atipicos::app {

/// What the program does when it is given no command: its main window, where it was built with windows.
struct OpcionesVentana {
    OpcionesComunes comunes;
    bool empresa_dada = false; ///< on the command line: not to be asked for
    bool usuario_dado = false;
    bool lugar_dado = false; ///< on the command line, or by the person
};

/// Runs until the window is closed; returns the exit status.
int ventana_principal(const OpcionesVentana& opciones);

} // namespace atipicos::app
