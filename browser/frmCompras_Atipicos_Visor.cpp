#include "browser/frmCompras_Atipicos_Visor.hpp"

#include "browser/RejillasVisorQt.hpp"
#include "browser/TextosVisorQt.hpp"
#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "context/modMsgOp.hpp"
#include "context/trap.hpp"
#include "controls/Anclaje.hpp"
#include "controls/Anuncio.hpp"
#include "controls/Avance.hpp"
#include "controls/SinDibujar.hpp"
#include "controls/Texto.hpp"
#include "ui_frmCompras_Atipicos_Visor.h"

#include <QKeyEvent>
#include <QScopeGuard>
#include <QShortcut>

#include <algorithm>

namespace atipicos {

namespace {

    constexpr int ancho_selector = 3000; ///< twips
    constexpr std::size_t aviso_cada = 10'000; ///< charges after which the reading shows how far it is

    bool es_la_misma(const ClaveCargo& una, const ClaveCargo& otra)
    {
        return una.Ejercicio == otra.Ejercicio && una.Almacen == otra.Almacen && una.Codigo == otra.Codigo;
    }

}

Date frmCompras_Atipicos_Visor::sin_rango() { return Date::de_dia(1900, 1, 1).value_or(Date{}); }

frmCompras_Atipicos_Visor::frmCompras_Atipicos_Visor(QWidget* parent)
    : FormularioCargable("frmCompras_Atipicos_Visor", parent)
    , m_ui(std::make_unique<Ui::frmCompras_Atipicos_Visor>())
{
    m_ui->setupUi(this);
    m_ui->txtAlmacen->set_NombreAccesible(QStringLiteral("Almacén"));
    m_ui->txtProveedor->set_NombreAccesible(QStringLiteral("Proveedor"));
    anuncia(*m_ui->lblEstado);
    prepara_vsCab(*m_ui->vsCab);
    conecta();
}

frmCompras_Atipicos_Visor::~frmCompras_Atipicos_Visor() = default;

void frmCompras_Atipicos_Visor::atrapa(const char* procedimiento, Accion accion)
{
    trap(std::string("frmCompras_Atipicos_Visor:") + procedimiento, [&] { (this->*accion)(); });
}

void frmCompras_Atipicos_Visor::enlaza(QPushButton& boton, const char* procedimiento, Accion accion)
{
    connect(&boton, &QPushButton::clicked, this,
        [this, procedimiento, accion] { atrapa(procedimiento, accion); });
}

void frmCompras_Atipicos_Visor::conecta()
{
    using Form = frmCompras_Atipicos_Visor;
    for (Selector* selector :
        { static_cast<Selector*>(m_ui->txtAlmacen), static_cast<Selector*>(m_ui->txtProveedor) })
        connect(selector, &Selector::Intro, this, [selector] {
            if (selector->vacio() || selector->Elegido())
                pasa_al_siguiente(*selector);
        });
    connect(m_ui->txtFechaI, &qvMaskEdBox::Intro, this, [this] { pasa_al_siguiente(*m_ui->txtFechaI); });
    connect(m_ui->txtFechaF, &qvMaskEdBox::Intro, this,
        [this] { atrapa("txtFechaF_KeyPress", &Form::txtFechaF_KeyPress); });
    const auto busca_ya = [this] { atrapa("txtFechaF_KeyPress", &Form::busca_lo_tecleado); };
    connect(m_ui->cmdBuscarAtipicos, &QPushButton::clicked, this, busca_ya);
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, busca_ya);
    connect(new QShortcut(Qt::Key_F6, this), &QShortcut::activated, this, &Form::va_al_abierto);
    connect(m_ui->vsCab, &VSFlexGrid::doubleClicked, this, &Form::vsCab_KeyPress);
    connect(m_ui->Tabs, &QTabWidget::currentChanged, this,
        [this] { atrapa("Tabs_SelectedChanged", &Form::Tabs_SelectedChanged); });
    enlaza(*m_ui->cmdPrimero, "cmdPrimero_Click", &Form::cmdPrimero_Click);
    enlaza(*m_ui->cmdAnterior, "cmdAnterior_Click", &Form::cmdAnterior_Click);
    enlaza(*m_ui->cmdSiguiente, "cmdSiguiente_Click", &Form::cmdSiguiente_Click);
    enlaza(*m_ui->cmdUltimo, "cmdUltimo_Click", &Form::cmdUltimo_Click);
    enlaza(*m_ui->cmdExportar, "cmdExportar_Click", &Form::cmdExportar_Click);
    enlaza(*m_ui->cmdImprimir, "cmdImprimir_Click", &Form::cmdImprimir_Click);
    enlaza(*m_ui->cmdModificar, "cmdModificar_Click", &Form::cmdModificar_Click);
    enlaza(*m_ui->cmdEliminar, "cmdEliminar_Click", &Form::cmdEliminar_Click);
    connect(m_ui->cmdSalir, &QPushButton::clicked, this, &QWidget::close);
}

const CargoListado& frmCompras_Atipicos_Visor::cargo_de(int fila) const
{
    return m_cargos.at(static_cast<std::size_t>(m_ui->vsCab->RowData(fila)));
}

const CargoListado& frmCompras_Atipicos_Visor::elegido() const { return cargo_de(m_ui->vsCab->Row()); }

ClaveCargo frmCompras_Atipicos_Visor::clave_de(const CargoListado& cargo)
{
    return { CInt(cargo.Fecha.anio()), CInt(cargo.Cod_Almacen), de_qt(a_qt(cargo.Codigo).trimmed()) };
}

// Search and list

void frmCompras_Atipicos_Visor::Form_Load()
{
    empieza_vacio();
    const auto empresa = modComun::EmpresaOrvalin();
    const auto conexion = modComun::ConexionOrvalin();
    m_ui->tabDetalles->Prepara();
    m_ui->txtAlmacen->Prepara(empresa, conexion);
    m_ui->txtProveedor->Prepara(empresa, conexion);
    for (QWidget* selector :
        { static_cast<QWidget*>(m_ui->txtAlmacen), static_cast<QWidget*>(m_ui->txtProveedor) })
        Anclaje::AgregarControl(*selector, ancho_selector, 50);
    pone_filtros();
}

void frmCompras_Atipicos_Visor::empieza_vacio()
{
    m_ui->vsCab->set_Rows(1);
    m_cargos.clear();
    m_abierto.reset();
    m_ui->lblEstado->setText({});
    m_ui->lblEstado->setToolTip({});
    m_ui->vsCab->set_Aviso(textos_visor::sin_buscar());
    m_ui->Tabs->setCurrentIndex(documentos);
    set_Comandos(false);
    m_ui->txtFechaI->setFocus();
}

/// Without a range the boxes hold this year until today.
void frmCompras_Atipicos_Visor::pone_filtros()
{
    if (Fecha_Final != sin_rango() && Fecha_Final.tiene_dia()) {
        m_ui->txtFechaI->set_Fecha(Fecha_Inicial);
        m_ui->txtFechaF->set_Fecha(Fecha_Final);
    } else {
        const Date hoy = modComun::reloj().hoy();
        m_ui->txtFechaI->set_Fecha(Date::de_dia(hoy.anio(), 1, 1).value_or(hoy));
        m_ui->txtFechaF->set_Fecha(hoy);
    }
    m_ui->txtAlmacen->set_Codigo(std::max<std::int16_t>(Almacen_Inicial, 0));
    m_ui->txtAlmacen->Buscar();
    m_ui->txtProveedor->set_Codigo(std::max(Proveedor_Inicial, 0));
    m_ui->txtProveedor->Buscar();
}

FiltroAtipicos frmCompras_Atipicos_Visor::filtro() const
{
    return { de_qt(m_ui->txtFechaI->text()), de_qt(m_ui->txtFechaF->text()), m_ui->txtAlmacen->Codigo(),
        m_ui->txtProveedor->Codigo() };
}

bool frmCompras_Atipicos_Visor::espera_fecha(qvMaskEdBox& caja)
{
    if (caja.Fecha())
        return true;
    avisa(" Se esperaba Fecha ", Icono::informacion);
    m_ui->Tabs->setCurrentIndex(documentos); // where the box can be seen
    caja.setFocus();
    return false;
}

void frmCompras_Atipicos_Visor::txtFechaF_KeyPress()
{
    m_abierto.reset(); // a list of its own
    busca();
}

/// What the button and F5 do: F5 does not leave the picker in which a code is being typed.
void frmCompras_Atipicos_Visor::busca_lo_tecleado()
{
    m_ui->txtAlmacen->Completa();
    m_ui->txtProveedor->Completa();
    txtFechaF_KeyPress();
}

/// What Enter in the last box starts, and what follows a deletion or a change; errors of the database reach
/// the caller.
void frmCompras_Atipicos_Visor::busca()
{
    if (!espera_fecha(*m_ui->txtFechaI) || !espera_fecha(*m_ui->txtFechaF))
        return;
    Cargar_Atipicos();
    m_buscado = filtro();
    emit Buscado(m_buscado);
    const bool hay_filas = m_ui->vsCab->Rows() > 1;
    set_Comandos(hay_filas);
    if (!hay_filas)
        return;
    m_ui->Tabs->setCurrentIndex(documentos);
    m_ui->vsCab->setFocus();
}

/// The list changes when all of it has been read: an error on the way leaves the one that was there.
void frmCompras_Atipicos_Visor::Cargar_Atipicos()
{
    std::vector<CargoListado> cargos;
    std::vector<QByteArray> filas;
    std::string fila;
    TotalesLista totales;
    const auto oculta_aviso = qScopeGuard(modMsgOp::Ocultar);
    atipicos::Cargar_Atipicos(filtro(), [&](const CargoListado& cargo) {
        fila.clear();
        anexa_fila(fila, cargo);
        filas.push_back(QByteArray::fromStdString(fila));
        cargos.push_back(cargo);
        if (filas.size() % aviso_cada == 0)
            modMsgOp::Mostrar(textos_visor::leyendo(filas.size()));
        totales.suma(cargo);
    });
    auto& rejilla = *m_ui->vsCab;
    rejilla.set_Rows(1);
    m_cargos = std::move(cargos);
    {
        const SinDibujar sin_dibujar(rejilla);
        int lugar = 0;
        for (const auto& leida : filas)
            rejilla.AddItem(leida, lugar++);
    }
    rejilla.set_Row(1);
    rejilla.set_Aviso(filas.empty() ? textos_visor::sin_atipicos() : QString());
    m_ui->lblEstado->setText({}); // so that an equal result is announced too
    m_ui->lblEstado->setText(textos_visor::resumen(totales));
    m_ui->lblEstado->setToolTip(textos_visor::por_que_falta_una_suma(totales));
    marca_abierto();
    m_ui->Tabs->setTabEnabled(detalles, rejilla.Rows() > 1);
}

/// The list begins at its first row again; the charge that was being changed is marked in it.
void frmCompras_Atipicos_Visor::marca_abierto()
{
    const auto lugar = std::find_if(m_cargos.begin(), m_cargos.end(),
        [this](const auto& cargo) { return m_abierto && es_la_misma(clave_de(cargo), *m_abierto); });
    const bool esta = lugar != m_cargos.end();
    m_ui->vsCab->set_Marcada(esta ? static_cast<int>(lugar - m_cargos.begin()) : -1);
    if (esta)
        m_ui->lblEstado->setText(m_ui->lblEstado->text() + textos_visor::va_al_abierto(*m_abierto));
}

void frmCompras_Atipicos_Visor::va_al_abierto()
{
    auto& rejilla = *m_ui->vsCab;
    for (int fila = 1; m_abierto && fila < rejilla.Rows(); ++fila)
        if (es_la_misma(clave_de(cargo_de(fila)), *m_abierto)) {
            rejilla.set_Row(fila);
            m_ui->Tabs->setCurrentIndex(documentos);
            rejilla.setFocus();
            return;
        }
}

void frmCompras_Atipicos_Visor::set_Comandos(bool habilitados)
{
    m_ui->Tabs->setTabEnabled(detalles, habilitados);
    for (QPushButton* boton : { m_ui->cmdExportar, m_ui->cmdImprimir, m_ui->cmdModificar, m_ui->cmdEliminar })
        boton->setEnabled(habilitados);
}

void frmCompras_Atipicos_Visor::keyPressEvent(QKeyEvent* tecla)
{
    const bool intro = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
    if (tecla->key() == Qt::Key_F9)
        atrapa("cmdImprimir_Click", &frmCompras_Atipicos_Visor::cmdImprimir_Click);
    else if (intro && m_ui->vsCab->hasFocus()) {
        if (!tecla->isAutoRepeat()) // the Enter of the search, held down, stays in the list
            vsCab_KeyPress();
    } else if (tecla->key() == Qt::Key_Escape && en_detalles()) {
        m_ui->Tabs->setCurrentIndex(documentos);
        m_ui->vsCab->setFocus();
    } else
        FormularioCargable::keyPressEvent(tecla);
}

} // namespace atipicos
