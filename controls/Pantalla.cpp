#include "controls/Pantalla.hpp"

#include <QScreen>
#include <QStyle>
#include <QWidget>

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

} // namespace atipicos
