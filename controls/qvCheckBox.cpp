#include "controls/qvCheckBox.hpp"

#include "controls/Avance.hpp"

#include <QKeyEvent>

namespace atipicos {

qvCheckBox::qvCheckBox(QWidget* parent)
    : QCheckBox(parent)
{
}

void qvCheckBox::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter)
        pasa_al_siguiente(*this);
    else
        QCheckBox::keyPressEvent(tecla);
}

} // namespace atipicos
