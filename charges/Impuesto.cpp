#include "charges/Impuesto.hpp"

#include "context/claves.hpp"
#include "context/modComun.hpp"
#include "runtime/Formato.hpp"
#include "runtime/Redondeo.hpp"

#include <limits>
#include <string>
#include <variant>

namespace atipicos {

std::int16_t tipo_impuesto_atipicos(Donde donde)
{
    const Variant tipo
        = modComun::EmpresaOrvalin(donde)->Parametro(claves::Proveedores_AtipcosImpuesto, donde);
    const auto* const texto = std::get_if<std::string>(&tipo.valor());
    return texto != nullptr && texto->empty() ? std::int16_t{ 0 } : CInt(tipo, donde);
}

Currency importe_impuesto(Currency importe, Currency porcentaje, int decimales, Donde donde)
{
    const double impuesto = porcentaje.a_double() / 100 * importe.a_double();
    return Currency::de_double(Redondear(impuesto, decimales, donde), donde);
}

Currency cuota_impuesto(Currency importe, Currency porcentaje, Donde donde)
{
    constexpr std::int64_t diezmilesimas_por_centimo = Currency::escala / 100;
    const auto producto = entero_ancho{ importe.crudo() } * porcentaje.crudo();
    const auto centimos
        = redondea_cociente<entero_ancho>(producto, entero_ancho{ Currency::escala } * Currency::escala);
    constexpr auto limite = std::numeric_limits<std::int64_t>::max() / diezmilesimas_por_centimo;
    if (centimos > limite || centimos < -limite)
        throw Error::de_ejecucion(numero_error::desbordamiento, donde);
    return Currency::de_crudo(static_cast<std::int64_t>(centimos) * diezmilesimas_por_centimo);
}

Currency importe_linea(Currency unidades, Currency precio, Donde donde)
{
    return Redondear(unidades * Operando(precio, donde), 2, donde);
}

} // namespace atipicos
