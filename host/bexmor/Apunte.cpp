#include "host/bexmor/Apunte.hpp"

#include "host/bexmor/Incompleto.hpp"
#include "host/bexmor/Instrucciones.hpp"
#include "host/sql/Literal.hpp"

namespace atipicos::bexmor {

namespace {

    constexpr auto fuente_apunte = "QVBXEMP:Apunte";

}

Apunte::Apunte(const qvbxemp::Empresa& empresa)
    : m_empresa(empresa)
{
}

bool Apunte::Guardar(Donde donde)
{
    try {
        comprueba(donde);
        inserta(donde);
        return true;
    } catch (const Error& error) {
        m_error = error;
        deja_incompleto(m_empresa, Asiento, error.descripcion(), donde);
        return false;
    }
}

void Apunte::comprueba(Donde donde) const
{
    if (Asiento == 0)
        throw Error(error_contable, fuente_apunte,
            "El apunte no pertenece a ningún asiento. Cree antes el asiento.", donde);
    comprueba_importe(Debe, fuente_apunte, donde);
    comprueba_importe(Haber, fuente_apunte, donde);
}

void Apunte::inserta(Donde donde) const
{
    const auto sql
        = "INSERT INTO Apuntes (Cod_Empresa, Cod_Ejercicio, Asiento, Linea, Cuenta, ConceptoAutomatico, "
          "Concepto, Documento, Departamento, Debe, Haber, TipoImpuesto, PorcentajeImpuesto, BaseImpuesto)"
          " VALUES ("
        + valores(m_empresa) + ", " + std::to_string(Asiento) + ", " + std::to_string(Linea) + ", "
        + sql::literal(Cuenta, donde) + ", " + sql::literal(ConceptoAutomatico, donde) + ", "
        + sql::literal(Concepto, donde) + ", " + sql::literal(Documento, donde) + ", "
        + sql::literal(Departamento, donde) + ", " + sql::literal(Debe, donde) + ", "
        + sql::literal(Haber, donde) + ", " + std::to_string(TipoImpuesto) + ", "
        + sql::literal(PorcentajeImpuesto, donde) + ", " + sql::literal(BaseImpuesto, donde) + ")";
    try {
        conexion(m_empresa, donde).Execute(sql, nullptr, adodb::CommandType::Text, donde);
    } catch (const adodb::ErrorBaseDatos& error) {
        // Foreign keys guard the plan, so that a good line costs one statement; only a bad one costs more.
        explica_rechazo(error, m_empresa, Asiento, Cuenta, fuente_apunte, donde);
    }
}

} // namespace atipicos::bexmor
