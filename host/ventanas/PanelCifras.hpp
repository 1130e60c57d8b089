#pragma once

#include "host/panel/Comparacion.hpp"

#include <QTableWidget>

namespace atipicos::app {

/// This month and this year beside the last ones: number of charges, base, tax, total and change.
class PanelCifras final : public QTableWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PanelCifras)
public:
    explicit PanelCifras(QWidget* parent = nullptr);

    void Pon(const Comparacion& comparacion);

private:
    void pon_fila(int fila, const Totales& totales, const Periodo& periodo);
    void pon_cambio(int fila, const Totales& antes, const Totales& ahora);
    void pon_celda(int fila, int columna, const QString& texto);
    void mide();
};

} // namespace atipicos::app
