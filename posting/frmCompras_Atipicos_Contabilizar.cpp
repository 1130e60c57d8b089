#include "posting/frmCompras_Atipicos_Contabilizar.hpp"

#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Anclaje.hpp"
#include "controls/Anuncio.hpp"
#include "controls/SobreColumnas.hpp"
#include "controls/Texto.hpp"
#include "platform/adodb/campos.hpp"
#include "posting/VencimientosQt.hpp"
#include "runtime/Formato.hpp"
#include "ui_frmCompras_Atipicos_Contabilizar.h"

#include <QKeyEvent>

namespace atipicos {

namespace {

    constexpr int columna_vencimiento = 2;
    constexpr int decimales_importe = 2; // that the grid and the remainder show

}

frmCompras_Atipicos_Contabilizar::frmCompras_Atipicos_Contabilizar(
    const Contabilizacion& datos, QWidget* parent)
    : Formulario(parent)
    , m_ui(std::make_unique<Ui::frmCompras_Atipicos_Contabilizar>())
    , m_edicion(datos)
{
    m_ui->setupUi(this);
    m_ui->txtPrevTipoDoc->set_NombreAccesible(QStringLiteral("Tipo de documento"));
    m_ui->txtBanco->set_NombreAccesible(QStringLiteral("Cuenta del banco"));
    anuncia(*m_ui->lblResto, QStringLiteral("Resto"));
    conecta();
    trap(atencion, [this] { Form_Load(); });
    m_ui->txtPrevImp->setFocus();
}

frmCompras_Atipicos_Contabilizar::~frmCompras_Atipicos_Contabilizar() = default;

void frmCompras_Atipicos_Contabilizar::conecta()
{
    using Form = frmCompras_Atipicos_Contabilizar;
    connect(m_ui->txtPrevImp, &qvTextBox::Intro, this, [this] {
        if (m_ui->txtPrevImp->Valor() != Currency{})
            m_ui->txtPrevTipoDoc->setFocus();
    });
    connect(m_ui->txtPrevTipoDoc, &Selector::Intro, this, [this] {
        if (hay_tipo())
            m_ui->txtBanco->setFocus();
    });
    connect(m_ui->txtBanco, &Selector::Intro, this, [this] { m_ui->txtPrevVto->setFocus(); });
    connect(m_ui->txtPrevVto, &qvMaskEdBox::Intro, this, &Form::txtPrevVto_Intro);
    connect(m_ui->txtImporte, &qvTextBox::Intro, this, [this] { m_ui->cmdAceptar->setFocus(); });
    connect(m_ui->cmdPrevEliminar, &QPushButton::clicked, this, &Form::cmdPrevEliminar_Click);
    connect(m_ui->cmdAceptar, &QPushButton::clicked, this, &Form::cmdAceptar_Click);
    connect(m_ui->cmdCancelar, &QPushButton::clicked, this, &Form::cmdCancelar_Click);
}

void frmCompras_Atipicos_Contabilizar::Form_Load()
{
    prepara_rejilla(); // first, so that the rows have their columns whatever fails below
    m_ui->txtImporte->set_Valor(m_edicion.datos().Importe);
    muestra_resto();
    m_ui->txtPrevVto->set_Partida(m_edicion.datos().Fecha);
    m_ui->vsPrev->setItemDelegateForColumn(
        columna_vencimiento, new VencimientosQt(m_edicion.datos().Fecha, *m_ui->lblAvisoVto, m_ui->vsPrev));
    prepara_selectores();
    lee_banco_del_proveedor();
    if (m_edicion.datos().GenerarPrevisiones)
        m_edicion.Proponer();
    muestra_previsiones();
}

void frmCompras_Atipicos_Contabilizar::prepara_rejilla()
{
    auto& rejilla = *m_ui->vsPrev;
    constexpr auto derecha = Qt::AlignRight | Qt::AlignVCenter;
    constexpr auto izquierda = Qt::AlignLeft | Qt::AlignVCenter;
    rejilla.set_Cols(6);
    int columna = 0;
    for (const auto* titulo : { "Importe", "Tipo", "Vencimiento", "", "Banco", "Banco" })
        rejilla.set_TextMatrix(0, columna++, a_qt(titulo));
    rejilla.set_ColWidth(0, 1100);
    rejilla.set_ColWidth(1, 2600);
    rejilla.set_ColWidth(4, 1000);
    rejilla.set_ColWidth(5, 2000);
    for (const auto& [numero, alineacion] : { std::pair{ 0, derecha }, { 1, izquierda },
             { 2, Qt::AlignHCenter | Qt::AlignVCenter }, { 4, derecha }, { 5, izquierda } })
        rejilla.set_ColAlignment(numero, alineacion);
    rejilla.set_ColHidden(3, true);
    rejilla.set_ColNombre(3, QStringLiteral("Código del tipo"));
    rejilla.set_ColNombre(4, QStringLiteral("Cuenta del banco"));
    rejilla.set_MergeRow(true);
    auto* anclaje = new Anclaje(rejilla);
    anclaje->AgregarColumna(1, 50);
    anclaje->AgregarColumna(5, 50);
    new SobreColumnas(*m_ui->rejilla, rejilla);
}

void frmCompras_Atipicos_Contabilizar::prepara_selectores()
{
    const auto conexion = modComun::ConexionBexmor();
    m_contable = modComun::EmpresaBexmor()->biblioteca().NuevaEmpresa();
    m_contable->Codigo = m_edicion.datos().EmpresaContable;
    m_contable->Ejercicio = CInt(m_edicion.datos().Fecha.anio());
    m_contable->Conexion = conexion;
    m_ui->txtPrevTipoDoc->Prepara(conexion);
    m_ui->txtBanco->Prepara(*m_contable, conexion);
}

void frmCompras_Atipicos_Contabilizar::lee_banco_del_proveedor()
{
    auto rs = modComun::CreateRecordset();
    rs->Open("SELECT CtaBancoPago FROM Proveedores WHERE Cod_Empresa ="
            + std::to_string(modComun::EmpresaOrvalin()->Codigo())
            + " AND Codigo =" + std::to_string(m_edicion.datos().Proveedor),
        adodb::CursorType::Static, adodb::LockType::ReadOnly);
    if (!rs->Eof()) {
        m_CtaBancoPago = adodb::texto(*rs, "CtaBancoPago");
        vacia_entrada();
    }
    rs->Close();
}

void frmCompras_Atipicos_Contabilizar::muestra_previsiones()
{
    auto& rejilla = *m_ui->vsPrev;
    rejilla.set_Redraw(false);
    rejilla.set_Rows(1);
    for (const auto& fila : m_edicion.filas())
        rejilla.AddItem(a_qt(EdicionPrevisiones::texto(fila)));
    rejilla.set_Redraw(true);
    muestra_resto();
    m_ui->cmdPrevEliminar->setEnabled(rejilla.Rows() >= 2);
}

void frmCompras_Atipicos_Contabilizar::muestra_resto()
{
    m_ui->lblResto->setText(a_qt(texto_pantalla(m_edicion.Resto(), decimales_importe)));
    m_ui->lblAvisoVto->set_Aviso(a_qt(m_edicion.AvisoDeVencimientos()));
}

/// Ready for the next forecast: the bank is the supplier's again.
void frmCompras_Atipicos_Contabilizar::vacia_entrada()
{
    m_ui->txtPrevImp->clear();
    m_ui->txtPrevTipoDoc->set_Codigo(0);
    m_ui->txtPrevVto->Limpiar();
    m_ui->txtBanco->set_Cuenta(m_CtaBancoPago);
    m_ui->txtBanco->Buscar();
}

bool frmCompras_Atipicos_Contabilizar::existe_banco()
{
    const std::string cuenta = m_ui->txtBanco->Cuenta();
    return cuenta.empty()
        || (m_contable && m_contable->biblioteca().NuevoServicioCuentas(*m_contable)->ExisteCuenta(cuenta));
}

/// No type, or one that exists.
bool frmCompras_Atipicos_Contabilizar::hay_tipo() const
{
    return m_ui->txtPrevTipoDoc->Codigo() == 0 || m_ui->txtPrevTipoDoc->Elegido();
}

void frmCompras_Atipicos_Contabilizar::txtPrevVto_Intro()
{
    trap(atencion, [this] { agrega(); });
}

void frmCompras_Atipicos_Contabilizar::agrega()
{
    const Currency importe = m_ui->txtPrevImp->Valor();
    if (importe == Currency{}) {
        m_ui->txtImporte->setFocus();
        return;
    }
    if (!existe_banco()) {
        m_ui->txtBanco->setFocus();
        return;
    }
    const auto vencimiento = m_ui->txtPrevVto->Fecha();
    if (!vencimiento) {
        m_ui->txtPrevVto->Limpiar();
        return;
    }
    m_ui->txtPrevTipoDoc->Buscar();
    if (!hay_tipo()) { // its code would reach the books without a name
        m_ui->txtPrevTipoDoc->setFocus();
        return;
    }
    m_ui->txtBanco->Buscar();
    PrevisionPropuesta nueva;
    nueva.prevision = { importe, m_ui->txtPrevTipoDoc->Codigo(), *vencimiento, m_ui->txtBanco->Cuenta() };
    nueva.NombTipoDoc = de_qt(m_ui->txtPrevTipoDoc->Nombre());
    nueva.NombreBanco = de_qt(m_ui->txtBanco->Nombre());
    m_edicion.Agregar(std::move(nueva));
    m_ui->vsPrev->AddItem(a_qt(EdicionPrevisiones::texto(m_edicion.filas().back())));
    m_ui->cmdPrevEliminar->setEnabled(true);
    muestra_resto();
    vacia_entrada();
    m_ui->txtPrevImp->setFocus();
}

void frmCompras_Atipicos_Contabilizar::cmdPrevEliminar_Click()
{
    trap(atencion, [this] {
        const int fila = m_ui->vsPrev->Row();
        if (fila < 1)
            return;
        m_edicion.Eliminar(fila);
        muestra_resto();
        m_ui->vsPrev->RemoveItem(fila);
        m_ui->cmdPrevEliminar->setEnabled(m_ui->vsPrev->Rows() >= 2);
        m_ui->txtPrevImp->setFocus();
    });
}

void frmCompras_Atipicos_Contabilizar::cmdAceptar_Click()
{
    if (!m_edicion.Cuadra()) {
        avisa("La suma de los vencimientos de pago no coincide con el total a contabilizar",
            Icono::informacion);
        m_ui->txtPrevImp->setFocus();
        return;
    }
    m_aceptado = true;
    done(Accepted);
}

void frmCompras_Atipicos_Contabilizar::cmdCancelar_Click() { done(Rejected); }

void frmCompras_Atipicos_Contabilizar::reject() { }

void frmCompras_Atipicos_Contabilizar::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() == Qt::Key_F9 && !tecla->isAutoRepeat())
        cmdAceptar_Click();
    else if (tecla->key() == Qt::Key_Delete && m_ui->vsPrev->hasFocus())
        cmdPrevEliminar_Click();
    else
        Formulario::keyPressEvent(tecla);
}

const Prevision& frmCompras_Atipicos_Contabilizar::prevision(int i) const
{
    if (i < 1 || i > PrevPago_NroVencimientos())
        throw Error::de_ejecucion(numero_error::argumento_no_valido);
    return m_edicion.filas()[static_cast<std::size_t>(i) - 1].prevision;
}

int frmCompras_Atipicos_Contabilizar::PrevPago_NroVencimientos() const
{
    return static_cast<int>(m_edicion.filas().size());
}

Currency frmCompras_Atipicos_Contabilizar::PrevPago_Importe(int i) const
{
    return Redondear(prevision(i).Importe, decimales_importe);
}

std::int16_t frmCompras_Atipicos_Contabilizar::PrevPago_TipoDoc(int i) const { return prevision(i).TipoDoc; }

Date frmCompras_Atipicos_Contabilizar::PrevPago_Vencimiento(int i) const { return prevision(i).Vencimiento; }

std::string frmCompras_Atipicos_Contabilizar::PrevPago_Banco(int i) const { return prevision(i).Banco; }

} // namespace atipicos
