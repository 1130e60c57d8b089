#include "editor/frmCompras_Atipicos_Linea.hpp"

#include "charges/Impuesto.hpp"
#include "context/trap.hpp"
#include "controls/Atajos.hpp"
#include "controls/Avance.hpp"
#include "controls/SinComillas.hpp"
#include "controls/SobreColumnas.hpp"
#include "controls/Texto.hpp"
#include "runtime/Formato.hpp"
#include "ui_frmCompras_Atipicos_Linea.h"

#include <QKeySequence>

#include <initializer_list>
#include <utility>

namespace atipicos {

frmCompras_Atipicos_Linea::frmCompras_Atipicos_Linea(QWidget* parent)
    : QFrame(parent)
    , m_ui(std::make_unique<Ui::frmCompras_Atipicos_Linea>())
{
    m_ui->setupUi(this);
    setFocusProxy(m_ui->txtArticulo);
    m_ui->txtArticulo->set_NombreAccesible(QStringLiteral("Artículo"));
    m_ui->txtArticulo->set_SinNombre(); // the description beside it can be changed
    m_ui->txtUnidades->set_Decimales(decimales_unidades, 4);

    connect(m_ui->txtArticulo, &Selector::Intro, this, &frmCompras_Atipicos_Linea::txtArticulo_Intro);
    for (QLineEdit* texto : { m_ui->txtArticuloDescripcion, m_ui->txtObserv }) {
        pon_sin_comillas(*texto);
        connect(texto, &QLineEdit::returnPressed, this, [texto] { pasa_al_siguiente(*texto); });
    }
    for (qvTextBox* numero : { m_ui->txtUnidades, m_ui->txtCosto })
        connect(numero, &qvTextBox::Intro, this, [numero] { pasa_al_siguiente(*numero); });
    connect(m_ui->txtUnidades, &qvTextBox::Change, this,
        [this] { trap("frmCompras_Atipicos:txtUnidades_Change", [this] { calcula_importe(); }); });
    // The box itself shows the cost with all its decimals once it is left, not between two digits.
    connect(m_ui->txtCosto, &qvTextBox::Change, this,
        [this] { trap("frmCompras_Atipicos:txtCosto_Change", [this] { calcula_importe(); }); });
    connect(m_ui->txtImporte, &qvTextBox::Intro, this, &frmCompras_Atipicos_Linea::Aceptada);
    connect(m_ui->txtArticulo, &Selector::Mirado, this, &frmCompras_Atipicos_Linea::ArticuloMirado);
    pon_atajos();
}

void frmCompras_Atipicos_Linea::pon_atajos()
{
    for (const auto& [campo, letra] : std::initializer_list<std::pair<QWidget*, Qt::Key>>{
             { m_ui->txtArticulo, Qt::Key_R }, { m_ui->txtArticuloDescripcion, Qt::Key_D },
             { m_ui->txtObserv, Qt::Key_V }, { m_ui->txtUnidades, Qt::Key_U }, { m_ui->txtCosto, Qt::Key_T },
             { m_ui->txtImporte, Qt::Key_I } })
        pon_atajo(*campo, QKeySequence(Qt::ALT | letra));
}

frmCompras_Atipicos_Linea::~frmCompras_Atipicos_Linea() = default;

void frmCompras_Atipicos_Linea::Prepara(const std::shared_ptr<qvoremp::Empresa>& empresa,
    const std::shared_ptr<adodb::Connection>& conexion, int decimales_costo)
{
    m_ui->txtArticulo->Prepara(empresa, conexion);
    m_ui->txtCosto->set_Decimales(decimales_costo, decimales_costo);
    m_articulos.emplace(conexion, empresa);
}

void frmCompras_Atipicos_Linea::Suelta() { m_articulos.reset(); }

void frmCompras_Atipicos_Linea::PonSobre(VSFlexGrid& rejilla) { new SobreColumnas(*m_ui->linea, rejilla); }

LineaTecleada frmCompras_Atipicos_Linea::Linea() const
{
    return { m_ui->txtArticulo->Codigo(), de_qt(m_ui->txtArticuloDescripcion->text()),
        de_qt(m_ui->txtObserv->text()), m_ui->txtUnidades->Valor(), m_ui->txtCosto->Valor() };
}

bool frmCompras_Atipicos_Linea::Pendiente() const { return !(Linea() == m_de_partida); }

void frmCompras_Atipicos_Linea::set_Linea(const LineaTecleada& linea)
{
    m_ui->txtArticulo->set_Codigo(linea.Cod_Articulo);
    m_ui->txtArticuloDescripcion->setText(a_qt(linea.Descripcion));
    m_ui->txtCosto->set_Valor(linea.Costo);
    m_ui->txtUnidades->set_Valor(linea.Unidades);
    m_ui->txtObserv->setText(a_qt(linea.Observaciones));
    m_de_partida = Linea(); // as it is shown, with the decimals that the boxes have
    calcula_importe();
}

void frmCompras_Atipicos_Linea::Limpiar()
{
    m_ui->txtArticulo->set_Codigo(0);
    for (auto* caja : findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly))
        caja->clear();
    m_de_partida = {};
}

void frmCompras_Atipicos_Linea::Poner_a_cero()
{
    Limpiar();
    for (qvTextBox* numero : { m_ui->txtUnidades, m_ui->txtCosto, m_ui->txtImporte })
        numero->setText(QStringLiteral("0"));
}

void frmCompras_Atipicos_Linea::Enfocar() { m_ui->txtArticulo->setFocus(); }

void frmCompras_Atipicos_Linea::Enfocar_Importe() { m_ui->txtImporte->setFocus(); }

void frmCompras_Atipicos_Linea::Limpiar_Observaciones() { m_ui->txtObserv->clear(); }

std::string frmCompras_Atipicos_Linea::CtaAtipicos(std::int32_t articulo) const
{
    if (!m_articulos)
        throw Error::de_ejecucion(numero_error::objeto_no_establecido);
    auto cuenta = m_articulos->CtaAtipicos(articulo);
    if (!cuenta && articulo != m_de_partida.Cod_Articulo)
        throw Error(no_existe_articulo, "QVORComprasAtip",
            "No existe el artículo " + std::to_string(articulo) + ". Corrija su código o déjelo vacío.");
    return std::move(cuenta).value_or(std::string());
}

void frmCompras_Atipicos_Linea::txtArticulo_Intro()
{
    m_ui->txtArticuloDescripcion->setText(m_ui->txtArticulo->Nombre());
    m_ui->txtArticuloDescripcion->setFocus();
    m_ui->txtArticuloDescripcion->selectAll();
}

void frmCompras_Atipicos_Linea::calcula_importe()
{
    const Currency importe = importe_linea(m_ui->txtUnidades->Valor(), m_ui->txtCosto->Valor());
    m_ui->txtImporte->setText(a_qt(texto_pantalla(importe, decimales_importe)));
}

} // namespace atipicos
