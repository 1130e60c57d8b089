#include "host/bexmor/RegistroImpuesto.hpp"

#include "host/bexmor/Incompleto.hpp"
#include "host/bexmor/Instrucciones.hpp"
#include "host/sql/Literal.hpp"

namespace atipicos::bexmor {

namespace {

    constexpr auto fuente_registro = "QVBXEMP:RegistroImpuesto";

}

RegistroImpuesto::RegistroImpuesto(const qvbxemp::Empresa& empresa)
    : m_empresa(empresa)
{
}

void RegistroImpuesto::Guardar(Donde donde)
{
    try {
        inserta(donde);
    } catch (const Error& error) { // the lines that were to follow will not
        deja_incompleto(m_empresa, Asiento, error.descripcion(), donde);
        throw;
    }
}

void RegistroImpuesto::inserta(Donde donde) const
{
    for (const auto importe : { Base, Cuota, TotalImpuesto })
        comprueba_importe(importe, fuente_registro, donde);
    conexion(m_empresa, donde)
        .Execute(
            "INSERT INTO Registro_Impuestos (Cod_Empresa, Cod_Ejercicio, Asiento, Linea, Clase, Indicador, "
            "Fecha, Documento, Base, TipoImpuesto, Cuota, TotalImpuesto) VALUES ("
                + valores(m_empresa) + ", " + std::to_string(Asiento) + ", " + std::to_string(Linea) + ", "
                + std::to_string(Clase) + ", " + std::to_string(Indicador) + ", "
                + sql::literal(m_empresa.FechaTrabajo) + ", " + sql::literal(Documento, donde) + ", "
                + sql::literal(Base, donde) + ", " + std::to_string(TipoImpuesto) + ", "
                + sql::literal(Cuota, donde) + ", " + sql::literal(TotalImpuesto, donde) + ")",
            nullptr, adodb::CommandType::Text, donde);
}

} // namespace atipicos::bexmor
