#include "host/ventanas/frmHistorial.hpp"

#include "context/modComun.hpp"
#include "controls/Anuncio.hpp"
#include "controls/Icono.hpp"
#include "controls/qvAlmacen.hpp"
#include "controls/SinDibujar.hpp"
#include "controls/Texto.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/bases/Reparto.hpp"
#include "host/comprobacion/HistorialEnPalabras.hpp"
#include "host/sesion/Sesion.hpp"
#include "runtime/Celdas.hpp"

#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace atipicos::app {

namespace {

    struct ColumnaDeHistorial {
        const char* titulo;
        int letras;
    };
    constexpr std::array<ColumnaDeHistorial, 7> de_sucesos{ { { "Cuándo", 24 }, { "Qué", 13 },
        { "De qué", 13 }, { "Quién", 20 }, { "Usuario", 26 }, { "Desde", 30 }, { "Detalle", 30 } } };
    constexpr std::array<ColumnaDeHistorial, 3> de_datos{ { { "Dato", 24 }, { "Antes", 50 },
        { "Después", 50 } } };

    template <std::size_t n>
    void prepara(VSFlexGrid& lista, const std::array<ColumnaDeHistorial, n>& columnas)
    {
        lista.set_Cols(static_cast<int>(n));
        const int letra = lista.fontMetrics().averageCharWidth();
        for (int i = 0; i < lista.Cols(); ++i) {
            const auto& columna = columnas.at(static_cast<std::size_t>(i));
            lista.set_TextMatrix(0, i, a_qt(columna.titulo));
            lista.setColumnWidth(i, columna.letras * letra);
        }
        lista.horizontalHeader()->setStretchLastSection(true);
    }

    template <std::size_t n> void agrega(VSFlexGrid& lista, const std::array<std::string, n>& celdas)
    {
        std::string fila;
        for (std::size_t i = 0; i < n; ++i) {
            fila += i == 0 ? "" : "\t";
            anexa_celda(fila, celdas[i]);
        }
        lista.AddItem(QByteArray::fromStdString(fila));
    }

    QString del_cargo(const ClaveCargo& clave)
    {
        return QStringLiteral("el cargo %1 del ejercicio %2 en el almacén %3")
            .arg(a_qt(clave.Codigo))
            .arg(clave.Ejercicio)
            .arg(clave.Almacen);
    }

    QString lo_leido(const ClaveCargo& clave, const HistorialCargo& historial)
    {
        const auto cargo = del_cargo(clave);
        const auto cuantos = historial.sucesos.size();
        if (cuantos == 0)
            return historial.existe ? u'E' + cargo.mid(1) + a_qt(como_estaba)
                                    : QStringLiteral("No consta ") + cargo + u'.';
        return (cuantos == 1 ? QStringLiteral("Un suceso d") : QStringLiteral("%1 sucesos d").arg(cuantos))
            + cargo + u'.' + (historial.existe ? QString() : QStringLiteral(" Ya no existe."));
    }

}

frmHistorial::frmHistorial(Sesion& sesion, const bases::Lugar& lugar, QWidget* parent)
    : Formulario(parent, Qt::Window)
    , m_lugar(lugar)
    , m_usuarios(sesion.catalogos.usuarios())
    , m_codigo(new QLineEdit(this))
    , m_ejercicio(new QSpinBox(this))
    , m_almacen(new qvAlmacen(this))
    , m_estado(new QLabel(this))
    , m_sucesos(new VSFlexGrid(this))
    , m_datos(new VSFlexGrid(this))
    , m_lector(lugar, sesion.empresa->Codigo(Donde::aqui()), sesion.empresa->EmpresaProveedores())
{
    setObjectName(QStringLiteral("frmHistorial"));
    setWindowTitle(QStringLiteral("Historial de un cargo - ") + a_qt(sesion.empresa->Nombre()));
    m_almacen->Prepara(sesion.empresa, sesion.bases.orvalin);
    m_estado->setObjectName(QStringLiteral("lblEstado"));
    m_estado->setWordWrap(true);
    anuncia(*m_estado);
    auto* campos = new QGridLayout;
    hace_campos(*campos);
    hace_listas();
    auto* partes = new QSplitter(Qt::Vertical, this);
    partes->setChildrenCollapsible(false);
    partes->addWidget(m_sucesos);
    partes->addWidget(m_datos);
    partes->setStretchFactor(0, 3);
    partes->setStretchFactor(1, 2);
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    cerrar->setObjectName(QStringLiteral("cmdCerrar"));
    connect(cerrar, &QPushButton::clicked, this, &frmHistorial::close);
    auto* pie = new QHBoxLayout;
    pie->addWidget(m_estado, 1);
    pie->addWidget(cerrar);
    auto* todo = new QVBoxLayout(this);
    todo->addLayout(campos);
    todo->addWidget(partes, 1);
    todo->addLayout(pie);
    pon_iconos(*this);
    resize(fontMetrics().averageCharWidth() * 180, fontMetrics().height() * 36);
    connect(&m_lector, &HiloLector::Fallo, this, [this](const QString& motivo) {
        m_estado->setText(QStringLiteral("No se puede leer el historial: ") + motivo
            + (m_lugar.clase() == bases::Lugar::Clase::carpeta
                    ? QString()
                    : QStringLiteral(" En un servidor lo leen los que tienen el papel atipicos_historial.")));
    });
}

void frmHistorial::hace_campos(QGridLayout& caja)
{
    m_codigo->setObjectName(QStringLiteral("txtCodigoCargo"));
    m_codigo->setMaxLength(20);
    m_ejercicio->setObjectName(QStringLiteral("txtEjercicio"));
    m_ejercicio->setRange(1900, 9999);
    m_ejercicio->setValue(modComun::reloj().hoy().anio());
    m_almacen->setObjectName(QStringLiteral("txtAlmacen"));
    m_almacen->set_NombreAccesible(QStringLiteral("Almacén"));
    auto* ver = new QPushButton(QStringLiteral("&Ver"), this);
    ver->setObjectName(QStringLiteral("cmdVer"));
    const auto pon = [&](int columna, const char* texto, QWidget* campo) {
        auto* rotulo = new QLabel(QString::fromUtf8(texto), this);
        rotulo->setBuddy(campo);
        caja.addWidget(rotulo, 0, columna);
        caja.addWidget(campo, 0, columna + 1);
    };
    pon(0, "Có&digo:", m_codigo);
    pon(2, "&Ejercicio:", m_ejercicio);
    pon(4, "A&lmacén:", m_almacen);
    caja.addWidget(ver, 0, 6);
    caja.setColumnStretch(5, 1);
    connect(ver, &QPushButton::clicked, this, &frmHistorial::Leer);
    connect(m_codigo, &QLineEdit::returnPressed, this, &frmHistorial::Leer);
    connect(m_ejercicio->findChild<QLineEdit*>(), &QLineEdit::returnPressed, this, &frmHistorial::Leer);
    connect(m_almacen, &Selector::Intro, this, &frmHistorial::Leer);
}

void frmHistorial::hace_listas()
{
    m_sucesos->setObjectName(QStringLiteral("vsSucesos"));
    m_sucesos->setAccessibleName(QStringLiteral("Lo que se ha hecho con el cargo"));
    prepara(*m_sucesos, de_sucesos);
    m_datos->setObjectName(QStringLiteral("vsDatos"));
    m_datos->setAccessibleName(QStringLiteral("Antes y después"));
    prepara(*m_datos, de_datos);
    connect(m_sucesos->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &frmHistorial::muestra_datos);
}

std::optional<ClaveCargo> frmHistorial::clave()
{
    const auto codigo = m_codigo->text().trimmed().toUpper();
    if (codigo.isEmpty()) {
        m_estado->setText(QStringLiteral("Escriba el código del cargo, como AT260001."));
        m_codigo->setFocus();
        return std::nullopt;
    }
    m_almacen->Completa();
    if (m_almacen->Codigo() == 0) {
        m_estado->setText(QStringLiteral("Escriba el almacén del cargo, o búsquelo con F2."));
        m_almacen->setFocus();
        return std::nullopt;
    }
    return ClaveCargo{ static_cast<std::int16_t>(m_ejercicio->value()), m_almacen->Codigo(), de_qt(codigo) };
}

void frmHistorial::Muestra(const ClaveCargo& clave)
{
    m_codigo->setText(a_qt(clave.Codigo));
    m_ejercicio->setValue(clave.Ejercicio);
    m_almacen->set_Codigo(clave.Almacen);
    m_almacen->Buscar();
    Leer();
}

void frmHistorial::Leer()
{
    const auto pedida = clave();
    if (!pedida)
        return;
    vacia();
    m_estado->setText(QStringLiteral("Leyendo…"));
    m_lector.Haz([this, cual = *pedida](const Ambito& ambito, const Sigue& sigue) {
        Leido leido{ cual, historial_de(*ambito.bases.orvalin, ambito.empresa, cual),
            bases::esta_repartida(*ambito.bases.orvalin) };
        m_lector.al_mostrar(sigue, [this, leido = std::move(leido)] { muestra(leido); });
    });
}

void frmHistorial::vacia()
{
    m_leidos.clear();
    m_sucesos->set_Rows(1);
    muestra_datos();
}

void frmHistorial::muestra(const Leido& leido)
{
    m_leidos = leido.historial.sucesos;
    {
        const SinDibujar sin_dibujar(*m_sucesos);
        for (const auto& uno : m_leidos)
            agrega<de_sucesos.size()>(*m_sucesos,
                { uno.momento.texto_regional(), que_fue(uno), de_que_fue(uno), quien_fue(uno),
                    orvalin::con_su_nombre(m_usuarios, uno.usuario), uno.puesto, en_una_frase(uno) });
    }
    m_sucesos->set_Row(m_sucesos->Rows() - 1); // the last thing that was done
    auto texto = lo_leido(leido.clave, leido.historial);
    if (leido.repartida)
        texto += u' ' + a_qt(ya_no_se_lleva);
    m_estado->setText(texto);
    if (!m_leidos.empty())
        m_sucesos->setFocus();
}

void frmHistorial::muestra_datos()
{
    m_datos->set_Rows(1);
    const int fila = m_sucesos->Row();
    m_datos->set_Aviso(fila < 1 ? QString() : QStringLiteral("Lo elegido no cambia ningún dato del cargo."));
    if (fila < 1 || fila > static_cast<int>(m_leidos.size()))
        return;
    for (const auto& dato : lo_cambiado(m_leidos[static_cast<std::size_t>(fila) - 1]))
        agrega<de_datos.size()>(*m_datos, { dato.nombre, dato.antes, dato.despues });
}

void frmHistorial::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() == Qt::Key_F5)
        Leer();
    else
        Formulario::keyPressEvent(tecla);
}

void abre_historial(
    Sesion& sesion, const bases::Lugar& lugar, const std::optional<ClaveCargo>& cargo, QWidget& padre)
{
    auto* ventana = padre.findChild<frmHistorial*>(QStringLiteral("frmHistorial"));
    if (ventana == nullptr) {
        ventana = new frmHistorial(sesion, lugar, &padre);
        ventana->setAttribute(Qt::WA_DeleteOnClose);
    }
    if (cargo)
        ventana->Muestra(*cargo);
    ventana->show();
    ventana->raise();
    ventana->activateWindow();
}

} // namespace atipicos::app
