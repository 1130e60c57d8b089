#pragma once

#include <QLabel>

namespace atipicos {

/// What is wrong with a field, in words beside it, in a colour that can be read in every theme. It takes no
/// part in the width of what is around it, and is announced to who cannot see it appear.
class qvAviso : public QLabel {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvAviso)
public:
    explicit qvAviso(QWidget* parent = nullptr);

    void set_Aviso(const QString& aviso); ///< empty: nothing is wrong

protected:
    void changeEvent(QEvent* evento) override;
};

} // namespace atipicos
