#include "controls/BuscaArticulo.hpp"

#include "platform/adodb/campos.hpp"

#include <utility>

namespace atipicos {

BuscaArticulo::BuscaArticulo(
    std::shared_ptr<adodb::Connection> conexion, std::shared_ptr<qvoremp::Empresa> empresa)
    : m_conexion(std::move(conexion))
    , m_empresa(std::move(empresa))
{
}

std::optional<std::string> BuscaArticulo::CtaAtipicos(std::int32_t codigo, Donde donde) const
{
    const auto rs = m_conexion->CreateRecordset();
    rs->Open("SELECT CtaIngresosAtipicos FROM Articulos WHERE Cod_Empresa ="
            + std::to_string(m_empresa->Codigo(donde)) + " AND Codigo =" + std::to_string(codigo),
        adodb::CursorType::Static, adodb::LockType::ReadOnly, adodb::CommandType::Text, donde);
    if (rs->Eof())
        return std::nullopt;
    return adodb::texto(*rs, "CtaIngresosAtipicos", donde);
}

} // namespace atipicos
