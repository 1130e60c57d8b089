// The launchers through their late-bound face, as seen by a host that can look at all windows of the process.
#include "automation/Componente.hpp"
#include "host/bases/Bases.hpp"
#include "tests/server/EmpresaAnfitriona.hpp"
#include "tests/support/AdoDePrueba.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>

#include <dlfcn.h>

using namespace atipicos;
using automation::Anfitrion;
using automation::Argumentos;
using automation::Despacho;
using automation::Valor;

namespace {

Despacho crea(const std::string& nombre)
{
    static void* const biblioteca = dlopen(ATIPICOS_COMPONENTE, RTLD_NOW | RTLD_LOCAL); // never unloaded
    if (biblioteca == nullptr)
        qFatal("%s", dlerror());
    return automation::crea(
        nombre, reinterpret_cast<automation::DameClase>(dlsym(biblioteca, "DllGetClassObject")));
}

/// A host with its databases; what it lends is taken back at the end.
struct Casa {
    pruebas::CarpetaTemporal carpeta;
    bases::Bases bases;

    Casa()
    {
        bases::crea_bases(carpeta.ruta(), false);
        bases = bases::abre_bases(carpeta.ruta());
        const auto editor = crea("frmclsCompras_Atipicos");
        editor.pon("EmpresaOrvalin", pruebas::empresa_con_ventanas().valor());
        editor.pon("ConexionOrvalin", pruebas::ado_de(bases.orvalin).valor());
    }
    Casa(const Casa&) = delete;
    Casa& operator=(const Casa&) = delete;
    ~Casa()
    {
        const auto editor = crea("frmclsCompras_Atipicos");
        for (const char* una : { "EmpresaOrvalin", "ConexionOrvalin" })
            editor.pon(una, Despacho().valor());
    }
};

/// The windows of a class of the component, shown or not.
QList<QDialog*> ventanas(const char* clase)
{
    QList<QDialog*> halladas;
    for (QWidget* ventana : QApplication::allWidgets())
        if (ventana->inherits(clase))
            halladas << qobject_cast<QDialog*>(ventana);
    return halladas;
}

Despacho con_hWnd(Valor hWnd) { return Anfitrion::crea({ pruebas::con_valor("hWnd", std::move(hWnd)) }); }
Despacho con_hWnd(const QWidget& ventana) { return con_hWnd(static_cast<std::int32_t>(ventana.winId())); }

}

class LanzadoresEnVentana_Test : public QObject {
    Q_OBJECT
private slots:
    void a_launcher_opens_one_window_over_its_owner_and_takes_it_along_data()
    {
        QTest::addColumn<QByteArray>("lanzador");
        QTest::addColumn<QByteArray>("form");
        QTest::addColumn<QString>("titulo");
        QTest::newRow("editor") << QByteArray("frmclsCompras_Atipicos")
                                << QByteArray("atipicos::frmCompras_Atipicos")
                                << QStringLiteral("Reclamaciones a Proveedores");
        QTest::newRow("browser") << QByteArray("frmclsComprasAtipVisor")
                                 << QByteArray("atipicos::frmCompras_Atipicos_Visor")
                                 << QStringLiteral("Visor de Atípicos");
        QTest::newRow("devices") << QByteArray("frmclsCopiasImpresion")
                                 << QByteArray("atipicos::frmImpresora")
                                 << QStringLiteral("Seleccione Destino e Impresora.");
    }

    void a_launcher_opens_one_window_over_its_owner_and_takes_it_along()
    {
        QFETCH(QByteArray, lanzador);
        QFETCH(QByteArray, form);
        QFETCH(QString, titulo);
        const Casa casa;
        QWidget una;
        QWidget otra;
        una.show();
        otra.show();
        auto objeto = crea(lanzador.toStdString());
        QVERIFY2(ventanas(form).isEmpty(), "before it is shown there is none");

        objeto.llama("Show");
        QCOMPARE(ventanas(form).size(), 1);
        const QPointer<QDialog> ventana = ventanas(form).front();
        QVERIFY(ventana->isVisible());
        QVERIFY(!ventana->isModal());
        QVERIFY(ventana->parentWidget() == nullptr);
        QCOMPARE(ventana->windowTitle(), titulo);
        QCOMPARE(ventana->windowType() == Qt::Dialog, form.endsWith("frmImpresora"));

        // Shown, it takes an owner, stays above it as a dialog does, and where it was.
        ventana->move(120, 90);
        objeto.llama("Show", 0, con_hWnd(una).get());
        QCOMPARE(ventanas(form), QList{ ventana.data() });
        QVERIFY(ventana->isVisible());
        QCOMPARE(ventana->parentWidget(), &una);
        QCOMPARE(ventana->windowType(), Qt::Dialog);
        QCOMPARE(ventana->pos(), QPoint(120, 90));
        QCOMPARE(ventana->windowHandle()->transientParent(), una.windowHandle());
        objeto.llama("Show", 0, con_hWnd(otra).get());
        QCOMPARE(ventana->parentWidget(), &otra);

        // Closed and shown again it is the same one, with the owner of this time.
        ventana->close();
        QVERIFY(!ventana->isVisible());
        objeto.llama("Show", 0, con_hWnd(una).get());
        QCOMPARE(ventanas(form), QList{ ventana.data() });
        QVERIFY(ventana->isVisible());
        QCOMPARE(ventana->parentWidget(), &una);
        objeto.llama("Show", 0);
        QVERIFY(ventana->parentWidget() == nullptr);

        // Modally the call returns when it is closed; asked for meanwhile, the one that is waited for comes
        // to the front, and keeps its owner.
        bool vista = false;
        {
            const pruebas::AlAbrirse al_abrirse([&](QWidget& abierta) {
                vista = &abierta == ventana.data() && abierta.isModal() && abierta.parentWidget() == &otra;
                objeto.llama("Show", 1, con_hWnd(una).get());
                vista = vista && abierta.isVisible() && abierta.parentWidget() == &otra;
                abierta.close();
            });
            objeto.llama("Show", 1, con_hWnd(otra).get());
        }
        QVERIFY(vista);
        QVERIFY(!ventana->isVisible());

        objeto.llama("Show");
        QVERIFY(ventana->isVisible());
        QVERIFY2(!ventana->isModal(), "the next time is another");
        objeto = {};
        QVERIFY2(ventana.isNull(), "it goes with its launcher");
    }

    void what_cannot_be_an_owner_is_told_in_a_box_and_nothing_is_shown()
    {
        const Casa casa;
        const auto editor = crea("frmclsCompras_Atipicos");
        QString titulo;
        QString texto;
        {
            const pruebas::AlAbrirse al_abrirse([&](QWidget& abierta) {
                titulo = abierta.windowTitle();
                texto = pruebas::control<QLabel>(abierta, "qt_msgbox_label").text();
                abierta.close();
            });
            editor.llama("Show", 1, con_hWnd(0).get());
        }
        QCOMPARE(titulo, QStringLiteral("frmclsCompras_Atipicos:Show"));
        QVERIFY2(texto.contains(QStringLiteral("no tiene todavía ninguna ventana")), qPrintable(texto));
        const auto formularios = ventanas("atipicos::frmCompras_Atipicos");
        QVERIFY(formularios.isEmpty() || !formularios.front()->isVisible());
    }

    void a_window_of_another_toolkit_is_no_hindrance_where_windows_have_no_handles()
    {
        if (QGuiApplication::platformName() == QLatin1String("xcb"))
            QSKIP("here they have");
        const Casa casa;
        const auto editor = crea("frmclsCompras_Atipicos");
        editor.llama("Show", 0, con_hWnd(123456789).get());
        const auto form = ventanas("atipicos::frmCompras_Atipicos").front();
        QVERIFY(form->isVisible());
        QVERIFY(form->parentWidget() == nullptr);
    }

    void the_browser_opens_with_the_filters_of_its_launcher()
    {
        const Casa casa;
        const auto visor = crea("frmclsComprasAtipVisor");
        visor.pon("Ejercicio", 2025);
        visor.pon("Almacen_Inicial", 4);
        visor.pon("Proveedor_Inicial", 106);
        visor.pon("Fecha_Inicial", "03/02/2025");
        visor.pon("Fecha_Final", "29/11/2025");
        visor.llama("Show");
        auto& form = *ventanas("atipicos::frmCompras_Atipicos_Visor").front();
        const auto texto
            = [&](const char* nombre) { return pruebas::control<QLineEdit>(form, nombre).text(); };
        QCOMPARE(texto("txtFechaI"), QStringLiteral("03/02/2025"));
        QCOMPARE(texto("txtFechaF"), QStringLiteral("29/11/2025"));
        const auto codigo = [&](const char* selector) {
            return pruebas::control<QLineEdit>(pruebas::control(form, selector), "txtCodigo").text();
        };
        QCOMPARE(codigo("txtAlmacen"), QStringLiteral("4"));
        QCOMPARE(codigo("txtProveedor"), QStringLiteral("106"));
    }

    void a_charge_is_printed_by_the_library_of_the_host_on_both_devices()
    {
        const Casa casa;
        QStringList impreso;
        const auto anota = [&](const char* miembro) {
            return Anfitrion::Miembro{ miembro, [](const Argumentos&) { return Valor(); },
                [&impreso, miembro](const Argumentos& a) {
                    impreso << QLatin1String(miembro) + u'=' + QString::fromStdString(a.valor(0).texto());
                    return Valor();
                } };
        };
        const auto se_pone = [](const char* miembro) {
            return Anfitrion::Miembro{ miembro, [](const Argumentos&) { return Valor(); },
                [](const Argumentos&) { return Valor(); } };
        };
        const auto ficha = Anfitrion::crea({ se_pone("Codigo"), pruebas::con_valor("Cargar", false) });
        const auto cargo = crea("clsAtipico");
        cargo.pon("EmpresaOrvalin",
            pruebas::empresa_con_ventanas({ pruebas::con_valor("NuevoAlmacen", ficha.valor()),
                                              pruebas::con_valor("NuevoProveedor", ficha.valor()),
                                              { "NuevaImpresionCargo",
                                                  [&](const Argumentos&) {
                                                      return Anfitrion::crea(
                                                          { anota("Codigo"), se_pone("Ejercicio"),
                                                              se_pone("Almacen"), se_pone("Proveedor"),
                                                              se_pone("Impresora"), se_pone("Dispositivo"),
                                                              { "Imprimir",
                                                                  [&](const Argumentos&) {
                                                                      impreso << QStringLiteral("Imprimir");
                                                                      return Valor();
                                                                  } } })
                                                          .valor();
                                                  } } })
                .valor());
        cargo.pon("Cod_Ejercicio", 2025);
        cargo.pon("Cod_Almacen", 4);
        cargo.pon("Proveedor", 106);
        cargo.pon("Codigo", "AT250031");
        cargo.pon("Fecha", "11/03/2025");
        QVERIFY(!cargo.llama("Insertar").logico());

        const auto visor = crea("frmclsComprasAtipVisor");
        visor.pon("Fecha_Inicial", "03/02/2025");
        visor.pon("Fecha_Final", "29/11/2025");
        visor.llama("Show");
        auto& form = *ventanas("atipicos::frmCompras_Atipicos_Visor").front();
        pruebas::control(form, "txtFechaF").setFocus();
        pruebas::pulsa(Qt::Key_Return);
        QString preguntado;
        {
            const pruebas::AlAbrirse al_abrirse([&](QWidget& abierta) {
                preguntado = abierta.windowTitle();
                pruebas::clic(abierta, "cmdAceptar");
            });
            pruebas::clic(form, "cmdImprimir");
        }
        QCOMPARE(preguntado, QStringLiteral("Seleccione Destino e Impresora."));
        const QStringList uno{ QStringLiteral("Codigo=AT250031"), QStringLiteral("Imprimir") };
        QCOMPARE(impreso, uno + uno);
    }

    void a_launcher_that_is_given_up_while_it_shows_its_window_ends_with_it()
    {
        const Casa casa;
        auto editor = crea("frmclsCompras_Atipicos");
        auto* ultimo = editor.get();
        const auto show = editor.id("Show");
        bool sigue = false;
        {
            const pruebas::AlAbrirse al_abrirse([&](QWidget& abierta) {
                editor = {};
                sigue = abierta.isVisible();
                abierta.close();
            });
            Valor modal(1);
            automation::DISPPARAMS uno{ &modal.get(), nullptr, 1, 0 };
            QCOMPARE(ultimo->Invoke(show, automation::iid_nulo, 0, automation::DISPATCH_METHOD, &uno, nullptr,
                         nullptr, nullptr),
                automation::HRESULT{ automation::S_OK });
        }
        QVERIFY2(sigue, "whoever waits for it finds it there");
        QVERIFY(ventanas("atipicos::frmCompras_Atipicos").isEmpty());
    }

    void the_viewer_shows_the_report_modally_when_asked_and_is_one_for_all()
    {
        const Casa casa;
        const auto vista = crea("clsView");
        const auto informe = [](const char* titulo) {
            return Anfitrion::crea({ pruebas::con_valor("Titulo", titulo), pruebas::con_valor("Ancho", 21000),
                pruebas::con_valor("Alto", 29700), pruebas::con_valor("Paginas", 3),
                { "Pinta", [](const Argumentos& a) {
                     const Despacho lienzo(a.valor(1).objeto());
                     lienzo.llama("Texto", 2000, 3000, "Hola", "DejaVu Sans", 400, true, 0);
                     return Valor();
                 } } });
        };
        vista.pon("Report", informe("Informe").valor());
        vista.llama("Cargar", false, 100);
        QCOMPARE(ventanas("atipicos::frmView").size(), 1);
        auto* const form = ventanas("atipicos::frmView").front();
        QVERIFY(form->isVisible());
        QVERIFY(!form->isModal());
        QCOMPARE(form->windowTitle(), QStringLiteral("Muestra - Visor de Reportes"));
        bool modal = false;
        {
            const pruebas::AlAbrirse al_abrirse([&](QWidget& abierta) {
                modal = &abierta == form && abierta.isModal();
                abierta.close();
            });
            const auto otra = crea("clsView");
            otra.pon("Report", informe("Otro").valor());
            otra.llama("Cargar", true);
        }
        QVERIFY(modal);
        QVERIFY(!form->isVisible());
        QCOMPARE(ventanas("atipicos::frmView"), QList{ form });
    }
};

ATIPICOS_PRUEBA_VENTANAS(LanzadoresEnVentana_Test)
#include "LanzadoresEnVentana_test.moc"
