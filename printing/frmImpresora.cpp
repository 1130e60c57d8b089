#include "printing/frmImpresora.hpp"

#include "context/claves.hpp"
#include "context/trap.hpp"
#include "controls/Anuncio.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"
#include "ui_frmImpresora.h"

#include <utility>

namespace atipicos {

namespace {

    /// A key without a value leaves the combo as it is.
    void preselecciona(qvDispositivo& combo, const Variant& clave)
    {
        if (!clave.es_nulo() && !CStr(clave).empty())
            combo.set_Codigo(CInt(clave));
    }

}

frmImpresora::frmImpresora(QWidget* parent)
    : Formulario(parent)
    , m_ui(std::make_unique<Ui::frmImpresora>())
{
    m_ui->setupUi(this);
    etiqueta_para_leer(*m_ui->cboDispositivo_1); // the label beside it is the first one's
    connect(m_ui->cmdAceptar, &QPushButton::clicked, this, &frmImpresora::cmdAceptar_Click);
    connect(m_ui->cmdCancelar, &QPushButton::clicked, this, &frmImpresora::cmdCancelar_Click);
    connect(this, &QDialog::rejected, this, [this] { m_aceptado = false; }); // Escape, or the window's frame
}

frmImpresora::~frmImpresora() = default;

void frmImpresora::set_EmpresaOrvalin(std::shared_ptr<qvoremp::Empresa> empresa) noexcept
{
    m_empresa = std::move(empresa);
}

void frmImpresora::set_Destino(DestinoImpresion destino) noexcept { m_destino = std::move(destino); }

void frmImpresora::Show(int Modal, const Duena& OwnerForm)
{
    const bool la_esperan = isVisible() && isModal();
    if (!la_esperan)
        set_Duena(OwnerForm);
    if (!m_cargado) {
        trap("frmImpresora:Form_Load", [this] { Form_Load(); });
        m_cargado = true;
    }
    m_aceptado = false;
    m_ui->cmdAceptar->setFocus(); // what is proposed is what is wanted, nearly always
    if (Modal != 0 && !la_esperan) {
        if (isVisible())
            hide(); // what is on the screen already does not become modal
        exec();
    } else
        show();
}

std::optional<DestinoImpresion> frmImpresora::pregunta(
    std::shared_ptr<qvoremp::Empresa> empresa, QWidget* parent)
{
    frmImpresora dialogo;
    dialogo.set_EmpresaOrvalin(std::move(empresa));
    dialogo.Show(1, parent);
    return dialogo.Aceptado() ? std::optional(dialogo.Destino()) : std::nullopt;
}

void frmImpresora::Form_Load()
{
    m_ui->cboImpresoras->Prepara();
    m_ui->cboDispositivo_0->Prepara();
    m_ui->cboDispositivo_1->Prepara();
    if (!m_empresa)
        throw Error::de_ejecucion(numero_error::objeto_no_establecido);
    preselecciona(
        *m_ui->cboDispositivo_0, m_empresa->Parametro(claves::Proveedores_AtipicosDispImpresoDefault));
    preselecciona(
        *m_ui->cboDispositivo_1, m_empresa->Parametro(claves::Proveedores_AtipicosDisp2ImpresoDefault));
    if (!m_ui->cboImpresoras->Hay())
        deja_los_que_hay();
}

/// Where there is no printer, what the company sends to one is shown on the screen; once, if it is there
/// already.
void frmImpresora::deja_los_que_hay()
{
    using namespace qvoremp::dispositivo;
    for (auto* combo : { m_ui->cboDispositivo_0, m_ui->cboDispositivo_1 }) {
        const auto* otro = combo == m_ui->cboDispositivo_0 ? m_ui->cboDispositivo_1 : m_ui->cboDispositivo_0;
        combo->set_HayImpresoras(false);
        if (combo->Codigo() == impresora)
            combo->set_Codigo(otro->Codigo() == pantalla ? ninguno : pantalla);
    }
}

void frmImpresora::cmdAceptar_Click()
{
    m_destino = { m_ui->cboImpresoras->Nombre(), m_ui->cboDispositivo_0->Codigo(),
        m_ui->cboDispositivo_1->Codigo(), m_ui->cboImpresoras->Ajuste() };
    m_aceptado = true;
    accept();
}

void frmImpresora::cmdCancelar_Click() { reject(); }

} // namespace atipicos
