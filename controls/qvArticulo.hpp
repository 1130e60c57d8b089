#pragma once

#include "controls/Selector.hpp"
#include "platform/qvoremp/Empresa.hpp"

namespace atipicos {

/// Picks an article of the management company.
class qvArticulo : public SelectorNumerico {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvArticulo)
public:
    explicit qvArticulo(QWidget* parent = nullptr);

    void Prepara(const std::shared_ptr<qvoremp::Empresa>& empresa,
        const std::shared_ptr<adodb::Connection>& conexion); ///< company and connection to look in

    [[nodiscard]] std::int32_t Codigo() const; ///< 0 for none
    void set_Codigo(std::int32_t codigo); ///< 0 empties it; `Buscar` then shows its name
};

} // namespace atipicos
