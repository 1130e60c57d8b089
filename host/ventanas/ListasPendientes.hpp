#pragma once

#include "host/bases/Lugar.hpp"
#include "host/panel/Pendientes.hpp"
#include "host/ventanas/frmPendiente.hpp"

/// What the lists of things that need attention say.
namespace atipicos::app {

/// Of whom the commands are: where the databases are, and the company.
struct Destinatario {
    bases::Lugar lugar;
    std::int16_t empresa = 0;
};

[[nodiscard]] ListaPendiente lista_de(const SinAsiento& sin_asiento, const Destinatario& de);
[[nodiscard]] ListaPendiente lista_de(const AsientosSueltos& sueltos, const Destinatario& de);
[[nodiscard]] ListaPendiente lista_de(const Proximas& proximas);

// In a line each, for the panel.
[[nodiscard]] QString resumen_de(const SinAsiento& sin_asiento);
[[nodiscard]] QString resumen_de(const AsientosSueltos& sueltos);
[[nodiscard]] QString resumen_de(const Proximas& proximas);

} // namespace atipicos::app
