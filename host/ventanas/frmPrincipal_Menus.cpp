#include "host/ventanas/frmPrincipal.hpp"

#include "context/modComun.hpp"
#include "controls/Texto.hpp"
#include "host/ventanas/Ayuda.hpp"
#include "host/ventanas/CargosElegidos.hpp"
#include "host/ventanas/EmpresasRecientes.hpp"
#include "host/ventanas/frmResumen.hpp"
#include "host/ventanas/OrigenDeFichas.hpp"
#include "host/ventanas/PanelCargos.hpp"

#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <array>

// The menus of the main window, and what they tell.
namespace atipicos::app {

void frmPrincipal::hace_menus()
{
    hace_menu_empresa();
    hace_menu_compras();
    hace_menu_ver();
    hace_menu_ayuda();
    hace_barra();
}

void frmPrincipal::hace_menu_empresa()
{
    auto* empresa = menuBar()->addMenu(QStringLiteral("E&mpresa"));
    empresa
        ->addAction(QStringLiteral("&Abrir o crear otra…"), QKeySequence(Qt::CTRL | Qt::Key_O), this,
            [this] { elige_otra(); })
        ->setObjectName(QStringLiteral("mnuAbrirEmpresa"));
    auto* recientes = empresa->addMenu(QStringLiteral("Abiertas ú&ltimamente"));
    recientes->setObjectName(QStringLiteral("mnuRecientes"));
    connect(recientes, &QMenu::aboutToShow, this, [this, recientes] { llena_recientes(*recientes); });
    llena_recientes(*recientes);
    empresa->addSeparator();
    empresa->addAction(QStringLiteral("&Proveedores…"), this, [this] { abre_fichas(&origen_de_proveedores); })
        ->setObjectName(QStringLiteral("mnuProveedores"));
    empresa->addAction(QStringLiteral("Ar&tículos…"), this, [this] { abre_fichas(&origen_de_articulos); })
        ->setObjectName(QStringLiteral("mnuArticulos"));
    empresa->addSeparator();
    empresa
        ->addAction(QStringLiteral("&Salir"), QKeySequence(Qt::CTRL | Qt::Key_Q), this, [this] { close(); })
        ->setObjectName(QStringLiteral("mnuSalir"));
}

/// All but the one that is open.
void frmPrincipal::llena_recientes(QMenu& menu)
{
    menu.clear();
    const auto lista = EmpresasRecientes().lista();
    for (const auto& cual : lista.mid(1))
        menu.addAction(QString(cual).replace(u'&', QStringLiteral("&&")), this,
            [this, cual] { cambia_a(lugar_tecleado(cual)); });
    menu.setEnabled(!menu.isEmpty());
}

void frmPrincipal::hace_menu_compras()
{
    auto* compras = menuBar()->addMenu(QStringLiteral("&Compras"));
    auto* reclamaciones = compras->addAction(QStringLiteral("&Reclamaciones a Proveedores"),
        QKeySequence(Qt::CTRL | Qt::Key_R), this, [this] { abre_editor(); });
    reclamaciones->setObjectName(QStringLiteral("mnuReclamaciones"));
    auto* visor = compras->addAction(QStringLiteral("&Visor de Atípicos"), QKeySequence(Qt::CTRL | Qt::Key_B),
        this, [this] { abre_visor(); });
    visor->setObjectName(QStringLiteral("mnuVisor"));
    compras
        ->addAction(QStringLiteral("Resu&men de cargos"), QKeySequence(Qt::CTRL | Qt::Key_T), this,
            [this] { abre_resumen(m_sesion, m_lugar, *this); })
        ->setObjectName(QStringLiteral("mnuResumen"));
    compras->addSeparator();
    hace_menu_elegidos(*compras);
}

/// What is done with the charges that are chosen in the list; its own menu offers the same.
void frmPrincipal::hace_menu_elegidos(QMenu& menu)
{
    QList<QAction*> acciones;
    const auto agrega = [&](const char* nombre, const QString& texto, const QKeySequence& teclas,
                            QString (CargosElegidos::*que)(QWidget*) const) {
        acciones << menu.addAction(
            texto, teclas, this, [this, que, etiqueta = std::string("frmPrincipal:") + nombre] {
                con_elegidos(etiqueta.c_str(), que);
            });
        acciones.back()->setObjectName(QLatin1String(nombre));
    };
    agrega("mnuSacarElegidos", QStringLiteral("&Imprimir los elegidos…"),
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P), &CargosElegidos::imprime);
    agrega("mnuImprimirElegidos", QStringLiteral("&Guardar como PDF los elegidos…"),
        QKeySequence(Qt::CTRL | Qt::Key_P), &CargosElegidos::guarda_pdf);
    agrega("mnuExportarElegidos", QStringLiteral("&Exportar los elegidos…"),
        QKeySequence(Qt::CTRL | Qt::Key_E), &CargosElegidos::exporta);
    agrega("mnuEnviarElegidos", QStringLiteral("Enviar por &correo los elegidos"),
        QKeySequence(Qt::CTRL | Qt::Key_M), &CargosElegidos::envia);
    menu.addSeparator();
    acciones << menu.addAction(QStringLiteral("&Historial de un cargo…"), QKeySequence(Qt::CTRL | Qt::Key_H),
        this, [this] { abre_historial_del_elegido(); });
    acciones.back()->setObjectName(QStringLiteral("mnuHistorial"));
    m_de_elegidos = acciones;
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
    ver->addSeparator();
    ver->addAction(QStringLiteral("&Buscar un cargo"), QKeySequence(Qt::CTRL | Qt::Key_F), this,
           [this] { m_cargos->EmpiezaBusqueda(); })
        ->setObjectName(QStringLiteral("mnuBuscar"));
    ver->addAction(QStringLiteral("&Actualizar"), QKeySequence(Qt::Key_F5), this, [this] { actualiza(); })
        ->setObjectName(QStringLiteral("mnuActualizar"));
}

void frmPrincipal::hace_menu_ayuda()
{
    auto* ayuda = menuBar()->addMenu(QStringLiteral("A&yuda"));
    ayuda->addAction(QStringLiteral("&Manual"), QKeySequence(Qt::Key_F1), this, [] { Ayuda::abre(); })
        ->setObjectName(QStringLiteral("mnuManual"));
    ayuda->addAction(QStringLiteral("&Teclas"), this, [] { Ayuda::abre(QStringLiteral("teclas.md")); })
        ->setObjectName(QStringLiteral("mnuTeclas"));
    ayuda->addSeparator();
    ayuda->addAction(QStringLiteral("&Acerca de este programa"), this, [this] { muestra_acerca_de(); })
        ->setObjectName(QStringLiteral("mnuAcercaDe"));
}

/// The actions of the menus that are used most, for the mouse.
void frmPrincipal::hace_barra()
{
    auto* barra = addToolBar(QStringLiteral("Barra de herramientas"));
    barra->setObjectName(QStringLiteral("tbPrincipal"));
    barra->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    barra->setMovable(false);
    const std::array<const char*, 6> acciones{ "mnuReclamaciones", "mnuVisor", "mnuResumen", "mnuActualizar",
        "mnuAbrirEmpresa", "mnuTeclas" };
    for (const auto* nombre : acciones)
        barra->addAction(findChild<QAction*>(QLatin1String(nombre)));
}

void frmPrincipal::muestra_acerca_de()
{
    modComun::Avisos()->mostrar({ "Cargos atípicos a proveedores, versión " ATIPICOS_VERSION
                                  "\r\n\r\nRegistra las reclamaciones a proveedores, las contabiliza con sus "
                                  "previsiones de pago y las imprime.\r\n\r\nMotor: "
            + std::string(m_lugar.motor()) + ". Ventanas: Qt " + qVersion()
            + ".\r\n© 2026, los autores de QVORComprasAtip. Se puede usar, copiar y cambiar libremente, sin "
              "garantía (licencia MIT).",
        "Acerca de este programa", Icono::informacion });
}

} // namespace atipicos::app
