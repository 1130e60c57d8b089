#pragma once

#include "runtime/Date.hpp"

#include <QStyledItemDelegate>

namespace atipicos {

class qvAviso;

/// Paints a column of due dates: those before a day stand out, in the colour of the words that say so.
class VencimientosQt final : public QStyledItemDelegate {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(VencimientosQt)
public:
    VencimientosQt(Date desde, const qvAviso& aviso, QObject* parent);

protected:
    void initStyleOption(QStyleOptionViewItem* opcion, const QModelIndex& indice) const override;

private:
    Date m_desde;
    const qvAviso& m_aviso;
};

} // namespace atipicos
