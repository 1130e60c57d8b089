#include "host/ventanas/frmManual.hpp"

#include "controls/Anuncio.hpp"
#include "controls/Icono.hpp"
#include "controls/Pantalla.hpp"
#include "host/ventanas/VistaManual.hpp"

#include <QAction>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSplitter>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace atipicos::app {

namespace {

    constexpr int direccion_de = Qt::UserRole;
    constexpr int nivel_en_el_indice = 2; ///< headings below it are found by a search

    QTreeWidgetItem* renglon(const QString& texto, const QString& direccion, const QString& linea = {})
    {
        auto* nuevo = new QTreeWidgetItem(QStringList(texto));
        nuevo->setData(0, direccion_de, direccion);
        nuevo->setToolTip(0, linea.isEmpty() ? texto : linea);
        return nuevo;
    }

}

frmManual::frmManual(QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_barra(new QToolBar(this))
    , m_buscar(new QLineEdit(this))
    , m_hallados(new QLabel(this))
    , m_indice(new QTreeWidget(this))
    , m_vista(new VistaManual(this))
{
    setObjectName(QStringLiteral("frmManual"));
    setWindowTitle(QStringLiteral("Manual"));
    setAttribute(Qt::WA_QuitOnClose, false);
    hace_barra();
    auto* lado = new QWidget(this);
    hace_lado(*lado);
    auto* partes = new QSplitter(this);
    partes->addWidget(lado);
    partes->addWidget(m_vista);
    partes->setStretchFactor(1, 1);
    partes->setChildrenCollapsible(false);
    auto* todo = new QVBoxLayout(this);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->setSpacing(0);
    todo->addWidget(m_barra);
    todo->addWidget(partes, 1);
    const int letra = fontMetrics().averageCharWidth();
    partes->setSizes({ letra * 46, letra * 104 });
    resize(letra * 150, fontMetrics().height() * 38);
    connect(m_vista, &QTextBrowser::sourceChanged, this, [this](const QUrl& url) { // ahead of `source()`
        m_donde = url;
        muestra_donde();
    });
    llena_indice();
}

QAction* frmManual::accion(
    const char* nombre, const char* texto, const QList<QKeySequence>& teclas, void (frmManual::*que)())
{
    auto* nueva = new QAction(QString::fromUtf8(texto), this);
    nueva->setObjectName(QLatin1String(nombre));
    nueva->setShortcuts(teclas);
    nueva->setToolTip(
        QStringLiteral("%1 (%2)").arg(nueva->text(), teclas.front().toString(QKeySequence::NativeText)));
    connect(nueva, &QAction::triggered, this, que);
    addAction(nueva);
    return nueva;
}

void frmManual::hace_barra()
{
    m_barra->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    auto* atras = accion("cmdAtras", "Atrás", { Qt::ALT | Qt::Key_Left }, &frmManual::va_atras);
    auto* adelante = accion("cmdAdelante", "Adelante", { Qt::ALT | Qt::Key_Right }, &frmManual::va_adelante);
    auto* indice = accion("cmdIndice", "Índice", { Qt::ALT | Qt::Key_Home }, &frmManual::va_al_indice);
    atras->setIcon(icono(QStringLiteral("anterior")));
    adelante->setIcon(icono(QStringLiteral("siguiente")));
    indice->setIcon(icono(QStringLiteral("lista")));
    for (auto* una : { atras, adelante, indice })
        m_barra->addAction(una);
    atras->setEnabled(false);
    adelante->setEnabled(false);
    connect(m_vista, &QTextBrowser::backwardAvailable, atras, &QAction::setEnabled);
    connect(m_vista, &QTextBrowser::forwardAvailable, adelante, &QAction::setEnabled);
    accion("cmdBuscar", "Buscar", { Qt::CTRL | Qt::Key_F }, &frmManual::va_a_buscar);
    accion("cmdBuscarSiguiente", "Siguiente", { Qt::Key_F3 }, &frmManual::va_a_la_siguiente);
    accion("cmdBuscarAnterior", "Anterior", { Qt::SHIFT | Qt::Key_F3 }, &frmManual::va_a_la_anterior);
    accion("cmdAgrandar", "Letra más grande", { Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal },
        &frmManual::agranda);
    accion("cmdReducir", "Letra más pequeña", { Qt::CTRL | Qt::Key_Minus }, &frmManual::reduce);
    accion("cmdCerrar", "Cerrar", { Qt::Key_Escape, Qt::CTRL | Qt::Key_W }, &frmManual::cierra);
}

void frmManual::hace_lado(QWidget& lado)
{
    m_buscar->setObjectName(QStringLiteral("txtBuscarManual"));
    m_buscar->setAccessibleName(QStringLiteral("Buscar en el manual"));
    m_buscar->setPlaceholderText(QStringLiteral("Buscar (Ctrl+F)"));
    m_buscar->setClearButtonEnabled(true);
    m_buscar->installEventFilter(this);
    m_hallados->setObjectName(QStringLiteral("lblHalladosManual"));
    anuncia(*m_hallados);
    m_indice->setObjectName(QStringLiteral("lstManual"));
    m_indice->setAccessibleName(QStringLiteral("Índice del manual"));
    m_indice->setHeaderHidden(true);
    m_indice->setUniformRowHeights(true);
    m_indice->installEventFilter(this);
    auto* caja = new QVBoxLayout(&lado);
    caja->addWidget(m_buscar);
    caja->addWidget(m_hallados);
    caja->addWidget(m_indice, 1);
    connect(m_buscar, &QLineEdit::textChanged, this, &frmManual::busca);
    connect(m_indice, &QTreeWidget::currentItemChanged, this,
        [this](const QTreeWidgetItem* elegido) { abre_elegido(elegido); });
    connect(m_indice, &QTreeWidget::itemActivated, this, [this] { m_vista->setFocus(); });
}

void frmManual::llena_indice()
{
    const QSignalBlocker sin_abrir(m_indice);
    m_indice->clear();
    m_hallados->setVisible(false);
    for (const auto& pagina : m_manual.paginas()) {
        auto* suya = renglon(pagina.titulo(), pagina.nombre + QStringLiteral(".md"));
        m_indice->addTopLevelItem(suya);
        for (const auto& apartado : pagina.apartados)
            if (apartado.nivel == nivel_en_el_indice)
                suya->addChild(
                    renglon(apartado.titulo, pagina.nombre + QStringLiteral(".md#") + apartado.ancla));
    }
    m_indice->setRootIsDecorated(true);
    muestra_donde();
}

void frmManual::busca(const QString& palabras)
{
    const auto buscadas = palabras.split(u' ', Qt::SkipEmptyParts);
    m_vista->marca(buscadas);
    if (buscadas.isEmpty()) {
        llena_indice();
        return;
    }
    const auto hallados = m_manual.busca(palabras);
    const QSignalBlocker sin_abrir(m_indice);
    m_indice->clear();
    m_indice->setRootIsDecorated(false);
    for (const auto& uno : hallados)
        m_indice->addTopLevelItem(renglon(uno.donde, uno.direccion, uno.linea));
    m_hallados->setVisible(true);
    m_hallados->setText(hallados.empty() ? QStringLiteral("No se encuentra")
            : hallados.size() == 1       ? QStringLiteral("En 1 apartado")
                                         : QStringLiteral("En %1 apartados").arg(hallados.size()));
}

void frmManual::abre_elegido(const QTreeWidgetItem* elegido)
{
    if (elegido != nullptr)
        m_vista->abre(elegido->data(0, direccion_de).toString());
}

/// The contents follow the page that is read, however it was reached.
void frmManual::muestra_donde()
{
    if (!m_buscar->text().trimmed().isEmpty())
        return;
    const QString pagina = m_donde.fileName();
    const QString entera = pagina + u'#' + m_donde.fragment(QUrl::FullyDecoded);
    const QSignalBlocker sin_abrir(m_indice);
    for (int i = 0; i < m_indice->topLevelItemCount(); ++i) {
        auto* suya = m_indice->topLevelItem(i);
        const bool es_ella = suya->data(0, direccion_de).toString() == pagina;
        suya->setExpanded(es_ella);
        if (!es_ella)
            continue;
        auto* elegido = suya;
        for (int j = 0; j < suya->childCount(); ++j)
            if (suya->child(j)->data(0, direccion_de).toString() == entera)
                elegido = suya->child(j);
        elige(*elegido);
    }
}

/// The line of the keys, if they go to the list: elsewhere a reader would find two things with the focus.
void frmManual::elige(QTreeWidgetItem& renglon)
{
    m_indice->selectionModel()->select(
        m_indice->indexFromItem(&renglon), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_indice->scrollToItem(&renglon);
    if (m_indice->hasFocus())
        toma_el_elegido();
}

void frmManual::toma_el_elegido()
{
    const QSignalBlocker sin_abrir(m_indice);
    if (const auto elegidos = m_indice->selectedItems(); !elegidos.isEmpty())
        m_indice->setCurrentItem(elegidos.front(), 0, QItemSelectionModel::NoUpdate);
}

void frmManual::suelta_el_elegido()
{
    const QSignalBlocker sin_abrir(m_indice);
    m_indice->selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
}

void frmManual::muestra(const QString& direccion)
{
    if (!isVisible())
        cabe_en_pantalla(*this);
    m_buscar->clear();
    winId(); // so that it has a window to be put over another one before it is shown
    ponte_sobre_quien_espera();
    if (isMinimized())
        showNormal();
    show();
    raise();
    activateWindow();
    m_vista->abre(direccion); // now that it has its size a place in the page is found
    m_vista->setFocus();
}

/// A window that waits for an answer takes keys and clicks from all others but those that stand over it.
void frmManual::ponte_sobre_quien_espera()
{
    QWindow* propia = windowHandle();
    QWindow* quien = QGuiApplication::modalWindow();
    if (propia == nullptr || quien == propia
        || (quien == m_quien_espera && propia->transientParent() == quien))
        return;
    if (m_quien_espera != nullptr)
        disconnect(m_quien_espera, nullptr, this, nullptr);
    m_quien_espera = quien;
    propia->setTransientParent(quien);
    if (quien != nullptr) // when it goes, another one may be waiting below it
        connect(quien, &QWindow::visibleChanged, this, &frmManual::ponte_sobre_quien_espera,
            Qt::QueuedConnection);
}

bool frmManual::event(QEvent* evento)
{
    if (evento->type() == QEvent::WindowBlocked)
        QMetaObject::invokeMethod(this, &frmManual::ponte_sobre_quien_espera, Qt::QueuedConnection);
    return QWidget::event(evento);
}

/// From the box of the search the list is walked, and Enter goes on to the page.
bool frmManual::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto == m_indice && evento->type() == QEvent::FocusIn)
        toma_el_elegido();
    else if (objeto == m_indice && evento->type() == QEvent::FocusOut)
        suelta_el_elegido();
    if (objeto != m_buscar || evento->type() != QEvent::KeyPress)
        return QWidget::eventFilter(objeto, evento);
    switch (static_cast<QKeyEvent*>(evento)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        toma_el_elegido();
        return QCoreApplication::sendEvent(m_indice, evento);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_indice->selectedItems().isEmpty())
            m_indice->setCurrentItem(m_indice->topLevelItem(0)); // which opens it
        suelta_el_elegido();
        m_vista->va_a_marca(1);
        m_vista->setFocus();
        return true;
    default:
        return false;
    }
}

void frmManual::pasa_a_marca(int paso)
{
    if (!m_vista->va_a_marca(paso))
        va_a_buscar();
}

void frmManual::va_a_buscar()
{
    m_buscar->setFocus(Qt::ShortcutFocusReason);
    m_buscar->selectAll();
}

void frmManual::va_al_indice() { m_vista->abre(QStringLiteral("indice.md")); }
void frmManual::va_a_la_siguiente() { pasa_a_marca(1); }
void frmManual::va_a_la_anterior() { pasa_a_marca(-1); }
void frmManual::agranda() { m_vista->zoomIn(); }
void frmManual::reduce() { m_vista->zoomOut(); }
void frmManual::cierra() { close(); }
void frmManual::va_atras() { m_vista->backward(); }
void frmManual::va_adelante() { m_vista->forward(); }

} // namespace atipicos::app
