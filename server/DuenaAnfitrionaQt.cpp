#include "server/DuenaAnfitrionaQt.hpp"

#include "engines/ado/Conversion.hpp"

#include <cmath>

namespace atipicos::server {

namespace {

    constexpr std::int32_t sin_ventana = 1002;
    constexpr double las_exactas = 9'007'199'254'740'992; ///< whole numbers up to here are exact in a double

}

Duena duena_de(const automation::Despacho& ventana, Donde donde)
{
    if (!ventana)
        return {};
    const double hWnd = ado::con_anfitrion(
        donde, [&] { return CDbl(ado::variant_de(ventana.llama("hWnd").get(), donde), donde); });
    if (std::trunc(hWnd) != hWnd || std::fabs(hWnd) > las_exactas)
        throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
    if (hWnd == 0)
        throw Error(sin_ventana, "QVORComprasAtip",
            "El objeto dado como dueño no tiene todavía ninguna ventana (hWnd es 0).", donde);
    return Duena::de_hWnd(static_cast<WId>(static_cast<std::int64_t>(hWnd))); // the system's may be negative
}

} // namespace atipicos::server
