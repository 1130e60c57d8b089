#include "host/graficos/PanelGraficos.hpp"

#include "host/graficos/GraficosResumen.hpp"

#include <QChart>
#include <QChartView>
#include <QEvent>
#include <QVBoxLayout>

#include <memory>

namespace atipicos::app {

PanelGraficos::PanelGraficos(QWidget* parent)
    : QWidget(parent)
{
    auto* caja = new QVBoxLayout(this);
    caja->setContentsMargins({});
    m_barras = agrega("grfBarras", 20);
    m_meses = agrega("grfMeses", 9);
    caja->addWidget(m_barras, 3);
    caja->addWidget(m_meses, 2);
    vacia();
}

/// They are to be looked at: the keys stay with what is beside them.
QChartView* PanelGraficos::agrega(const char* nombre, int lineas)
{
    auto* vista = new QChartView(this);
    vista->setObjectName(QLatin1String(nombre));
    vista->setFocusPolicy(Qt::NoFocus);
    vista->viewport()->setFocusPolicy(Qt::NoFocus); // to which the view gives it
    vista->setRenderHint(QPainter::Antialiasing);
    vista->setFrameShape(QFrame::StyledPanel);
    vista->setMinimumSize(fontMetrics().averageCharWidth() * 40, fontMetrics().height() * lineas);
    return vista;
}

void PanelGraficos::pon(QChartView& vista, QChart* grafico) const
{
    const std::unique_ptr<QChart> anterior(vista.chart());
    vista.setBackgroundBrush(palette().color(QPalette::Base));
    vista.setChart(grafico);
    vista.setAccessibleName(grafico->title().isEmpty() ? QStringLiteral("Gráfico vacío")
                                                       : QStringLiteral("Gráfico: ") + grafico->title());
    vista.setAccessibleDescription(QStringLiteral("Sus números están en la tabla."));
}

void PanelGraficos::muestra(const ResumenCargos& resumen, const ResumenCargos& meses)
{
    m_dibujado.emplace(Dibujado{ resumen, meses });
    dibuja();
}

void PanelGraficos::vacia()
{
    m_dibujado.reset();
    dibuja();
}

void PanelGraficos::dibuja()
{
    const auto estilo = EstiloGrafico::de_pantalla(palette(), font());
    const auto vacio = [&estilo] {
        auto grafico = std::make_unique<QChart>();
        grafico->setBackgroundBrush(estilo.fondo);
        grafico->setBackgroundRoundness(0);
        return grafico;
    };
    pon(*m_barras, (m_dibujado ? grafico_de_barras(m_dibujado->resumen, estilo) : vacio()).release());
    pon(*m_meses, (m_dibujado ? grafico_de_meses(m_dibujado->meses, estilo) : vacio()).release());
}

void PanelGraficos::changeEvent(QEvent* evento)
{
    QWidget::changeEvent(evento);
    if (evento->type() == QEvent::PaletteChange || evento->type() == QEvent::FontChange)
        dibuja();
}

} // namespace atipicos::app
