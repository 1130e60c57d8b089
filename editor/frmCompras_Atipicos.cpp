#include "editor/frmCompras_Atipicos.hpp"

#include "context/Cajas.hpp"
#include "context/claves.hpp"
#include "context/HastaElFinal.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Anuncio.hpp"
#include "controls/Atajos.hpp"
#include "controls/Avance.hpp"
#include "controls/SinComillas.hpp"
#include "controls/SinDibujar.hpp"
#include "controls/Texto.hpp"
#include "editor/frmEditor_Comentarios.hpp"
#include "editor/RejillaAtipicoQt.hpp"
#include "posting/frmCompras_Atipicos_Contabilizar.hpp"
#include "printing/frmImpresora.hpp"
#include "printing/ImprimirAtipico.hpp"
#include "runtime/Formato.hpp"
#include "ui_frmCompras_Atipicos.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>

#include <initializer_list>
#include <utility>

namespace atipicos {

namespace {

    QString titulo() { return QStringLiteral("Reclamaciones a Proveedores"); }

}

frmCompras_Atipicos::frmCompras_Atipicos(QWidget* parent)
    : FormularioCargable("frmCompras_Atipicos", parent)
    , m_ui(std::make_unique<Ui::frmCompras_Atipicos>())
    , m_lblBorrador(new QLabel(this))
{
    m_ui->setupUi(this);
    m_lblBorrador->setObjectName(QStringLiteral("lblBorrador"));
    m_lblBorrador->setWordWrap(true);
    anuncia(*m_lblBorrador);
    m_lblBorrador->hide();
    m_ui->todo->addWidget(m_lblBorrador);
    m_ui->txtAlmacen->set_NombreAccesible(QStringLiteral("Almacén"));
    m_ui->txtProv->set_NombreAccesible(QStringLiteral("Proveedor"));
    anuncia(*m_ui->lblTotal, QStringLiteral("Total"));
    m_ui->txtObservaciones->set_IntroAvanza(true);
    pon_sin_comillas(*m_ui->txtObservaciones);
    m_ui->txtObservaciones->setFixedHeight(m_ui->txtObservaciones->fontMetrics().lineSpacing() * 3 + 12);
    conecta();
}

frmCompras_Atipicos::~frmCompras_Atipicos()
{
    disconnect(qApp, nullptr, this, nullptr); // its controls lose the focus as they go
}

frmCompras_Atipicos& frmCompras_Atipicos::compartido()
{
    static QPointer<frmCompras_Atipicos> unico;
    if (unico.isNull()) {
        unico = new frmCompras_Atipicos;
        connect(qApp, &QCoreApplication::aboutToQuit, unico, [] { delete unico.data(); });
    }
    return *unico;
}

void frmCompras_Atipicos::conecta()
{
    using Form = frmCompras_Atipicos;
    for (Selector* selector :
        { static_cast<Selector*>(m_ui->txtAlmacen), static_cast<Selector*>(m_ui->txtProv) })
        connect(selector, &Selector::Intro, this, [selector] {
            if (selector->vacio() || selector->Elegido())
                pasa_al_siguiente(*selector);
        });
    connect(m_ui->txtFecha, &qvMaskEdBox::Intro, this, [this] { pasa_al_siguiente(*m_ui->txtFecha); });
    connect(m_ui->txtFecha, &qvMaskEdBox::Comprobada, m_ui->lblAvisoFecha, &qvAviso::set_Aviso);
    connect(m_ui->fraLin, &frmCompras_Atipicos_Linea::Aceptada, this, &Form::txtImporte_Intro);
    connect(m_ui->fraLin, &frmCompras_Atipicos_Linea::ArticuloMirado, m_ui->pista,
        &frmCompras_Atipicos_Pista::set_Aviso);
    connect(m_ui->pista, &frmCompras_Atipicos_Pista::Dejar, this, &Form::deja_el_cambio);

    connect(m_ui->cmdAceptar, &QPushButton::clicked, this, &Form::cmdAceptar_Click);
    connect(m_ui->cmdCancelar, &QPushButton::clicked, this, &Form::cmdCancelar_Click);
    connect(m_ui->cmdEliminar, &QPushButton::clicked, this, &Form::cmdEliminar_Click);
    connect(m_ui->cmdModificar, &QPushButton::clicked, this, &Form::cmdModificar_Click);
    connect(m_ui->cmdComent, &QPushButton::clicked, this, &Form::cmdComent_Click);
    connect(m_ui->cmdSalir, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->vsCargos, &VSFlexGrid::doubleClicked, this, &Form::cmdModificar_Click);
    pon_atajos();
    guarda_al_cambiar_de_campo();
}

/// Captions are given; the letters of the buttons (A, C, E, M, S) are taken, those of the entry row are its
/// own.
void frmCompras_Atipicos::pon_atajos()
{
    for (const auto& [campo, letra] : std::initializer_list<std::pair<QWidget*, Qt::Key>>{
             { m_ui->txtAlmacen, Qt::Key_L }, { m_ui->txtProv, Qt::Key_P }, { m_ui->txtFecha, Qt::Key_F },
             { m_ui->txtObservaciones, Qt::Key_O }, { m_ui->chkFranquiciado, Qt::Key_Q },
             { m_ui->vsCargos, Qt::Key_N } })
        pon_atajo(*campo, QKeySequence(Qt::ALT | letra));
}

// Opening and loading

void frmCompras_Atipicos::Form_Load()
{
    if (m_ui->vsCargos->Cols() == 0) { // else it was loaded before: the person may have changed the widths
        prepara_vsCargos(*m_ui->vsCargos);
        m_ui->fraLin->PonSobre(*m_ui->vsCargos);
    }
    empieza_vacio();
    Nuevo_Atipico();

    const auto empresa = modComun::EmpresaOrvalin();
    const auto conexion = modComun::ConexionOrvalin();
    m_ui->txtAlmacen->Prepara(empresa, conexion);
    m_ui->txtAlmacen->set_Codigo(empresa->AlmacenDefecto());
    m_ui->txtAlmacen->Buscar();
    m_ui->txtAlmacen->setEnabled(es_oficina_central());
    m_ui->txtProv->Prepara(empresa, conexion);
    m_ui->fraLin->Prepara(empresa, conexion, decimales_costo());
    m_ui->txtFecha->set_Fecha(modComun::reloj().hoy());
    (m_ui->txtAlmacen->isEnabled() ? m_ui->txtAlmacen->focusProxy() : m_ui->txtProv->focusProxy())
        ->setFocus();

    if (!Codigo.empty()) {
        setWindowTitle(windowTitle() + QStringLiteral(" - ") + a_qt(Codigo));
        Cargar_Atipico();
    }
    m_impuesto.Leer(); // once: a host may have to ask its database
    muestra_total();
    empieza_borrador();
}

/// What the form looks like before anything is known of the charge.
void frmCompras_Atipicos::empieza_vacio()
{
    setWindowTitle(titulo());
    m_impuesto = {};
    m_ui->txtProv->set_Codigo(0);
    m_ui->txtObservaciones->set_Texto({});
    m_ui->chkFranquiciado->setChecked(false);
    m_ui->vsCargos->set_Rows(1);
    Limpiar_Linea();
    set_CincoBotones(false);
}

void frmCompras_Atipicos::Form_Unload()
{
    guarda_borrador();
    m_borrador.Dejar();
    m_ui->fraLin->Suelta();
    m_edicion = {};
}

void frmCompras_Atipicos::Nuevo_Atipico()
{
    m_edicion = {}; // gone in any case: its lines may have been saved
    muestra_cambio();
    m_edicion.Nuevo_Atipico();
    m_edicion.cargo().set_ConexionOrvalin(modComun::ConexionOrvalin());
    m_edicion.cargo().set_EmpresaOrvalin(modComun::EmpresaOrvalin());
}

void frmCompras_Atipicos::Limpiar_Cabecera()
{
    HastaElFinal pasos;
    Codigo.clear(); // what comes next is another charge
    pasos.haz([this] { m_ui->txtAlmacen->setEnabled(es_oficina_central()); });
    pasos.haz([this] {
        m_ui->txtAlmacen->set_Codigo(modComun::EmpresaOrvalin()->AlmacenDefecto());
        m_ui->txtAlmacen->Buscar();
    });
    m_ui->txtProv->set_Codigo(0);
    pasos.haz([this] { m_ui->txtFecha->set_Fecha(modComun::reloj().hoy()); });
    m_ui->txtObservaciones->set_Texto({});
    m_ui->chkFranquiciado->setChecked(false);
    setWindowTitle(titulo());
    if (m_ui->txtAlmacen->isEnabled())
        m_ui->txtAlmacen->setFocus();
    else
        m_ui->txtProv->setFocus();
    pasos.termina();
}

void frmCompras_Atipicos::Limpiar_Linea()
{
    m_ui->fraLin->Limpiar();
    muestra_importe({});
}

void frmCompras_Atipicos::Cargar_Atipico()
{
    trap("frmCompras_Atipicos:Cargar_Atipico", [this] {
        m_ui->txtAlmacen->set_Codigo(Almacen);
        m_ui->txtAlmacen->Buscar();
        m_ui->txtAlmacen->setEnabled(false);
        m_ui->txtProv->setFocus();
        const ClaveCargo clave{ Ejercicio, Almacen, Codigo };
        if (const auto cabecera = lee_cabecera(clave)) {
            m_ui->txtFecha->set_Fecha(cabecera->Fecha);
            m_ui->txtProv->set_Codigo(cabecera->Proveedor);
            m_ui->txtProv->Buscar();
            m_ui->txtObservaciones->set_Texto(sin_comillas(a_qt(cabecera->Observ)));
            m_edicion.cargo().Impuesto = cabecera->Impuesto;
        }
        Carga_Lineas(clave);
        m_ui->vsCargos->set_Row(0);
        if (m_ui->vsCargos->Rows() > 1)
            set_CincoBotones(true);
    });
}

void frmCompras_Atipicos::Carga_Lineas(const ClaveCargo& clave)
{
    const SinDibujar quieta(*m_ui->vsCargos);
    lee_lineas(clave, [this](const LineaAbierta& abierta) {
        m_edicion.Cargar_Linea(abierta.linea, abierta.Num_Linea, abierta.CtaAtipicos);
        m_ui->vsCargos->AddItem(a_qt(m_edicion.filas().back().texto(decimales_costo())));
        muestra_total();
    });
}

void frmCompras_Atipicos::keyPressEvent(QKeyEvent* tecla)
{
    const bool en_rejilla = m_ui->vsCargos->hasFocus();
    switch (tecla->key()) {
    case Qt::Key_Escape:
        if (!m_edicion.bolNuevaLinea() && m_ui->fraLin->isAncestorOf(focusWidget()))
            deja_el_cambio();
        else
            cmdCancelar_Click();
        return;
    case Qt::Key_F4:
        cmdComent_Click();
        return;
    case Qt::Key_F8:
        m_ui->fraLin->Enfocar_Importe();
        return;
    case Qt::Key_Delete:
        if (en_rejilla)
            cmdEliminar_Click();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!en_rejilla)
            break;
        cmdModificar_Click();
        return;
    default:
        break;
    }
    FormularioCargable::keyPressEvent(tecla);
}

bool frmCompras_Atipicos::hay_lineas() const { return !m_edicion.filas().empty(); }

void frmCompras_Atipicos::set_CincoBotones(bool habilitados)
{
    for (QPushButton* boton :
        { m_ui->cmdModificar, m_ui->cmdEliminar, m_ui->cmdAceptar, m_ui->cmdCancelar, m_ui->cmdComent })
        boton->setEnabled(habilitados);
}

void frmCompras_Atipicos::muestra_total() { muestra_importe(m_edicion.Total()); }

void frmCompras_Atipicos::muestra_importe(Currency total)
{
    m_ui->lblTotal->setText(a_qt(texto_pantalla(total, decimales_importe)));
    m_ui->lblConImpuesto->setText(a_qt(m_impuesto.texto(total)));
}

int frmCompras_Atipicos::decimales_costo() const { return modComun::EmpresaOrvalin()->DecimalesCosto(); }

bool frmCompras_Atipicos::es_oficina_central() const
{
    return CBool(modComun::EmpresaOrvalin()->Parametro(claves::OficinaCentral));
}

} // namespace atipicos
