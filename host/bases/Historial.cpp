#include "host/bases/Historial.hpp"

#include "engines/sql/Guion.hpp"
#include "host/bases/Producto.hpp"
#include "host/bases/Usuario.hpp"
#include "host/sql/Guiones.hpp"
#include "host/sql/Literal.hpp"

#include <array>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace atipicos::bases {

namespace {

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

std::vector<std::string> firma_de_fichero()
{
    const auto firma = " SET Login =" + sql::literal(usuario_de_la_maquina())
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
    std::vector<std::string> instrucciones;
    for (const auto& una : firmadas) {
        std::string sql = "CREATE TEMP TRIGGER ";
        for (const auto parte : { una.disparador, std::string_view(" AFTER INSERT ON "), una.tabla,
                 std::string_view(" BEGIN UPDATE "), una.tabla, std::string_view(firma), una.cual,
                 std::string_view("; END;") })
            sql += parte;
        instrucciones.push_back(std::move(sql));
    }
    return instrucciones;
}

void firma_historial(adodb::Connection& orvalin, Donde donde)
{
    if (producto_de(orvalin) != Producto::sqlite)
        return;
    for (const auto& sql : firma_de_fichero())
        orvalin.Execute(sql, nullptr, adodb::CommandType::Text, donde);
}

} // namespace atipicos::bases
