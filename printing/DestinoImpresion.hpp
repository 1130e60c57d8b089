#pragma once

#include <cstdint>
#include <string>

namespace atipicos {

/// Where the two prints of a document go, as the person chose it.
struct DestinoImpresion {
    std::string Impresora; ///< name of the printer; empty when the system has none
    std::int16_t Dispositivo = 0; ///< output device of the first print
    std::int16_t Dispositivo2 = 0; ///< and of the second
    std::int16_t Ajuste = 0; ///< setting read from the printer combo; passed on as it is

    friend bool operator==(const DestinoImpresion&, const DestinoImpresion&) = default;
};

} // namespace atipicos
