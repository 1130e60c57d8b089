#include "demo/VentanasDelAnfitrion.hpp"

#include "context/modComun.hpp"
#include "controls/MsgBoxQt.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/ventanas/AvanceDeTarea.hpp"
#include "host/ventanas/frmDatosEmpresa.hpp"
#include "host/ventanas/frmEmpresa.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "host/ventanas/frmSesion.hpp"
#include "host/ventanas/ReintentoEnVentana.hpp"
#include "tests/support/Persona.hpp"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

using namespace atipicos::pruebas;

namespace atipicos::demo {

namespace {

    QWidget& ventana_abierta(const char* nombre)
    {
        for (QWidget* ventana : QApplication::topLevelWidgets())
            if (ventana->objectName() == QLatin1String(nombre) && ventana->isVisible())
                return *ventana;
        throw Error(1, "demostracion", std::string("No se ha abierto la ventana ") + nombre + ".");
    }

    /// Waits until a window gets the keys.
    void activa(QWidget& ventana)
    {
        ventana.activateWindow();
        if (!QTest::qWaitFor([&] {
                return QApplication::activeWindow() == &ventana && QApplication::focusWidget() != nullptr
                    && QApplication::focusWidget()->window() == &ventana;
            }))
            throw Error(
                1, "demostracion", "No se activa la ventana " + ventana.objectName().toStdString() + ".");
    }

    QWidget& ventana_activa(const char* nombre)
    {
        auto& ventana = ventana_abierta(nombre);
        activa(ventana);
        return ventana;
    }

    void abre_orden(QWidget& principal, const char* nombre) { control<QAction>(principal, nombre).trigger(); }

    /// One window, without what opens it.
    void graba_suelta(QWidget& ventana, const char* nombre, Grabacion& grabacion)
    {
        ventana.show();
        ventana.activateWindow();
        grabacion.captura(ventana, nombre);
        ventana.close();
    }

    /// What is asked before the main window is there, and while its server is not.
    void graba_las_de_antes(const app::Sesion& sesion, Grabacion& grabacion)
    {
        app::frmSesion quien(sesion.catalogos.empresas(), sesion.catalogos.usuarios());
        graba_suelta(quien, "empresa-y-usuario", grabacion);
        app::frmEmpresa cual;
        cual.Propon(QStringLiteral("/srv/compras/2026"),
            QStringLiteral("En esa carpeta no hay ninguna empresa: créela, o elija otra."));
        graba_suelta(cual, "elegir-empresa", grabacion);
        app::frmDatosEmpresa datos;
        graba_suelta(datos, "datos-de-la-empresa", grabacion);
        app::ReintentoEnVentana reintento;
        sql::Reintento como;
        como.motivo = "el servidor ha cerrado la conexión";
        como.desde = std::chrono::seconds(4);
        como.limite = std::chrono::seconds(60);
        static_cast<void>(reintento.sigue(como));
        grabacion.captura(ventana_abierta("frmReintento"), "conexion-perdida");
        reintento.reanudada();
    }

    /// A charge that is left with one line, offered in the main window, and back in its own.
    void graba_un_borrador(QWidget& principal, Grabacion& grabacion)
    {
        abre_orden(principal, "mnuReclamaciones");
        auto& tecleado = ventana_activa("frmCompras_Atipicos");
        intro();
        teclea("109");
        intro(2);
        teclea("Portes cobrados dos veces");
        intro(2);
        intro();
        teclea("Porte del 14 de noviembre");
        intro(2);
        teclea("1");
        intro();
        teclea("86,5");
        intro(2);
        tecleado.close();
        activa(principal);
        if (!QTest::qWaitFor([&] { return control(principal, "fraBorradores").isVisible(); }))
            throw Error(1, "demostracion", "El cargo sin guardar no se ofrece.");
        grabacion.captura(principal, "principal-con-borrador");
        clic(principal, "cmdRecuperar");
        QWidget& editor = ventana_abierta("frmCompras_Atipicos");
        grabacion.captura(editor, "editor-recuperado");
        const AlAbrirse pregunta(
            [&](QWidget& caja) {
                grabacion.captura(caja, "pregunta");
                pulsa(Qt::Key_S, Qt::AltModifier);
            },
            "MsgBox");
        activa(editor);
        clic(editor, "cmdCancelar");
        editor.close();
    }

    void graba_los_elegidos(QWidget& principal, Grabacion& grabacion)
    {
        auto& lista = control<QTableView>(principal, "vsUltimos");
        lista.selectRow(1);
        lista.selectionModel()->select(
            lista.model()->index(2, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        for (const auto& [orden, dialogo, nombre] :
            { std::tuple{ "mnuSacarElegidos", "frmImpresora", "elegidos-imprimir" },
                { "mnuImprimirElegidos", "dlgImprimirElegidos", "elegidos-pdf" },
                { "mnuExportarElegidos", "dlgExportar", "elegidos-exportar" } }) {
            const AlAbrirse al_abrirse(
                [&, nombre = nombre](QWidget& abierto) {
                    grabacion.captura(abierto, nombre);
                    pulsa(Qt::Key_Escape);
                },
                dialogo);
            abre_orden(principal, orden);
        }
        app::AvanceDeTarea avance(QStringLiteral("Guardando como PDF"), 40, &principal);
        for (auto* dialogo : principal.findChildren<QWidget*>(QStringLiteral("dlgAvance"))) {
            dialogo->show();
            for (int i = 0; i < 13; ++i)
                avance.paso();
            grabacion.captura(*dialogo, "avance");
        }
    }

    /// The first charge of the list is deleted, which leaves its entry without one.
    void elimina_uno(QWidget& principal, Grabacion& grabacion)
    {
        abre_orden(principal, "mnuVisor");
        QWidget& visor = ventana_activa("frmCompras_Atipicos_Visor");
        const AlAbrirse pregunta(
            [&](QWidget& caja) {
                grabacion.captura(caja, "pregunta-de-eliminar");
                pulsa(Qt::Key_S, Qt::AltModifier);
            },
            "MsgBox");
        clic(visor, "cmdEliminar");
        visor.close();
    }

    void graba_lo_pendiente(QWidget& principal, Grabacion& grabacion)
    {
        elimina_uno(principal, grabacion);
        activa(principal);
        abre_orden(principal, "mnuActualizar");
        if (!QTest::qWaitFor([&] { return control(principal, "cmdSueltos").isEnabled(); }))
            throw Error(1, "demostracion", "El asiento sin cargo no se enseña.");
        grabacion.captura(principal, "principal-con-pendientes");
        {
            const AlAbrirse previsiones(
                [&](QWidget& dialogo) {
                    grabacion.captura(dialogo, "previsiones-proximas");
                    pulsa(Qt::Key_Escape);
                },
                "frmPendiente");
            clic(principal, "cmdPrevisiones");
        }
        const AlAbrirse sueltos(
            [&](QWidget& dialogo) {
                grabacion.captura(dialogo, "sin-cargo");
                clic(dialogo, "cmdAnular");
            },
            "frmPendiente");
        const AlAbrirse anular(
            [&](QWidget& dialogo) {
                static_cast<void>(QTest::qWaitFor([&] { return control(dialogo, "cmdAnular").isEnabled(); }));
                grabacion.captura(dialogo, "anular");
                pulsa(Qt::Key_Escape);
            },
            "frmAnular");
        clic(principal, "cmdSueltos");
    }

}

void graba_fichas(QWidget& principal, const char* orden, const NombresDeFichas& nombres, Grabacion& grabacion)
{
    const AlAbrirse lista(
        [&](QWidget& dialogo) {
            grabacion.captura(dialogo, nombres.lista);
            {
                const AlAbrirse ficha(
                    [&](QWidget& una) {
                        grabacion.captura(una, nombres.ficha);
                        pulsa(Qt::Key_Escape);
                    },
                    "frmFicha");
                intro();
            }
            pulsa(Qt::Key_Escape);
        },
        "frmFichas");
    abre_orden(principal, orden);
}

void graba_ventanas_del_anfitrion(const app::OpcionesComunes& opciones, Grabacion& grabacion)
{
    app::Sesion sesion(opciones);
    modComun::set_MsgBox(std::make_shared<MsgBoxQt>());
    sesion.Guarda_Borradores(opciones.lugar());
    graba_las_de_antes(sesion, grabacion);
    app::frmPrincipal principal(sesion, opciones);
    principal.show();
    activa(principal);
    if (!QTest::qWaitFor([&] { return control<QTableView>(principal, "vsUltimos").model()->rowCount() > 2; }))
        throw Error(1, "demostracion", "La ventana principal no se llena.");
    graba_un_borrador(principal, grabacion);
    graba_los_elegidos(principal, grabacion);
    graba_fichas(principal, "mnuArticulos", { "articulos", "articulo" }, grabacion);
    graba_lo_pendiente(principal, grabacion);
}

void graba_historial(QWidget& principal, Grabacion& grabacion)
{
    abre_orden(principal, "mnuHistorial");
    auto& historial = ventana_activa("frmHistorial");
    if (!QTest::qWaitFor([&] { return control<VSFlexGrid>(historial, "vsSucesos").Rows() > 2; }))
        throw Error(1, "demostracion", "El historial no se lee.");
    grabacion.captura(historial, "historial");
    historial.close();
}

} // namespace atipicos::demo
