#include "controls/Pantalla.hpp"

#include <QScreen>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace atipicos {

void cabe_en_pantalla(QWidget& ventana)
{
    if (ventana.isMaximized() || ventana.isFullScreen())
        return;
    const QWidget& donde = ventana.parentWidget() != nullptr ? *ventana.parentWidget()->window() : ventana;
    // What the window manager adds is not known before it has been asked to show the window.
    const int marco = ventana.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &ventana);
    const int barra = ventana.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &ventana);
    const QSize libre = donde.screen()->availableGeometry().size() - QSize(2 * marco, 2 * marco + barra);
    ventana.resize(ventana.size().boundedTo(libre));
}

void entra_en_pantalla(QWidget& ventana)
{
    if (ventana.isMaximized() || ventana.isFullScreen())
        return;
    const QRect libre = ventana.screen()->availableGeometry();
    const QRect marco = ventana.frameGeometry();
    const QPoint sitio(std::max(libre.left(), std::min(marco.left(), libre.right() - marco.width() + 1)),
        std::max(libre.top(), std::min(marco.top(), libre.bottom() - marco.height() + 1)));
    if (sitio != marco.topLeft())
        ventana.move(sitio);
}

} // namespace atipicos
