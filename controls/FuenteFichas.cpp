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

/// The tables are the host's own: one may have no more than code and name.
std::unique_ptr<adodb::Recordset> FuenteFichas::consulta_todas(Donde donde) const
{
    const auto pide = [&](const std::string& mas) {
        return consulta("SELECT " + m_tabla.codigo + ", Nombre" + mas + " FROM " + m_tabla.nombre
                + (m_tabla.filtro.empty() ? "" : " WHERE " + m_tabla.filtro) + " ORDER BY Nombre",
            donde);
    };
    if (m_tabla.otros.empty())
        return pide({});
    std::string mas;
    for (const auto& otro : m_tabla.otros)
        mas += ", " + otro.columna;
    try {
        return pide(mas);
    } catch (const adodb::ErrorBaseDatos&) {
        return pide({});
    }
}

std::vector<Ficha> FuenteFichas::todas(Donde donde) const
{
    std::vector<Ficha> fichas;
    const auto rs = consulta_todas(donde);
    if (rs->Eof())
        return fichas;
    const auto& codigo = rs->Fields(std::size_t{ 0 }, donde);
    const auto& nombre = rs->Fields(std::size_t{ 1 }, donde);
    std::vector<const adodb::Field*> otros;
    for (std::size_t i = 2; i < rs->Count(); ++i)
        otros.push_back(&rs->Fields(i, donde));
    for (; !rs->Eof(); rs->MoveNext(donde)) {
        auto& ficha = fichas.emplace_back();
        codigo.anexa_texto(ficha.Codigo);
        nombre.anexa_texto(ficha.Nombre);
        ficha.Nombre = adodb::sin_apostrofos(std::move(ficha.Nombre));
        for (const auto* otro : otros)
            otro->anexa_texto(ficha.otros.emplace_back());
    }
    return fichas;
}

} // namespace atipicos
