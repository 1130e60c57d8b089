#include "host/ventanas/PanelBorradores.hpp"

#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "controls/Texto.hpp"
#include "runtime/Formato.hpp"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QResizeEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace atipicos::app {

namespace {

    constexpr int filas_a_la_vista = 4; ///< with more the list scrolls
    constexpr int decimales_importe = 2;

    QString hora_de(Date momento)
    {
        const auto minutos = std::chrono::duration_cast<std::chrono::minutes>(
            momento.instante() - momento.solo_dia().instante())
                                 .count();
        return QStringLiteral("%1:%2").arg(minutos / 60).arg(minutos % 60, 2, 10, QLatin1Char('0'));
    }

    QString cuando(Date momento)
    {
        if (momento.solo_dia() == modComun::reloj().hoy())
            return QStringLiteral("de las ") + hora_de(momento);
        return QStringLiteral("del %1 a las %2").arg(a_qt(momento.solo_dia().texto()), hora_de(momento));
    }

    QString lineas_de(const Borrador& borrador)
    {
        const auto cuantas = borrador.Lineas.size();
        QString texto = cuantas == 0 ? QStringLiteral("sin líneas")
            : cuantas == 1           ? QStringLiteral("1 línea")
                                     : QStringLiteral("%1 líneas").arg(cuantas);
        if (borrador.HayEnCurso)
            texto += QStringLiteral(" y una a medio teclear");
        return texto;
    }

    QString proveedor_de(const Borrador& borrador)
    {
        if (!borrador.NombreProveedor.empty())
            return a_qt(borrador.NombreProveedor);
        return borrador.Proveedor == 0 ? QStringLiteral("sin proveedor")
                                       : QStringLiteral("proveedor %1").arg(borrador.Proveedor);
    }

}

QString texto_de(const BorradorOfrecido& ofrecido)
{
    if (!ofrecido.leido)
        return QStringLiteral("Cargo sin guardar que no se puede recuperar: %1 (%2)")
            .arg(a_qt(ofrecido.motivo), a_qt(ofrecido.fichero.filename().string()));
    const auto& borrador = ofrecido.leido->borrador;
    const QString que = borrador.Codigo.empty()
        ? QStringLiteral("Cargo sin guardar")
        : QStringLiteral("Cambios sin guardar en el cargo %1 del almacén %2")
              .arg(a_qt(borrador.Codigo))
              .arg(borrador.AlmacenDelCargo);
    QString texto = QStringList{ que + u' ' + cuando(ofrecido.leido->momento), proveedor_de(borrador),
        lineas_de(borrador), a_qt(texto_pantalla(borrador.Total, decimales_importe)) }
                        .join(QStringLiteral(", "));
    if (borrador.Guardandose)
        texto += QStringLiteral(". Se estaba guardando: al recuperarlo se mira si ya está");
    return texto;
}

PanelBorradores::PanelBorradores(std::shared_ptr<const BorradoresEnCarpeta> borradores, QWidget* parent)
    : QFrame(parent)
    , m_borradores(std::move(borradores))
    , m_lista(new QListWidget(this))
    , m_recuperar(new QPushButton(QStringLiteral("R&ecuperar"), this))
    , m_descartar(new QPushButton(QStringLiteral("&Descartar"), this))
{
    setObjectName(QStringLiteral("fraBorradores"));
    setFrameShape(QFrame::StyledPanel);
    m_lista->setObjectName(QStringLiteral("lstBorradores"));
    m_lista->setAccessibleName(QStringLiteral("Cargos sin guardar"));
    m_lista->setWordWrap(true);
    m_lista->setResizeMode(QListView::Adjust);
    m_lista->setToolTip(QStringLiteral("Intro: recupera el cargo. Supr: lo descarta"));
    m_lista->installEventFilter(this);
    m_lista->viewport()->installEventFilter(this);
    m_recuperar->setObjectName(QStringLiteral("cmdRecuperar"));
    m_recuperar->setToolTip(QStringLiteral("Vuelve a abrir el cargo elegido como se estaba tecleando"));
    m_descartar->setObjectName(QStringLiteral("cmdDescartar"));
    m_descartar->setToolTip(QStringLiteral("Borra para siempre lo que se guarda del cargo elegido"));
    auto* titulo = new QLabel(QStringLiteral("Cargos &sin guardar:"), this);
    titulo->setObjectName(QStringLiteral("lblBorradores"));
    titulo->setBuddy(m_lista);

    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    for (QPushButton* boton : { m_recuperar, m_descartar }) {
        boton->setAutoDefault(true); // Enter presses the one that has the focus
        botones->addWidget(boton);
    }
    auto* caja = new QVBoxLayout(this);
    caja->addWidget(titulo);
    caja->addWidget(m_lista);
    caja->addLayout(botones);

    connect(m_recuperar, &QPushButton::clicked, this, &PanelBorradores::recupera);
    connect(m_descartar, &QPushButton::clicked, this, &PanelBorradores::descarta);
    connect(m_lista, &QListWidget::itemDoubleClicked, this, &PanelBorradores::recupera);
    connect(m_lista, &QListWidget::currentRowChanged, this, &PanelBorradores::mira_elegido);
    Actualiza();
}

void PanelBorradores::Actualiza()
{
    const auto* antes = elegido();
    const auto elegido_antes = antes == nullptr ? std::filesystem::path() : antes->fichero;
    m_ofrecidos = m_borradores ? m_borradores->ofrecidos() : std::vector<BorradorOfrecido>();
    m_lista->clear();
    int elegida = 0;
    for (const auto& ofrecido : m_ofrecidos) {
        m_lista->addItem(texto_de(ofrecido));
        m_lista->item(m_lista->count() - 1)->setToolTip(a_qt(ofrecido.fichero.string()));
        if (ofrecido.fichero == elegido_antes)
            elegida = m_lista->count() - 1;
    }
    m_lista->setCurrentRow(elegida);
    mira_elegido();
    ajusta_alto();
    setVisible(!m_ofrecidos.empty());
}

/// As many lines as the texts need in the width that there is.
void PanelBorradores::ajusta_alto()
{
    const int filas = std::min(m_lista->count(), filas_a_la_vista);
    if (filas == 0)
        return;
    m_lista->doItemsLayout();
    const auto todas
        = m_lista->visualItemRect(m_lista->item(0)).united(m_lista->visualItemRect(m_lista->item(filas - 1)));
    m_lista->setFixedHeight(todas.height() + 2 * m_lista->frameWidth() + 2);
}

const BorradorOfrecido* PanelBorradores::elegido() const
{
    const auto fila = static_cast<std::size_t>(m_lista->currentRow());
    return fila < m_ofrecidos.size() ? &m_ofrecidos[fila] : nullptr;
}

void PanelBorradores::mira_elegido()
{
    const auto* uno = elegido();
    m_recuperar->setEnabled(uno != nullptr && uno->leido);
    m_descartar->setEnabled(uno != nullptr);
}

void PanelBorradores::recupera()
{
    const auto* uno = elegido();
    if (uno != nullptr && uno->leido)
        emit Recuperar(std::filesystem::path(uno->fichero)); // a copy: the list changes meanwhile
}

void PanelBorradores::descarta()
{
    const auto* uno = elegido();
    if (uno == nullptr)
        return;
    const auto fichero = uno->fichero;
    if (confirma("Lo que se guarda de este cargo se borra para siempre:\r\n\r\n" + de_qt(texto_de(*uno))
            + "\r\n\r\n¿Desea descartarlo?"))
        emit Descartar(fichero);
}

bool PanelBorradores::eventFilter(QObject* objeto, QEvent* evento)
{
    if (evento->type() == QEvent::Resize && objeto == m_lista->viewport()) {
        const auto& cambio = static_cast<const QResizeEvent&>(*evento);
        if (cambio.oldSize().width() != cambio.size().width()) // once it has been laid out in it
            QMetaObject::invokeMethod(this, &PanelBorradores::ajusta_alto, Qt::QueuedConnection);
    }
    if (objeto != m_lista || evento->type() != QEvent::KeyPress)
        return QFrame::eventFilter(objeto, evento);
    const auto* tecla = static_cast<QKeyEvent*>(evento);
    const bool intro = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
    if (!intro && tecla->key() != Qt::Key_Delete)
        return QFrame::eventFilter(objeto, evento);
    if (intro && !tecla->isAutoRepeat())
        recupera();
    else if (!intro)
        descarta();
    return true;
}

} // namespace atipicos::app
