#include "controls/qvAviso.hpp"

#include "controls/ColorDeAviso.hpp"

#include <QAccessible>
#include <QApplication>
#include <QEvent>

namespace atipicos {

qvAviso::qvAviso(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    pon_de_aviso(*this, true);
}

void qvAviso::set_Aviso(const QString& aviso)
{
    if (aviso == text())
        return;
    setText(aviso);
    setAccessibleName(aviso);
    if (aviso.isEmpty())
        return;
    QAccessibleEvent anuncio(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&anuncio);
}

void qvAviso::changeEvent(QEvent* evento)
{
    if (evento->type() == QEvent::PaletteChange)
        pon_de_aviso(*this, true);
    QLabel::changeEvent(evento);
}

} // namespace atipicos
