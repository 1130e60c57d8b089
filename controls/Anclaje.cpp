#include "controls/Anclaje.hpp"

#include "controls/Twips.hpp"
#include "controls/VSFlexGrid.hpp"

#include <QEvent>

#include <algorithm>

namespace atipicos {

namespace {

    /// Downwards, also of what is lost: together the shares never come to more than there is.
    int parte_de(int ganado, int porcentaje)
    {
        const int cien_veces = ganado * porcentaje;
        return cien_veces / 100 - static_cast<int>(cien_veces % 100 < 0);
    }

}

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

void Anclaje::AgregarControl(QWidget& control, int twips, int porcentaje)
{
    control.setMinimumWidth(twips_a_pixeles(twips, control));
    auto politica = control.sizePolicy();
    politica.setHorizontalPolicy(QSizePolicy::Expanding);
    politica.setHorizontalStretch(porcentaje);
    control.setSizePolicy(politica);
}

int Anclaje::AnchoDeDiseno() const
{
    int todo = 0;
    for (int columna = 0; columna < m_rejilla.Cols(); ++columna)
        todo += m_rejilla.ColWidth(columna); // a hidden one measures 0
    for (const auto& [columna, ancho, porcentaje] : m_columnas)
        todo += ancho - m_rejilla.ColWidth(columna);
    return todo;
}

void Anclaje::Reajustar()
{
    const int ganado = m_rejilla.viewport()->width() - AnchoDeDiseno();
    const int minimo = m_rejilla.fontMetrics().averageCharWidth() * 6;
    for (const auto& [columna, ancho, porcentaje] : m_columnas)
        m_rejilla.setColumnWidth(columna, std::max(ancho + parte_de(ganado, porcentaje), minimo));
}

bool Anclaje::eventFilter(QObject* objeto, QEvent* evento)
{
    if (evento->type() == QEvent::Resize)
        Reajustar();
    return QObject::eventFilter(objeto, evento);
}

} // namespace atipicos
