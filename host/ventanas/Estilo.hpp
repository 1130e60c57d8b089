#pragma once

#include <QProxyStyle>

namespace atipicos::app {

/// The one place for what all windows look like, those of the component too: Qt's own look, with what people
/// miss in it. The button that has the focus is told apart at a glance, the boxes have the program's
/// drawings, and margins, gaps and drawings grow with the letter. Colours are in `Apariencia`.
class Estilo final : public QProxyStyle {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Estilo)
public:
    Estilo();

    void drawControl(ControlElement que, const QStyleOption* opciones, QPainter* pintor,
        const QWidget* control = nullptr) const override;
    [[nodiscard]] int pixelMetric(PixelMetric cual, const QStyleOption* opciones = nullptr,
        const QWidget* control = nullptr) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap cual, const QStyleOption* opciones = nullptr,
        const QWidget* control = nullptr) const override;
};

} // namespace atipicos::app
