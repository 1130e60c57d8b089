#include "controls/Atajos.hpp"

#include <QShortcut>
#include <QWidget>

namespace atipicos {

void pon_atajo(QWidget& campo, const QKeySequence& teclas)
{
    auto* atajo = new QShortcut(teclas, &campo);
    QObject::connect(
        atajo, &QShortcut::activated, &campo, [&campo] { campo.setFocus(Qt::ShortcutFocusReason); });
    const QString nombre = teclas.toString(QKeySequence::NativeText);
    const QString antes = campo.toolTip();
    campo.setToolTip(antes.isEmpty() ? nombre : antes + QStringLiteral(" (%1)").arg(nombre));
}

} // namespace atipicos
