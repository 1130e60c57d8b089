// F1 in the windows of the program.
#include "host/ventanas/Ayuda.hpp"

#include "controls/MsgBoxQt.hpp"
#include "host/ventanas/frmSesion.hpp"
#include "tests/app/EscenaPrograma.hpp"
#include "tests/app/ManualAbierto.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QWindow>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// Without a window manager nobody goes back to the window behind one that has closed.
void vuelve_a(QWidget& ventana)
{
    QTest::qWait(1); // what others have asked for comes first
    ventana.activateWindow();
    if (!QTest::qWaitFor(
            [&] { return QApplication::activeWindow() == &ventana; }, atipicos::pruebas::paciencia))
        qFatal("%s is not active", qPrintable(ventana.objectName()));
}

/// Presses F1 where the focus is, says what is read then, and closes the manual.
QString con_f1()
{
    QPointer<QWidget> antes = QApplication::activeWindow();
    pulsa(Qt::Key_F1);
    const QString leido = se_lee();
    if (auto* manual = abierto())
        manual->close();
    if (antes != nullptr)
        vuelve_a(*antes);
    return leido;
}

/// The program on a sample company of the test's own, with F1.
struct EscenaAyuda : EscenaPrograma {
    app::Ayuda ayuda;

    EscenaAyuda()
        : EscenaPrograma(2)
    {
        modComun::set_MsgBox(std::make_shared<MsgBoxQt>());
        abre();
    }

    QWidget& editor() const
    {
        control<QAction>(*ventana, "mnuReclamaciones").trigger();
        auto& form = control<QWidget>(*ventana, "frmCompras_Atipicos");
        vuelve_a(form);
        return form;
    }
};

/// What a person would press in a window: refused there where another one waits for an answer.
void pulsa_en(QWidget& ventana, Qt::Key tecla) { QTest::keyClick(ventana.windowHandle(), tecla); }

void pincha(QTreeWidget& lista, int fila)
{
    auto* vista = lista.viewport();
    const QPoint lugar = lista.visualItemRect(lista.topLevelItem(fila)).center();
    QTest::mouseClick(
        vista->window()->windowHandle(), Qt::LeftButton, {}, vista->mapTo(vista->window(), lugar));
}

}

class Ayuda_Test : public QObject {
    Q_OBJECT
private slots:

    void in_every_window_f1_opens_its_page()
    {
        const EscenaAyuda escena;
        QCOMPARE(con_f1(), QStringLiteral("principal.md"));
        QWidget& editor = escena.editor();
        QCOMPARE(con_f1(), QStringLiteral("editor.md#la-cabecera"));
        {
            const AlAbrirse busqueda(
                [](QWidget& dialogo) {
                    QCOMPARE(con_f1(), QStringLiteral("buscar.md"));
                    clic(dialogo, "cmdCancelar");
                },
                "ListaSeleccion");
            pulsa(Qt::Key_F2);
        }
        control(editor, "txtUnidades").setFocus();
        QCOMPARE(con_f1(), QStringLiteral("editor.md#teclear-una-línea"));
        control(editor, "cmdSalir").setFocus();
        QCOMPARE(con_f1(), QStringLiteral("editor.md"));
        editor.close();

        control<QAction>(*escena.ventana, "mnuVisor").trigger();
        auto& visor = control<QWidget>(*escena.ventana, "frmCompras_Atipicos_Visor");
        vuelve_a(visor);
        control(visor, "txtFechaI").setFocus();
        QCOMPARE(con_f1(), QStringLiteral("visor.md"));
        control(visor, "vsCab").setFocus();
        QCOMPARE(con_f1(), QStringLiteral("visor.md#la-lista"));
        visor.close();

        app::frmSesion sesion(escena.sesion->catalogos.empresas(), escena.sesion->catalogos.usuarios());
        sesion.show();
        vuelve_a(sesion);
        QCOMPARE(con_f1(), QStringLiteral("principal.md#empresa-y-usuario")); // known by its class
    }

    void through_a_whole_charge_every_dialog_has_its_page()
    {
        const EscenaAyuda escena;
        QWidget& editor = escena.editor();
        intro();
        teclea("104");
        intro(4);
        intro();
        teclea("Porte");
        intro(2);
        teclea("1");
        intro();
        teclea("10");
        intro(2);
        control(editor, "vsCargos").setFocus();
        pulsa(Qt::Key_Home);
        QCOMPARE(con_f1(), QStringLiteral("editor.md#la-lista-de-líneas"));
        {
            const AlAbrirse comentario(
                [](QWidget&) {
                    QCOMPARE(con_f1(), QStringLiteral("editor.md#observaciones-largas"));
                    pulsa(Qt::Key_F9);
                },
                "frmEditor_Comentarios");
            pulsa(Qt::Key_F4);
        }
        QStringList leidas;
        const AlAbrirse previsiones(
            [&](QWidget& dialogo) {
                leidas << con_f1();
                control(dialogo, "vsPrev").setFocus();
                leidas << con_f1();
                pulsa(Qt::Key_F9);
            },
            "frmCompras_Atipicos_Contabilizar");
        const AlAbrirse aviso(
            [&](QWidget&) {
                leidas << con_f1();
                intro();
            },
            "MsgBox");
        const AlAbrirse impresora(
            [&](QWidget& dialogo) {
                leidas << con_f1();
                clic(dialogo, "cmdCancelar");
            },
            "frmImpresora");
        vuelve_a(editor);
        clic(editor, "cmdAceptar");
        QCOMPARE(leidas,
            (QStringList{ QStringLiteral("previsiones.md"),
                QStringLiteral("previsiones.md#la-lista-de-previsiones"),
                QStringLiteral("mensajes.md#atípico--generado-correctamente"),
                QStringLiteral("imprimir.md") }));
    }

    void it_is_read_beside_a_window_that_waits_and_leaves_it_as_it_was()
    {
        const EscenaAyuda escena;
        escena.editor();
        const AlAbrirse busqueda(
            [](QWidget& dialogo) {
                teclea("graci");
                pulsa(Qt::Key_F1);
                auto* manual = abierto();
                QVERIFY(manual != nullptr);
                QVERIFY(QTest::qWaitForWindowActive(manual, atipicos::pruebas::paciencia));
                auto& indice = control<QTreeWidget>(*manual, "lstManual");
                pincha(indice, 1);
                QCOMPARE(se_lee(), QStringLiteral("primer-cargo.md"));
                control<QLineEdit>(*manual, "txtBuscarManual").setFocus();
                pulsa_en(*manual, Qt::Key_F);
                pulsa_en(*manual, Qt::Key_9);
                QCOMPARE(control<QLineEdit>(*manual, "txtBuscarManual").text(), QStringLiteral("f9"));
                vuelve_a(dialogo);
                QCOMPARE(control<QLineEdit>(dialogo, "txtFiltro").text(), QStringLiteral("graci"));
                clic(dialogo, "cmdCancelar");
            },
            "ListaSeleccion");
        pulsa(Qt::Key_F2);
        auto* manual = abierto();
        QVERIFY(manual != nullptr); // it stays when the dialog has gone
        manual->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(manual, atipicos::pruebas::paciencia));
        pulsa_en(*manual, Qt::Key_Escape);
        QTRY_VERIFY(abierto() == nullptr);
    }

    void open_already_it_can_be_used_beside_each_dialog_that_opens_after_it()
    {
        const EscenaAyuda escena;
        pulsa(Qt::Key_F1);
        QPointer<app::frmManual> manual = abierto();
        QVERIFY(manual != nullptr);
        auto& indice = control<QTreeWidget>(*manual, "lstManual");
        QWidget& editor = escena.editor();
        const AlAbrirse fuera(
            [&](QWidget& dialogo) {
                QTest::qWait(1);
                pincha(indice, 2);
                QCOMPARE(se_lee(), QStringLiteral("principal.md"));
                {
                    const AlAbrirse dentro(
                        [&](QWidget& caja) {
                            QTest::qWait(1);
                            pincha(indice, 3);
                            QCOMPARE(se_lee(), QStringLiteral("editor.md"));
                            clic(caja, "cmdAceptarPrueba");
                        },
                        "caja");
                    QDialog caja(&dialogo);
                    caja.setObjectName(QStringLiteral("caja"));
                    QPushButton boton(QStringLiteral("Ya"), &caja);
                    boton.setObjectName(QStringLiteral("cmdAceptarPrueba"));
                    connect(&boton, &QPushButton::clicked, &caja, &QDialog::accept);
                    caja.exec();
                }
                QTest::qWait(1);
                pincha(indice, 4); // the one below still waits
                QCOMPARE(se_lee(), QStringLiteral("previsiones.md"));
                dialogo.activateWindow();
                clic(dialogo, "cmdCancelar");
            },
            "ListaSeleccion");
        vuelve_a(editor);
        control(control(editor, "txtProv"), "txtCodigo").setFocus();
        pulsa(Qt::Key_F2);
        QVERIFY(!manual.isNull() && manual->isVisible());
    }

    void what_a_box_says_is_what_is_read()
    {
        const EscenaAyuda escena;
        escena.editor();
        QString leida;
        const AlAbrirse aviso(
            [&](QWidget&) {
                leida = con_f1();
                intro();
            },
            "MsgBox");
        modComun::Avisos()->mostrar(
            { "[203] No existe el artículo 7777. Corrija su código o déjelo vacío.", "x", Icono::critico });
        QCOMPARE(leida, QStringLiteral("mensajes.md#no-existe-el-artículo-"));
    }

    void a_calendar_that_is_open_gives_way()
    {
        const EscenaAyuda escena;
        QWidget& editor = escena.editor();
        control(editor, "txtFecha").setFocus();
        pulsa(Qt::Key_Down, Qt::AltModifier);
        QVERIFY(QApplication::activePopupWidget() != nullptr);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_F1);
        QVERIFY(QApplication::activePopupWidget() == nullptr);
        QCOMPARE(se_lee(), QStringLiteral("editor.md#la-cabecera"));
    }

    void nothing_else_is_taken_from_the_windows()
    {
        const EscenaAyuda escena;
        QWidget& editor = escena.editor();
        pulsa(Qt::Key_F1, Qt::ShiftModifier);
        pulsa(Qt::Key_F1, Qt::ControlModifier);
        QVERIFY(abierto() == nullptr);
        QVERIFY(editor.isVisible());
        QWidget extrana;
        extrana.setProperty("pagina_del_manual", QStringLiteral("visor.md#detalles"));
        QWidget parte(&extrana);
        QCOMPARE(app::Ayuda::direccion_de(&parte), QStringLiteral("visor.md#detalles"));
        const QWidget desconocida;
        QCOMPARE(app::Ayuda::direccion_de(&desconocida), QStringLiteral("indice.md"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(Ayuda_Test)
#include "Ayuda_test.moc"
