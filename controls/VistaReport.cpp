#include "controls/VistaReport.hpp"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace atipicos {

namespace {

    constexpr int margen = 12; ///< around each page
    constexpr int zoom_minimo = 25;
    constexpr int zoom_maximo = 400;

}

VistaReport::VistaReport(QWidget* parent)
    : QAbstractScrollArea(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
}

void VistaReport::set_Report(std::shared_ptr<const Report> report)
{
    m_report = std::move(report);
    m_hallazgos.clear();
    ajusta();
    pon_barras();
    verticalScrollBar()->setValue(0);
    viewport()->update();
    emit PaginaCambiada();
}

int VistaReport::Paginas() const { return m_report ? static_cast<int>(m_report->paginas()) : 0; }

int VistaReport::Pagina() const
{
    if (Paginas() == 0)
        return 0;
    const int paso = tamano_pagina().height() + margen;
    const int mitad = verticalScrollBar()->value() + viewport()->height() / 2;
    return std::clamp(mitad / paso + 1, 1, Paginas());
}

void VistaReport::set_Pagina(int pagina)
{
    if (Paginas() > 0)
        verticalScrollBar()->setValue(
            (std::clamp(pagina, 1, Paginas()) - 1) * (tamano_pagina().height() + margen));
}

int VistaReport::Zoom() const { return m_zoom; }

void VistaReport::set_Zoom(int porcentaje)
{
    m_ajuste = Ajuste::Ninguno;
    pon_zoom(porcentaje);
}

void VistaReport::set_Ajuste(Ajuste ajuste)
{
    m_ajuste = ajuste;
    ajusta();
}

void VistaReport::resalta(std::vector<Hallazgo> hallazgos, std::size_t actual)
{
    m_hallazgos = std::move(hallazgos);
    m_actual = actual;
    viewport()->update();
    if (m_actual >= m_hallazgos.size())
        return;
    const auto sitio = lugar(m_hallazgos[m_actual]);
    if (!viewport()->rect().contains(sitio))
        verticalScrollBar()->setValue(
            verticalScrollBar()->value() + sitio.center().y() - viewport()->height() / 2);
}

double VistaReport::puntos_por_pulgada() const { return logicalDpiX() * m_zoom / 100.0; }

QSize VistaReport::tamano_pagina() const
{
    const auto [ancho, alto] = m_report->tamano();
    const double escala = puntos_por_pulgada() / 2540.0;
    return { static_cast<int>(std::lround(ancho * escala)), static_cast<int>(std::lround(alto * escala)) };
}

QRect VistaReport::lugar(int pagina) const
{
    const QSize tamano = tamano_pagina();
    const int holgura = std::max(0, viewport()->width() - tamano.width() - 2 * margen);
    return { { margen + holgura / 2 - horizontalScrollBar()->value(),
                 margen + pagina * (tamano.height() + margen) - verticalScrollBar()->value() },
        tamano };
}

QRect VistaReport::lugar(const Hallazgo& hallazgo) const
{
    const double escala = puntos_por_pulgada() / 2540.0;
    const auto& [x, y, ancho, alto] = hallazgo.lugar;
    return QRectF(x * escala, y * escala, ancho * escala, alto * escala)
        .toAlignedRect()
        .translated(lugar(static_cast<int>(hallazgo.pagina)).topLeft());
}

void VistaReport::pon_zoom(int porcentaje)
{
    porcentaje = std::clamp(porcentaje, zoom_minimo, zoom_maximo);
    if (porcentaje != m_zoom) {
        const double donde
            = verticalScrollBar()->value() / static_cast<double>(std::max(1, verticalScrollBar()->maximum()));
        m_zoom = porcentaje;
        pon_barras();
        verticalScrollBar()->setValue(static_cast<int>(std::lround(donde * verticalScrollBar()->maximum())));
        viewport()->update();
    }
    emit ZoomCambiado();
}

void VistaReport::ajusta()
{
    if (!m_report || m_ajuste == Ajuste::Ninguno)
        return;
    const double por_ciento = 100.0 * 2540.0 / logicalDpiX();
    const auto [ancho, alto] = m_report->tamano();
    const auto libre = viewport()->size() - QSize(2 * margen, 2 * margen);
    double zoom = libre.width() * por_ciento / ancho;
    if (m_ajuste == Ajuste::PaginaEntera)
        zoom = std::min(zoom, libre.height() * por_ciento / alto);
    pon_zoom(static_cast<int>(zoom));
}

void VistaReport::pon_barras()
{
    const QSize pagina = m_report ? tamano_pagina() : QSize();
    const int ancho = pagina.width() + 2 * margen;
    const int alto = margen + Paginas() * (pagina.height() + margen);
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setRange(0, std::max(0, ancho - viewport()->width()));
    horizontalScrollBar()->setSingleStep(20);
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, alto - viewport()->height()));
    verticalScrollBar()->setSingleStep(40);
}

void VistaReport::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() == Qt::Key_Home)
        set_Pagina(1);
    else if (tecla->key() == Qt::Key_End)
        set_Pagina(Paginas());
    else
        QAbstractScrollArea::keyPressEvent(tecla);
}

void VistaReport::paintEvent(QPaintEvent* /*evento*/)
{
    QPainter pintor(viewport());
    pintor.setRenderHint(QPainter::Antialiasing); // a hairline is thinner than a pixel
    for (int pagina = 0; pagina < Paginas(); ++pagina) {
        const QRect hoja = lugar(pagina);
        if (!hoja.intersects(viewport()->rect()))
            continue;
        pintor.fillRect(hoja.translated(2, 2), QColor(0, 0, 0, 60));
        pintor.fillRect(hoja, Qt::white);
        pinta_resaltes(pintor, pagina);
        pintor.save();
        pintor.setClipRect(hoja);
        pintor.translate(hoja.topLeft());
        pinta_pagina(*m_report, static_cast<std::size_t>(pagina), pintor, puntos_por_pulgada(), m_fuentes);
        pintor.restore();
    }
}

void VistaReport::pinta_resaltes(QPainter& pintor, int pagina) const
{
    for (std::size_t i = 0; i < m_hallazgos.size(); ++i)
        if (m_hallazgos[i].pagina == static_cast<std::size_t>(pagina))
            pintor.fillRect(
                lugar(m_hallazgos[i]), i == m_actual ? QColor(0xFF, 0xB3, 0x4D) : QColor(0xFF, 0xF1, 0xB8));
}

void VistaReport::resizeEvent(QResizeEvent* evento)
{
    QAbstractScrollArea::resizeEvent(evento);
    ajusta();
    pon_barras();
}

void VistaReport::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    viewport()->update();
    emit PaginaCambiada();
}

void VistaReport::wheelEvent(QWheelEvent* evento)
{
    if (evento->modifiers().testFlag(Qt::ControlModifier))
        set_Zoom(m_zoom + (evento->angleDelta().y() > 0 ? 10 : -10));
    else
        QAbstractScrollArea::wheelEvent(evento);
}

} // namespace atipicos
