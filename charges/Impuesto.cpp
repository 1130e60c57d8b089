#include "charges/Impuesto.hpp"

#include "context/claves.hpp"
#include "context/modComun.hpp"
#include "runtime/Formato.hpp"

namespace atipicos {

std::int16_t tipo_impuesto_atipicos(Donde donde)
{
    const Variant tipo
        = modComun::EmpresaOrvalin(donde).Parametro(claves::Proveedores_AtipcosImpuesto, donde);
    if (tipo.es_nulo() || CStr(tipo, donde).empty())
        return 0;
    return CInt(tipo, donde);
}

Currency importe_impuesto(Currency importe, Currency porcentaje, int decimales, Donde donde)
{
    const double impuesto = porcentaje.a_double() / 100 * importe.a_double();
    return Currency::de_double(Redondear(impuesto, decimales, donde), donde);
}

Currency importe_linea(Currency unidades, Currency precio, Donde donde)
{
    return Redondear(unidades * Operando(precio, donde), 2, donde);
}

} // namespace atipicos
