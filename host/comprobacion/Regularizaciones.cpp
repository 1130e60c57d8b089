#include "host/comprobacion/Regularizaciones.hpp"

#include "host/bases/Version.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

namespace atipicos::app {

namespace {

    constexpr std::int32_t primera_version = 3;

    std::string valores(const ClaveAsiento& asiento)
    {
        return std::to_string(asiento.empresa) + ", " + std::to_string(asiento.ejercicio) + ", "
            + std::to_string(asiento.numero);
    }

}

void lee_regularizaciones(adodb::Connection& bexmor, const std::function<void(const Regularizacion&)>& cada)
{
    if (bases::comprueba_version(bexmor, "Esquema", "Bexmor", Donde::aqui()) < primera_version)
        return;
    const auto rs = bexmor.CreateRecordset();
    rs->Open("SELECT Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio, Por_Asiento FROM Regularizaciones"
             " ORDER BY Cod_Empresa, Cod_Ejercicio, Asiento",
        adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
    for (; !rs->Eof(); rs->MoveNext()) {
        const auto empresa = adodb::entero(*rs, "Cod_Empresa");
        cada({ { empresa, adodb::entero(*rs, "Cod_Ejercicio"), CLng(rs->Fields("Asiento").Value()) },
            { empresa, adodb::entero(*rs, "Por_Ejercicio"), CLng(rs->Fields("Por_Asiento").Value()) } });
    }
}

bool esta_regularizado(adodb::Connection& bexmor, const ClaveAsiento& asiento)
{
    const auto rs = bexmor.CreateRecordset();
    rs->Open("SELECT Asiento FROM Regularizaciones WHERE Cod_Empresa =" + std::to_string(asiento.empresa)
            + " AND Cod_Ejercicio =" + std::to_string(asiento.ejercicio)
            + " AND Asiento =" + std::to_string(asiento.numero),
        adodb::CursorType::Static, adodb::LockType::ReadOnly);
    return !rs->Eof();
}

void apunta_regularizacion(
    adodb::Connection& bexmor, const Regularizacion& una, const std::string& usuario, Date hora)
{
    bexmor.Execute("INSERT INTO Regularizaciones (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio,"
                   " Por_Asiento, Usuario, Hora) VALUES ("
        + valores(una.asiento) + ", " + std::to_string(una.por.ejercicio) + ", "
        + std::to_string(una.por.numero) + ", " + sql::literal(usuario) + ", " + sql::literal(hora) + ")");
}

} // namespace atipicos::app
