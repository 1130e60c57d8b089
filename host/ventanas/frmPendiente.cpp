#include "host/ventanas/frmPendiente.hpp"

#include "controls/Icono.hpp"
#include "controls/Texto.hpp"
#include "controls/Twips.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/ventanas/MemoriaDeVentanas.hpp"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <utility>

namespace atipicos::app {

frmPendiente::frmPendiente(ListaPendiente lista, QWidget* parent)
    : Formulario(parent)
    , m_lista(std::move(lista))
    , m_rejilla(new VSFlexGrid(this))
    , m_orden(new QLineEdit(this))
{
    setObjectName(QStringLiteral("frmPendiente"));
    setProperty(MemoriaDeVentanas::contenido, m_lista.titulo);
    setWindowTitle(m_lista.titulo);
    auto* explicacion = new QLabel(m_lista.explicacion, this);
    explicacion->setObjectName(QStringLiteral("lblExplicacion"));
    explicacion->setWordWrap(true);
    hace_lista();
    auto* caja = new QGridLayout(this);
    caja->addWidget(explicacion, 0, 0, 1, 3);
    caja->addWidget(m_rejilla, 1, 0, 1, 3);
    caja->setRowStretch(1, 1);
    hace_orden(*caja);
    hace_botones(*caja);
    pon_iconos(*this);
    connect(m_rejilla->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
        &frmPendiente::mira_elegida);
    m_rejilla->set_Row(1);
    mira_elegida();
    m_rejilla->setFocus();
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 24);
}

void frmPendiente::hace_lista()
{
    m_rejilla->setObjectName(QStringLiteral("vsPendiente"));
    m_rejilla->setAccessibleName(m_lista.titulo);
    m_rejilla->set_Cols(static_cast<int>(m_lista.columnas.size()));
    const int letra = fontMetrics().averageCharWidth();
    for (int i = 0; i < m_rejilla->Cols(); ++i) {
        const auto& columna = m_lista.columnas[static_cast<std::size_t>(i)];
        m_rejilla->set_TextMatrix(0, i, columna.titulo);
        if (columna.a_la_derecha)
            m_rejilla->set_ColAlignment(i, Qt::AlignRight | Qt::AlignVCenter);
        m_rejilla->setColumnWidth(i, columna.letras * letra);
    }
    for (const auto& fila : m_lista.filas)
        m_rejilla->AddItem(fila.join(u'\t'));
}

void frmPendiente::hace_orden(QGridLayout& caja)
{
    auto* titulo = new QLabel(QStringLiteral("&Orden que lo arregla:"), this);
    auto* copiar = new QPushButton(QStringLiteral("Co&piar la orden"), this);
    titulo->setBuddy(m_orden);
    m_orden->setObjectName(QStringLiteral("txtOrden"));
    m_orden->setReadOnly(true);
    copiar->setObjectName(QStringLiteral("cmdCopiarOrden"));
    copiar->setAutoDefault(false); // Enter is that of the list
    copiar->setToolTip(QStringLiteral("Para pegarla en un terminal"));
    connect(copiar, &QPushButton::clicked, this,
        [this] { QGuiApplication::clipboard()->setText(m_orden->text()); });
    caja.addWidget(titulo, 2, 0);
    caja.addWidget(m_orden, 2, 1);
    caja.addWidget(copiar, 2, 2);
    for (QWidget* uno :
        { static_cast<QWidget*>(titulo), static_cast<QWidget*>(m_orden), static_cast<QWidget*>(copiar) })
        uno->setVisible(!m_lista.ordenes.isEmpty());
}

void frmPendiente::hace_botones(QGridLayout& caja)
{
    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    if (m_lista.se_abren) {
        m_abrir = new QPushButton(QStringLiteral("&Abrir en el visor"), this);
        m_abrir->setObjectName(QStringLiteral("cmdAbrirEnVisor"));
        m_abrir->setAutoDefault(false);
        connect(m_abrir, &QPushButton::clicked, this, &QDialog::accept);
        connect(m_rejilla, &VSFlexGrid::doubleClicked, this, &QDialog::accept);
        botones->addWidget(m_abrir);
    }
    if (m_lista.se_anulan) {
        auto* anular = new QPushButton(QStringLiteral("&Anular…"), this);
        anular->setObjectName(QStringLiteral("cmdAnular"));
        anular->setAutoDefault(false);
        connect(anular, &QPushButton::clicked, this, [this] { done(Anular); });
        botones->addWidget(anular);
    }
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    cerrar->setObjectName(QStringLiteral("cmdCerrar"));
    cerrar->setAutoDefault(false);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::reject);
    botones->addWidget(cerrar);
    caja.addLayout(botones, 3, 0, 1, 3);
}

int frmPendiente::Elegida() const { return m_rejilla->Row() - 1; }

void frmPendiente::mira_elegida()
{
    const int fila = m_lista.ordenes.size() == 1 ? 0 : Elegida();
    m_orden->setText(m_lista.ordenes.value(fila));
    m_orden->setCursorPosition(0);
    if (m_abrir != nullptr)
        m_abrir->setEnabled(Elegida() >= 0);
}

void frmPendiente::keyPressEvent(QKeyEvent* tecla)
{
    const bool intro = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
    if (intro && m_rejilla->hasFocus() && m_abrir != nullptr && m_abrir->isEnabled()) {
        if (!tecla->isAutoRepeat())
            accept();
        return;
    }
    Formulario::keyPressEvent(tecla);
}

} // namespace atipicos::app
