#pragma once

#include <QDialog>

namespace atipicos {

/// What the forms have in common: Enter presses the button that has the focus, and no other. Holding it down
/// presses once. A form is never opened larger than the screen has room for, shows where the focus is, and
/// its commands have their icons.
class Formulario : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Formulario)
public:
    explicit Formulario(QWidget* parent = nullptr, Qt::WindowFlags tipo = {});

    void setVisible(bool visible) override;

protected:
    void keyPressEvent(QKeyEvent* tecla) override;
};

} // namespace atipicos
