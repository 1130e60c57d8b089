#pragma once

#include "host/resumen/ResumenCargos.hpp"

#include <QWidget>

#include <optional>

class QChart;
class QChartView;

namespace atipicos::app {

/// Both charts of a summary, one above the other, in the colours of the theme. Whoever does not see them is
/// told what they are of; the numbers are in the table beside them.
class PanelGraficos final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PanelGraficos)
public:
    explicit PanelGraficos(QWidget* parent = nullptr);

    void muestra(const ResumenCargos& resumen, const ResumenCargos& meses);
    void vacia();

protected:
    void changeEvent(QEvent* evento) override;

private:
    [[nodiscard]] QChartView* agrega(const char* nombre, int lineas);
    void pon(QChartView& vista, QChart* grafico) const;
    void dibuja();

    QChartView* m_barras;
    QChartView* m_meses;
    struct Dibujado {
        ResumenCargos resumen;
        ResumenCargos meses;
    };
    std::optional<Dibujado> m_dibujado;
};

} // namespace atipicos::app
