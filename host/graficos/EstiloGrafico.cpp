#include "host/graficos/EstiloGrafico.hpp"

#include <QPalette>

namespace atipicos::app {

namespace {

    /// Between two colours, so many hundredths of the way to the second one.
    QColor mezcla(const QColor& uno, const QColor& otro, int centesimas)
    {
        const auto parte = [centesimas](int a, int b) { return a + (b - a) * centesimas / 100; };
        return QColor(
            parte(uno.red(), otro.red()), parte(uno.green(), otro.green()), parte(uno.blue(), otro.blue()));
    }

    EstiloGrafico con(const QColor& fondo, const QColor& texto, const QColor& ahora, const QFont& letra)
    {
        return { fondo, texto, mezcla(fondo, texto, 18), ahora, mezcla(fondo, texto, 45), letra, 12, 12,
            true };
    }

}

EstiloGrafico EstiloGrafico::de_pantalla(const QPalette& paleta, const QFont& letra)
{
    auto estilo = con(
        paleta.color(QPalette::Base), paleta.color(QPalette::Text), paleta.color(QPalette::Link), letra);
    estilo.letra.setPointSizeF(letra.pointSizeF() * 0.9);
    estilo.barras = 6;
    estilo.meses = 6;
    estilo.con_leyenda = false;
    return estilo;
}

EstiloGrafico EstiloGrafico::de_papel(int pixeles)
{
    QFont letra(QStringLiteral("DejaVu Sans"));
    letra.setPixelSize(pixeles);
    return con(Qt::white, QColor(0x1c, 0x1f, 0x24), QColor(0x1f, 0x5f, 0xa8), letra);
}

} // namespace atipicos::app
