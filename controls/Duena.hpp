#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

class QWindow;

namespace atipicos {

/// The window that a form is shown over: none, one of this program, or one that a host of whatever toolkit
/// names by its system handle.
class Duena {
public:
    Duena() = default; ///< none
    Duena(QWidget* ventana) ///< the form goes with it when it is destroyed
        : m_ventana(ventana)
    {
    }
    [[nodiscard]] static Duena de_hWnd(WId hWnd) noexcept;

    /// What a form becomes a child of: a widget of this Qt, whichever way it is named. Null where there is
    /// none.
    [[nodiscard]] QWidget* ventana() const;
    /// What a form is held above, for a window of another toolkit. Null where there is none, or where the
    /// window system knows no such thing. Error 1002 when no window has that handle.
    [[nodiscard]] std::unique_ptr<QWindow> ajena() const;
    [[nodiscard]] bool por_hWnd() const noexcept { return m_hWnd != 0; }

    friend bool operator==(const Duena& una, const Duena& otra) noexcept
    {
        return una.m_ventana == otra.m_ventana && una.m_hWnd == otra.m_hWnd;
    }

private:
    QPointer<QWidget> m_ventana;
    WId m_hWnd = 0;
};

} // namespace atipicos
