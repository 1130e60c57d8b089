#include "host/ventanas/Estilo.hpp"

#include "controls/Icono.hpp"

#include <QPainter>
#include <QStyleOption>

namespace atipicos::app {

namespace {

    QString dibujo_de(QStyle::StandardPixmap cual)
    {
        switch (cual) {
        case QStyle::SP_MessageBoxInformation:
            return QStringLiteral("mensaje-informacion");
        case QStyle::SP_MessageBoxWarning:
            return QStringLiteral("mensaje-aviso");
        case QStyle::SP_MessageBoxCritical:
            return QStringLiteral("mensaje-error");
        case QStyle::SP_MessageBoxQuestion:
            return QStringLiteral("mensaje-pregunta");
        default:
            return {};
        }
    }

}

Estilo::Estilo()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

void Estilo::drawControl(
    ControlElement que, const QStyleOption* opciones, QPainter* pintor, const QWidget* control) const
{
    QProxyStyle::drawControl(que, opciones, pintor, control);
    if (que != CE_PushButton || !opciones->state.testFlag(State_HasFocus))
        return;
    pintor->save();
    pintor->setRenderHint(QPainter::Antialiasing);
    pintor->setPen(QPen(opciones->palette.color(QPalette::Link), 2));
    pintor->setBrush(Qt::NoBrush);
    pintor->drawRoundedRect(QRectF(opciones->rect).adjusted(1, 1, -1, -1), 3, 3);
    pintor->restore();
}

QIcon Estilo::standardIcon(StandardPixmap cual, const QStyleOption* opciones, const QWidget* control) const
{
    const QString dibujo = dibujo_de(cual);
    return dibujo.isEmpty() ? QProxyStyle::standardIcon(cual, opciones, control) : icono(dibujo);
}

} // namespace atipicos::app
