#include "host/graficos/DibujaResumen.hpp"

#include "controls/Texto.hpp"
#include "host/graficos/LaminaResumen.hpp"
#include "runtime/Error.hpp"

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <optional>

namespace atipicos::app {

namespace {

    constexpr int aumento = 2; ///< of a picture of points

    /// Charts need an application. Where there is none yet there is one without a display for as long as this
    /// lives, whatever the person has set for his windows; Qt's remarks on the surroundings are kept back.
    class SinPantalla {
    public:
        SinPantalla()
        {
            if (QCoreApplication::instance() != nullptr)
                return;
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
            qputenv("QT_QPA_PLATFORM", "offscreen");
            qunsetenv("QT_QPA_PLATFORMTHEME");
            m_propia.emplace(m_cuantos, m_argumentos);
        }

    private:
        int m_cuantos = 1;
        char m_nombre[9] = "atipicos";
        char* m_argumentos[2] = { m_nombre, nullptr };
        std::optional<QApplication> m_propia;
    };

    void png(QIODevice& destino, const LaminaResumen& lamina)
    {
        QImage imagen(LaminaResumen::medida * aumento, QImage::Format_RGB32);
        imagen.setDevicePixelRatio(aumento);
        QPainter pintor(&imagen);
        lamina.pinta(pintor);
        pintor.end();
        imagen.save(&destino, "PNG");
    }

    void svg(QIODevice& destino, const LaminaResumen& lamina, const QString& titulo)
    {
        QSvgGenerator generador;
        generador.setOutputDevice(&destino);
        generador.setSize(LaminaResumen::medida);
        generador.setViewBox(QRect(QPoint(), LaminaResumen::medida));
        generador.setTitle(titulo);
        QPainter pintor(&generador);
        lamina.pinta(pintor);
    }

    void pdf(QIODevice& destino, const LaminaResumen& lamina, const QString& titulo)
    {
        QPdfWriter escritor(&destino);
        escritor.setTitle(titulo);
        escritor.setCreator(QStringLiteral("atipicos"));
        escritor.setPageSize(QPageSize(QPageSize::A4));
        escritor.setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
        escritor.setResolution(600);
        QPainter pintor(&escritor);
        const double escala = std::min(static_cast<double>(escritor.width()) / LaminaResumen::medida.width(),
            static_cast<double>(escritor.height()) / LaminaResumen::medida.height());
        pintor.scale(escala, escala);
        lamina.pinta(pintor);
    }

}

std::string dibuja_resumen(
    const ResumenCargos& resumen, const ResumenCargos& meses, const std::string& formato)
{
    const SinPantalla aplicacion;
    const LaminaResumen lamina(resumen, meses);
    QBuffer destino;
    destino.open(QIODevice::WriteOnly);
    if (formato == "svg")
        svg(destino, lamina, a_qt(titulo(resumen.peticion())));
    else if (formato == "pdf")
        pdf(destino, lamina, a_qt(titulo(resumen.peticion())));
    else
        png(destino, lamina);
    if (destino.data().isEmpty())
        throw Error(1, "atipicos", "No se ha podido dibujar el resumen (" + formato + ").");
    return destino.data().toStdString();
}

} // namespace atipicos::app
