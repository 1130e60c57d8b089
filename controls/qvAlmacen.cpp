#include "controls/qvAlmacen.hpp"

#include <limits>

namespace atipicos {

qvAlmacen::qvAlmacen(QWidget* parent)
    : SelectorNumerico(QStringLiteral("el almacén"), std::numeric_limits<std::int16_t>::max(), parent)
{
}

void qvAlmacen::Prepara(
    const std::shared_ptr<qvoremp::Empresa>& empresa, const std::shared_ptr<adodb::Connection>& conexion)
{
    set_Fuente(std::make_shared<FuenteFichas>(conexion,
        FuenteFichas::Tabla{ "Almacenes", "Codigo", "Cod_Empresa =" + std::to_string(empresa->Codigo()) }));
}

std::int16_t qvAlmacen::Codigo() const { return numero_corto(); }

void qvAlmacen::set_Codigo(std::int16_t codigo) { set_numero(codigo); }

} // namespace atipicos
