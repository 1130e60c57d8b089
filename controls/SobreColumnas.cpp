#include "controls/SobreColumnas.hpp"

#include "controls/VSFlexGrid.hpp"

#include <QEvent>
#include <QGridLayout>
#include <QHeaderView>

#include <algorithm>
#include <vector>

namespace atipicos {

namespace {

    constexpr int separacion = 4;

    /// No box asks for a width of its own: it has that of its column.
    void deja_estrechar(const QGridLayout& cajas)
    {
        for (int i = 0; i < cajas.count(); ++i)
            if (auto* caja = cajas.itemAt(i)->widget()) {
                auto politica = caja->sizePolicy();
                politica.setHorizontalPolicy(QSizePolicy::Ignored);
                caja->setSizePolicy(politica);
            }
    }

    int ancho_minimo(const QGridLayout& cajas, int columna)
    {
        int ancho = 0;
        for (int fila = 0; fila < cajas.rowCount(); ++fila)
            if (auto* celda = cajas.itemAtPosition(fila, columna); celda != nullptr)
                ancho = std::max(ancho, celda->widget()->minimumWidth());
        return ancho;
    }

}

SobreColumnas::SobreColumnas(QGridLayout& cajas, VSFlexGrid& rejilla)
    : QObject(&rejilla)
    , m_cajas(&cajas)
    , m_rejilla(rejilla)
{
    deja_estrechar(cajas);
    cajas.setHorizontalSpacing(separacion);
    connect(rejilla.horizontalHeader(), &QHeaderView::sectionResized, this, &SobreColumnas::reparte);
    rejilla.viewport()->installEventFilter(this);
    cajas.parentWidget()->installEventFilter(this);
}

void SobreColumnas::reparte()
{
    if (m_cajas.isNull())
        return;
    QWidget& marco = *m_cajas->parentWidget();
    const int izquierda = marco.mapFromGlobal(m_rejilla.viewport()->mapToGlobal(QPoint())).x();
    const int ultima = m_cajas->columnCount() - 1;
    std::vector<int> anchos;
    int total = 0;
    for (int columna = 0; columna < ultima; ++columna) {
        anchos.push_back(std::max(m_rejilla.ColWidth(columna) - separacion, 1));
        total += m_rejilla.ColWidth(columna);
    }
    int las_demas = 0;
    for (int columna = ultima; columna < m_rejilla.Cols(); ++columna)
        las_demas += m_rejilla.ColWidth(columna);
    anchos.push_back(std::max(las_demas, 1));
    total += las_demas;
    // The layout gives the first box what it needs at least; only the second is to be narrower for it.
    if (const int falta = ancho_minimo(*m_cajas, 0) - anchos[0]; falta > 0 && falta < anchos[1])
        anchos[1] -= falta;
    // A stretch that is set asks for a new layout, changed or not.
    for (int columna = 0; columna <= ultima; ++columna) {
        const int ancho = anchos[static_cast<std::size_t>(columna)];
        if (m_cajas->columnStretch(columna) != ancho)
            m_cajas->setColumnStretch(columna, ancho);
    }
    auto margenes = m_cajas->contentsMargins();
    const auto bordes = marco.contentsMargins(); // the frame's own, inside of which the layout counts
    margenes.setLeft(std::max(izquierda - bordes.left(), 0));
    margenes.setRight(std::max(marco.width() - izquierda - total - bordes.right(), 0));
    if (margenes != m_cajas->contentsMargins())
        m_cajas->setContentsMargins(margenes);
}

bool SobreColumnas::eventFilter(QObject* objeto, QEvent* evento)
{
    if (evento->type() == QEvent::Resize || evento->type() == QEvent::LayoutRequest)
        reparte();
    return QObject::eventFilter(objeto, evento);
}

} // namespace atipicos
