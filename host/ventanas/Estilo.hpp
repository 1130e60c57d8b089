#pragma once

#include <QProxyStyle>

namespace atipicos::app {

/// Qt's own look, with what people miss in it: the button that has the focus is told apart at a glance, and
/// the boxes have the program's drawings.
class Estilo final : public QProxyStyle {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Estilo)
public:
    Estilo();

    void drawControl(ControlElement que, const QStyleOption* opciones, QPainter* pintor,
        const QWidget* control = nullptr) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap cual, const QStyleOption* opciones = nullptr,
        const QWidget* control = nullptr) const override;
};

} // namespace atipicos::app
