#pragma once

#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"

#include <memory>

/// Warehouses and suppliers of the management library, read from its tables.
namespace atipicos::orvalin {

class FichaAlmacen final : public qvoremp::Almacen {
public:
    FichaAlmacen(std::shared_ptr<adodb::Connection> conexion, const qvoremp::Empresa& empresa);

    bool Cargar(Donde donde = Donde::aqui()) override;

private:
    std::shared_ptr<adodb::Connection> m_conexion;
    const qvoremp::Empresa& m_empresa;
};

/// A supplier, of the company under which the suppliers are kept.
class FichaProveedor final : public qvoremp::Proveedor {
public:
    FichaProveedor(std::shared_ptr<adodb::Connection> conexion, const qvoremp::Empresa& empresa);

    bool Cargar(Donde donde = Donde::aqui()) override;

private:
    std::shared_ptr<adodb::Connection> m_conexion;
    const qvoremp::Empresa& m_empresa;
};

} // namespace atipicos::orvalin
