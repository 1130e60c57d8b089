#include "host/bases/OrdenDeCopia.hpp"

#include "engines/odbc/Connection.hpp"
#include "engines/postgresql/Connection.hpp"
#include "host/bases/ClaveOdbc.hpp"
#include "host/bases/Fallo.hpp"
#include "host/bases/Palabra.hpp"
#include "host/sql/Literal.hpp"

#include <utility>

namespace atipicos::bases {

namespace {

    namespace fs = std::filesystem;

    std::string pg_dump(const fs::path& destino, const std::string& base)
    {
        return "pg_dump --format=custom --file=" + como_palabra(destino.string()) + " " + base;
    }

    std::string backup(const fs::path& destino, const std::string& base)
    {
        return "BACKUP DATABASE " + base + " TO DISK = N"
            + sql::literal((destino / (base + ".bak")).string());
    }

    std::string por_odbc(const std::string& direccion, const fs::path& destino, Donde donde)
    {
        const auto& producto
            = odbc::Connection::Abrir({ .cadena = direccion, .clave = clave_odbc(donde) }, donde)
                  ->servidor()
                  .nombre;
        if (producto == odbc::nombre_sql_server)
            return backup(destino, "Orvalin") + "; " + backup(destino, "Bexmor");
        if (producto != odbc::nombre_postgresql)
            falla(direccion, "no se conoce la orden con la que se copia.", donde);
        const odbc::Cadena cadena(direccion);
        std::string base;
        for (const auto& [nombre, opcion] : { std::pair{ "SERVER", "--host=" }, { "PORT", "--port=" },
                 { "UID", "--username=" }, { "DATABASE", "--dbname=" } })
            if (cadena.tiene(nombre))
                base += (base.empty() ? "" : " ") + (opcion + como_palabra(cadena.valor(nombre)));
        return pg_dump(destino, base);
    }

}

std::string orden_de_copia(const Lugar& lugar, const fs::path& destino, Donde donde)
{
    if (lugar.clase() == Lugar::Clase::odbc)
        return por_odbc(lugar.direccion(), destino, donde);
    // Refuses an address with a password in it.
    static_cast<void>(postgresql::Connection::Abrir({ .direccion = lugar.direccion() }, donde));
    return pg_dump(destino, como_palabra(lugar.direccion()));
}

} // namespace atipicos::bases
