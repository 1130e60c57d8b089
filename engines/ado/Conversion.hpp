#pragma once

#include "automation/Despacho.hpp"
#include "runtime/Error.hpp"
#include "runtime/Variant.hpp"

#include <string>

/// Values and errors between the component and automation objects.
namespace atipicos::ado {

/// The value that a host passes. Small integers become 32-bit ones, larger ones doubles when they do not fit,
/// decimals amounts when those hold them exactly. Error 13 for objects, arrays and whatever else the
/// component does not know.
[[nodiscard]] Variant variant_de(const automation::VARIANT& valor, Donde donde = Donde::aqui());

/// The same value for a host. Error 13 for objects.
[[nodiscard]] automation::Valor valor_de(const Variant& valor, Donde donde = Donde::aqui());

[[nodiscard]] automation::Moneda moneda_de(Currency importe) noexcept;
[[nodiscard]] automation::Fecha fecha_de(Date fecha) noexcept;

/// What the host says of a failure; that it says nothing, with its number, when it does not.
[[nodiscard]] std::string descripcion_de(const automation::Fallo& fallo);

/// Does something with the host's objects; what they raise becomes the component's `Error`, at `donde`.
template <class Trabajo> auto con_anfitrion(Donde donde, Trabajo&& trabajo)
{
    try {
        return trabajo();
    } catch (const automation::Fallo& fallo) {
        throw Error(fallo.numero(), fallo.fuente(), descripcion_de(fallo), donde);
    }
}

} // namespace atipicos::ado
