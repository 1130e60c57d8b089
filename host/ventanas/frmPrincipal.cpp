#include "host/ventanas/frmPrincipal.hpp"

#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "controls/Icono.hpp"
#include "controls/Texto.hpp"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
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
{
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
        agrega("lblConexion", QStringLiteral("Conectado"));
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

void frmPrincipal::abre_visor()
{
    m_visor.set_EmpresaOrvalin(m_sesion.empresa);
    m_visor.set_ConexionOrvalin(m_sesion.bases.orvalin);
    m_visor.Show(0, this);
}

void frmPrincipal::muestra_teclas()
{
    modComun::Avisos().mostrar({ "Intro: pasa al campo siguiente; en el importe, acepta la línea.\r\n"
                                 "F2: busca por nombre en almacén, proveedor, artículo, tipo y banco.\r\n"
                                 "F4: observaciones largas de la línea elegida.\r\n"
                                 "F9: acepta el comentario o las previsiones.\r\n"
                                 "Intro y Supr en la lista: modifica y elimina la línea elegida.\r\n"
                                 "Flechas en una fecha: un día más o menos; Alt+Abajo: calendario.\r\n"
                                 "Esc: cancela el cargo que se está tecleando.\r\n"
                                 "En el visor, Intro busca y muestra los detalles, y F9 imprime.",
        "Teclas", Icono::informacion });
}

void frmPrincipal::closeEvent(QCloseEvent* evento)
{
    if (m_editor.sin_guardar()
        && modComun::Avisos().mostrar(
               { "Hay un cargo sin guardar. Si sale ahora se pierde.\r\n\r\n¿Desea salir?", atencion,
                   Icono::pregunta, Botones::SiNo, Respuesta::No })
            == Respuesta::No) {
        evento->ignore();
        return;
    }
    QSettings().setValue(QLatin1String(geometria), saveGeometry());
    QMainWindow::closeEvent(evento);
}

} // namespace atipicos::app
