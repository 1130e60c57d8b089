#include "host/ventanas/VentanaPrincipal.hpp"

#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "controls/MsgBoxQt.hpp"
#include "controls/SalidaQt.hpp"
#include "controls/Texto.hpp"
#include "host/orvalin/Biblioteca.hpp"
#include "host/orvalin/PrevisionesCargo.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/ventanas/Apariencia.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "host/ventanas/frmSesion.hpp"
#include "printing/clsView.hpp"

#include <QApplication>
#include <QLibraryInfo>
#include <QPointer>
#include <QSocketNotifier>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>

namespace atipicos::app {

namespace {

    /// Qt ends the program with a text of its own when it finds no display.
    void exige_pantalla()
    {
        for (const auto* variable : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" })
            if (const char* valor = std::getenv(variable); valor != nullptr && *valor != '\0')
                return;
        throw Error(no_hecho, "atipicos",
            "No hay pantalla en la que abrir la ventana (DISPLAY no está definida). Las órdenes no la "
            "necesitan: atipicos --help");
    }

    /// A display that is named but does not answer ends the program inside Qt, which says so in English.
    void dilo_en_castellano(QtMsgType tipo, const QMessageLogContext&, const QString&)
    {
        if (tipo != QtFatalMsg)
            return;
        std::fputs("atipicos: No se puede abrir la ventana: la pantalla no responde. Compruebe la variable "
                   "DISPLAY o "
                   "WAYLAND_DISPLAY. Las órdenes no la necesitan: atipicos --help\n",
            stderr);
        std::_Exit(no_hecho);
    }

    /// Printing, with the viewer for what goes to the screen: modal, because it is asked for by modal forms.
    std::shared_ptr<qvoremp::Biblioteca> biblioteca_con_impresion(
        const Sesion& sesion, const bases::Lugar& lugar)
    {
        auto visor = [](std::shared_ptr<const Report> report) {
            clsView vista;
            vista.set_Report(std::move(report));
            vista.Cargar(true);
        };
        return std::make_shared<orvalin::Biblioteca>(
            sesion.bases.orvalin, std::make_shared<SalidaQt>(visor), orvalin::Plantilla::de_lugar(lugar));
    }

    /// False when the person does not want them.
    bool ofrece_crear_bases(const std::filesystem::path& carpeta)
    {
        MsgBoxQt avisos;
        const auto respuesta = avisos.mostrar(
            { "No hay ninguna base de datos en la carpeta «" + std::filesystem::absolute(carpeta).string()
                    + "».\r\n\r\n¿Desea crear en ella la empresa de muestra?",
                atencion, Icono::pregunta, Botones::SiNo, Respuesta::No });
        if (respuesta == Respuesta::No)
            return false;
        bases::crea_bases(carpeta, false);
        return true;
    }

    int abre(const OpcionesVentana& opciones)
    {
        const auto lugar = opciones.comunes.lugar();
        if (lugar.clase() == bases::Lugar::Clase::carpeta && !bases::hay_bases(lugar.carpeta())
            && !ofrece_crear_bases(lugar.carpeta()))
            return no_hecho;
        const auto elegida = elige_sesion(opciones);
        if (!elegida)
            return no_hecho;
        QPointer<frmPrincipal> abierta;
        Sesion sesion(*elegida, { .avisa_linea = [&abierta](sql::Linea que) {
            if (abierta)
                abierta->muestra_linea(que);
        } });
        modComun::set_MsgBox(std::make_shared<MsgBoxQt>());
        modComun::set_BibliotecaOrvalin(biblioteca_con_impresion(sesion, elegida->lugar()));
        modComun::set_PrevisionesCargo(
            std::make_shared<orvalin::PrevisionesCargo>(sesion.bases.orvalin, sesion.empresa));
        sesion.Guarda_Borradores(elegida->lugar());
        frmPrincipal ventana(sesion, *elegida);
        abierta = &ventana;
        ventana.show();
        return Interrupcion::senal() == 0 ? QApplication::exec() : no_hecho;
    }

}

int ventana_principal(const OpcionesVentana& opciones)
{
    exige_pantalla();
    int argc = 1;
    char nombre[] = "atipicos";
    char* argv[] = { nombre, nullptr };
    const auto anterior = qInstallMessageHandler(&dilo_en_castellano);
    QApplication aplicacion(argc, argv);
    qInstallMessageHandler(anterior);
    QApplication::setApplicationName(QStringLiteral("atipicos"));
    QApplication::setOrganizationName(QStringLiteral("atipicos"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/atipicos.png")));
    QGuiApplication::setDesktopFileName(QStringLiteral("atipicos")); // Wayland takes the icon from there
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    QTranslator textos_de_qt;
    if (textos_de_qt.load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&textos_de_qt);
    aplica_tema(tema_guardado());
    // Whatever window is open, also one that another waits for: what each of them has at hand is given up.
    QSocketNotifier senal(Interrupcion::descriptor(), QSocketNotifier::Read);
    QObject::connect(&senal, &QSocketNotifier::activated, &senal, [&senal] {
        senal.setEnabled(false);
        QCoreApplication::exit(no_hecho);
    });
    try {
        return abre(opciones);
    } catch (const Error& error) {
        MsgBoxQt().mostrar({ error.descripcion(), "atipicos", Icono::critico });
        return no_hecho;
    }
}

} // namespace atipicos::app
