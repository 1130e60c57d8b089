#include "host/bexmor/ServicioCuentas.hpp"

#include "host/bexmor/Empresa.hpp"
#include "host/bexmor/Instrucciones.hpp"
#include "host/sql/Literal.hpp"

namespace atipicos::bexmor {

namespace {

    constexpr auto fuente_cuentas = "QVBXEMP:ServicioCuentas";

}

ServicioCuentas::ServicioCuentas(const qvbxemp::Empresa& empresa)
    : m_empresa(empresa)
{
}

std::string ServicioCuentas::FormarCuenta(
    const std::string& raiz, std::int32_t codigo, int longitud, Donde donde) const
{
    const auto cifras = std::to_string(codigo);
    if (raiz.empty())
        throw Error(error_contable, fuente_cuentas,
            "No hay raíz con la que formar la cuenta del código " + cifras + ". Revise la configuración.",
            donde);
    if (codigo < 0)
        throw Error(error_contable, fuente_cuentas,
            "El código " + cifras + " es negativo y no puede formar una cuenta.", donde);
    const auto ocupadas = raiz.size() + cifras.size();
    if (longitud < 0 || ocupadas > static_cast<std::size_t>(longitud))
        throw Error(error_contable, fuente_cuentas,
            "La raíz " + raiz + " y el código " + cifras + " no caben en una cuenta de "
                + std::to_string(longitud) + " cifras.",
            donde);
    return raiz + std::string(static_cast<std::size_t>(longitud) - ocupadas, '0') + cifras;
}

bool ServicioCuentas::ExisteCuenta(const std::string& cuenta, Donde donde) const
{
    const auto rs = consulta(m_empresa,
        "SELECT Cuenta FROM Cuentas" + filtro(m_empresa) + " AND Cuenta =" + sql::literal(cuenta, donde),
        donde);
    return !rs->Eof();
}

qvbxemp::TipoImpuesto ServicioCuentas::LeerTipoImpuesto(std::int16_t tipo, Donde donde) const
{
    if (const auto* empresa = dynamic_cast<const Empresa*>(&m_empresa))
        if (const auto* leido = empresa->tipo_impuesto(tipo))
            return *leido;
    const auto rs = consulta(m_empresa,
        "SELECT Porcentaje, Imp_CtaRep FROM Tipos_Impuesto WHERE Cod_Empresa ="
            + std::to_string(m_empresa.Codigo) + " AND Codigo =" + std::to_string(tipo),
        donde);
    if (rs->Eof())
        throw Error(error_contable, fuente_cuentas,
            "No existe el tipo de impuesto " + std::to_string(tipo) + " en la empresa contable "
                + std::to_string(m_empresa.Codigo) + ".",
            donde);
    return lee_tipo_impuesto(*rs, donde);
}

} // namespace atipicos::bexmor
