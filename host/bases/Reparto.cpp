#include "host/bases/Reparto.hpp"

#include "engines/sql/Guion.hpp"
#include "host/bases/Producto.hpp"
#include "host/bases/Tablas.hpp"
#include "host/sql/Guiones.hpp"

namespace atipicos::bases {

namespace {

    std::int32_t cuantas(adodb::Connection& conexion, const char* consulta, Donde donde)
    {
        return CLng(primera_fila(conexion, consulta, donde)[0], donde);
    }

    bool sabe_repartir(adodb::Connection& conexion, Donde donde)
    {
        return producto_de(conexion) == Producto::postgresql
            && cuantas(conexion, "SELECT COUNT(*) FROM pg_extension WHERE extname ='citus'", donde) > 0;
    }

    std::int32_t repartidas(adodb::Connection& conexion, Donde donde)
    {
        return cuantas(conexion, "SELECT COUNT(*) FROM pg_dist_partition", donde);
    }

}

bool reparte(adodb::Connection& conexion, Donde donde)
{
    if (!sabe_repartir(conexion, donde))
        return false;
    const auto antes = repartidas(conexion, donde);
    sql::ejecuta_guion(conexion, guiones::repartir_citus(), donde);
    return repartidas(conexion, donde) > antes;
}

bool esta_repartida(adodb::Connection& conexion, Donde donde)
{
    return sabe_repartir(conexion, donde)
        && cuantas(conexion,
               "SELECT COUNT(*) FROM pg_dist_partition d INNER JOIN pg_class c ON c.oid = d.logicalrelid"
               " INNER JOIN pg_namespace n ON n.oid = c.relnamespace"
               " WHERE n.nspname ='orvalin' AND c.relname ='proveedores_cargos_atipicos'",
               donde)
        > 0;
}

} // namespace atipicos::bases
