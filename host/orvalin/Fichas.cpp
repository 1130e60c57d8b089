#include "host/orvalin/Fichas.hpp"

#include "platform/adodb/campos.hpp"

#include <utility>

namespace atipicos::orvalin {

namespace {

    /// A recordset that stands on the row of that code, or on none.
    std::unique_ptr<adodb::Recordset> fila(const std::shared_ptr<adodb::Connection>& conexion,
        const char* tabla, std::int16_t empresa, std::int32_t codigo, Donde donde)
    {
        if (!conexion)
            throw Error::de_ejecucion(numero_error::objeto_no_establecido, donde);
        auto rs = conexion->CreateRecordset();
        rs->Open(std::string("SELECT * FROM ") + tabla + " WHERE Cod_Empresa =" + std::to_string(empresa)
                + " AND Codigo =" + std::to_string(codigo),
            adodb::CursorType::Static, adodb::LockType::ReadOnly, adodb::CommandType::Text, donde);
        return rs;
    }

    /// What warehouses and suppliers both have.
    template <class Ficha> bool lee(Ficha& ficha, adodb::Recordset& rs, Donde donde)
    {
        const auto texto
            = [&](const char* campo) { return rs.Eof() ? std::string() : adodb::nombre(rs, campo, donde); };
        ficha.Nombre = texto("Nombre");
        ficha.Domicilio = texto("Domicilio");
        ficha.CodigoPostal = texto("CodigoPostal");
        ficha.Poblacion = texto("Poblacion");
        return !rs.Eof();
    }

}

FichaAlmacen::FichaAlmacen(std::shared_ptr<adodb::Connection> conexion, const qvoremp::Empresa& empresa)
    : m_conexion(std::move(conexion))
    , m_empresa(empresa)
{
}

bool FichaAlmacen::Cargar(Donde donde)
{
    const auto rs = fila(m_conexion, "Almacenes", m_empresa.Codigo(donde), Codigo, donde);
    return lee(*this, *rs, donde);
}

FichaProveedor::FichaProveedor(std::shared_ptr<adodb::Connection> conexion, const qvoremp::Empresa& empresa)
    : m_conexion(std::move(conexion))
    , m_empresa(empresa)
{
}

bool FichaProveedor::Cargar(Donde donde)
{
    const auto rs = fila(m_conexion, "Proveedores", m_empresa.EmpresaProveedores(donde), Codigo, donde);
    NIF = rs->Eof() ? std::string() : adodb::nombre(*rs, "NIF", donde);
    return lee(*this, *rs, donde);
}

} // namespace atipicos::orvalin
