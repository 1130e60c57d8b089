#include "host/ventanas/frmPrincipal.hpp"

#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "controls/Anuncio.hpp"
#include "controls/Icono.hpp"
#include "controls/Pantalla.hpp"
#include "controls/Texto.hpp"
#include "host/panel/Comparacion.hpp"
#include "host/panel/Pendientes.hpp"
#include "host/sesion/CargoDelBorrador.hpp"
#include "host/ventanas/MemoriaDeVentanas.hpp"
#include "host/ventanas/PanelBorradores.hpp"
#include "host/ventanas/PanelCargos.hpp"
#include "host/ventanas/PanelCifras.hpp"
#include "host/ventanas/PanelPendientes.hpp"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTime>
#include <QVBoxLayout>

#include <utility>

namespace atipicos::app {

namespace {

    constexpr auto geometria = "ventana";
    constexpr int diez_segundos = 10'000; ///< milliseconds
    constexpr int letras_de_la_izquierda = 130; ///< wide
    constexpr int letras_de_la_derecha = 76;

}

frmPrincipal::frmPrincipal(Sesion& sesion, const OpcionesComunes& opciones, QWidget* parent)
    : QMainWindow(parent)
    , m_sesion(sesion)
    , m_lugar(opciones.lugar())
    , m_ultima_busqueda(sesion.empresa->Codigo(), sesion.empresa->Usuario())
    , m_recuperacion(sesion.borradores,
          { [this] { return abre_editor_vacio(); },
              [this](
                  std::int16_t ejercicio, std::int16_t almacen) { return abre_visor_en(ejercicio, almacen); },
              [&sesion](const BorradorLeido& leido) {
                  return codigo_guardado(leido, sesion.empresa->Codigo(), *sesion.bases.orvalin);
              } })
    , m_lector_cargos(m_lugar, sesion.empresa->Codigo(), sesion.empresa->EmpresaProveedores())
    , m_lector_cifras(m_lugar, sesion.empresa->Codigo(), sesion.empresa->EmpresaProveedores())
{
    m_visor.set_AlBuscar([this](const frmclsComprasAtipVisor::Busqueda& buscado) {
        if (m_del_programa == buscado)
            return;
        m_del_programa.reset();
        m_ultima_busqueda.guarda(buscado, modComun::reloj().hoy());
    });
    setObjectName(QStringLiteral("frmPrincipal"));
    setWindowTitle(QStringLiteral("Cargos atípicos a proveedores - ") + a_qt(sesion.empresa->Nombre()));
    setAttribute(Qt::WA_KeyboardFocusChange); // shows where the focus is
    new MemoriaDeVentanas(sesion.empresa->Usuario(), this);
    hace_menus();
    hace_portada();
    hace_estado(opciones);
    pon_iconos(*this);
    resize(fontMetrics().averageCharWidth() * (letras_de_la_izquierda + letras_de_la_derecha),
        fontMetrics().height() * 36);
    cabe_en_pantalla(*this);
    restoreGeometry(QSettings().value(QLatin1String(geometria)).toByteArray());
}

void frmPrincipal::hace_portada()
{
    auto* centro = new QSplitter(this);
    centro->setChildrenCollapsible(false);
    auto* izquierda = new QWidget(centro);
    auto* nombre = new QLabel(a_qt(m_sesion.empresa->Nombre()), izquierda);
    QFont grande = nombre->font();
    grande.setPointSizeF(grande.pointSizeF() * 1.4);
    nombre->setFont(grande);
    nombre->setWordWrap(true);
    auto* empezar = new QPushButton(QStringLiteral("&Reclamaciones a Proveedores"), izquierda);
    empezar->setObjectName(QStringLiteral("cmdReclamaciones"));
    empezar->setToolTip(QStringLiteral("Teclear un cargo nuevo (Ctrl+R)"));
    empezar->setAutoDefault(true); // Enter opens it
    empezar->setMinimumHeight(empezar->sizeHint().height() * 4 / 3);
    connect(empezar, &QPushButton::clicked, this, [this] { abre_editor(); });
    m_cargos = new PanelCargos(m_lector_cargos, izquierda);
    m_cargos->Ofrece(m_de_elegidos);
    connect(m_cargos, &PanelCargos::Abrir, this, &frmPrincipal::abre_cargo);
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(nombre, 1);
    arriba->addWidget(empezar);
    auto* caja = new QVBoxLayout(izquierda);
    caja->addLayout(arriba);
    caja->addWidget(m_cargos, 1);
    auto* derecha = new QWidget(centro);
    hace_derecha(*new QVBoxLayout(derecha));
    auto* rodillo = new QScrollArea(centro); // on a small screen, or with large letters
    rodillo->setWidgetResizable(true);
    rodillo->setFrameShape(QFrame::NoFrame);
    rodillo->setFocusPolicy(Qt::NoFocus);
    rodillo->setWidget(derecha);
    centro->addWidget(izquierda);
    centro->addWidget(rodillo);
    centro->setStretchFactor(0, 1);
    const int letra = fontMetrics().averageCharWidth();
    centro->setSizes({ letras_de_la_izquierda * letra, letras_de_la_derecha * letra });
    setCentralWidget(centro);
    empezar->setFocus();
}

void frmPrincipal::hace_derecha(QVBoxLayout& caja)
{
    auto* padre = caja.parentWidget();
    m_cifras = new PanelCifras(padre);
    auto* titulo = new QLabel(QStringLiteral("Es&te mes y este año:"), padre);
    titulo->setBuddy(m_cifras);
    m_pendientes = new PanelPendientes({ m_lugar, m_sesion.empresa->Codigo() }, padre);
    connect(m_pendientes, &PanelPendientes::Abrir, this, &frmPrincipal::abre_cargo);
    connect(m_pendientes, &PanelPendientes::Anular, this, &frmPrincipal::anula_sueltos);
    m_borradores = new PanelBorradores(m_sesion.borradores, padre);
    connect(m_borradores, &PanelBorradores::Recuperar, this, &frmPrincipal::recupera);
    connect(m_borradores, &PanelBorradores::Descartar, this, &frmPrincipal::descarta);
    caja.addWidget(titulo);
    caja.addWidget(m_cifras);
    caja.addSpacing(fontMetrics().height() / 2);
    caja.addWidget(new QLabel(QStringLiteral("Pendiente:"), padre));
    caja.addWidget(m_pendientes);
    caja.addWidget(m_borradores);
    caja.addStretch(1);
    connect(&m_lector_cifras, &HiloLector::Fallo, this, [this](const QString& motivo) {
        statusBar()->showMessage(QStringLiteral("No se pueden leer las cifras: ") + motivo, diez_segundos);
        m_ha_trabajado = true; // the next time they are asked for again
    });
}

/// Each as soon as it is known; the connection is given back when all is read.
void frmPrincipal::lee_cifras()
{
    m_ha_trabajado = false;
    m_lector_cifras.Haz([this, hoy = modComun::reloj().hoy()](const Ambito& ambito, const Sigue& sigue) {
        if (const auto comparacion = compara(ambito, hoy, sigue))
            m_lector_cifras.al_mostrar(sigue, [this, comparacion] { m_cifras->Pon(*comparacion); });
        if (!sigue())
            return;
        Pendientes pendientes{ cargos_sin_asiento(ambito), {}, {} };
        if (!sigue())
            return;
        pendientes.proximas = previsiones_proximas(ambito, hoy);
        auto sueltos = asientos_sueltos(ambito, sigue);
        if (!sueltos)
            return;
        pendientes.sueltos = std::move(*sueltos);
        m_lector_cifras.al_mostrar(sigue, [this, pendientes = std::move(pendientes)] {
            m_pendientes->Pon(pendientes);
            m_lector_cifras.Para();
        });
    });
}

void frmPrincipal::actualiza()
{
    statusBar()->clearMessage();
    m_cargos->Actualiza();
    lee_cifras();
    m_borradores->Actualiza();
}

void frmPrincipal::showEvent(QShowEvent* evento)
{
    QMainWindow::showEvent(evento);
    if (m_ha_trabajado)
        lee_cifras();
}

void frmPrincipal::hace_estado(const OpcionesComunes& opciones)
{
    const auto& empresa = *m_sesion.empresa;
    const auto agrega = [this](const char* nombre, const QString& texto) {
        auto* etiqueta = new QLabel(texto, this);
        etiqueta->setObjectName(QLatin1String(nombre));
        etiqueta->setTextInteractionFlags(Qt::TextSelectableByMouse);
        etiqueta->setIndent(fontMetrics().averageCharWidth());
        statusBar()->addWidget(etiqueta);
        return etiqueta;
    };
    agrega("lblEmpresa",
        QStringLiteral("Empresa: %1 %2").arg(empresa.Codigo(Donde::aqui())).arg(a_qt(empresa.Nombre())));
    agrega("lblUsuario",
        QStringLiteral("Usuario: ")
            + a_qt(orvalin::con_su_nombre(m_sesion.catalogos.usuarios(), std::to_string(empresa.Usuario()))));
    const auto lugar = opciones.lugar();
    const bool en_carpeta = lugar.clase() == bases::Lugar::Clase::carpeta;
    agrega("lblMotor", QStringLiteral("Motor: ") + a_qt(std::string(lugar.motor())));
    agrega("lblCarpeta",
        en_carpeta ? QStringLiteral("Carpeta: ")
                + a_qt(std::filesystem::absolute(lugar.carpeta()).lexically_normal().string())
                   : QStringLiteral("Servidor: ") + a_qt(lugar.texto()));
    if (!en_carpeta)
        anuncia(*agrega("lblConexion", QStringLiteral("Conectado")));
}

void frmPrincipal::muestra_linea(sql::Linea que)
{
    auto* etiqueta = statusBar()->findChild<QLabel*>(QStringLiteral("lblConexion"));
    if (etiqueta == nullptr)
        return;
    const auto hora = QTime::currentTime().toString(QStringLiteral("H:mm:ss"));
    etiqueta->setText(que == sql::Linea::perdida
            ? QStringLiteral("Conexión perdida a las %1; se intenta reanudar en la próxima operación")
                  .arg(hora)
            : QStringLiteral("Conexión reanudada a las %1").arg(hora));
}

/// Whether what is keyed in at this moment is kept: its window says when it is not.
bool frmPrincipal::queda_borrador() const
{
    const auto* editor = findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos"));
    const auto* fallo
        = editor == nullptr ? nullptr : editor->findChild<QLabel*>(QStringLiteral("lblBorrador"));
    return m_sesion.borradores && fallo != nullptr && fallo->isHidden();
}

void frmPrincipal::changeEvent(QEvent* evento)
{
    QMainWindow::changeEvent(evento);
    if (evento->type() != QEvent::ActivationChange || !isActiveWindow() || m_borradores == nullptr)
        return;
    m_borradores->Actualiza(); // a window that was closed, or another process, may have left a charge
    if (isVisible() && m_ha_trabajado)
        actualiza();
}

void frmPrincipal::closeEvent(QCloseEvent* evento)
{
    if (m_editor.sin_guardar()
        && !confirma(queda_borrador()
                ? "Hay un cargo sin guardar. Queda como borrador y se le ofrecerá aquí la próxima "
                  "vez.\r\n\r\n¿Desea salir?"
                : "Hay un cargo sin guardar. Si sale ahora se pierde.\r\n\r\n¿Desea salir?")) {
        evento->ignore();
        return;
    }
    QSettings().setValue(QLatin1String(geometria), saveGeometry());
    QMainWindow::closeEvent(evento);
}

} // namespace atipicos::app
