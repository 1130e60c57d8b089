#pragma once

#include "controls/Selector.hpp"
#include "platform/qvbxemp/Biblioteca.hpp"

namespace atipicos {

/// Picks an account from the plan of one accounting company and year.
class qvCuenta : public Selector {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvCuenta)
public:
    explicit qvCuenta(QWidget* parent = nullptr);

    /// The plan is that of the company's `Codigo` and `Ejercicio`.
    void Prepara(const qvbxemp::Empresa& empresa, const std::shared_ptr<adodb::Connection>& conexion);

    [[nodiscard]] std::string Cuenta() const; ///< empty for none
    void set_Cuenta(const std::string& cuenta); ///< `Buscar` then shows its name
};

} // namespace atipicos
