#include "host/bases/Confirmaciones.hpp"

#include "engines/sql/Postgresql.hpp"
#include "host/bases/Producto.hpp"

namespace atipicos::bases {

void crea_confirmaciones(adodb::Connection& orvalin, Donde donde)
{
    if (producto_de(orvalin) == Producto::postgresql)
        sql::crea_confirmaciones_postgresql(orvalin, "orvalin", donde);
}

} // namespace atipicos::bases
