#include "controls/qvProveedor.hpp"

#include <limits>

namespace atipicos {

qvProveedor::qvProveedor(QWidget* parent)
    : SelectorNumerico(QStringLiteral("el proveedor"), std::numeric_limits<std::int32_t>::max(), parent)
{
}

void qvProveedor::Prepara(
    const std::shared_ptr<qvoremp::Empresa>& empresa, const std::shared_ptr<adodb::Connection>& conexion)
{
    set_Fuente(std::make_shared<FuenteFichas>(conexion,
        FuenteFichas::Tabla{ "Proveedores", "Codigo",
            "Cod_Empresa =" + std::to_string(empresa->EmpresaProveedores()), false,
            { { "NIF", "NIF" }, { "Poblacion", "Población" } } }));
}

std::int32_t qvProveedor::Codigo() const { return numero(); }

void qvProveedor::set_Codigo(std::int32_t codigo) { set_numero(codigo); }

} // namespace atipicos
