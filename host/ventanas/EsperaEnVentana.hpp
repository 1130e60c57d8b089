#pragma once

#include "host/ventanas/AvisoDeEspera.hpp"

#include <QTimer>

#include <chrono>

namespace atipicos::app {

/// What the person sees while a server does not answer, longer than another's lock may hold it up: for how
/// long it has not, and a button that ends the waiting. It is gone soon after the answer is there.
class EsperaEnVentana {
public:
    /// `bloqueo`: how long another's lock is waited for.
    explicit EsperaEnVentana(std::chrono::milliseconds bloqueo);

    /// Whether to go on waiting. See `sql::SigueEsperando`.
    [[nodiscard]] bool sigue(std::chrono::milliseconds callado);

private:
    void quita_si_ha_contestado();

    std::chrono::milliseconds m_desde;
    AvisoDeEspera m_aviso;
    QTimer m_reloj; ///< nobody says that the answer is there: it is not asked any more then
    bool m_preguntando = false;
};

} // namespace atipicos::app
