#include "host/orvalin/Catalogos.hpp"

#include "platform/adodb/campos.hpp"

#include <utility>

namespace atipicos::orvalin {

std::string con_su_nombre(const std::vector<Ficha>& fichas, const std::string& codigo)
{
    for (const auto& una : fichas)
        if (std::to_string(una.Codigo) == codigo)
            return codigo + ' ' + una.Nombre;
    return codigo;
}

Catalogos::Catalogos(std::shared_ptr<adodb::Connection> conexion, std::int16_t empresa)
    : m_conexion(std::move(conexion))
    , m_empresa(empresa)
{
}

std::optional<Almacen> Catalogos::almacen(std::int16_t codigo, Donde donde) const
{
    const auto rs = ficha("Almacenes", codigo, donde);
    if (rs->Eof())
        return std::nullopt;
    return Almacen{ adodb::nombre(*rs, "Nombre", donde), adodb::entero(*rs, "EmpContable", donde),
        adodb::nombre(*rs, "CtaIngresosAtipicos", donde) };
}

std::optional<std::string> Catalogos::proveedor(std::int32_t codigo, Donde donde) const
{
    const auto rs = ficha("Proveedores", codigo, donde);
    if (rs->Eof())
        return std::nullopt;
    return adodb::nombre(*rs, "Nombre", donde);
}

std::optional<CuentasProveedor> Catalogos::cuentas_proveedor(std::int32_t codigo, Donde donde) const
{
    const auto rs = ficha("Proveedores", codigo, donde);
    if (rs->Eof())
        return std::nullopt;
    return CuentasProveedor{ adodb::nombre(*rs, "Cta_Proveedor", donde),
        adodb::nombre(*rs, "Cta_Deudor", donde), adodb::nombre(*rs, "Cta_DeudaCortoPlazo", donde) };
}

std::optional<Articulo> Catalogos::articulo(std::int32_t codigo, Donde donde) const
{
    const auto rs = ficha("Articulos", codigo, donde);
    if (rs->Eof())
        return std::nullopt;
    return Articulo{ adodb::nombre(*rs, "Nombre", donde), adodb::nombre(*rs, "CtaIngresosAtipicos", donde) };
}

std::vector<Ficha> Catalogos::empresas(Donde donde) const { return fichas("Empresas", donde); }

std::vector<Ficha> Catalogos::usuarios(Donde donde) const { return fichas("SGD_Usuarios", donde); }

std::vector<Ficha> Catalogos::almacenes(Donde donde) const
{
    return fichas("Almacenes WHERE Cod_Empresa =" + std::to_string(m_empresa), donde);
}

std::unique_ptr<adodb::Recordset> Catalogos::consulta(const std::string& sql, Donde donde) const
{
    if (!m_conexion)
        throw Error::de_ejecucion(numero_error::objeto_no_establecido, donde);
    return adodb::consulta(*m_conexion, sql, donde);
}

std::unique_ptr<adodb::Recordset> Catalogos::ficha(const char* tabla, std::int32_t codigo, Donde donde) const
{
    return consulta(std::string("SELECT * FROM ") + tabla + " WHERE Cod_Empresa =" + std::to_string(m_empresa)
            + " AND Codigo =" + std::to_string(codigo),
        donde);
}

std::vector<Ficha> Catalogos::fichas(const std::string& tabla_y_filtro, Donde donde) const
{
    std::vector<Ficha> todas;
    const auto rs = consulta("SELECT Codigo, Nombre FROM " + tabla_y_filtro + " ORDER BY Codigo", donde);
    for (; !rs->Eof(); rs->MoveNext(donde))
        todas.push_back(
            { CLng(rs->Fields("Codigo", donde).Value(donde), donde), adodb::nombre(*rs, "Nombre", donde) });
    return todas;
}

} // namespace atipicos::orvalin
