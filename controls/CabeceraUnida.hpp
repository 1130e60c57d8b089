#pragma once

#include <QHeaderView>

namespace atipicos {

/// A heading row in which visible neighbours of equal text are painted as one cell.
class CabeceraUnida final : public QHeaderView {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(CabeceraUnida)
public:
    explicit CabeceraUnida(QWidget* parent = nullptr);

    void set_Unida(bool unida); ///< off, every column has its own cell

    /// The cell in which column `columna` is painted, in pixels of the heading's viewport.
    [[nodiscard]] QRect celda(int columna) const;

protected:
    void paintSection(QPainter* pintor, const QRect& rectangulo, int columna) const override;

private:
    [[nodiscard]] QString titulo(int columna) const;
    [[nodiscard]] bool hermanas(int visual, int otra) const;

    bool m_unida = false;
};

} // namespace atipicos
