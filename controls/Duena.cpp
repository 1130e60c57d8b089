#include "controls/Duena.hpp"

#include "runtime/Error.hpp"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

#include <string>

namespace atipicos {

namespace {

    constexpr std::int32_t no_es_ventana = 1002;

    /// The window systems in which the windows of other programs can be named.
    bool en_x11() { return QGuiApplication::platformName() == QLatin1String("xcb"); }
    bool hay_ajenas() { return en_x11() || QGuiApplication::platformName() == QLatin1String("windows"); }

    /// Qt takes any number for a window of X11; of one that is there, at least, a corner can be seen.
    bool existe(WId hWnd)
    {
        return !en_x11() || !QGuiApplication::primaryScreen()->grabWindow(hWnd, 0, 0, 1, 1).isNull();
    }

}

Duena Duena::de_hWnd(WId hWnd) noexcept
{
    Duena duena;
    duena.m_hWnd = hWnd;
    return duena;
}

QWidget* Duena::ventana() const
{
    QWidget* const mia = m_hWnd == 0 ? m_ventana.data() : QWidget::find(m_hWnd);
    return mia == nullptr ? nullptr : mia->window();
}

std::unique_ptr<QWindow> Duena::ajena() const
{
    if (m_hWnd == 0 || ventana() != nullptr || !hay_ajenas())
        return nullptr;
    std::unique_ptr<QWindow> hallada(existe(m_hWnd) ? QWindow::fromWinId(m_hWnd) : nullptr);
    if (!hallada)
        throw Error(no_es_ventana, "QVORComprasAtip",
            "No hay ninguna ventana con el identificador (hWnd) " + std::to_string(m_hWnd)
                + " sobre la que abrir esta.");
    return hallada;
}

} // namespace atipicos
