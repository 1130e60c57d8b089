#include "platform/adodb/campos.hpp"

namespace atipicos::adodb {

std::string texto(Recordset& rs, std::string_view campo, Donde donde)
{
    const Variant valor = rs.Fields(campo, donde).Value(donde);
    return valor.es_nulo() ? std::string() : CStr(valor, donde);
}

std::int16_t entero(Recordset& rs, std::string_view campo, Donde donde)
{
    const Variant valor = rs.Fields(campo, donde).Value(donde);
    return valor.es_nulo() ? std::int16_t{ 0 } : CInt(valor, donde);
}

} // namespace atipicos::adodb
