#include "host/orvalin/Empresa.hpp"

#include "platform/adodb/campos.hpp"

#include <utility>

namespace atipicos::orvalin {

namespace {

    constexpr std::int32_t no_existe = 1000;
    constexpr auto fuente = "QVOREMP:Empresa";

}

Empresa::Empresa(
    std::shared_ptr<adodb::Connection> conexion, std::int16_t codigo, std::int32_t usuario, Donde donde)
    : m_conexion(std::move(conexion))
    , m_codigo(codigo)
    , m_usuario(usuario)
{
    Recargar(donde);
}

void Empresa::Recargar(Donde donde)
{
    Datos datos;
    lee_empresa(datos, donde);
    lee_parametros(datos, donde);
    lee_impuestos(datos, donde);
    m_datos = std::move(datos);
}

std::unique_ptr<adodb::Recordset> Empresa::consulta(const std::string& sql, Donde donde) const
{
    if (!m_conexion)
        throw Error::de_ejecucion(numero_error::objeto_no_establecido, donde);
    return adodb::consulta(*m_conexion, sql, donde);
}

void Empresa::lee_empresa(Datos& datos, Donde donde) const
{
    const auto rs = consulta("SELECT * FROM Empresas WHERE Codigo =" + std::to_string(m_codigo), donde);
    if (rs->Eof())
        throw Error(no_existe, fuente, "No existe la empresa " + std::to_string(m_codigo) + ".", donde);
    datos.Nombre = adodb::texto(*rs, "Nombre", donde);
    datos.NIF = adodb::texto(*rs, "NIF", donde);
    datos.DecimalesImporte = adodb::entero(*rs, "DecimalesImporte", donde);
    datos.DecimalesCosto = adodb::entero(*rs, "DecimalesCosto", donde);
    datos.DecimalesPrecio = adodb::entero(*rs, "DecimalesPrecio", donde);
    datos.AlmacenDefecto = adodb::entero(*rs, "AlmacenDefecto", donde);
    datos.EnlaceContable = CLng(rs->Fields("EnlaceContable", donde).Value(donde), donde);
    datos.EmpresaProveedores = adodb::entero(*rs, "EmpresaProveedores", donde);
    datos.RaizProveedores = CLng(rs->Fields("RaizProveedores", donde).Value(donde), donde);
    rs->Close(donde);
}

void Empresa::lee_parametros(Datos& datos, Donde donde) const
{
    const auto rs = consulta(
        "SELECT Clave, Valor FROM Parametros WHERE Cod_Empresa =" + std::to_string(m_codigo), donde);
    for (; !rs->Eof(); rs->MoveNext(donde))
        datos.parametros.emplace(adodb::texto(*rs, "Clave", donde), adodb::texto(*rs, "Valor", donde));
    rs->Close(donde);
    datos.parametros.insert_or_assign("UsuarioActual", std::to_string(m_usuario));
}

void Empresa::lee_impuestos(Datos& datos, Donde donde) const
{
    const auto rs = consulta("SELECT Codigo, Porcentaje FROM Tipos_Impuesto", donde);
    for (; !rs->Eof(); rs->MoveNext(donde))
        datos.porcentajes.emplace(
            adodb::entero(*rs, "Codigo", donde), CCur(rs->Fields("Porcentaje", donde).Value(donde), donde));
    rs->Close(donde);
}

Variant Empresa::Parametro(std::string_view clave, Donde) const
{
    const auto lugar = m_datos.parametros.find(clave);
    return lugar == m_datos.parametros.end() ? Variant() : Variant(lugar->second);
}

Currency Empresa::PorcentajeImpuesto(std::int16_t tipo, Donde donde) const
{
    if (tipo == 0)
        return {};
    const auto lugar = m_datos.porcentajes.find(tipo);
    if (lugar == m_datos.porcentajes.end())
        throw Error(no_existe, fuente, "No existe el tipo de impuesto " + std::to_string(tipo) + ".", donde);
    return lugar->second;
}

std::int16_t Empresa::Codigo(Donde) const { return m_codigo; }
std::string Empresa::Nombre(Donde) const { return m_datos.Nombre; }
int Empresa::DecimalesImporte(Donde) const { return m_datos.DecimalesImporte; }
int Empresa::DecimalesCosto(Donde) const { return m_datos.DecimalesCosto; }
int Empresa::DecimalesPrecio(Donde) const { return m_datos.DecimalesPrecio; }
std::int16_t Empresa::AlmacenDefecto(Donde) const { return m_datos.AlmacenDefecto; }
std::int32_t Empresa::EnlaceContable(Donde) const { return m_contabiliza ? m_datos.EnlaceContable : 0; }
std::int16_t Empresa::EmpresaProveedores(Donde) const { return m_datos.EmpresaProveedores; }
std::int32_t Empresa::RaizProveedores(Donde) const { return m_datos.RaizProveedores; }

} // namespace atipicos::orvalin
