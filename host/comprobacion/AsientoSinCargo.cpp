#include "host/comprobacion/AsientoSinCargo.hpp"

namespace atipicos::app {

AsientoSinCargo sin_clasificar(const AsientoContabilizado& asiento)
{
    const auto& apuntes = asiento.apuntes; // the debtor first, the supplier last but one
    return { asiento.clave, asiento.fecha, asiento.documento(), apuntes[apuntes.size() - 2].cuenta,
        apuntes.front().debe };
}

} // namespace atipicos::app
