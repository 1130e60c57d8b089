#include "controls/Anclaje.hpp"

#include "controls/VSFlexGrid.hpp"

#include <QEvent>

#include <algorithm>

namespace atipicos {

Anclaje::Anclaje(VSFlexGrid& rejilla)
    : QObject(&rejilla)
    , m_rejilla(rejilla)
{
    rejilla.viewport()->installEventFilter(this);
    connect(&rejilla, &VSFlexGrid::AnchoAjustado, this, &Anclaje::Reajustar);
}

void Anclaje::AgregarColumna(int columna, int porcentaje)
{
    m_columnas.push_back({ columna, m_rejilla.ColWidth(columna), porcentaje });
}

void Anclaje::Reajustar()
{
    int ganado = m_rejilla.viewport()->width();
    for (int columna = 0; columna < m_rejilla.Cols(); ++columna)
        ganado -= m_rejilla.ColWidth(columna); // a hidden one measures 0
    for (const auto& [columna, ancho, porcentaje] : m_columnas)
        ganado += m_rejilla.ColWidth(columna) - ancho;
    const int minimo = m_rejilla.fontMetrics().averageCharWidth() * 6;
    for (const auto& [columna, ancho, porcentaje] : m_columnas)
        m_rejilla.setColumnWidth(columna, std::max(ancho + ganado * porcentaje / 100, minimo));
}

bool Anclaje::eventFilter(QObject* objeto, QEvent* evento)
{
    if (evento->type() == QEvent::Resize)
        Reajustar();
    return QObject::eventFilter(objeto, evento);
}

} // namespace atipicos
