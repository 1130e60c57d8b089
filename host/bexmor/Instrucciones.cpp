#include "host/bexmor/Instrucciones.hpp"

#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Formato.hpp"

namespace atipicos::bexmor {

namespace {

    constexpr Currency importe_maximo = Currency::de_crudo(999'999'999'999'9900);

    bool hay(const qvbxemp::Empresa& empresa, const std::string& sql, Donde donde)
    {
        const auto rs = consulta(empresa, sql, donde);
        const bool alguna = !rs->Eof();
        rs->Close(donde);
        return alguna;
    }

}

adodb::Connection& conexion(const qvbxemp::Empresa& empresa, Donde donde)
{
    if (!empresa.Conexion)
        throw Error::de_ejecucion(numero_error::objeto_no_establecido, donde);
    return *empresa.Conexion;
}

std::string filtro(const qvbxemp::Empresa& empresa)
{
    return " WHERE Cod_Empresa =" + std::to_string(empresa.Codigo)
        + " AND Cod_Ejercicio =" + std::to_string(empresa.Ejercicio);
}

std::string valores(const qvbxemp::Empresa& empresa)
{
    return std::to_string(empresa.Codigo) + ", " + std::to_string(empresa.Ejercicio);
}

std::string nombre(const qvbxemp::Empresa& empresa)
{
    return "la empresa contable " + std::to_string(empresa.Codigo) + ", ejercicio "
        + std::to_string(empresa.Ejercicio);
}

std::unique_ptr<adodb::Recordset> consulta(
    const qvbxemp::Empresa& empresa, const std::string& sql, Donde donde)
{
    return adodb::consulta(conexion(empresa, donde), sql, donde);
}

qvbxemp::TipoImpuesto lee_tipo_impuesto(adodb::Recordset& rs, Donde donde)
{
    return { CCur(rs.Fields("Porcentaje", donde).Value(donde), donde),
        adodb::texto(rs, "Imp_CtaRep", donde) };
}

void comprueba_importe(Currency importe, const std::string& fuente, Donde donde)
{
    if (importe.crudo() % 100 != 0)
        throw Error(error_contable, fuente,
            "El importe " + texto_pantalla(importe, 4) + " tiene más de dos decimales. Redondéelo antes.",
            donde);
    if (importe.crudo() > importe_maximo.crudo() || importe.crudo() < -importe_maximo.crudo())
        throw Error(error_contable, fuente,
            "El importe " + texto_pantalla(importe, 2) + " es demasiado grande. El máximo es "
                + texto_pantalla(importe_maximo, 2) + ".",
            donde);
}

void explica_rechazo(const adodb::ErrorBaseDatos& error, const qvbxemp::Empresa& empresa,
    std::int32_t asiento, const std::string& cuenta, const std::string& fuente, Donde donde)
{
    if (error.categoria() == adodb::Categoria::restriccion) {
        const auto con = filtro(empresa);
        if (!hay(empresa, "SELECT Numero FROM Asientos" + con + " AND Numero =" + std::to_string(asiento),
                donde))
            throw Error(error_contable, fuente,
                "No existe el asiento " + std::to_string(asiento) + " de " + nombre(empresa)
                    + ". Créelo antes.",
                donde);
        if (!hay(empresa, "SELECT Cuenta FROM Cuentas" + con + " AND Cuenta =" + sql::literal(cuenta, donde),
                donde))
            throw Error(error_contable, fuente,
                "La cuenta " + (cuenta.empty() ? "vacía" : cuenta) + " no existe en el plan de "
                    + nombre(empresa) + ". Dela de alta antes de contabilizar.",
                donde);
    }
    throw Error(error.numero(), error.fuente(), error.descripcion(), donde);
}

} // namespace atipicos::bexmor
