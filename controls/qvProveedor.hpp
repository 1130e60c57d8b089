#pragma once

#include "controls/Selector.hpp"
#include "platform/qvoremp/Empresa.hpp"

namespace atipicos {

/// Picks a supplier, of the company under which the management company keeps its suppliers.
class qvProveedor : public SelectorNumerico {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvProveedor)
public:
    explicit qvProveedor(QWidget* parent = nullptr);

    void Prepara(const std::shared_ptr<qvoremp::Empresa>& empresa,
        const std::shared_ptr<adodb::Connection>& conexion); ///< company and connection to look in

    [[nodiscard]] std::int32_t Codigo() const; ///< 0 for none
    void set_Codigo(std::int32_t codigo); ///< 0 empties it; `Buscar` then shows its name
};

} // namespace atipicos
