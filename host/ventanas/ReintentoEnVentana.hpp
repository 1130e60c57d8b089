#pragma once

#include "host/bases/Bases.hpp"
#include "host/ventanas/AvisoDeEspera.hpp"
#include "host/ventanas/HastaOtraOrden.hpp"

namespace atipicos::app {

/// What the person sees while a lost line to the server cannot be opened again: for how long that has been
/// tried, and a button that ends it. It is gone when the line is open, or is given up. Given up it is not
/// shown again before the person gives another order, because one order reads many times: each of those
/// readings tries once and waits for nothing.
class ReintentoEnVentana {
public:
    ReintentoEnVentana();

    /// Shows it, or how it stands, and lets the button be pressed for a moment; whether to go on trying. See
    /// `sql::SigueIntentando`.
    [[nodiscard]] bool sigue(const sql::Reintento& como);
    void reanudada(); ///< the line is open

private:
    AvisoDeEspera m_aviso;
    HastaOtraOrden m_dejado;
};

/// Has a session of the windows wait for a silent server and try to open a lost line again, and show both.
void espera_en_ventana(bases::OpcionesBases& opciones);

} // namespace atipicos::app
