#include "host/comprobacion/CuentasProveedores.hpp"

#include "context/claves.hpp"
#include "host/bexmor/Biblioteca.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

#include <algorithm>
#include <limits>
#include <memory>

namespace atipicos::app {

namespace {

    bool esta(const std::vector<std::string>& cuentas, const std::string& cuenta)
    {
        return std::find(cuentas.begin(), cuentas.end(), cuenta) != cuentas.end();
    }

    /// The account as posting forms it; empty when it cannot be formed.
    std::string forma(const std::string& raiz, std::int32_t proveedor, int longitud)
    {
        const bexmor::Biblioteca biblioteca(nullptr);
        const auto empresa = biblioteca.NuevaEmpresa();
        try {
            return biblioteca.NuevoServicioCuentas(*empresa)->FormarCuenta(raiz, proveedor, longitud);
        } catch (const Error&) {
            return {};
        }
    }

}

CuentasProveedores::CuentasProveedores(const bases::Bases& bases)
{
    for (const auto rs = adodb::consulta(*bases.orvalin, "SELECT Codigo, RaizProveedores FROM Empresas");
         !rs->Eof(); rs->MoveNext())
        m_raices[adodb::entero(*rs, "Codigo")].push_back(CStr(rs->Fields("RaizProveedores").Value()));
    for (const auto clave : { claves::Raiz_ProveedoresDeudor, claves::Raiz_ProveedoresDeudaCortoPlazo })
        for (const auto rs = adodb::consulta(*bases.orvalin,
                 "SELECT Cod_Empresa, Valor FROM Parametros WHERE Clave =" + sql::literal(clave));
             !rs->Eof(); rs->MoveNext())
            m_raices[adodb::entero(*rs, "Cod_Empresa")].push_back(adodb::texto(*rs, "Valor"));
    for (const auto rs = adodb::consulta(*bases.bexmor, "SELECT Codigo, LongitudCuenta FROM Empresas");
         !rs->Eof(); rs->MoveNext())
        m_longitudes[adodb::entero(*rs, "Codigo")] = adodb::entero(*rs, "LongitudCuenta");
    for (const auto rs = adodb::consulta(*bases.orvalin,
             "SELECT Cod_Empresa, Codigo, Cta_Proveedor, Cta_Deudor, Cta_DeudaCortoPlazo FROM Proveedores");
         !rs->Eof(); rs->MoveNext()) {
        auto& propias = m_propias[{ adodb::entero(*rs, "Cod_Empresa"), CLng(rs->Fields("Codigo").Value()) }];
        for (const auto* campo : { "Cta_Proveedor", "Cta_Deudor", "Cta_DeudaCortoPlazo" })
            if (auto cuenta = adodb::texto(*rs, campo); !cuenta.empty())
                propias.push_back(std::move(cuenta));
    }
}

const CuentasProveedores::Cuentas& CuentasProveedores::de(
    std::int16_t empresa, std::int16_t contable, std::int32_t proveedor) const
{
    const auto [lugar, nueva] = m_formadas.try_emplace({ empresa, contable, proveedor });
    auto& cuentas = lugar->second;
    if (!nueva)
        return cuentas;
    if (const auto propias = m_propias.find({ empresa, proveedor }); propias != m_propias.end())
        cuentas = propias->second;
    const auto raices = m_raices.find(empresa);
    const auto longitud = m_longitudes.find(contable);
    if (raices != m_raices.end() && longitud != m_longitudes.end())
        for (const auto& raiz : raices->second)
            if (auto cuenta = forma(raiz, proveedor, longitud->second); !cuenta.empty())
                cuentas.push_back(std::move(cuenta));
    return cuentas;
}

bool CuentasProveedores::es_suya(
    std::int16_t empresa, std::int16_t contable, std::int32_t proveedor, const std::string& cuenta) const
{
    return esta(de(empresa, contable, proveedor), cuenta);
}

std::optional<std::int32_t> CuentasProveedores::de_quien(
    std::int16_t empresa, std::int16_t contable, const std::string& una, const std::string& otra) const
{
    std::optional<std::int32_t> quien;
    for (auto lugar = m_propias.lower_bound({ empresa, std::numeric_limits<std::int32_t>::min() });
         lugar != m_propias.end() && lugar->first.first == empresa; ++lugar) {
        const auto proveedor = lugar->first.second;
        if (!es_suya(empresa, contable, proveedor, una) || !es_suya(empresa, contable, proveedor, otra))
            continue;
        if (quien)
            return std::nullopt;
        quien = proveedor;
    }
    return quien;
}

} // namespace atipicos::app
