#include "host/bexmor/Prevision.hpp"

#include "host/bexmor/Instrucciones.hpp"
#include "host/sql/Literal.hpp"

namespace atipicos::bexmor {

namespace {

    constexpr auto fuente_prevision = "QVBXEMP:Prevision";

}

Prevision::Prevision(const qvbxemp::Empresa& empresa)
    : m_empresa(empresa)
{
}

void Prevision::Guardar(Donde donde)
{
    comprueba_importe(Importe, fuente_prevision, donde);
    const auto asiento = std::to_string(Asiento);
    // The database numbers it in the statement that stores it: a number remembered here could be another's.
    const auto sql = "INSERT INTO Previsiones (Cod_Empresa, Cod_Ejercicio, Asiento, Numero, Cuenta, "
                     "Departamento, Importe, TipoDoc, Vencimiento, Banco) VALUES ("
        + valores(m_empresa) + ", " + asiento + ", (SELECT ISNULL(MAX(Numero), 0) + 1 FROM Previsiones"
        + filtro(m_empresa) + " AND Asiento =" + asiento + "), " + sql::literal(Cuenta, donde) + ", "
        + sql::literal(Departamento, donde) + ", " + sql::literal(Importe, donde) + ", "
        + std::to_string(TipoDoc) + ", " + sql::literal(Vencimiento) + ", " + sql::literal(Banco, donde)
        + ")";
    try {
        conexion(m_empresa, donde).Execute(sql, nullptr, adodb::CommandType::Text, donde);
    } catch (const adodb::ErrorBaseDatos& error) {
        explica_rechazo(error, m_empresa, Asiento, Cuenta, fuente_prevision, donde);
    }
}

} // namespace atipicos::bexmor
