#include "host/ventanas/Estilo.hpp"

#include "controls/Icono.hpp"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace atipicos::app {

namespace {

    /// Of the height of a letter, what is measured by it; 0: what is not. As large as always with the letters
    /// that people have by default.
    int centesimas_de_la_letra(QStyle::PixelMetric cual)
    {
        switch (cual) {
        case QStyle::PM_LayoutLeftMargin:
        case QStyle::PM_LayoutTopMargin:
        case QStyle::PM_LayoutRightMargin:
        case QStyle::PM_LayoutBottomMargin:
            return 60;
        case QStyle::PM_LayoutHorizontalSpacing:
        case QStyle::PM_LayoutVerticalSpacing:
            return 40;
        case QStyle::PM_SmallIconSize:
        case QStyle::PM_ButtonIconSize:
        case QStyle::PM_TabBarIconSize:
        case QStyle::PM_ToolBarIconSize:
            return 105;
        default:
            return 0;
        }
    }

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

int Estilo::pixelMetric(PixelMetric cual, const QStyleOption* opciones, const QWidget* control) const
{
    const int con_letra_normal = QProxyStyle::pixelMetric(cual, opciones, control);
    const int centesimas = centesimas_de_la_letra(cual);
    if (centesimas == 0)
        return con_letra_normal;
    const QFont letra = control != nullptr ? control->font() : QApplication::font();
    return std::max(con_letra_normal, QFontMetrics(letra).height() * centesimas / 100);
}

QIcon Estilo::standardIcon(StandardPixmap cual, const QStyleOption* opciones, const QWidget* control) const
{
    const QString dibujo = dibujo_de(cual);
    return dibujo.isEmpty() ? QProxyStyle::standardIcon(cual, opciones, control) : icono(dibujo);
}

} // namespace atipicos::app
