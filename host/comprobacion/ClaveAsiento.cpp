#include "host/comprobacion/ClaveAsiento.hpp"

#include <charconv>

namespace atipicos::app {

std::string texto(const ClaveAsiento& asiento)
{
    return "asiento " + std::to_string(asiento.numero) + " (empresa contable "
        + std::to_string(asiento.empresa) + ", ejercicio " + std::to_string(asiento.ejercicio) + ")";
}

std::string nombre_corto(const ClaveAsiento& asiento)
{
    return std::to_string(asiento.empresa) + "/" + std::to_string(asiento.ejercicio) + "/"
        + std::to_string(asiento.numero);
}

std::optional<ClaveAsiento> de_nombre_corto(std::string_view nombre)
{
    ClaveAsiento asiento;
    const auto* lugar = nombre.data();
    const auto* const fin = lugar + nombre.size();
    const auto lee = [&](auto& numero, bool ultimo) {
        const auto leido = std::from_chars(lugar, fin, numero);
        lugar = leido.ptr;
        if (leido.ec != std::errc() || numero <= 0)
            return false;
        return ultimo ? lugar == fin : lugar != fin && *lugar++ == '/';
    };
    if (!lee(asiento.empresa, false) || !lee(asiento.ejercicio, false) || !lee(asiento.numero, true))
        return std::nullopt;
    return asiento;
}

} // namespace atipicos::app
