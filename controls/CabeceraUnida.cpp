#include "controls/CabeceraUnida.hpp"

#include <QAbstractItemModel>

namespace atipicos {

CabeceraUnida::CabeceraUnida(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
    setHighlightSections(false);
    setTextElideMode(Qt::ElideRight); // a heading in the middle would lose letters at both ends
    // A cell may reach over columns that have not changed.
    connect(this, &QHeaderView::sectionResized, this, [this] { viewport()->update(); });
}

void CabeceraUnida::set_Unida(bool unida)
{
    m_unida = unida;
    viewport()->update();
}

QString CabeceraUnida::titulo(int columna) const
{
    return model() == nullptr ? QString() : model()->headerData(columna, Qt::Horizontal).toString();
}

bool CabeceraUnida::hermanas(int visual, int otra) const
{
    const QString texto = titulo(logicalIndex(visual));
    return !texto.isEmpty() && texto == titulo(logicalIndex(otra));
}

QRect CabeceraUnida::celda(int columna) const
{
    int primera = visualIndex(columna);
    int ultima = primera;
    if (m_unida) {
        while (primera > 0 && hermanas(primera, primera - 1))
            --primera;
        while (ultima + 1 < count() && hermanas(ultima, ultima + 1))
            ++ultima;
    }
    const int izquierda = sectionViewportPosition(logicalIndex(primera));
    const int derecha = sectionViewportPosition(logicalIndex(ultima)) + sectionSize(logicalIndex(ultima));
    return { izquierda, 0, derecha - izquierda, height() };
}

void CabeceraUnida::paintSection(QPainter* pintor, const QRect& rectangulo, int columna) const
{
    if (!m_unida) {
        QHeaderView::paintSection(pintor, rectangulo, columna);
        return;
    }
    const QRect cabecera = celda(columna);
    const bool del_orden = isSortIndicatorShown() && celda(sortIndicatorSection()) == cabecera;
    QHeaderView::paintSection(pintor, cabecera, del_orden ? sortIndicatorSection() : columna);
}

} // namespace atipicos
