#include "host/bases/Producto.hpp"

#include "engines/odbc/Connection.hpp"
#include "engines/postgresql/Connection.hpp"

namespace atipicos::bases {

Producto producto_de(const adodb::Connection& conexion)
{
    if (const auto* por_odbc = dynamic_cast<const odbc::Connection*>(&conexion)) {
        if (por_odbc->servidor().nombre == odbc::nombre_postgresql)
            return Producto::postgresql;
        return por_odbc->servidor().nombre == odbc::nombre_sqlite ? Producto::sqlite : Producto::sql_server;
    }
    return dynamic_cast<const postgresql::Connection*>(&conexion) != nullptr ? Producto::postgresql
                                                                             : Producto::sqlite;
}

} // namespace atipicos::bases
