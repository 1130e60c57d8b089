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
    m_edicion.cargo().set_ConexionOrvalin(modComun::comparte_ConexionOrvalin());
    m_edicion.cargo().set_EmpresaOrvalin(modComun::comparte_EmpresaOrvalin());
}

void frmCompras_Atipicos::Limpiar_Cabecera()
{
    HastaElFinal pasos;
    Codigo.clear(); // what comes next is another charge
    pasos.haz([this] { m_ui->txtAlmacen->setEnabled(es_oficina_central()); });
    pasos.haz([this] {
        m_ui->txtAlmacen->set_Codigo(modComun::EmpresaOrvalin().AlmacenDefecto());
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

// Line entry

void frmCompras_Atipicos::txtImporte_Intro()
{
    try {
        acepta_linea();
    } catch (...) {
        const Error error = error_en_curso();
        avisa("Error inesperado. Repita la operación\r" + error.descripcion());
        if (error.numero() == frmCompras_Atipicos_Linea::no_existe_articulo)
            m_ui->fraLin->Enfocar();
    }
    guarda_borrador();
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
    empieza_linea();
}

/// The entry row as it is after a line has been accepted.
void frmCompras_Atipicos::empieza_linea()
{
    m_ui->fraLin->Poner_a_cero();
    muestra_cambio();
    m_ui->fraLin->Enfocar();
}

/// Gives up the change of a line and nothing else; the line stays as it is in the grid.
void frmCompras_Atipicos::deja_el_cambio()
{
    m_ui->fraLin->Enfocar(); // first: a number gets its form when its box is left
    m_edicion.Dejar_Linea();
    empieza_linea();
}

void frmCompras_Atipicos::muestra_cambio() { m_ui->pista->set_Linea(m_edicion.intLineaActual()); }

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
        const LineaTecleada linea = m_edicion.Modificar_Linea(fila);
        muestra_cambio();
        m_ui->fraLin->set_Linea(linea);
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
        m_ui->txtFecha->Completa();
        if (!deja_la_linea())
            return;
    }
    trap("frmCompras_Atipicos:cmdAceptar_Click", [this] {
        if (!hay_lineas())
            return;
        const auto resultado
            = GuardarAtipico(m_edicion.cargo(), cargo_tecleado(), [this](const Contabilizacion& datos) {
                  auto previsiones = pide_previsiones(datos);
                  if (previsiones)
                      guarda_borrador(true);
                  return previsiones;
              });
        if (resultado.estado == ResultadoGuardado::Estado::Fallido)
            guarda_borrador();
        if (resultado.estado != ResultadoGuardado::Estado::Guardado)
            return;
        if (resultado.InsertarFallido)
            m_borrador.Dejar(); // the charge may not have been written, and the form lets go of it
        else
            m_borrador.Quitar();
        modComun::Avisos().mostrar(mensaje_guardado(resultado));
        Imprimir_Atipico();
        empieza_otro();
    });
}

/// Error 13, in words, for what is no day.
Date frmCompras_Atipicos::fecha_del_cargo() const
{
    if (const auto fecha = m_ui->txtFecha->Fecha())
        return *fecha;
    throw Error(numero_error::tipos_no_coinciden, "QVORComprasAtip",
        de_qt(m_ui->txtFecha->Falta()) + " Corrija la fecha del cargo y acéptelo de nuevo.");
}

CargoTecleado frmCompras_Atipicos::cargo_tecleado() const
{
    CargoTecleado tecleado;
    tecleado.Codigo = Codigo;
    tecleado.Almacen = m_ui->txtAlmacen->Codigo();
    tecleado.Proveedor = m_ui->txtProv->Codigo();
    tecleado.NombreProveedor = de_qt(m_ui->txtProv->Nombre());
    tecleado.Fecha = fecha_del_cargo();
    tecleado.Observaciones = de_qt(m_ui->txtObservaciones->Texto());
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
    set_CincoBotones(false);
    HastaElFinal pasos; // whatever fails, no line that was saved stays to be saved again
    pasos.haz([this] { Limpiar_Cabecera(); });
    pasos.haz([this] { Limpiar_Linea(); });
    pasos.haz([this] { Nuevo_Atipico(); });
    m_ui->vsCargos->set_Rows(1);
    pasos.termina();
}

void frmCompras_Atipicos::cmdCancelar_Click()
{
    trap("frmCompras_Atipicos:cmdCancelar_Click", [this] {
        if (hay_lineas()
            && confirma("¿Esta seguro que desea cancelar el Atípico?", "Confirmar")) { // sic: "Esta"
            m_borrador.Quitar();
            empieza_otro();
        }
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
        muestra_cambio(); // of the one that has gone, or of one that has moved up
        if (hay_lineas())
            return;
        if (m_ui->cmdEliminar
                ->hasFocus()) // disabled it would hand the focus on, to the button that closes the form
            m_ui->fraLin->Enfocar();
        set_CincoBotones(false);
        m_ui->txtAlmacen->setEnabled(es_oficina_central());
        m_ui->fraLin->Limpiar_Observaciones();
    });
    guarda_borrador();
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
    guarda_borrador();
}

// What is kept of it until it is saved

void frmCompras_Atipicos::empieza_borrador()
{
    m_cargado.clear();
    for (const auto& fila : m_edicion.filas())
        m_cargado += fila.texto(decimales_costo()) + '\n';
    m_borrador.Empezar(lo_tecleado());
    m_lblBorrador->hide();
    m_ui->cmdSalir->setToolTip(modComun::comparte_Borradores()
            ? QStringLiteral("Cierra la ventana; lo que no se haya guardado queda como borrador (Alt+S)")
            : QStringLiteral("Cierra la ventana; lo que no se haya guardado se pierde (Alt+S)"));
}

Borrador frmCompras_Atipicos::lo_tecleado() const
{
    Borrador tecleado;
    rellena(tecleado, m_edicion);
    if (!Codigo.empty()) {
        tecleado.Codigo = Codigo;
        tecleado.Ejercicio = Ejercicio;
        tecleado.AlmacenDelCargo = Almacen;
        tecleado.Cargado = m_cargado;
    }
    tecleado.Almacen = m_ui->txtAlmacen->Codigo();
    tecleado.Proveedor = m_ui->txtProv->Codigo();
    tecleado.NombreProveedor = de_qt(m_ui->txtProv->Nombre());
    tecleado.Fecha = de_qt(m_ui->txtFecha->text());
    tecleado.Observaciones = de_qt(m_ui->txtObservaciones->toPlainText());
    tecleado.Franquiciado = m_ui->chkFranquiciado->isChecked();
    tecleado.HayEnCurso = m_ui->fraLin->Pendiente();
    if (tecleado.HayEnCurso)
        tecleado.EnCurso = en_borrador(m_ui->fraLin->Linea());
    else
        tecleado.FilaEnCambio = 0;
    return tecleado;
}

/// Apart from the traps of the procedures: that a charge cannot be kept is no reason not to go on with it.
/// `guardandose`: its save begins now.
void frmCompras_Atipicos::guarda_borrador(bool guardandose)
{
    try {
        Borrador tecleado = lo_tecleado();
        tecleado.Guardandose = guardandose;
        const std::string fallo = m_borrador.Guardar(tecleado);
        m_lblBorrador->setText(fallo.empty()
                ? QString()
                : QStringLiteral("Lo tecleado no queda a salvo hasta que guarde el cargo: ") + a_qt(fallo));
        m_lblBorrador->setVisible(!fallo.empty());
    } catch (...) {
        m_lblBorrador->setText(a_qt(error_en_curso().descripcion()));
        m_lblBorrador->show();
    }
}

/// The header may be changed after the last line has been accepted.
void frmCompras_Atipicos::guarda_al_cambiar_de_campo()
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* dejado, QWidget*) {
        if (dejado != nullptr && hay_lineas() && !m_guardando && m_ui->fraCab1->isAncestorOf(dejado))
            guarda_borrador();
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

int frmCompras_Atipicos::decimales_costo() const { return modComun::EmpresaOrvalin().DecimalesCosto(); }

bool frmCompras_Atipicos::es_oficina_central() const
{
    return CBool(modComun::EmpresaOrvalin().Parametro(claves::OficinaCentral));
}

} // namespace atipicos
