#include "host/ventanas/frmPrincipal.hpp"

#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Anuncio.hpp"
#include "controls/Icono.hpp"
#include "controls/Texto.hpp"
#include "host/ventanas/PanelBorradores.hpp"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTime>
#include <QVBoxLayout>

namespace atipicos::app {

namespace {

    constexpr auto geometria = "ventana";

    QString nombre_de(const std::vector<orvalin::Ficha>& fichas, std::int32_t codigo)
    {
        for (const auto& ficha : fichas)
            if (ficha.Codigo == codigo)
                return QString::number(codigo) + u' ' + a_qt(ficha.Nombre);
        return QString::number(codigo);
    }

}

frmPrincipal::frmPrincipal(Sesion& sesion, const OpcionesComunes& opciones, QWidget* parent)
    : QMainWindow(parent)
    , m_sesion(sesion)
    , m_ultima_busqueda(sesion.empresa->Codigo(), sesion.empresa->Usuario())
    , m_recuperacion(sesion.borradores,
          { [this] { return abre_editor_vacio(); },
              [this](std::int16_t ejercicio, std::int16_t almacen) {
                  return abre_visor_en(ejercicio, almacen);
              } })
{
    m_visor.set_AlBuscar([this](const frmclsComprasAtipVisor::Busqueda& buscado) {
        m_ultima_busqueda.guarda(buscado, modComun::reloj().hoy());
    });
    setObjectName(QStringLiteral("frmPrincipal"));
    setWindowTitle(QStringLiteral("Cargos atípicos a proveedores - ") + a_qt(sesion.empresa->Nombre()));
    hace_menus();
    hace_portada();
    hace_estado(opciones);
    pon_iconos(*this);
    resize(760, 460);
    restoreGeometry(QSettings().value(QLatin1String(geometria)).toByteArray());
}

void frmPrincipal::hace_menus()
{
    auto* compras = menuBar()->addMenu(QStringLiteral("&Compras"));
    auto* reclamaciones = compras->addAction(QStringLiteral("&Reclamaciones a Proveedores"),
        QKeySequence(Qt::CTRL | Qt::Key_R), this, [this] { abre_editor(); });
    reclamaciones->setObjectName(QStringLiteral("mnuReclamaciones"));
    auto* visor = compras->addAction(QStringLiteral("&Visor de Atípicos"), QKeySequence(Qt::CTRL | Qt::Key_B),
        this, [this] { abre_visor(); });
    visor->setObjectName(QStringLiteral("mnuVisor"));
    compras->addSeparator();
    compras
        ->addAction(QStringLiteral("&Salir"), QKeySequence(Qt::CTRL | Qt::Key_Q), this, [this] { close(); })
        ->setObjectName(QStringLiteral("mnuSalir"));
    hace_menu_ver();
    auto* ayuda = menuBar()->addMenu(QStringLiteral("A&yuda"));
    ayuda->addAction(QStringLiteral("&Teclas"), QKeySequence(Qt::Key_F1), this, [this] { muestra_teclas(); })
        ->setObjectName(QStringLiteral("mnuTeclas"));
}

void frmPrincipal::hace_menu_ver()
{
    auto* ver = menuBar()->addMenu(QStringLiteral("&Ver"));
    auto* temas = new QActionGroup(this);
    for (const auto& [texto, tema] : { std::pair{ "Como el &sistema", Tema::sistema },
             { "&Claro", Tema::claro }, { "&Oscuro", Tema::oscuro } }) {
        auto* accion = ver->addAction(a_qt(texto), this, [tema = tema] {
            aplica_tema(tema);
            guarda_tema(tema);
        });
        accion->setCheckable(true);
        accion->setChecked(tema == tema_guardado());
        temas->addAction(accion);
    }
}

void frmPrincipal::hace_portada()
{
    auto* centro = new QWidget(this);
    auto* nombre = new QLabel(a_qt(m_sesion.empresa->Nombre()), centro);
    QFont grande = nombre->font();
    grande.setPointSizeF(grande.pointSizeF() * 1.6);
    nombre->setFont(grande);
    nombre->setAlignment(Qt::AlignCenter);
    nombre->setWordWrap(true);
    auto* empezar = new QPushButton(QStringLiteral("&Reclamaciones a Proveedores"), centro);
    empezar->setObjectName(QStringLiteral("cmdReclamaciones"));
    empezar->setAutoDefault(true); // Enter opens it
    empezar->setMinimumHeight(empezar->sizeHint().height() * 3 / 2);
    auto* pista = new QLabel(QStringLiteral("Intro abre la ventana. F1 muestra las teclas."), centro);
    pista->setAlignment(Qt::AlignCenter);
    connect(empezar, &QPushButton::clicked, this, [this] { abre_editor(); });
    auto* caja = new QVBoxLayout(centro);
    caja->addStretch(2);
    caja->addWidget(nombre);
    caja->addSpacing(fontMetrics().height());
    caja->addWidget(empezar, 0, Qt::AlignCenter);
    caja->addWidget(pista);
    caja->addStretch(3);
    m_borradores = new PanelBorradores(m_sesion.borradores, centro);
    connect(m_borradores, &PanelBorradores::Recuperar, this, &frmPrincipal::recupera);
    connect(m_borradores, &PanelBorradores::Descartar, this, &frmPrincipal::descarta);
    caja->addWidget(m_borradores);
    setCentralWidget(centro);
    empezar->setFocus();
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
        QStringLiteral("Usuario: ") + nombre_de(m_sesion.catalogos.usuarios(), empresa.Usuario()));
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
            ? QStringLiteral("Conexión perdida a las %1; se reanudará entre dos operaciones").arg(hora)
            : QStringLiteral("Conexión reanudada a las %1").arg(hora));
}

void frmPrincipal::abre_editor()
{
    m_editor.set_EmpresaOrvalin(m_sesion.empresa);
    m_editor.set_ConexionOrvalin(m_sesion.bases.orvalin);
    m_editor.Show(0, this);
}

/// It opens on what the user last searched for, and with the list of it; open already it is left as it is.
void frmPrincipal::abre_visor()
{
    const auto* abierto = findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos_Visor"));
    const bool de_nuevo = abierto == nullptr || !abierto->isVisible();
    m_visor.set_EmpresaOrvalin(m_sesion.empresa);
    m_visor.set_ConexionOrvalin(m_sesion.bases.orvalin);
    const auto ultima = m_ultima_busqueda.lee(modComun::reloj().hoy());
    m_visor.Fecha_Inicial = ultima.Fecha_Inicial;
    m_visor.Fecha_Final = ultima.Fecha_Final;
    m_visor.Almacen_Inicial = ultima.Almacen;
    m_visor.Proveedor_Inicial = ultima.Proveedor;
    m_visor.Show(0, this);
    auto* ultima_caja = findChild<QWidget*>(QStringLiteral("txtFechaF"));
    if (!de_nuevo || ultima_caja == nullptr)
        return;
    QKeyEvent intro(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(ultima_caja, &intro);
}

/// The launcher's own form, as new: what was being keyed in there without a line stays as a draft.
QWidget* frmPrincipal::abre_editor_vacio()
{
    if (auto* abierto = findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos")))
        abierto->close();
    abre_editor();
    return findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos"));
}

QWidget* frmPrincipal::abre_visor_en(std::int16_t ejercicio, std::int16_t almacen)
{
    if (auto* abierto = findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos_Visor")))
        abierto->close();
    m_visor.set_EmpresaOrvalin(m_sesion.empresa);
    m_visor.set_ConexionOrvalin(m_sesion.bases.orvalin);
    m_visor.Ejercicio = ejercicio;
    m_visor.Almacen_Inicial = almacen;
    m_visor.Proveedor_Inicial = 0;
    m_visor.Fecha_Inicial = Date::de_dia(ejercicio, 1, 1).value_or(Date{});
    m_visor.Fecha_Final = Date::de_dia(ejercicio, 12, 31).value_or(Date{});
    m_visor.Show(0, this);
    m_visor.Almacen_Inicial = 0; // the next time as it was
    m_visor.Fecha_Inicial = m_visor.Fecha_Final = Date{};
    return findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos_Visor"));
}

void frmPrincipal::recupera(const std::filesystem::path& fichero)
{
    if (m_editor.sin_guardar()) {
        avisa("Hay otro cargo sin guardar en su ventana. Guárdelo o ciérrela antes de recuperar éste.");
        abre_editor();
        return;
    }
    trap(
        "frmPrincipal:recupera", [&] { m_recuperacion.Recuperar(fichero); }, TextoError::SoloDescripcion);
    m_borradores->Actualiza();
}

void frmPrincipal::descarta(const std::filesystem::path& fichero)
{
    trap(
        "frmPrincipal:descarta", [&] { m_recuperacion.Descartar(fichero); }, TextoError::SoloDescripcion);
    m_borradores->Actualiza();
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
    // A window that was closed, or another process, may have left a charge.
    if (evento->type() == QEvent::ActivationChange && isActiveWindow() && m_borradores != nullptr)
        m_borradores->Actualiza();
}

void frmPrincipal::muestra_teclas()
{
    modComun::Avisos().mostrar(
        { "Intro: pasa al campo siguiente; en el importe, acepta la línea.\r\n"
          "F2: busca por nombre en almacén, proveedor, artículo, tipo y banco.\r\n"
          "F4: observaciones largas de la línea elegida.\r\n"
          "F9: acepta el comentario o las previsiones.\r\n"
          "Intro y Supr en la lista: modifica y elimina la línea elegida.\r\n"
          "F8: va al importe, donde Intro acepta la línea. Esc en una línea que se cambia la deja como "
          "estaba.\r\n"
          "Fechas: 15, 1511 o 151126 se completan; h es hoy, +3 tres días más; flechas: un día más o menos; "
          "Alt+Abajo: calendario.\r\n"
          "Esc: cancela el cargo que se está tecleando.\r\n"
          "Alt+A: guarda el cargo. Ctrl+Intro: salto de línea en sus observaciones.\r\n"
          "Ctrl+R: reclamaciones. Ctrl+B: visor. Ctrl+Q: salir.\r\n"
          "Cargos sin guardar: Alt+E o Intro los recupera, Alt+D o Supr los descarta.\r\n"
          "En el visor, Intro y F5 buscan, Intro muestra los detalles, F9 imprime y F6 va al "
          "último atípico abierto para cambiarlo.",
            "Teclas", Icono::informacion });
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
