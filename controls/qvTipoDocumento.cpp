#include "controls/qvTipoDocumento.hpp"

#include <limits>

namespace atipicos {

qvTipoDocumento::qvTipoDocumento(QWidget* parent)
    : SelectorNumerico(
        QStringLiteral("el tipo de documento"), std::numeric_limits<std::int16_t>::max(), parent)
{
}

void qvTipoDocumento::Prepara(const std::shared_ptr<adodb::Connection>& conexion)
{
    FuenteFichas::Tabla tabla;
    tabla.nombre = "Tipos_Doc";
    set_Fuente(std::make_shared<FuenteFichas>(conexion, std::move(tabla)));
}

std::int16_t qvTipoDocumento::Codigo() const { return numero_corto(); }

void qvTipoDocumento::set_Codigo(std::int16_t codigo) { set_numero(codigo); }

} // namespace atipicos
