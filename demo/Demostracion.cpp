// A recorded session: a clerk's charge keyed into the real windows, without a display, with a picture of each
// step.
//     demostracion FOLDER [--oscuro]     the pictures, and the sample company it works on, go to FOLDER
// It ends with 1 when a window does not fit on the screen, or a text or a button is cut.
// demo/capturas.sh takes the pictures of the manual from it.
#include "context/modComun.hpp"
#include "context/modMsgOp.hpp"
#include "controls/MsgBoxQt.hpp"
#include "controls/SalidaQt.hpp"
#include "controls/Selector.hpp"
#include "controls/VSFlexGrid.hpp"
#include "demo/Grabacion.hpp"
#include "demo/VentanasDelAnfitrion.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/orvalin/Biblioteca.hpp"
#include "host/orvalin/PrevisionesCargo.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/ventanas/Apariencia.hpp"
#include "host/ventanas/Ayuda.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "host/ventanas/frmResumen.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"
#include "printing/clsView.hpp"
#include "tests/support/Persona.hpp"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QTableView>

#include <filesystem>
#include <iostream>
#include <sstream>

using namespace atipicos;
using namespace atipicos::pruebas;
using demo::Grabacion;

namespace {

/// The clock stands still on the last day of the sample, so that the pictures are the same whenever they are
/// taken.
class RelojParado final : public Reloj {
public:
    [[nodiscard]] Date ahora() const override { return Date::de_dia(2026, 11, 20).value_or(Date{}); }
};

QWidget& abierta(const char* nombre)
{
    for (QWidget* ventana : QApplication::topLevelWidgets())
        if (ventana->objectName() == QLatin1String(nombre) && ventana->isVisible())
            return *ventana;
    throw Error(1, "demostracion", std::string("No se ha abierto la ventana ") + nombre + ".");
}

void linea(const char* articulo, const char* descripcion, const char* unidades, const char* costo)
{
    teclea(articulo);
    intro();
    if (*descripcion != '\0')
        teclea(descripcion);
    intro(2);
    teclea(unidades);
    intro();
    teclea(costo);
    intro(2);
}

void teclea_cargo(QWidget& editor, Grabacion& grabacion)
{
    grabacion.captura(editor, "editor-vacio");
    intro();
    {
        const AlAbrirse lista(
            [&](QWidget& dialogo) {
                teclea("graciosa");
                grabacion.captura(dialogo, "busqueda-por-nombre");
                intro();
            },
            "ListaSeleccion");
        pulsa(Qt::Key_F2);
    }
    intro();
    teclea("Palé golpeado en el muelle");
    intro(2);
    linea("1006", "", "12", "5,6325");
    linea("1003", "Vino picado", "6", "3,5");
    linea("", "Porte de vuelta", "1", "18,75");
    control<VSFlexGrid>(editor, "vsCargos").setFocus();
    pulsa(Qt::Key_Home);
    grabacion.captura(editor, "editor-con-lineas");
    const AlAbrirse comentario(
        [&](QWidget& dialogo) {
            teclea("latas abolladas en dos capas del palé");
            grabacion.captura(dialogo, "comentario");
            pulsa(Qt::Key_F9);
        },
        "frmEditor_Comentarios");
    pulsa(Qt::Key_F4);
}

void acepta(QWidget& editor, Grabacion& grabacion)
{
    const AlAbrirse previsiones(
        [&](QWidget& dialogo) {
            grabacion.captura(dialogo, "previsiones");
            pulsa(Qt::Key_F9);
        },
        "frmCompras_Atipicos_Contabilizar");
    const AlAbrirse aviso(
        [&](QWidget& dialogo) {
            grabacion.captura(dialogo, "aviso");
            std::cout << control<QLabel>(dialogo, "qt_msgbox_label").text().replace(u'\n', u' ').toStdString()
                      << '\n';
            intro();
        },
        "MsgBox");
    const AlAbrirse impresora(
        [&](QWidget& dialogo) {
            grabacion.captura(dialogo, "impresora");
            clic(dialogo, "cmdCancelar");
        },
        "frmImpresora");
    enfocado();
    atajo(Qt::Key_A);
    grabacion.captura(editor, "editor-otra-vez-vacio");
}

/// The claims of the sample, so that there is something to look for.
void registra_muestra(const app::OpcionesComunes& opciones)
{
    std::ostringstream tabla;
    auto* const pantalla = std::cout.rdbuf(tabla.rdbuf());
    const int estado
        = app::registrar(opciones, { std::string(ATIPICOS_FUENTES) + "/host/datos/reclamaciones.csv" });
    std::cout.rdbuf(pantalla);
    if (estado != app::hecho)
        throw Error(1, "demostracion", "No se registraron las reclamaciones de la muestra.");
}

/// Prints the charge that is chosen in the browser on the screen.
void mira_el_documento(Grabacion& grabacion)
{
    const AlAbrirse impresora(
        [](QWidget& dialogo) {
            namespace dispositivo = qvoremp::dispositivo;
            for (const auto& [combo, codigo] : { std::pair{ "cboDispositivo_0", dispositivo::pantalla },
                     { "cboDispositivo_1", dispositivo::ninguno } }) {
                auto& lista = control<QComboBox>(dialogo, combo);
                lista.setCurrentIndex(lista.findData(int{ codigo }));
            }
            clic(dialogo, "cmdAceptar");
        },
        "frmImpresora");
    const AlAbrirse documento(
        [&](QWidget& ventana) {
            grabacion.captura(ventana, "visor-documento");
            ventana.close();
        },
        "frmView");
    pulsa(Qt::Key_F9);
}

/// The main window with all that it tells, on a screen as large as there is.
void mira_la_ventana_principal(QWidget& principal, Grabacion& grabacion)
{
    const auto leido = [&](const char* rotulo) {
        return control<QLabel>(principal, rotulo).text() != QStringLiteral("Se está mirando…");
    };
    if (!QTest::qWaitFor([&] {
            return control<QTableView>(principal, "vsUltimos").model()->rowCount() > 0
                && leido("lblSinAsiento") && leido("lblSueltos") && leido("lblPrevisiones");
        }))
        throw Error(1, "demostracion", "La ventana principal no se llena.");
    grabacion.captura(principal, "principal");
}

/// A page of the manual, opened as a person does.
void mira_el_manual(Grabacion& grabacion)
{
    const app::Ayuda ayuda;
    pulsa(Qt::Key_F1);
    grabacion.captura(abierta("frmManual"), "manual");
}

void consulta(const app::OpcionesComunes& opciones, Grabacion& grabacion)
{
    registra_muestra(opciones); // in a session of its own, which takes its context along
    app::Sesion sesion(opciones);
    modComun::set_MsgBox(std::make_shared<MsgBoxQt>());
    modComun::set_PrevisionesCargo(
        std::make_shared<orvalin::PrevisionesCargo>(sesion.bases.orvalin, sesion.empresa));
    const auto en_pantalla = [](std::shared_ptr<const Report> report) {
        clsView vista;
        vista.set_Report(std::move(report));
        vista.Cargar(true);
    };
    modComun::set_BibliotecaOrvalin(std::make_shared<orvalin::Biblioteca>(
        sesion.bases.orvalin, std::make_shared<SalidaQt>(en_pantalla), orvalin::Plantilla::de_serie()));
    app::frmPrincipal principal(sesion, opciones);
    modComun::set_Reloj(std::make_shared<RelojParado>());
    principal.show();
    principal.activateWindow();
    mira_la_ventana_principal(principal, grabacion);
    demo::graba_fichas(principal, "mnuProveedores", { "proveedores", "proveedor" }, grabacion);
    pulsa(Qt::Key_B, Qt::ControlModifier);
    QWidget& visor = abierta("frmCompras_Atipicos_Visor");
    if (!QTest::qWaitFor([&] { return QApplication::activeWindow() == &visor; }))
        throw Error(1, "demostracion", "El visor no se activa.");
    control(visor, "txtFechaI").setFocus(); // it has opened in the list of this year
    teclea("1/1/2025");
    intro(2);
    grabacion.captura(visor, "visor-lista");
    pulsa(Qt::Key_Down);
    intro();
    grabacion.captura(visor, "visor-detalles");
    mira_el_documento(grabacion);
    mira_el_manual(grabacion);
    visor.close();
    principal.activateWindow();
    pulsa(Qt::Key_T, Qt::ControlModifier);
    auto& resumen = static_cast<app::frmResumen&>(abierta("frmResumen"));
    resumen.Muestra({ app::VistaResumen::proveedor,
        { Date::de_dia(2026, 1, 1).value_or(Date{}), Date::de_dia(2026, 12, 31).value_or(Date{}) } });
    if (!QTest::qWaitFor([&] { return control<VSFlexGrid>(resumen, "vsResumen").Rows() > 2; }))
        throw Error(1, "demostracion", "El resumen no se lee.");
    grabacion.captura(resumen, "resumen");
    resumen.close();
    demo::graba_historial(principal, grabacion);
    modMsgOp::Mostrar("Leyendo atípicos: 10.000");
    grabacion.captura(abierta("frmMsg"), "espera");
    modMsgOp::Ocultar();
}

/// Keys a charge in.
void registra_uno(const app::OpcionesComunes& opciones, Grabacion& grabacion)
{
    app::Sesion sesion(opciones);
    modComun::set_MsgBox(std::make_shared<MsgBoxQt>());
    modComun::set_Reloj(std::make_shared<RelojParado>());
    app::frmPrincipal principal(sesion, opciones);
    principal.show();
    intro();
    QWidget& editor = abierta("frmCompras_Atipicos");
    teclea_cargo(editor, grabacion);
    acepta(editor, grabacion);
    editor.close();
}

/// False when something is wrong with a window, which is told then.
bool graba(const std::filesystem::path& carpeta)
{
    std::filesystem::remove_all(carpeta / "datos");
    std::filesystem::remove_all(carpeta / "estado");
    std::filesystem::create_directories(carpeta);
    bases::crea_bases(carpeta / "datos", false);
    app::OpcionesComunes opciones;
    opciones.datos = carpeta / "datos";
    opciones.usuario = 1;
    Grabacion grabacion(carpeta);
    registra_uno(opciones, grabacion);
    consulta(opciones, grabacion);
    demo::graba_ventanas_del_anfitrion(opciones, grabacion);
    for (const auto& falta : grabacion.faltas())
        std::cerr << "demostracion: " << falta.toStdString() << '\n';
    return grabacion.faltas().isEmpty();
}

}

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::cerr << "Uso: demostracion CARPETA [--oscuro]\n";
        return 2;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication aplicacion(argc, argv);
    QApplication::setApplicationName(QStringLiteral("atipicos"));
    QApplication::setOrganizationName(QStringLiteral("atipicos"));
    qputenv(
        "XDG_STATE_HOME", std::filesystem::absolute(argv[1]).append("estado").c_str()); // drafts of its own
    app::habla_castellano();
    const bool oscuro = argc > 2 && std::string_view(argv[2]) == "--oscuro";
    app::aplica_tema(oscuro ? app::Tema::oscuro : app::Tema::claro);
    try {
        return graba(argv[1]) && !QTest::currentTestFailed() ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "demostracion: " << error.what() << '\n';
        return 1;
    }
}
