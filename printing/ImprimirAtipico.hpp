#pragma once

#include "printing/DestinoImpresion.hpp"
#include "runtime/Error.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace atipicos {

/// A charge of the current company, with its supplier.
struct CargoAImprimir {
    std::int16_t Ejercicio = 0;
    std::int16_t Almacen = 0;
    std::string Codigo;
    std::int32_t Proveedor = 0;
};

/// Asks the person where to print; nothing when the person cancels.
using PedirDestino = std::function<std::optional<DestinoImpresion>()>;

/// Prints the document of a charge twice, on the first device chosen and then on the second, whatever they
/// are. False when the person cancelled: then nothing is printed. Errors of the management library, and error
/// 91 from a host that brings none, reach the caller.
bool ImprimirAtipico(
    const CargoAImprimir& cargo, const PedirDestino& pedir_destino, Donde donde = Donde::aqui());

} // namespace atipicos
