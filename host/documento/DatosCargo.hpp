#pragma once

#include "host/documento/CargoImpreso.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"

#include <string>

namespace atipicos::orvalin {

/// What the document of a charge says, for a program to read: a JSON object under the names that `listar` and
/// `mostrar` use too, amounts as numbers, days as `yyyy-mm-dd`, null for an entry that there is not. What is
/// no UTF-8 becomes U+FFFD.
[[nodiscard]] std::string datos_en_json(
    const CargoImpreso& cargo, const qvoremp::Almacen& almacen, const qvoremp::Proveedor& proveedor);

} // namespace atipicos::orvalin
