#pragma once

#include "controls/Selector.hpp"
#include "platform/qvoremp/Empresa.hpp"

namespace atipicos {

/// Picks a warehouse of the management company.
class qvAlmacen : public SelectorNumerico {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvAlmacen)
public:
    explicit qvAlmacen(QWidget* parent = nullptr);

    void Prepara(const std::shared_ptr<qvoremp::Empresa>& empresa,
        const std::shared_ptr<adodb::Connection>& conexion); ///< company and connection to look in

    [[nodiscard]] std::int16_t Codigo() const; ///< 0 for none
    void set_Codigo(std::int16_t codigo); ///< 0 empties it; `Buscar` then shows its name
};

} // namespace atipicos
