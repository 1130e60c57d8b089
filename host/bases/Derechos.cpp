#include "host/bases/Derechos.hpp"

#include "engines/sql/Guion.hpp"
#include "host/bases/Producto.hpp"
#include "host/sql/Guiones.hpp"

namespace atipicos::bases {

void crea_derechos(adodb::Connection& orvalin, Donde donde)
{
    switch (producto_de(orvalin)) {
    case Producto::postgresql:
        return sql::ejecuta_guion(orvalin, guiones::derechos_postgresql(), donde);
    case Producto::sqlite:
        return;
    case Producto::sql_server:
        break;
    }
    orvalin.Execute("USE Bexmor", nullptr, adodb::CommandType::Text, donde);
    sql::ejecuta_guion(orvalin, guiones::derechos_sqlserver_bexmor(), donde);
    orvalin.Execute("USE Orvalin", nullptr, adodb::CommandType::Text, donde);
    sql::ejecuta_guion(orvalin, guiones::derechos_sqlserver(), donde);
}

} // namespace atipicos::bases
