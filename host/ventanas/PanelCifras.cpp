#include "host/ventanas/PanelCifras.hpp"

#include "controls/Texto.hpp"
#include "runtime/Formato.hpp"

#include <QHeaderView>

#include <array>

namespace atipicos::app {

namespace {

    enum Columna { cuantos, base, impuesto, total, cambiado, columnas };
    enum Fila { mes, mes_anterior, anio, anio_anterior, filas };

    constexpr std::array<const char*, columnas> titulos_de_cifras{ "Cargos", "Base", "Impuesto", "Total",
        "Cambio" };
    constexpr std::array<const char*, filas> periodos{ "Este mes", "El mes pasado", "Este año",
        "El año pasado" };

    QString cifra(Currency valor) { return a_qt(texto_pantalla(valor, 2)); }

}

PanelCifras::PanelCifras(QWidget* parent)
    : QTableWidget(filas, columnas, parent)
{
    setObjectName(QStringLiteral("vsCifras"));
    setAccessibleName(QStringLiteral("Cargos de este mes y de este año"));
    for (int columna = 0; columna < columnas; ++columna)
        setHorizontalHeaderItem(
            columna, new QTableWidgetItem(a_qt(titulos_de_cifras.at(static_cast<std::size_t>(columna)))));
    for (int fila = 0; fila < filas; ++fila)
        setVerticalHeaderItem(fila, new QTableWidgetItem(a_qt(periodos.at(static_cast<std::size_t>(fila)))));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    for (int fila = 0; fila < filas; ++fila)
        for (int columna = 0; columna < columnas; ++columna)
            pon_celda(fila, columna, columna == cambiado ? QString() : QStringLiteral("…"));
    setCurrentCell(0, 0);
    clearSelection();
    mide();
}

void PanelCifras::mide()
{
    setFixedHeight(horizontalHeader()->sizeHint().height() + filas * verticalHeader()->defaultSectionSize()
        + 2 * frameWidth() + 1);
    horizontalHeader()->setStretchLastSection(false); // which would be as wide as it happens to be
    resizeColumnsToContents();
    setMinimumWidth(
        verticalHeader()->sizeHint().width() + horizontalHeader()->length() + 2 * frameWidth() + 1);
    horizontalHeader()->setStretchLastSection(true);
}

void PanelCifras::pon_celda(int fila, int columna, const QString& texto)
{
    auto* celda = item(fila, columna);
    if (celda == nullptr) {
        celda = new QTableWidgetItem;
        celda->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        celda->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        setItem(fila, columna, celda);
    }
    celda->setText(texto);
}

void PanelCifras::pon_fila(int fila, const Totales& totales, const Periodo& periodo)
{
    pon_celda(fila, cuantos,
        a_qt(texto_pantalla(Currency::de_entero(static_cast<std::int32_t>(totales.cuantos)), 0)));
    pon_celda(fila, base, cifra(totales.base));
    pon_celda(fila, impuesto, cifra(totales.impuesto));
    pon_celda(fila, total, cifra(totales.total()));
    const auto dias
        = QStringLiteral("Del %1 al %2").arg(a_qt(periodo.desde.texto()), a_qt(periodo.hasta.texto()));
    verticalHeaderItem(fila)->setToolTip(dias);
    for (int columna = 0; columna < columnas; ++columna)
        item(fila, columna)->setToolTip(dias);
}

void PanelCifras::pon_cambio(int fila, const Totales& antes, const Totales& ahora)
{
    const auto tanto = cambio(antes.total(), ahora.total());
    pon_celda(fila, cambiado,
        tanto ? QStringLiteral("%1%2 %").arg(*tanto > 0 ? QStringLiteral("+") : QString()).arg(*tanto)
              : QString());
    item(fila, cambiado)
        ->setToolTip(QStringLiteral("Del total, respecto de los mismos días del período anterior"));
}

void PanelCifras::Pon(const Comparacion& comparacion)
{
    const auto& de = comparacion.periodos;
    pon_fila(mes, comparacion.mes, de.mes);
    pon_fila(mes_anterior, comparacion.mes_anterior, de.mes_anterior);
    pon_fila(anio, comparacion.anio, de.anio);
    pon_fila(anio_anterior, comparacion.anio_anterior, de.anio_anterior);
    pon_cambio(mes, comparacion.mes_anterior, comparacion.mes);
    pon_cambio(anio, comparacion.anio_anterior, comparacion.anio);
    mide();
}

} // namespace atipicos::app
