#include "host/ventanas/PanelCargos.hpp"

#include "controls/Anuncio.hpp"
#include "controls/Texto.hpp"
#include "host/panel/Busqueda.hpp"
#include "host/panel/LecturaDeCargos.hpp"
#include "host/ventanas/HiloLector.hpp"
#include "host/ventanas/ModeloCargos.hpp"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr std::size_t cuantos_ultimos = 100;
    constexpr int pausa_al_teclear = 150; ///< milliseconds

    QString cuantos_son(int cuantos, const char* uno, const char* varios)
    {
        return cuantos == 1 ? a_qt(uno) : QString::number(cuantos) + u' ' + a_qt(varios);
    }

    /// In digits, so that widths follow the size of the font; the supplier takes what is left.
    constexpr std::array<int, ModeloCargos::columnas> cifras_de_columnas{ 9, 8, 11, 20, 10, 9, 10, 8 };
    constexpr int cifras_del_proveedor = 12; ///< no less than this, whatever the window

    int ancho_de_cifras(const QTableView& lista, int cifras)
    {
        return (cifras + 1) * lista.fontMetrics().horizontalAdvance(u'0');
    }

    int ancho_de(const QTableView& lista, int columna)
    {
        return ancho_de_cifras(lista, cifras_de_columnas.at(static_cast<std::size_t>(columna)));
    }

    /// Of one that is not shown, what it would have.
    int ancho_mostrada(const QTableView& lista, int columna)
    {
        return lista.isColumnHidden(columna) ? ancho_de(lista, columna) : lista.columnWidth(columna);
    }

    /// What the total says too, and what the browser shows, makes room for the total where there is little.
    constexpr std::array prescindibles{ ModeloCargos::impuesto, ModeloCargos::base, ModeloCargos::asiento };

    void reparte_ancho(QTableView& lista)
    {
        int queda = lista.viewport()->width();
        for (int columna = 0; columna < ModeloCargos::columnas; ++columna)
            if (columna != ModeloCargos::proveedor)
                queda -= ancho_mostrada(lista, columna);
        for (const int columna : prescindibles) {
            const bool falta = queda < ancho_de(lista, ModeloCargos::proveedor);
            queda += falta ? ancho_mostrada(lista, columna) : 0;
            lista.setColumnHidden(columna, falta);
        }
        lista.setColumnWidth(
            ModeloCargos::proveedor, std::max(queda, ancho_de_cifras(lista, cifras_del_proveedor)));
    }

}

PanelCargos::PanelCargos(HiloLector& lector, QWidget* parent)
    : QWidget(parent)
    , m_lector(lector)
    , m_modelo(new ModeloCargos(this))
    , m_buscar(new QLineEdit(this))
    , m_lista(new QTableView(this))
    , m_estado(new QLabel(this))
    , m_pausa(new QTimer(this))
{
    setObjectName(QStringLiteral("panCargos"));
    m_buscar->setObjectName(QStringLiteral("txtBuscarCargo"));
    m_buscar->setPlaceholderText(QStringLiteral("Código, proveedor o importe"));
    m_buscar->setToolTip(
        QStringLiteral("Busca mientras se teclea: el comienzo de un código (AT26), parte del nombre de "
                       "un proveedor, con o sin tildes, o un importe (141,22), con o sin impuesto"));
    m_buscar->setClearButtonEnabled(true);
    m_buscar->installEventFilter(this);
    m_estado->setObjectName(QStringLiteral("lblCargos"));
    m_estado->setMinimumWidth(1); // why they cannot be read may be longer than the screen is wide
    anuncia(*m_estado);
    hace_lista();

    auto* buscar = new QLabel(QStringLiteral("&Buscar:"), this);
    buscar->setBuddy(m_buscar);
    auto* titulo = new QLabel(QStringLiteral("Ú&ltimos cargos:"), this);
    titulo->setObjectName(QStringLiteral("lblUltimos"));
    titulo->setBuddy(m_lista);
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(buscar);
    arriba->addWidget(m_buscar, 1);
    auto* abajo = new QHBoxLayout;
    abajo->addWidget(titulo);
    abajo->addStretch(1);
    abajo->addWidget(m_estado);
    auto* caja = new QVBoxLayout(this);
    caja->setContentsMargins({});
    caja->addLayout(arriba);
    caja->addLayout(abajo);
    caja->addWidget(m_lista, 1);

    m_pausa->setSingleShot(true);
    m_pausa->setInterval(pausa_al_teclear);
    connect(m_pausa, &QTimer::timeout, this, &PanelCargos::Actualiza);
    connect(m_buscar, &QLineEdit::textChanged, m_pausa, qOverload<>(&QTimer::start));
    connect(&m_lector, &HiloLector::Fallo, this,
        [this](const QString& motivo) { dice(QStringLiteral("No se pueden leer los cargos: ") + motivo); });
}

void PanelCargos::hace_lista()
{
    m_lista->setObjectName(QStringLiteral("vsUltimos"));
    m_lista->setAccessibleName(QStringLiteral("Últimos cargos"));
    m_lista->setToolTip(
        QStringLiteral("Intro o doble clic: abre el visor en el cargo. Mayúsculas y Ctrl: eligen varios"));
    m_lista->setModel(m_modelo);
    m_lista->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_lista->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_lista->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_lista->setAlternatingRowColors(true);
    m_lista->setShowGrid(false);
    m_lista->setTabKeyNavigation(false);
    m_lista->setWordWrap(false);
    m_lista->verticalHeader()->hide();
    m_lista->verticalHeader()->setDefaultSectionSize(m_lista->fontMetrics().height() * 3 / 2);
    m_lista->horizontalHeader()->setHighlightSections(false);
    m_lista->installEventFilter(this);
    for (int columna = 0; columna < ModeloCargos::columnas; ++columna)
        m_lista->setColumnWidth(columna, ancho_de(*m_lista, columna));
    m_lista->viewport()->installEventFilter(this);
    connect(m_lista, &QTableView::doubleClicked, this, &PanelCargos::abre_actual);
}

void PanelCargos::showEvent(QShowEvent* evento)
{
    QWidget::showEvent(evento);
    if (m_modelo->rowCount() == 0)
        Actualiza();
}

void PanelCargos::Actualiza()
{
    m_pausa->stop();
    m_a_medias = true;
    if (m_buscar->text().trimmed().isEmpty())
        lee_ultimos();
    else
        busca();
}

void PanelCargos::EmpiezaBusqueda()
{
    m_buscar->setFocus();
    m_buscar->selectAll();
}

void PanelCargos::dice(const QString& texto)
{
    m_estado->setText(texto);
    m_estado->setToolTip(texto);
}

void PanelCargos::lee_ultimos()
{
    m_lector.Haz([this](const Ambito& ambito, const Sigue& sigue) {
        auto leidos = std::make_shared<std::vector<CargoResumido>>(ultimos_cargos(ambito, cuantos_ultimos));
        m_lector.al_mostrar(sigue, [this, leidos] { muestra_ultimos(std::move(*leidos)); });
    });
}

void PanelCargos::muestra_ultimos(std::vector<CargoResumido> cargos)
{
    m_a_medias = false;
    if (!m_modelo->es(cargos)) { // the person's choice stays while nothing has changed
        m_modelo->Pon(std::move(cargos));
        elige_primero();
    }
    const int cuantos = m_modelo->rowCount();
    dice(cuantos == 0 ? QStringLiteral("Todavía no hay ningún cargo")
                      : cuantos_son(cuantos, "Un cargo", "cargos"));
}

void PanelCargos::busca()
{
    dice(QStringLiteral("Buscando…"));
    m_lector.Haz([this, tecleado = de_qt(m_buscar->text())](const Ambito& ambito, const Sigue& sigue) {
        const Busqueda busqueda(ambito);
        const auto enlista = [&](std::vector<CargoResumido> unos) {
            m_lector.al_mostrar(sigue, [this, unos = std::move(unos)] {
                if (std::exchange(m_a_medias, false))
                    m_modelo->Pon({});
                m_modelo->Agrega(unos);
                if (!m_lista->currentIndex().isValid())
                    elige_primero();
            });
        };
        const bool hay_mas = busqueda.busca(busqueda.interpreta(tecleado), sigue, enlista);
        m_lector.al_mostrar(sigue, [this, hay_mas] { muestra_fin(hay_mas); });
    });
}

void PanelCargos::muestra_fin(bool hay_mas)
{
    if (std::exchange(m_a_medias, false))
        m_modelo->Pon({});
    const int hallados = m_modelo->rowCount();
    dice(hay_mas
            ? QStringLiteral("Los %1 primeros que se han encontrado; con más letras son menos").arg(hallados)
            : hallados == 0 ? QStringLiteral("No se encuentra ningún cargo")
                            : cuantos_son(hallados, "Un cargo encontrado", "cargos encontrados"));
}

void PanelCargos::elige_primero()
{
    if (m_modelo->rowCount() > 0)
        m_lista->selectRow(0);
}

void PanelCargos::abre_actual()
{
    if (!m_a_medias && m_lista->currentIndex().isValid())
        emit Abrir(
            CargoResumido(m_modelo->Cargo(m_lista->currentIndex().row()))); // the list may change meanwhile
}

void PanelCargos::Ofrece(const QList<QAction*>& acciones)
{
    m_lista->addActions(acciones);
    m_lista->setContextMenuPolicy(Qt::ActionsContextMenu);
}

std::vector<CargoResumido> PanelCargos::Elegidos() const
{
    std::vector<CargoResumido> elegidos;
    for (int fila = 0; fila < m_modelo->rowCount(); ++fila)
        if (m_lista->selectionModel()->isRowSelected(fila, {}))
            elegidos.push_back(m_modelo->Cargo(fila));
    return elegidos;
}

/// From the box the arrows lead into the list; Enter too, or it opens the only one that was found.
bool PanelCargos::tecla_de_busqueda(int tecla)
{
    if (tecla == Qt::Key_Escape) {
        if (m_buscar->text().isEmpty())
            return false;
        m_buscar->clear();
        Actualiza();
        return true;
    }
    if (tecla != Qt::Key_Down && tecla != Qt::Key_Return && tecla != Qt::Key_Enter)
        return false;
    if (m_pausa->isActive())
        Actualiza();
    if (m_modelo->rowCount() > 0)
        m_lista->setFocus();
    return true;
}

bool PanelCargos::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto == m_lista->viewport() && evento->type() == QEvent::Resize)
        reparte_ancho(*m_lista);
    if (evento->type() != QEvent::KeyPress || objeto == m_lista->viewport())
        return QWidget::eventFilter(objeto, evento);
    const auto* tecla = static_cast<QKeyEvent*>(evento);
    if (objeto == m_buscar)
        return tecla_de_busqueda(tecla->key());
    if (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter) {
        if (!tecla->isAutoRepeat())
            abre_actual();
        return true;
    }
    return QWidget::eventFilter(objeto, evento);
}

} // namespace atipicos::app
