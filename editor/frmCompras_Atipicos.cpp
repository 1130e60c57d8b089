#include "editor/frmCompras_Atipicos.hpp"

#include "context/Cajas.hpp"
#include "context/claves.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Avance.hpp"
#include "controls/SinComillas.hpp"
#include "controls/Texto.hpp"
#include "editor/frmEditor_Comentarios.hpp"
#include "editor/RejillaAtipicoQt.hpp"
#include "posting/frmCompras_Atipicos_Contabilizar.hpp"
#include "printing/frmImpresora.hpp"
#include "printing/ImprimirAtipico.hpp"
#include "runtime/Formato.hpp"
#include "ui_frmCompras_Atipicos.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

namespace atipicos {

namespace {

    constexpr int decimales_importe = 2;

    QString titulo() { return QStringLiteral("Reclamaciones a Proveedores"); }

}

frmCompras_Atipicos::frmCompras_Atipicos(QWidget* parent)
    : FormularioCargable("frmCompras_Atipicos", parent)
    , m_ui(std::make_unique<Ui::frmCompras_Atipicos>())
{
    m_ui->setupUi(this);
    m_ui->txtAlmacen->set_NombreAccesible(QStringLiteral("Almacén"));
    m_ui->txtProv->set_NombreAccesible(QStringLiteral("Proveedor"));
    m_ui->txtObservaciones->set_IntroAvanza(true);
    pon_sin_comillas(*m_ui->txtObservaciones);
    m_ui->txtObservaciones->setFixedHeight(m_ui->txtObservaciones->fontMetrics().lineSpacing() * 3 + 12);
    conecta();
}

frmCompras_Atipicos::~frmCompras_Atipicos() = default;

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
    connect(m_ui->fraLin, &frmCompras_Atipicos_Linea::Aceptada, this, &Form::txtImporte_Intro);

    connect(m_ui->cmdAceptar, &QPushButton::clicked, this, &Form::cmdAceptar_Click);
    connect(m_ui->cmdCancelar, &QPushButton::clicked, this, &Form::cmdCancelar_Click);
    connect(m_ui->cmdEliminar, &QPushButton::clicked, this, &Form::cmdEliminar_Click);
    connect(m_ui->cmdModificar, &QPushButton::clicked, this, &Form::cmdModificar_Click);
    connect(m_ui->cmdComent, &QPushButton::clicked, this, &Form::cmdComent_Click);
    connect(m_ui->cmdSalir, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->vsCargos, &VSFlexGrid::doubleClicked, this, &Form::cmdModificar_Click);
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

    const auto& empresa = modComun::comparte_EmpresaOrvalin();
    const auto& conexion = modComun::comparte_ConexionOrvalin();
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
}

/// What the form looks like before anything is known of the charge.
void frmCompras_Atipicos::empieza_vacio()
{
    setWindowTitle(titulo());
    m_ui->txtProv->set_Codigo(0);
    m_ui->txtObservaciones->clear();
    m_ui->chkFranquiciado->setChecked(false);
    m_ui->vsCargos->set_Rows(1);
    Limpiar_Linea();
    set_CincoBotones(false);
}

void frmCompras_Atipicos::Form_Unload()
{
    m_ui->fraLin->Suelta();
    m_edicion = {};
}

void frmCompras_Atipicos::Nuevo_Atipico()
{
    m_edicion.Nuevo_Atipico();
    m_edicion.cargo().set_ConexionOrvalin(modComun::comparte_ConexionOrvalin());
    m_edicion.cargo().set_EmpresaOrvalin(modComun::comparte_EmpresaOrvalin());
}

void frmCompras_Atipicos::Limpiar_Cabecera()
{
    Codigo.clear(); // what comes next is another charge
    m_ui->txtAlmacen->setEnabled(es_oficina_central());
    m_ui->txtAlmacen->set_Codigo(modComun::EmpresaOrvalin().AlmacenDefecto());
    m_ui->txtAlmacen->Buscar();
    m_ui->txtProv->set_Codigo(0);
    m_ui->txtFecha->set_Fecha(modComun::reloj().hoy());
    m_ui->txtObservaciones->clear();
    m_ui->chkFranquiciado->setChecked(false);
    setWindowTitle(titulo());
    if (m_ui->txtAlmacen->isEnabled())
        m_ui->txtAlmacen->setFocus();
    else
        m_ui->txtProv->setFocus();
}

void frmCompras_Atipicos::Limpiar_Linea()
{
    m_ui->fraLin->Limpiar();
    m_ui->lblTotal->setText(QStringLiteral("0,00"));
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
            m_ui->txtObservaciones->setPlainText(a_qt(cabecera->Observ));
            m_edicion.cargo().Impuesto = cabecera->Impuesto;
        }
        lee_lineas(clave, [this](const LineaAbierta& abierta) {
            m_edicion.Cargar_Linea(abierta.linea, abierta.Num_Linea, abierta.CtaAtipicos);
            m_ui->vsCargos->AddItem(a_qt(m_edicion.filas().back().texto(decimales_costo())));
            muestra_total();
        });
        m_ui->vsCargos->set_Row(0);
        if (m_ui->vsCargos->Rows() > 1)
            set_CincoBotones(true);
    });
}

// Line entry

void frmCompras_Atipicos::txtImporte_Intro()
{
    try {
        acepta_linea();
    } catch (...) {
        avisa("Error inesperado. Repita la operación\r" + error_en_curso().descripcion());
    }
}

/// What a line needs of the header; the first thing that is missing is told.
bool frmCompras_Atipicos::cabecera_completa()
{
    if (!m_ui->txtAlmacen->Elegido()) {
        m_ui->txtAlmacen->setEnabled(true);
        m_ui->txtAlmacen->setFocus();
        avisa("Debe especificar el Almacén");
        return false;
    }
    if (!m_ui->txtProv->Elegido()) {
        m_ui->txtProv->setEnabled(true);
        m_ui->txtProv->setFocus();
        avisa("Debe especificar el Proveedor");
        return false;
    }
    if (!m_ui->txtFecha->Fecha()) {
        avisa("Debe seleccionar una Fecha válida", Icono::exclamacion, "¡ Atencion !"); // sic: no accent
        m_ui->txtFecha->setFocus();
        return false;
    }
    return true;
}

void frmCompras_Atipicos::acepta_linea()
{
    if (!cabecera_completa())
        return;
    auto& rejilla = *m_ui->vsCargos;
    const auto fila = m_edicion.Aceptar_Linea(
        m_ui->fraLin->Linea(), [this](std::int32_t articulo) { return m_ui->fraLin->CtaAtipicos(articulo); });
    muestra_fila(fila);
    muestra_total();
    if (rejilla.Rows() > 1)
        set_CincoBotones(true);
    rejilla.set_Row(0);
    m_ui->fraLin->Poner_a_cero();
    m_ui->fraLin->Enfocar();
}

void frmCompras_Atipicos::muestra_fila(int fila)
{
    const auto& tecleada = m_edicion.filas()[static_cast<std::size_t>(fila) - 1];
    pon_fila(*m_ui->vsCargos, fila, a_qt(tecleada.texto(decimales_costo())));
}

/// Whether what is keyed in and was not accepted as a line may go. Back to the row otherwise.
bool frmCompras_Atipicos::deja_la_linea()
{
    if (!m_ui->fraLin->Pendiente())
        return true;
    bool la_deja = false;
    trap("frmCompras_Atipicos:deja_la_linea", [&] {
        la_deja
            = confirma("Hay una línea tecleada que no se ha añadido al cargo.\r\r¿Desea continuar sin ella?");
    });
    if (!la_deja)
        m_ui->fraLin->Enfocar();
    return la_deja;
}

void frmCompras_Atipicos::cmdModificar_Click()
{
    if (m_ui->vsCargos->Rows() >= 2 && m_ui->vsCargos->Row() >= 1 && !deja_la_linea())
        return;
    trap("frmCompras_Atipicos:cmdModificar_Click", [this] {
        const int fila = m_ui->vsCargos->Row();
        if (m_ui->vsCargos->Rows() < 2 || fila < 1)
            return;
        m_ui->fraLin->set_Linea(m_edicion.Modificar_Linea(fila));
        m_ui->fraLin->Enfocar();
    });
}

// Commands

void frmCompras_Atipicos::cmdAceptar_Click()
{
    if (m_guardando)
        return;
    const QScopedValueRollback guardando(m_guardando, true);
    if (hay_lineas()) {
        // Its accelerator leaves no box, by which a code would be looked up.
        m_ui->txtAlmacen->Completa();
        m_ui->txtProv->Completa();
        if (!deja_la_linea())
            return;
    }
    trap("frmCompras_Atipicos:cmdAceptar_Click", [this] {
        if (!hay_lineas())
            return;
        const auto resultado = GuardarAtipico(m_edicion.cargo(), cargo_tecleado(),
            [this](const Contabilizacion& datos) { return pide_previsiones(datos); });
        if (resultado.estado != ResultadoGuardado::Estado::Guardado)
            return;
        modComun::Avisos().mostrar(mensaje_guardado(resultado));
        Imprimir_Atipico();
        empieza_otro();
    });
}

CargoTecleado frmCompras_Atipicos::cargo_tecleado() const
{
    CargoTecleado tecleado;
    tecleado.Codigo = Codigo;
    tecleado.Almacen = m_ui->txtAlmacen->Codigo();
    tecleado.Proveedor = m_ui->txtProv->Codigo();
    tecleado.NombreProveedor = de_qt(m_ui->txtProv->Nombre());
    tecleado.Fecha = CDate(de_qt(m_ui->txtFecha->text())); // error 13 for what is no day
    tecleado.Observaciones = de_qt(m_ui->txtObservaciones->toPlainText());
    tecleado.Franquiciado = m_ui->chkFranquiciado->isChecked();
    m_edicion.Rellenar(tecleado);
    return tecleado;
}

std::optional<std::vector<Prevision>> frmCompras_Atipicos::pide_previsiones(const Contabilizacion& datos)
{
    frmCompras_Atipicos_Contabilizar dialogo(datos, this);
    dialogo.exec();
    if (!dialogo.Aceptado()) {
        set_CincoBotones(true);
        return std::nullopt;
    }
    std::vector<Prevision> previsiones;
    for (int i = 1; i <= dialogo.PrevPago_NroVencimientos(); ++i)
        previsiones.push_back({ dialogo.PrevPago_Importe(i), dialogo.PrevPago_TipoDoc(i),
            dialogo.PrevPago_Vencimiento(i), dialogo.PrevPago_Banco(i) });
    return previsiones;
}

/// Offers to print the charge that has just been saved. It traps its own errors: the charge is stored, and
/// must not stay in the form to be stored again.
void frmCompras_Atipicos::Imprimir_Atipico()
{
    trap("frmCompras_Atipicos:Imprimir_Atipico", [this] {
        if (!hay_lineas())
            return;
        const auto& cargo = m_edicion.cargo();
        ImprimirAtipico({ cargo.Cod_Ejercicio, cargo.Cod_Almacen, cargo.Codigo, cargo.Proveedor },
            [this] { return frmImpresora::pregunta(modComun::comparte_EmpresaOrvalin(), this); });
    });
}

void frmCompras_Atipicos::empieza_otro()
{
    m_ui->vsCargos->set_Rows(1);
    set_CincoBotones(false);
    Limpiar_Cabecera();
    Limpiar_Linea();
    Nuevo_Atipico();
}

void frmCompras_Atipicos::cmdCancelar_Click()
{
    trap("frmCompras_Atipicos:cmdCancelar_Click", [this] {
        if (hay_lineas()
            && confirma("¿Esta seguro que desea cancelar el Atípico?", "Confirmar")) // sic: "Esta"
            empieza_otro();
    });
}

void frmCompras_Atipicos::cmdEliminar_Click()
{
    trap("frmCompras_Atipicos:cmdEliminar_Click", [this] {
        const int fila = m_ui->vsCargos->Row();
        if (!hay_lineas() || fila < 1
            || !confirma("¿Está seguro que desea eliminar el atípico seleccionado?"))
            return;
        m_edicion.Eliminar_Linea(fila);
        m_ui->vsCargos->RemoveItem(fila);
        muestra_total();
        if (hay_lineas())
            return;
        if (m_ui->cmdEliminar
                ->hasFocus()) // disabled it would hand the focus on, to the button that closes the form
            m_ui->fraLin->Enfocar();
        set_CincoBotones(false);
        m_ui->txtAlmacen->setEnabled(es_oficina_central());
        m_ui->fraLin->Limpiar_Observaciones();
    });
}

void frmCompras_Atipicos::cmdComent_Click()
{
    trap("frmCompras_Atipicos:cmdComent_Click", [this] {
        const int fila = m_ui->vsCargos->Row();
        if (!hay_lineas() || fila < 1)
            return;
        frmEditor_Comentarios editor(this);
        editor.set_Conexion(modComun::comparte_ConexionOrvalin());
        editor.set_cEmpresa(modComun::comparte_EmpresaOrvalin());
        editor.set_Comentario(m_edicion.filas()[static_cast<std::size_t>(fila) - 1].linea.Observaciones);
        editor.exec();
        if (!editor.Aceptado())
            return;
        m_edicion.Comentar_Linea(fila, editor.Comentario());
        muestra_fila(fila);
    });
}

void frmCompras_Atipicos::keyPressEvent(QKeyEvent* tecla)
{
    const bool en_rejilla = m_ui->vsCargos->hasFocus();
    switch (tecla->key()) {
    case Qt::Key_Escape:
        cmdCancelar_Click();
        return;
    case Qt::Key_F4:
        cmdComent_Click();
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

void frmCompras_Atipicos::muestra_total()
{
    m_ui->lblTotal->setText(a_qt(texto_pantalla(m_edicion.Total(), decimales_importe)));
}

int frmCompras_Atipicos::decimales_costo() const { return modComun::EmpresaOrvalin().DecimalesCosto(); }

bool frmCompras_Atipicos::es_oficina_central() const
{
    return CBool(modComun::EmpresaOrvalin().Parametro(claves::OficinaCentral));
}

} // namespace atipicos
