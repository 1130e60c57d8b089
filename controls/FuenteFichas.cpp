#include "controls/FuenteFichas.hpp"

#include "platform/adodb/campos.hpp"

#include <utility>

namespace atipicos {

FuenteFichas::FuenteFichas(std::shared_ptr<adodb::Connection> conexion, Tabla tabla)
    : m_conexion(std::move(conexion))
    , m_tabla(std::move(tabla))
{
}

std::unique_ptr<adodb::Recordset> FuenteFichas::consulta(const std::string& sql, Donde donde) const
{
    if (!m_conexion)
        throw Error::de_ejecucion(numero_error::objeto_no_establecido, donde);
    return adodb::flujo(*m_conexion, sql, donde);
}

std::optional<std::string> FuenteFichas::nombre(const std::string& codigo, Donde donde) const
{
    const std::string comilla = m_tabla.texto ? "'" : "";
    const auto rs = consulta("SELECT Nombre FROM " + m_tabla.nombre + " WHERE "
            + (m_tabla.filtro.empty() ? "" : m_tabla.filtro + " AND ") + m_tabla.codigo + " =" + comilla
            + codigo + comilla,
        donde);
    if (rs->Eof())
        return std::nullopt;
    return adodb::nombre(*rs, "Nombre", donde);
}

std::vector<Ficha> FuenteFichas::todas(Donde donde) const
{
    std::vector<Ficha> fichas;
    const auto rs = consulta("SELECT " + m_tabla.codigo + ", Nombre FROM " + m_tabla.nombre
            + (m_tabla.filtro.empty() ? "" : " WHERE " + m_tabla.filtro) + " ORDER BY Nombre",
        donde);
    if (rs->Eof())
        return fichas;
    const auto& codigo = rs->Fields(std::size_t{ 0 }, donde);
    const auto& nombre = rs->Fields(std::size_t{ 1 }, donde);
    for (; !rs->Eof(); rs->MoveNext(donde)) {
        auto& ficha = fichas.emplace_back();
        codigo.anexa_texto(ficha.Codigo);
        nombre.anexa_texto(ficha.Nombre);
        ficha.Nombre = adodb::sin_apostrofos(std::move(ficha.Nombre));
    }
    return fichas;
}

} // namespace atipicos
