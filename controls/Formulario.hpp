#pragma once

#include "controls/Duena.hpp"

#include <QDialog>

#include <memory>

namespace atipicos {

/// What the forms have in common: Enter presses the button that has the focus, and no other. Holding it down
/// presses once. A form is never opened larger than the screen has room for, nor partly outside of it, shows
/// where the focus is, and its commands have their icons.
class Formulario : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Formulario)
public:
    explicit Formulario(QWidget* parent = nullptr, Qt::WindowFlags tipo = {});
    ~Formulario() override;

    /// Makes a window the owner of the form, instead of the one before; the same one changes nothing. A form
    /// that is on the screen, not modally, is taken from it, and has its place when it is shown again. Over a
    /// window given by its handle it stays above, as a dialog does; where the window system has no such
    /// owners (Wayland, no screen) it is shown without one. Error 1002 when there is no such window.
    void set_Duena(const Duena& duena);

    void setVisible(bool visible) override;

protected:
    bool event(QEvent* evento) override;
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    Qt::WindowFlags m_tipo;
    Duena m_duena;
    bool m_por_colocar = false; ///< shown, and not yet with its frame
    std::unique_ptr<QWindow> m_ajena; ///< a window of another toolkit, as this one sees it
};

} // namespace atipicos
