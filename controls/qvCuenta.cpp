#include "controls/qvCuenta.hpp"

#include "controls/Texto.hpp"

namespace atipicos {

qvCuenta::qvCuenta(QWidget* parent)
    : Selector(QStringLiteral("la cuenta"), 999'999'999'999, parent)
{
}

void qvCuenta::Prepara(const qvbxemp::Empresa& empresa, const std::shared_ptr<adodb::Connection>& conexion)
{
    const std::string plan = "Cod_Empresa =" + std::to_string(empresa.Codigo)
        + " AND Cod_Ejercicio =" + std::to_string(empresa.Ejercicio);
    set_Fuente(
        std::make_shared<FuenteFichas>(conexion, FuenteFichas::Tabla{ "Cuentas", "Cuenta", plan, true }));
}

std::string qvCuenta::Cuenta() const { return de_qt(codigo()); }

void qvCuenta::set_Cuenta(const std::string& cuenta) { set_codigo(a_qt(cuenta)); }

} // namespace atipicos
