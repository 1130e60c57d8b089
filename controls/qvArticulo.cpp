#include "controls/qvArticulo.hpp"

#include <limits>

namespace atipicos {

qvArticulo::qvArticulo(QWidget* parent)
    : SelectorNumerico(QStringLiteral("el artículo"), std::numeric_limits<std::int32_t>::max(), parent)
{
}

void qvArticulo::Prepara(
    const std::shared_ptr<qvoremp::Empresa>& empresa, const std::shared_ptr<adodb::Connection>& conexion)
{
    set_Fuente(std::make_shared<FuenteFichas>(conexion,
        FuenteFichas::Tabla{ "Articulos", "Codigo", "Cod_Empresa =" + std::to_string(empresa->Codigo()) }));
}

std::int32_t qvArticulo::Codigo() const { return numero(); }

void qvArticulo::set_Codigo(std::int32_t codigo) { set_numero(codigo); }

} // namespace atipicos
