#include "host/graficos/LaminaResumen.hpp"

#include "controls/Texto.hpp"
#include "host/graficos/GraficosResumen.hpp"
#include "runtime/Formato.hpp"

#include <QChart>
#include <QGraphicsScene>
#include <QPainter>

namespace atipicos::app {

namespace {

    constexpr int margen = 24;
    constexpr int cabecera = 84;
    constexpr int letra = 13; ///< pixels

    EstiloGrafico estilo() { return EstiloGrafico::de_papel(letra); }

    void pinta_grafico(QPainter& pintor, std::unique_ptr<QChart> grafico, const QRectF& donde)
    {
        QGraphicsScene escena;
        auto* puesto = grafico.release(); // the scene's from here on
        escena.addItem(puesto);
        puesto->resize(donde.size());
        escena.render(&pintor, donde, QRectF(QPointF(), donde.size()));
    }

    QString totales(const ResumenCargos& resumen)
    {
        const auto& total = resumen.total();
        const auto que = resumen.peticion().por == VistaResumen::articulo ? " líneas" : " cargos";
        auto texto = std::to_string(total.ahora.cuantos) + que + ": base "
            + texto_pantalla(total.ahora.base, 2) + " + impuesto " + texto_pantalla(total.ahora.impuesto, 2)
            + " = " + texto_pantalla(total.ahora.total(), 2);
        if (total.antes.cuantos > 0)
            texto += ". Un año antes " + texto_pantalla(total.antes.total(), 2) + " ("
                + texto_de_cambio(total) + ")";
        return a_qt(texto + ".");
    }

}

LaminaResumen::LaminaResumen(const ResumenCargos& resumen, const ResumenCargos& meses)
    : m_resumen(resumen)
    , m_meses(meses)
{
}

void LaminaResumen::pinta_cabecera(QPainter& pintor) const
{
    const auto aspecto = estilo();
    pintor.fillRect(QRect(QPoint(), medida), aspecto.fondo);
    pintor.setPen(aspecto.texto);
    auto grande = aspecto.letra;
    grande.setPixelSize(letra * 3 / 2);
    grande.setBold(true);
    pintor.setFont(grande);
    const QRectF linea(margen, margen, medida.width() - 2 * margen, 28);
    const auto cabe = [&pintor, &linea](const QString& texto) {
        return QFontMetricsF(pintor.font()).elidedText(texto, Qt::ElideRight, linea.width());
    };
    pintor.drawText(linea, Qt::AlignLeft | Qt::AlignVCenter, cabe(a_qt(titulo(m_resumen.peticion()))));
    pintor.setFont(aspecto.letra);
    pintor.drawText(linea.translated(0, 30), Qt::AlignLeft | Qt::AlignVCenter, cabe(totales(m_resumen)));
}

void LaminaResumen::pinta(QPainter& pintor) const
{
    pintor.setRenderHint(QPainter::Antialiasing);
    pinta_cabecera(pintor);
    const QRectF resto(margen, cabecera, medida.width() - 2 * margen, medida.height() - cabecera - margen);
    QRectF arriba = resto;
    arriba.setHeight(resto.height() * 0.57);
    QRectF abajo = resto;
    abajo.setTop(arriba.bottom());
    pinta_grafico(pintor, grafico_de_barras(m_resumen, estilo()), arriba);
    pinta_grafico(pintor, grafico_de_meses(m_meses, estilo()), abajo);
}

} // namespace atipicos::app
