#include "printing/frmView.hpp"

#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Texto.hpp"
#include "ui_frmView.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QPointer>

#include <utility>

namespace atipicos {

namespace {

    QString titulo()
    {
        const auto visor = QStringLiteral("Visor de Reportes");
        return modComun::hay_EmpresaOrvalin()
            ? a_qt(modComun::EmpresaOrvalin()->Nombre()) + QStringLiteral(" - ") + visor
            : visor;
    }

}

frmView::frmView(QWidget* parent)
    : Formulario(parent, Qt::Window)
    , m_ui(std::make_unique<Ui::frmView>())
{
    m_ui->setupUi(this);
    connect(m_ui->crvRep, &VisorReport::Cerrar, this, &QWidget::close);
}

frmView::~frmView() = default;

frmView& frmView::compartido()
{
    static QPointer<frmView> unico;
    if (unico.isNull()) {
        unico = new frmView;
        connect(qApp, &QCoreApplication::aboutToQuit, unico, [] { delete unico.data(); });
    }
    return *unico;
}

void frmView::set_Report(std::shared_ptr<const Report> report) noexcept { m_report = std::move(report); }

void frmView::Muestra(bool modal)
{
    const bool ya_modal = isVisible() && isModal();
    if (modal && !ya_modal)
        hide(); // what is on the screen already does not become modal
    trap("frmView:Form_Load", [&] { Form_Load(modal || ya_modal); });
    if (!modal) {
        show();
        raise();
    } else if (ya_modal)
        espera_cierre();
    else
        exec();
}

/// For whoever asks from within the modal viewer: it waits like the first one, and no longer.
void frmView::espera_cierre()
{
    QEventLoop espera;
    connect(this, &QDialog::finished, &espera, &QEventLoop::quit);
    espera.exec();
}

void frmView::Form_Load(bool modal)
{
    m_ui->crvRep->set_BotonImprimir(true);
    m_ui->crvRep->set_BotonGuardar(true);
    m_ui->crvRep->set_BotonCerrar(modal); // a window of its own is closed by its frame
    m_ui->crvRep->set_ReportSource(m_report);
    m_ui->crvRep->ViewReport();
    m_ui->crvRep->Zoom(m_zoom);
    setWindowTitle(titulo());
}

void frmView::Form_Activate()
{
    while (QApplication::overrideCursor() != nullptr)
        QApplication::restoreOverrideCursor();
}

void frmView::Form_Unload()
{
    m_report.reset();
    m_ui->crvRep->set_ReportSource(nullptr);
    m_ui->crvRep->ViewReport();
}

void frmView::changeEvent(QEvent* evento)
{
    if (evento->type() == QEvent::ActivationChange && isActiveWindow())
        Form_Activate();
    Formulario::changeEvent(evento);
}

void frmView::closeEvent(QCloseEvent* evento)
{
    Form_Unload();
    evento->accept();
    done(Rejected);
}

void frmView::reject() { close(); }

} // namespace atipicos
