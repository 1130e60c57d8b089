#pragma once

#include <QCheckBox>

namespace atipicos {

/// A check box in which Enter moves on to the next field; Space changes it.
class qvCheckBox : public QCheckBox {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvCheckBox)
public:
    explicit qvCheckBox(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* tecla) override;
};

} // namespace atipicos
