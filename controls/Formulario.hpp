#pragma once

#include <QDialog>

namespace atipicos {

/// What the forms have in common: Enter presses the button that has the focus, and no other. Holding it down
/// presses once.
class Formulario : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Formulario)
public:
    explicit Formulario(QWidget* parent = nullptr, Qt::WindowFlags tipo = {});

protected:
    void keyPressEvent(QKeyEvent* tecla) override;
};

} // namespace atipicos
