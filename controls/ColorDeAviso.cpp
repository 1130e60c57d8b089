#include "controls/ColorDeAviso.hpp"

#include <QApplication>
#include <QPalette>
#include <QWidget>

namespace atipicos {

namespace {

    constexpr QRgb sobre_claro = 0xffb3121f;
    constexpr QRgb sobre_oscuro = 0xffff9a94;

}

void pon_de_aviso(QWidget& control, bool mal)
{
    QPalette propia;
    propia.setResolveMask(0); // without roles of its own it is the program's, now and after every change
    if (mal) {
        const bool oscuro = QApplication::palette().color(QPalette::Base).lightness() < 128;
        const QColor rojo = QColor::fromRgb(oscuro ? sobre_oscuro : sobre_claro);
        for (const auto papel : { QPalette::Text, QPalette::WindowText })
            propia.setColor(papel, rojo);
    }
    control.setPalette(propia);
}

} // namespace atipicos
