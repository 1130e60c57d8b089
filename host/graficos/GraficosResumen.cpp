#include "host/graficos/GraficosResumen.hpp"

#include "controls/Texto.hpp"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QCategoryAxis>
#include <QChart>
#include <QGraphicsLayout>
#include <QHorizontalBarSeries>
#include <QLegend>
#include <QLineSeries>
#include <QLocale>
#include <QPen>
#include <QValueAxis>

#include <algorithm>
#include <array>
#include <cmath>

namespace atipicos::app {

namespace {

    constexpr qsizetype letras_por_nombre = 28;
    constexpr int marcas = 4; ///< of an axis of amounts, about
    const QString ahora = QStringLiteral("Este periodo");
    const QString antes = QStringLiteral("Un año antes");

    QString mes_corto(std::int32_t clave, bool con_anio)
    {
        static constexpr std::array<const char*, 12> meses{ "ene", "feb", "mar", "abr", "may", "jun", "jul",
            "ago", "sep", "oct", "nov", "dic" };
        const auto mes = QString::fromLatin1(meses[static_cast<std::size_t>(clave % 12)]);
        return con_anio ? mes + QStringLiteral(" %1").arg(clave / 12 % 100, 2, 10, QLatin1Char('0')) : mes;
    }

    QString rotulo(const ResumenCargos& resumen, const GrupoResumen& grupo)
    {
        if (resumen.peticion().por == VistaResumen::mes)
            return mes_corto(grupo.clave, true);
        const auto nombre = a_qt(grupo.nombre).simplified();
        return nombre.size() <= letras_por_nombre ? nombre
                                                  : nombre.left(letras_por_nombre - 1).trimmed() + u'…';
    }

    /// What is drawn as bars: the largest, or the last months.
    std::vector<GrupoResumen> dibujados(const ResumenCargos& resumen, std::size_t cuantos_caben)
    {
        if (resumen.peticion().por != VistaResumen::mes)
            return resumen.primeros(cuantos_caben).grupos();
        const auto& todos = resumen.grupos();
        const auto cuantos = std::min(todos.size(), barras_por_mes);
        return { todos.end() - static_cast<std::ptrdiff_t>(cuantos), todos.end() };
    }

    bool hay_antes(const ResumenCargos& resumen) { return resumen.total().antes.cuantos > 0; }

    std::unique_ptr<QChart> nuevo(const QString& titulo, const EstiloGrafico& estilo)
    {
        auto grafico = std::make_unique<QChart>();
        grafico->setLocalizeNumbers(true);
        // Spanish puts the point of the thousands from five digits on; tables, and German, from four.
        grafico->setLocale(QLocale(QLocale::German, QLocale::Germany));
        grafico->setBackgroundBrush(estilo.fondo);
        grafico->setBackgroundRoundness(0);
        grafico->setMargins(QMargins(2, 2, 24, 2));
        grafico->layout()->setContentsMargins(0, 0, 0, 0);
        auto negrita = estilo.letra;
        negrita.setBold(true);
        grafico->setTitleFont(negrita);
        grafico->setTitleBrush(estilo.texto);
        grafico->setTitle(titulo);
        grafico->legend()->setFont(estilo.letra);
        grafico->legend()->setLabelColor(estilo.texto);
        grafico->legend()->setAlignment(Qt::AlignBottom);
        return grafico;
    }

    void viste(QAbstractAxis& eje, const EstiloGrafico& estilo)
    {
        eje.setLabelsFont(estilo.letra);
        eje.setLabelsColor(estilo.texto);
        eje.setLinePenColor(estilo.rejilla);
        eje.setGridLineColor(estilo.rejilla);
    }

    /// An axis of amounts that reaches from the smallest to the largest of them, and to nothing.
    QValueAxis* eje_de_importes(
        QChart& grafico, const std::vector<GrupoResumen>& grupos, bool con_antes, const EstiloGrafico& estilo)
    {
        double menor = 0;
        double mayor = 0;
        const auto mira = [&](const Cifras& cifras) {
            menor = std::min(menor, cifras.total().a_double());
            mayor = std::max(mayor, cifras.total().a_double());
        };
        for (const auto& grupo : grupos) {
            mira(grupo.ahora);
            if (con_antes)
                mira(grupo.antes);
        }
        auto* eje = new QValueAxis(&grafico);
        eje->setRange(menor, menor < mayor ? mayor : 1);
        eje->setLabelFormat(std::max(mayor, -menor) < 10 ? QStringLiteral("%.2f") : QStringLiteral("%.0f"));
        viste(*eje, estilo);
        eje->setTickCount(marcas);
        eje->applyNiceNumbers();
        return eje;
    }

    QBarSet* barras(const QString& nombre, const std::vector<GrupoResumen>& grupos,
        const Cifras GrupoResumen::*de, const QColor& color)
    {
        auto* juego = new QBarSet(nombre);
        for (const auto& grupo : grupos)
            *juego << (grupo.*de).total().a_double();
        juego->setColor(color);
        juego->setBorderColor(color);
        return juego;
    }

    QLineSeries* linea(
        const QString& nombre, const ResumenCargos& meses, const Cifras GrupoResumen::*de, const QPen& trazo)
    {
        auto* serie = new QLineSeries;
        serie->setName(nombre);
        serie->setPen(trazo);
        serie->setPointsVisible(meses.grupos().size() <= 36);
        double lugar = 0;
        for (const auto& mes : meses.grupos())
            serie->append(lugar++, (mes.*de).total().a_double());
        return serie;
    }

    /// Months under a line: as many as there is room for, with the year on the first and on each January.
    QCategoryAxis* eje_de_meses(QChart& grafico, const ResumenCargos& meses, const EstiloGrafico& estilo)
    {
        auto* eje = new QCategoryAxis(&grafico);
        eje->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
        const auto& grupos = meses.grupos();
        const int cuantos = static_cast<int>(grupos.size());
        const int cada = (cuantos + estilo.meses - 1) / estilo.meses;
        for (int i = 0; i < cuantos; i += std::max(cada, 1)) {
            const auto clave = grupos[static_cast<std::size_t>(i)].clave;
            eje->append(mes_corto(clave, i == 0 || cada > 1 || clave % 12 == 0), i);
        }
        eje->setRange(cuantos > 1 ? 0 : -1, cuantos > 1 ? cuantos - 1 : 1);
        viste(*eje, estilo);
        return eje;
    }

}

QString titulo_de_barras(const ResumenCargos& resumen)
{
    const bool por_mes = resumen.peticion().por == VistaResumen::mes;
    auto titulo = QStringLiteral("Total por ") + a_qt(nombre_de(resumen.peticion().por));
    if (por_mes && resumen.grupos().size() > barras_por_mes)
        titulo += QStringLiteral(", los últimos %1").arg(barras_por_mes);
    return titulo;
}

std::unique_ptr<QChart> grafico_de_barras(const ResumenCargos& resumen, const EstiloGrafico& estilo)
{
    auto grafico = nuevo(titulo_de_barras(resumen), estilo);
    auto grupos = dibujados(resumen, estilo.barras);
    const bool tumbadas = resumen.peticion().por != VistaResumen::mes;
    if (tumbadas)
        std::ranges::reverse(grupos); // the axis begins at the bottom
    const bool con_antes = hay_antes(resumen);
    QAbstractBarSeries* serie = tumbadas ? static_cast<QAbstractBarSeries*>(new QHorizontalBarSeries)
                                         : static_cast<QAbstractBarSeries*>(new QBarSeries);
    if (con_antes)
        serie->append(barras(antes, grupos, &GrupoResumen::antes, estilo.antes));
    serie->append(barras(ahora, grupos, &GrupoResumen::ahora, estilo.ahora));
    serie->setBarWidth(0.8);
    grafico->addSeries(serie);
    grafico->legend()->setReverseMarkers(tumbadas); // in the order in which the bars are read
    auto* de_grupos = new QBarCategoryAxis(grafico.get());
    for (const auto& grupo : grupos) {
        auto nombre = rotulo(resumen, grupo);
        while (de_grupos->categories().contains(nombre)) // each has to be another one
            nombre += QChar(0x200B);
        de_grupos->append(nombre);
    }
    viste(*de_grupos, estilo);
    de_grupos->setGridLineVisible(false);
    if (!tumbadas && grupos.size() > 6)
        de_grupos->setLabelsAngle(-90); // side by side there is no room for them
    auto* de_importes = eje_de_importes(*grafico, grupos, con_antes, estilo);
    grafico->addAxis(de_grupos, tumbadas ? Qt::AlignLeft : Qt::AlignBottom);
    grafico->addAxis(de_importes, tumbadas ? Qt::AlignBottom : Qt::AlignLeft);
    serie->attachAxis(de_grupos);
    serie->attachAxis(de_importes);
    return grafico;
}

std::unique_ptr<QChart> grafico_de_meses(const ResumenCargos& meses, const EstiloGrafico& estilo)
{
    auto grafico = nuevo(QStringLiteral("Total mes a mes"), estilo);
    grafico->legend()->setVisible(estilo.con_leyenda);
    const bool con_antes = hay_antes(meses);
    std::vector<QLineSeries*> lineas;
    if (con_antes)
        lineas.push_back(linea(antes, meses, &GrupoResumen::antes, QPen(estilo.antes, 2, Qt::DashLine)));
    lineas.push_back(linea(ahora, meses, &GrupoResumen::ahora, QPen(estilo.ahora, 2.5)));
    auto* de_meses = eje_de_meses(*grafico, meses, estilo);
    auto* de_importes = eje_de_importes(*grafico, meses.grupos(), con_antes, estilo);
    grafico->addAxis(de_meses, Qt::AlignBottom);
    grafico->addAxis(de_importes, Qt::AlignLeft);
    for (auto* una : lineas) {
        grafico->addSeries(una);
        una->attachAxis(de_meses);
        una->attachAxis(de_importes);
    }
    return grafico;
}

} // namespace atipicos::app
