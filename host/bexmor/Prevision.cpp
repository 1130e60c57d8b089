#include "host/bexmor/Prevision.hpp"

#include "host/bexmor/Instrucciones.hpp"
#include "host/sql/Literal.hpp"

namespace atipicos::bexmor {

namespace {

    constexpr auto fuente = "QVBXEMP:Prevision";

}

Prevision::Prevision(const qvbxemp::Empresa& empresa)
    : m_empresa(empresa)
{
}

void Prevision::Guardar(Donde donde)
{
    comprueba_importe(Importe, fuente, donde);
    const auto sql = "INSERT INTO Previsiones (Cod_Empresa, Cod_Ejercicio, Asiento, Numero, Cuenta, "
                     "Departamento, Importe, TipoDoc, Vencimiento, Banco) VALUES ("
        + valores(m_empresa) + ", " + std::to_string(Asiento) + ", " + std::to_string(siguiente(donde)) + ", "
        + sql::literal(Cuenta, donde) + ", " + sql::literal(Departamento, donde) + ", "
        + sql::literal(Importe, donde) + ", " + std::to_string(TipoDoc) + ", " + sql::literal(Vencimiento)
        + ", " + sql::literal(Banco, donde) + ")";
    try {
        conexion(m_empresa, donde).Execute(sql, nullptr, adodb::CommandType::Text, donde);
    } catch (const adodb::ErrorBaseDatos& error) {
        explica_rechazo(error, m_empresa, Asiento, Cuenta, fuente, donde);
    }
}

std::int32_t Prevision::siguiente(Donde donde) const
{
    const auto rs = consulta(m_empresa,
        "SELECT MAX(Numero) AS Ultimo FROM Previsiones" + filtro(m_empresa)
            + " AND Asiento =" + std::to_string(Asiento),
        donde);
    const auto ultimo = rs->Fields("Ultimo", donde).Value(donde); // null for the first
    rs->Close(donde);
    return ultimo.es_nulo() ? 1 : CLng(ultimo, donde) + 1;
}

} // namespace atipicos::bexmor
