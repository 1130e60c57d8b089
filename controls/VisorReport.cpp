#include "controls/VisorReport.hpp"

#include "context/trap.hpp"
#include "controls/Anuncio.hpp"
#include "controls/Icono.hpp"
#include "controls/ImpresoraQt.hpp"
#include "controls/SalidaQt.hpp"
#include "controls/Texto.hpp"
#include "controls/VistaReport.hpp"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QSpinBox>
#include <QToolBar>
#include <QVBoxLayout>

#include <utility>

namespace atipicos {

VisorReport::VisorReport(QWidget* parent)
    : QWidget(parent)
    , m_barra(new QToolBar(this))
    , m_vista(new VistaReport(this))
{
    m_vista->setObjectName(QStringLiteral("vista"));
    m_vista->setAccessibleName(QStringLiteral("Páginas del documento"));
    auto* todo = new QVBoxLayout(this);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->setSpacing(0);
    todo->addWidget(m_barra);
    todo->addWidget(m_vista, 1);
    setFocusProxy(m_vista);

    m_imprimir = accion("cmdImprimir", "Imprimir…", "Imprime el documento", QKeySequence::Print);
    m_guardar = accion("cmdGuardar", "Guardar PDF…", "Guarda el documento como PDF", QKeySequence::Save);
    m_cerrar = accion("cmdCerrar", "Cerrar", "Cierra el visor", QKeySequence::Close);
    connect(m_imprimir, &QAction::triggered, this, &VisorReport::cmdImprimir_Click);
    connect(m_guardar, &QAction::triggered, this, &VisorReport::cmdGuardar_Click);
    connect(m_cerrar, &QAction::triggered, this, &VisorReport::Cerrar);
    for (auto* una : { m_imprimir, m_guardar, m_cerrar })
        una->setVisible(false);
    m_barra->addSeparator();
    agrega_paginas();
    agrega_zoom();
    agrega_busqueda();
    m_barra->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    pon_iconos(*m_barra);
    ViewReport();
}

QAction* VisorReport::accion(
    const char* nombre, const char* texto, const char* ayuda, const QKeySequence& teclas)
{
    auto* nueva = m_barra->addAction(QString::fromUtf8(texto));
    nueva->setObjectName(QString::fromUtf8(nombre));
    nueva->setShortcut(teclas);
    nueva->setToolTip(QString::fromUtf8(ayuda) + QStringLiteral(" (%1)").arg(teclas.toString()));
    return nueva;
}

void VisorReport::agrega_paginas()
{
    m_pagina = new QSpinBox(m_barra);
    m_pagina->setObjectName(QStringLiteral("txtPagina"));
    m_pagina->setAccessibleName(QStringLiteral("Página"));
    m_pagina->setKeyboardTracking(false);
    m_paginas = new QLabel(m_barra);
    m_paginas->setObjectName(QStringLiteral("lblPaginas"));
    m_barra->addWidget(new QLabel(QStringLiteral(" Página "), m_barra));
    m_barra->addWidget(m_pagina);
    m_barra->addWidget(m_paginas);
    m_barra->addSeparator();
    connect(m_pagina, &QSpinBox::valueChanged, m_vista, &VistaReport::set_Pagina);
    connect(m_vista, &VistaReport::PaginaCambiada, this, &VisorReport::muestra_pagina);
}

void VisorReport::agrega_zoom()
{
    m_zoom = new QComboBox(m_barra);
    m_zoom->setObjectName(QStringLiteral("cboZoom"));
    m_zoom->setAccessibleName(QStringLiteral("Tamaño"));
    etiqueta_para_leer(*m_zoom);
    m_zoom->addItem(QStringLiteral("Ancho de página"), 1);
    m_zoom->addItem(QStringLiteral("Página entera"), 2);
    for (const int porcentaje : { 50, 75, 100, 125, 150, 200, 400 })
        m_zoom->addItem(QStringLiteral("%1 %").arg(porcentaje), porcentaje);
    m_zoom->setPlaceholderText(QStringLiteral("100 %"));
    m_barra->addWidget(m_zoom);
    connect(m_zoom, &QComboBox::activated, this, [this] { Zoom(m_zoom->currentData().toInt()); });
    connect(m_vista, &VistaReport::ZoomCambiado, this, &VisorReport::muestra_zoom);
}

void VisorReport::agrega_busqueda()
{
    m_buscar = new QLineEdit(m_barra);
    m_buscar->setObjectName(QStringLiteral("txtBuscar"));
    m_buscar->setAccessibleName(QStringLiteral("Buscar en el documento"));
    m_buscar->setPlaceholderText(QStringLiteral("Buscar (Ctrl+F)"));
    m_buscar->setClearButtonEnabled(true);
    m_buscar->setMaximumWidth(220);
    m_hallados = new QLabel(m_barra);
    anuncia(*m_hallados);
    m_hallados->setObjectName(QStringLiteral("lblHallados"));
    m_barra->addSeparator();
    m_accion_buscar = m_barra->addWidget(m_buscar);
    m_barra->addWidget(m_hallados);
    connect(m_buscar, &QLineEdit::textChanged, this, &VisorReport::txtBuscar_Cambio);
    connect(m_buscar, &QLineEdit::returnPressed, this, [this] { busca_siguiente(1); });
}

void VisorReport::set_BotonImprimir(bool visible) { m_imprimir->setVisible(visible); }
void VisorReport::set_BotonGuardar(bool visible) { m_guardar->setVisible(visible); }
void VisorReport::set_BotonCerrar(bool visible) { m_cerrar->setVisible(visible); }

void VisorReport::set_ReportSource(std::shared_ptr<const Report> report) { m_report = std::move(report); }

void VisorReport::ViewReport()
{
    m_visto = m_report;
    m_vista->set_Report(m_visto);
    const bool hay = m_vista->Paginas() > 0;
    for (QWidget* uno : { static_cast<QWidget*>(m_pagina), static_cast<QWidget*>(m_zoom) })
        uno->setEnabled(hay);
    m_imprimir->setEnabled(hay);
    m_guardar->setEnabled(hay);
    m_accion_buscar->setVisible(hay && m_visto->permite_buscar());
    m_buscar->clear();
    m_paginas->setText(hay ? QStringLiteral(" de %1 ").arg(m_vista->Paginas()) : QString());
}

void VisorReport::Zoom(int zoom)
{
    if (zoom <= 1)
        m_vista->set_Ajuste(VistaReport::Ajuste::Ancho);
    else if (zoom == 2)
        m_vista->set_Ajuste(VistaReport::Ajuste::PaginaEntera);
    else
        m_vista->set_Zoom(zoom);
    m_zoom->setCurrentIndex(m_zoom->findData(zoom <= 1 ? 1 : zoom));
}

void VisorReport::muestra_zoom()
{
    m_zoom->setPlaceholderText(QStringLiteral("%1 %").arg(m_vista->Zoom()));
    if (m_zoom->currentData().toInt() > 2 && m_zoom->currentData().toInt() != m_vista->Zoom())
        m_zoom->setCurrentIndex(-1);
}

void VisorReport::muestra_pagina()
{
    const QSignalBlocker sin_eco(m_pagina);
    m_pagina->setRange(std::min(1, m_vista->Paginas()), m_vista->Paginas());
    m_pagina->setValue(m_vista->Pagina());
}

void VisorReport::txtBuscar_Cambio()
{
    m_hallazgos = m_visto ? m_visto->busca(de_qt(m_buscar->text())) : std::vector<Hallazgo>();
    m_actual = 0;
    busca_siguiente(0);
}

void VisorReport::busca_siguiente(int paso)
{
    if (m_hallazgos.empty()) {
        m_hallados->setText(m_buscar->text().isEmpty() ? QString() : QStringLiteral(" No se encuentra "));
    } else {
        const auto cuantos = m_hallazgos.size();
        m_actual = (m_actual + (paso < 0 ? cuantos - 1 : static_cast<std::size_t>(paso))) % cuantos;
        m_hallados->setText(QStringLiteral(" %1 de %2 ").arg(m_actual + 1).arg(cuantos));
    }
    m_vista->resalta(m_hallazgos, m_actual);
}

void VisorReport::cmdImprimir_Click()
{
    trap("crvRep:cmdImprimir_Click", [this] {
        QPrinter impresora(busca_impresora({}), QPrinter::HighResolution);
        QPrintDialog pregunta(&impresora, this);
        pregunta.setMinMax(1, m_vista->Paginas());
        if (pregunta.exec() == QDialog::Accepted)
            imprime_report(*m_visto, impresora);
    });
}

void VisorReport::cmdGuardar_Click()
{
    trap("crvRep:cmdGuardar_Click", [this] { pregunta_y_guarda_pdf(*m_visto); });
}

void VisorReport::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->matches(QKeySequence::Find) && m_accion_buscar->isVisible())
        m_buscar->setFocus(Qt::ShortcutFocusReason);
    else if (tecla->key() == Qt::Key_F3)
        busca_siguiente(tecla->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
    else
        QWidget::keyPressEvent(tecla);
}

} // namespace atipicos
