#include "host/ventanas/VentanaPrincipal.hpp"

#include "context/modComun.hpp"
#include "controls/MsgBoxQt.hpp"
#include "controls/Texto.hpp"
#include "controls/Tiradores.hpp"
#include "host/bases/EmpresaPropia.hpp"
#include "host/orvalin/Biblioteca.hpp"
#include "host/orvalin/PrevisionesCargo.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/terminal/Interrupcion.hpp"
#include "host/ventanas/Apariencia.hpp"
#include "host/ventanas/Ayuda.hpp"
#include "host/ventanas/EmpresasRecientes.hpp"
#include "host/ventanas/frmDatosEmpresa.hpp"
#include "host/ventanas/frmEmpresa.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "host/ventanas/frmSesion.hpp"
#include "host/ventanas/ReintentoEnVentana.hpp"
#include "host/ventanas/SalidaDeVentanas.hpp"

#include <QApplication>
#include <QDate>
#include <QPointer>
#include <QSocketNotifier>

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

    std::shared_ptr<qvoremp::Biblioteca> biblioteca_con_impresion(
        const Sesion& sesion, const bases::Lugar& lugar)
    {
        return std::make_shared<orvalin::Biblioteca>(
            sesion.bases.orvalin, salida_de_ventanas(), orvalin::Plantilla::de_lugar(lugar));
    }

    bool hay_bases(const bases::Lugar& lugar)
    {
        return lugar.clase() != bases::Lugar::Clase::carpeta || bases::hay_bases(lugar.carpeta());
    }

    OpcionesVentana con_lugar(OpcionesVentana opciones, const bases::Lugar& lugar)
    {
        const bool en_carpeta = lugar.clase() == bases::Lugar::Clase::carpeta;
        opciones.comunes.datos = en_carpeta ? lugar.carpeta() : std::filesystem::path();
        opciones.comunes.conexion = en_carpeta ? std::string() : lugar.texto();
        opciones.lugar_dado = true;
        return opciones;
    }

    /// Another place for those that cannot be opened; nothing when the person gives up.
    std::optional<OpcionesVentana> pregunta_lugar(const OpcionesVentana& opciones, const QString& motivo)
    {
        const auto lugar = opciones.comunes.lugar();
        frmEmpresa dialogo;
        dialogo.Propon(lugar.clase() == bases::Lugar::Clase::carpeta
                ? a_qt(std::filesystem::absolute(lugar.carpeta()).lexically_normal().string())
                : a_qt(lugar.texto()),
            motivo);
        if (dialogo.exec() != QDialog::Accepted || !dialogo.Elegido())
            return std::nullopt;
        return con_lugar(opciones, *dialogo.Elegido());
    }

    /// Tables without a company in them become those of one; false when the person gives up.
    bool con_empresa(const bases::Lugar& lugar)
    {
        const auto bases = bases::abre_bases(lugar);
        if (!bases::sin_empresas(*bases.orvalin))
            return true;
        frmDatosEmpresa dialogo;
        if (dialogo.exec() != QDialog::Accepted)
            return false;
        bases::funda_empresa(bases, dialogo.Datos(), static_cast<std::int16_t>(QDate::currentDate().year()));
        return true;
    }

    struct Salida {
        int estado = no_hecho;
        std::optional<OpcionesVentana> siguiente = {}; ///< with which to go on
    };

    /// The main window on one company, until it is closed.
    Salida trabaja(const OpcionesComunes& elegida)
    {
        QPointer<frmPrincipal> abierta;
        bases::OpcionesBases opciones{ .avisa_linea = [&](sql::Linea que) {
            if (abierta)
                abierta->muestra_linea(que);
        } };
        espera_en_ventana(opciones);
        Sesion sesion(elegida, opciones);
        modComun::set_MsgBox(std::make_shared<MsgBoxQt>());
        modComun::set_BibliotecaOrvalin(biblioteca_con_impresion(sesion, elegida.lugar()));
        modComun::set_PrevisionesCargo(
            std::make_shared<orvalin::PrevisionesCargo>(sesion.bases.orvalin, sesion.empresa));
        sesion.Guarda_Borradores(elegida.lugar());
        EmpresasRecientes().apunta(elegida.lugar());
        frmPrincipal ventana(sesion, elegida);
        abierta = &ventana;
        ventana.show();
        if (Interrupcion::senal() != 0)
            return {};
        const int estado = QApplication::exec();
        if (estado != hecho || !ventana.Siguiente())
            return { estado };
        // The company and the user of this one are not those of another.
        return { estado, con_lugar({}, *ventana.Siguiente()) };
    }

    Salida abre(const OpcionesVentana& opciones)
    {
        const auto lugar = opciones.comunes.lugar();
        if (!hay_bases(lugar))
            return { no_hecho,
                pregunta_lugar(opciones,
                    opciones.lugar_dado
                        ? QStringLiteral("En esa carpeta no hay ninguna empresa: créela, o elija otra.")
                        : QString()) };
        try {
            if (!con_empresa(lugar))
                return {};
            const auto elegida = elige_sesion(opciones);
            return elegida ? trabaja(*elegida) : Salida{};
        } catch (const Error& error) {
            return { no_hecho, pregunta_lugar(opciones, a_qt(error.descripcion())) };
        }
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
    habla_castellano();
    lee_tiradores();
    aplica_tema(tema_guardado());
    // Whatever window is open, also one that another waits for: what each of them has at hand is given up.
    QSocketNotifier senal(Interrupcion::descriptor(), QSocketNotifier::Read);
    QObject::connect(&senal, &QSocketNotifier::activated, &senal, [&senal] {
        senal.setEnabled(false);
        QCoreApplication::exit(no_hecho);
    });
    const Ayuda ayuda;
    try {
        auto salida = abre(opciones);
        while (salida.siguiente)
            salida = abre(OpcionesVentana(*salida.siguiente));
        return salida.estado;
    } catch (const Error& error) {
        MsgBoxQt().mostrar({ error.descripcion(), "atipicos", Icono::critico });
        return no_hecho;
    }
}

} // namespace atipicos::app
