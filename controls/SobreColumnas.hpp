#pragma once

#include <QObject>
#include <QPointer>

class QGridLayout;

namespace atipicos {

class VSFlexGrid;

/// Keeps a row of boxes above the columns of the grid under it, whatever widths those have: the boxes of
/// column n of the layout stand above column n of the grid, those of the last one above all that are left.
/// One whose text needs more takes it from the next.
class SobreColumnas final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SobreColumnas)
public:
    /// `cajas` belongs to a widget in the window of `rejilla`, and `rejilla` has its columns.
    SobreColumnas(QGridLayout& cajas, VSFlexGrid& rejilla); ///< belongs to the grid

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void reparte();

    QPointer<QGridLayout> m_cajas;
    VSFlexGrid& m_rejilla;
};

} // namespace atipicos
