#include "posting/VencimientosQt.hpp"

#include "controls/qvAviso.hpp"
#include "controls/Texto.hpp"

namespace atipicos {

VencimientosQt::VencimientosQt(Date desde, const qvAviso& aviso, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_desde(desde)
    , m_aviso(aviso)
{
}

void VencimientosQt::initStyleOption(QStyleOptionViewItem* opcion, const QModelIndex& indice) const
{
    QStyledItemDelegate::initStyleOption(opcion, indice);
    const auto vencimiento = Date::de_texto(de_qt(indice.data().toString()));
    if (!vencimiento || *vencimiento >= m_desde)
        return;
    opcion->font.setBold(true);
    opcion->palette.setColor(QPalette::Text, m_aviso.palette().color(QPalette::WindowText));
}

} // namespace atipicos
