#pragma once

#include "controls/Selector.hpp"

namespace atipicos {

/// Picks a payment document type of the accounting product.
class qvTipoDocumento : public SelectorNumerico {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvTipoDocumento)
public:
    explicit qvTipoDocumento(QWidget* parent = nullptr);

    void Prepara(const std::shared_ptr<adodb::Connection>& conexion); ///< of the accounting database

    [[nodiscard]] std::int16_t Codigo() const; ///< 0 for none
    void set_Codigo(std::int16_t codigo); ///< 0 empties it; `Buscar` then shows its name
};

} // namespace atipicos
