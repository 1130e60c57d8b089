#include "host/bases/Historial.hpp"

#include "engines/odbc/Connection.hpp"
#include "engines/postgresql/Connection.hpp"
#include "engines/sql/Guion.hpp"
#include "engines/sqlite/Connection.hpp"
#include "host/sql/Guiones.hpp"
#include "host/sql/Literal.hpp"

#include <array>
#include <cstdint>
#include <pwd.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace atipicos::bases {

namespace {

    enum class Producto : std::uint8_t { postgresql, sqlite, sql_server };

    Producto producto_de(const adodb::Connection& conexion)
    {
        if (const auto* por_odbc = dynamic_cast<const odbc::Connection*>(&conexion)) {
            if (por_odbc->servidor().nombre == odbc::nombre_postgresql)
                return Producto::postgresql;
            return por_odbc->servidor().nombre == odbc::nombre_sqlite ? Producto::sqlite
                                                                      : Producto::sql_server;
        }
        return dynamic_cast<const postgresql::Connection*>(&conexion) != nullptr ? Producto::postgresql
                                                                                 : Producto::sqlite;
    }

    /// The user of this machine, by name where he has one.
    std::string usuario()
    {
        const auto* cuenta = getpwuid(geteuid());
        return cuenta != nullptr ? cuenta->pw_name : std::to_string(geteuid());
    }

    std::string maquina()
    {
        std::array<char, 256> nombre{};
        gethostname(nombre.data(), nombre.size() - 1);
        return nombre.data();
    }

}

void crea_historial(adodb::Connection& orvalin, Donde donde)
{
    switch (producto_de(orvalin)) {
    case Producto::postgresql:
        return sql::ejecuta_guion(orvalin, guiones::historial_postgresql(), donde);
    case Producto::sqlite:
        return sql::ejecuta_guion(orvalin, guiones::historial_sqlite(), donde);
    case Producto::sql_server:
        break;
    }
    orvalin.Execute("USE Bexmor", nullptr, adodb::CommandType::Text, donde);
    sql::ejecuta_guion(orvalin, guiones::historial_sqlserver_bexmor(), donde);
    orvalin.Execute("USE Orvalin", nullptr, adodb::CommandType::Text, donde);
    sql::ejecuta_guion(orvalin, guiones::historial_sqlserver(), donde);
}

void firma_historial(adodb::Connection& orvalin, Donde donde)
{
    if (producto_de(orvalin) != Producto::sqlite)
        return;
    const auto firma = " SET Login =" + sql::literal(usuario())
        + ", Puesto =" + sql::literal(maquina() + " atipicos") + " WHERE ";
    struct Firmada {
        std::string_view disparador;
        std::string_view tabla;
        std::string_view cual;
    };
    constexpr std::array<Firmada, 2> firmadas{ { { "Historial_Firma", "Historial", "Numero = NEW.Numero" },
        { "Anulaciones_Firma", "Historial_Anulaciones",
            "Cod_Empresa = NEW.Cod_Empresa AND Cod_Ejercicio = NEW.Cod_Ejercicio AND Asiento = "
            "NEW.Asiento" } } };
    for (const auto& una : firmadas) {
        std::string sql = "CREATE TEMP TRIGGER ";
        for (const auto parte : { una.disparador, std::string_view(" AFTER INSERT ON "), una.tabla,
                 std::string_view(" BEGIN UPDATE "), una.tabla, std::string_view(firma), una.cual,
                 std::string_view("; END;") })
            sql += parte;
        orvalin.Execute(sql, nullptr, adodb::CommandType::Text, donde);
    }
}

} // namespace atipicos::bases
