// What was being keyed in when the program ended is offered in the main window, and stored it is what it
// would have been without that end.
#include "host/ventanas/UltimaBusqueda.hpp"
#include "tests/app/EscenaBorrador.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QPlainTextEdit>

#include <fstream>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

const Mensaje nuevo_asiento{ "Se va a generar un nuevo asiento, asegúrese de eliminar el ya existente en "
                             "Contabilidad junto a sus previsiones de pago.\r\n\r\n¿Desea Continuar?",
    "¡ Atención !", Icono::pregunta, Botones::SiNo, Respuesta::No };

QStringList celdas(VSFlexGrid& rejilla)
{
    QStringList filas;
    for (int fila = 1; fila < rejilla.Rows(); ++fila) {
        QStringList una;
        for (int columna = 0; columna < rejilla.Cols(); ++columna)
            una << rejilla.TextMatrix(fila, columna);
        filas << una.join(u'|');
    }
    return filas;
}

/// Opens the charge that `teclea_cargo` has left stored and changes of it: line 1 gone, line 2 with another
/// amount, line 3 with other remarks, one line more, other remarks of the charge; then does `fin` in the
/// editor.
void cambia_cargo(EscenaBorrador& escena, const std::function<void(QWidget&)>& fin)
{
    control<QAction>(*escena.ventana, "mnuVisor").trigger();
    auto& visor = control<QWidget>(*escena.ventana, "frmCompras_Atipicos_Visor");
    QVERIFY(QTest::qWaitForWindowActive(&visor, atipicos::pruebas::paciencia));
    QTest::keyClick(&control<>(visor, "txtFechaF"), Qt::Key_Return);
    QCOMPARE(control<VSFlexGrid>(visor, "vsCab").Rows(), 2);
    escena.avisos->respuestas = { Respuesta::Si, Respuesta::Si };
    const AlAbrirse al_abrirse(
        [&](QWidget& editor) {
            auto& rejilla = control<VSFlexGrid>(editor, "vsCargos");
            rejilla.set_Row(1);
            clic(editor, "cmdEliminar");
            rejilla.set_Row(1);
            clic(editor, "cmdModificar");
            EscenaBorrador::teclea_linea({ "=", "Porte doble", "=", "-2", "=" });
            rejilla.set_Row(2);
            {
                const AlAbrirse comentario(
                    [](QWidget&) {
                        intro();
                        teclea("caja 4");
                        pulsa(Qt::Key_F9);
                    },
                    "frmEditor_Comentarios");
                clic(editor, "cmdComent");
            }
            editor.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&editor, atipicos::pruebas::paciencia));
            control<>(editor, "txtArticulo").setFocus();
            EscenaBorrador::teclea_linea({ "1012", "=", "", "0,5", "4" });
            auto& observaciones = control<QPlainTextEdit>(editor, "txtObservaciones");
            observaciones.setPlainText(QStringLiteral("Palés dañados"));
            fin(editor);
        },
        "frmCompras_Atipicos");
    clic(visor, "cmdModificar");
    visor.close();
    escena.avisos->dichos.clear();
    escena.avisos->respuestas.clear();
}

void escribe(const std::filesystem::path& fichero, const std::string& texto)
{
    std::filesystem::create_directories(fichero.parent_path());
    std::ofstream(fichero) << texto;
}

}

class Recuperacion_Test : public QObject {
    Q_OBJECT
private slots:

    void a_charge_recovered_is_stored_as_if_nothing_had_happened()
    {
        std::vector<std::string> debido;
        {
            const EscenaBorrador sin_fin;
            sin_fin.teclea_cargo();
            QCOMPARE(sin_fin.ficheros().size(), std::size_t{ 2 }); // the draft, and that it is somebody's
            sin_fin.acepta(sin_fin.editor());
            QVERIFY(sin_fin.ficheros().empty()); // nothing is left of what is saved
            debido = sin_fin.todo();
        }
        EscenaBorrador escena;
        QVERIFY(!escena.ofrece());
        escena.teclea_cargo();
        const auto tecleado = celdas(escena.rejilla());
        escena.cierra_y_abre();
        QVERIFY(escena.ofrece());
        QCOMPARE(escena.ofrecidos(),
            QStringList{ QStringLiteral(
                "Cargo sin guardar de las 12:40, Quesería Majorera Tiscamanita, 3 líneas, 113,61") });
        QCOMPARE(foco(), QStringLiteral("cmdReclamaciones")); // Enter opens the editor as ever
        escena.lista().setFocus();
        intro();
        QCOMPARE(celdas(escena.rejilla()), tecleado);
        QCOMPARE(control<QLabel>(escena.editor(), "lblTotal").text(), QStringLiteral("113,61"));
        QVERIFY(escena.avisos->dichos.empty());
        QVERIFY(!escena.ofrece()); // it is in the editor now, and kept from there
        QCOMPARE(escena.ficheros().size(), std::size_t{ 2 });
        escena.acepta(escena.editor());
        QVERIFY(escena.ficheros().empty());
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 }); // that it was stored
        QCOMPARE(escena.todo(), debido);
    }

    void a_stored_charge_that_was_being_changed_is_opened_and_changed_again()
    {
        std::vector<std::string> debido;
        {
            EscenaBorrador sin_fin;
            sin_fin.teclea_cargo();
            sin_fin.acepta(sin_fin.editor());
            cambia_cargo(sin_fin, [&](QWidget& editor) {
                sin_fin.acepta(editor);
                editor.close();
            });
            QVERIFY(sin_fin.ficheros().empty());
            debido = sin_fin.todo();
        }
        EscenaBorrador escena;
        escena.teclea_cargo();
        escena.acepta(escena.editor());
        cambia_cargo(escena, [](QWidget& editor) { clic(editor, "cmdSalir"); });
        escena.cierra_y_abre();
        QCOMPARE(escena.ofrecidos(),
            QStringList{ QStringLiteral(
                "Cambios sin guardar en el cargo AT260001 del almacén 3 de las 12:40, Quesería "
                "Majorera Tiscamanita, 3 líneas, -20,62") });
        atajo(Qt::Key_E); // the list asks first, and No is the default
        QVERIFY(escena.avisos->dichos == std::vector<Mensaje>{ nuevo_asiento });
        QVERIFY(escena.ofrece());
        escena.ventana->activateWindow();

        escena.avisos->respuestas = { Respuesta::Si };
        {
            const AlAbrirse al_abrirse(
                [&](QWidget& editor) {
                    QTRY_COMPARE(control<QLabel>(editor, "lblTotal").text(), QStringLiteral("-20,62"));
                    QCOMPARE(control<QPlainTextEdit>(editor, "txtObservaciones").toPlainText(),
                        QStringLiteral("Palés dañados"));
                    QVERIFY(!control<>(editor, "txtAlmacen").isEnabled());
                    escena.acepta(editor);
                    editor.close();
                },
                "frmCompras_Atipicos");
            clic(*escena.ventana, "cmdRecuperar");
        }
        QVERIFY(escena.ficheros().empty());
        QVERIFY(!escena.ofrece());
        QCOMPARE(escena.todo(), debido);
    }

    void what_cannot_be_brought_back_is_told_and_the_draft_stays()
    {
        EscenaBorrador escena;
        escena.teclea_cargo();
        escena.cierra_y_abre();
        escena.sesion->bases.orvalin->Execute("DELETE FROM Articulos WHERE Codigo = 1001");
        clic(*escena.ventana, "cmdRecuperar");
        QCOMPARE(escena.rejilla().Rows(), 3);
        QVERIFY(escena.avisos->dichos
            == (std::vector<Mensaje>{
                { "No se ha podido recuperar todo:\r\n\r\nLa línea 3 no se ha recuperado: ya no existe el "
                  "artículo 1001.\r\n\r\nEl borrador se conserva; si ya no lo quiere, descártelo.",
                    "¡ Atención !", Icono::exclamacion } }));
        escena.editor().close(); // which leaves what could be brought back, beside what it came from
        escena.ventana->activateWindow();
        QTRY_COMPARE(escena.lista().count(), 2);

        // The stored charge has been deleted, or changed, by somebody else.
        EscenaBorrador otra;
        otra.teclea_cargo();
        otra.acepta(otra.editor());
        cambia_cargo(otra, [](QWidget& editor) { clic(editor, "cmdSalir"); });
        otra.cierra_y_abre();
        otra.sesion->bases.orvalin->Execute(
            "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Precio = 1 WHERE Num_Linea = 2");
        otra.avisos->respuestas = { Respuesta::Si };
        {
            const AlAbrirse al_abrirse(
                [&](QWidget& editor) {
                    QTRY_COMPARE(otra.avisos->dichos.size(), std::size_t{ 2 });
                    QCOMPARE(control<VSFlexGrid>(editor, "vsCargos").Rows(), 4);
                    editor.close();
                },
                "frmCompras_Atipicos");
            clic(*otra.ventana, "cmdRecuperar");
        }
        QVERIFY2(otra.avisos->dichos.back().texto.find("Alguien ha cambiado las líneas del cargo AT260001")
                != std::string::npos,
            otra.avisos->dichos.back().texto.c_str());
        otra.ventana->activateWindow();
        for (const auto* tabla : { "_Lineas", "" })
            otra.sesion->bases.orvalin->Execute(
                std::string("DELETE FROM Proveedores_Cargos_Atipicos") + tabla);
        clic(*otra.ventana, "cmdRecuperar");
        QCOMPARE(otra.avisos->dichos.back().texto,
            std::string(
                "Ya no está el cargo AT260001 del almacén 3 que se estaba cambiando.\r\n\r\nEl borrador se "
                "conserva; si ya no lo quiere, descártelo."));
        QCOMPARE(otra.lista().count(), 1);
    }

    void a_line_that_was_not_accepted_comes_back_into_the_entry_fields()
    {
        EscenaBorrador escena;
        escena.teclea_cargo();
        teclea("1012");
        intro(3);
        teclea("7,5");
        clic(escena.editor(), "cmdSalir");
        escena.cierra_y_abre();
        QVERIFY2(
            escena.ofrecidos().value(0).endsWith(QStringLiteral("3 líneas y una a medio teclear, 113,61")),
            qPrintable(escena.ofrecidos().value(0)));
        clic(*escena.ventana, "cmdRecuperar");
        QCOMPARE(escena.rejilla().Rows(), 4);
        QCOMPARE(control<QLineEdit>(escena.editor(), "txtUnidades").text(), QStringLiteral("7,50"));
        QCOMPARE(control<QLineEdit>(escena.editor(), "txtArticuloDescripcion").text(),
            QStringLiteral("Gofio de millo 1 kg"));
    }

    void a_header_that_was_emptied_after_the_lines_comes_back_so()
    {
        EscenaBorrador escena;
        escena.teclea_cargo();
        auto& proveedor = control<QLineEdit>(control<>(escena.editor(), "txtProv"), "txtCodigo");
        proveedor.setFocus();
        pulsa(Qt::Key_Delete);
        control<QLineEdit>(escena.editor(), "txtFecha").setText(QStringLiteral("31/02/2026"));
        clic(escena.editor(), "cmdSalir");
        escena.cierra_y_abre();
        QVERIFY2(escena.ofrecidos().value(0).contains(QStringLiteral(", sin proveedor, 3 líneas, ")),
            qPrintable(escena.ofrecidos().value(0)));
        clic(*escena.ventana, "cmdRecuperar");
        QVERIFY(escena.avisos->dichos.empty());
        QCOMPARE(escena.rejilla().Rows(), 4);
        QCOMPARE(control<QLineEdit>(escena.editor(), "txtFecha").text(), QStringLiteral("31/02/2026"));
        QCOMPARE(control<QLineEdit>(control<>(escena.editor(), "txtProv"), "txtCodigo").text(), QString());
        QCOMPARE(control<QLineEdit>(control<>(escena.editor(), "txtAlmacen"), "txtCodigo").text(),
            QStringLiteral("3"));
    }

    void discarding_asks_and_a_damaged_file_can_only_be_discarded()
    {
        EscenaBorrador escena;
        escena.teclea_cargo();
        escena.reloj->valor = dia_y_hora("22/11/2026", 8, 5, 0);
        escribe(escena.estado() / "cargo-1-1.json", "{\"formato\": 1, \"lugar\"");
        escribe(escena.estado() / "cargo-1-2.json", "{\"formato\": 2}");
        escena.cierra_y_abre();
        QCOMPARE(escena.lista().count(), 3);
        QVERIFY(escena.ofrecidos().value(0).startsWith(
            QStringLiteral("Cargo sin guardar del 21/11/2026 a las 12:40, ")));
        QCOMPARE(escena.ofrecidos().value(1),
            QStringLiteral("Cargo sin guardar que no se puede recuperar: está dañado (cargo-1-1.json)"));
        QVERIFY(escena.ofrecidos().value(2).contains(QStringLiteral("es de otra versión del programa")));

        escena.lista().setFocus();
        pulsa(Qt::Key_Delete);
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 });
        QVERIFY(escena.avisos->dichos.back().por_defecto == Respuesta::No);
        QCOMPARE(escena.lista().count(), 3); // No

        pulsa(Qt::Key_Down);
        QVERIFY(!control<>(*escena.ventana, "cmdRecuperar").isEnabled());
        intro();
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 }); // nothing happens
        escena.avisos->respuestas = { Respuesta::Si };
        atajo(Qt::Key_D);
        QVERIFY(!std::filesystem::exists(escena.estado() / "cargo-1-1.json"));
        QVERIFY(std::filesystem::exists(escena.estado() / "cargo-1-2.json"));
        QCOMPARE(escena.lista().count(), 2);
    }

    /// As after a kill between the commits of a save and the end of its draft.
    void a_charge_that_was_stored_before_its_draft_went_is_not_brought_back()
    {
        EscenaBorrador escena;
        const auto mientras_se_guarda = [&](QWidget& editor) {
            const auto fichero = [&] {
                for (const auto& nombre : escena.ficheros())
                    if (nombre.ends_with(".json"))
                        return escena.estado() / nombre;
                return escena.estado();
            }();
            auto leido = escena.sesion->borradores->lee(fichero).borrador;
            leido.Guardandose = true;
            escena.acepta(editor);
            escena.sesion->borradores->Abrir()->Guardar(leido);
            return leido;
        };
        const auto recupera_y_dice = [&] {
            escena.avisos->dichos.clear();
            clic(*escena.ventana, "cmdRecuperar");
            return escena.avisos->dichos.empty() ? std::string() : escena.avisos->dichos.back().texto;
        };
        const std::string dicho
            = "Este cargo llegó a guardarse: es el AT260001 del almacén 3. No hay nada que "
              "recuperar, y su borrador se ha quitado.";
        escena.teclea_cargo();
        const auto nuevo = mientras_se_guarda(escena.editor());
        escena.cierra_y_abre();
        QVERIFY(escena.ofrecidos().value(0).endsWith(
            QStringLiteral("Se estaba guardando: al recuperarlo se mira si ya está")));
        const auto guardado = escena.todo();
        QCOMPARE(recupera_y_dice(), dicho);
        QVERIFY(escena.ficheros().empty());
        QVERIFY(!escena.ofrece());
        QVERIFY(escena.todo() == guardado);

        cambia_cargo(escena, [&](QWidget& editor) {
            static_cast<void>(mientras_se_guarda(editor));
            editor.close();
        });
        escena.cierra_y_abre();
        QCOMPARE(recupera_y_dice(), dicho);
        QVERIFY(!escena.ofrece());

        // What is kept after the save is of another one.
        escena.reloj->valor = dia_y_hora("21/11/2026", 18, 5, 9);
        escena.sesion->borradores->Abrir()->Guardar(nuevo);
        escena.cierra_y_abre();
        QCOMPARE(recupera_y_dice(), std::string());
        QCOMPARE(escena.rejilla().Rows(), 4);
    }

    /// The list that a recovery opens is none that the person has searched for.
    void what_a_recovery_looks_for_is_not_remembered_as_a_search()
    {
        const auto hoy = dia("21/11/2026");
        const app::UltimaBusqueda ultima(1, 2);
        ultima.guarda({ dia("03/03/2026"), dia("30/10/2026"), 4, 106 }, hoy);
        EscenaBorrador escena;
        escena.teclea_cargo();
        escena.acepta(escena.editor());
        ultima.guarda({ dia("01/01/2026"), dia("20/12/2026"), 0, 0 }, hoy);
        cambia_cargo(escena, [](QWidget& editor) { clic(editor, "cmdSalir"); });
        ultima.guarda({ dia("03/03/2026"), dia("30/10/2026"), 4, 106 }, hoy);
        escena.cierra_y_abre();
        escena.avisos->respuestas = { Respuesta::Si };
        {
            const AlAbrirse al_abrirse([](QWidget& editor) { editor.close(); }, "frmCompras_Atipicos");
            clic(*escena.ventana, "cmdRecuperar");
        }
        QVERIFY((ultima.lee(hoy)
            == frmclsComprasAtipVisor::Busqueda{ dia("03/03/2026"), dia("30/10/2026"), 4, 106 }));
        auto& visor = control<QWidget>(*escena.ventana, "frmCompras_Atipicos_Visor");
        control<QLineEdit>(visor, "txtFechaF").setText(QStringLiteral("15/12/2026"));
        QTest::keyClick(&control<>(visor, "txtFechaF"), Qt::Key_Return);
        QCOMPARE(ultima.lee(hoy).Fecha_Final, dia("15/12/2026")); // this is one
        QCOMPARE(ultima.lee(hoy).Almacen, std::int16_t{ 3 });
    }

    void with_another_charge_in_the_editor_nothing_is_brought_over_it()
    {
        EscenaBorrador escena;
        escena.teclea_cargo();
        escena.cierra_y_abre();
        escena.teclea_cargo();
        escena.ventana->activateWindow();
        clic(*escena.ventana, "cmdRecuperar");
        QVERIFY(!escena.avisos->dichos.empty());
        QCOMPARE(escena.avisos->dichos.back().texto,
            std::string(
                "Hay otro cargo sin guardar en su ventana. Guárdelo o ciérrela antes de recuperar éste."));
        QCOMPARE(escena.rejilla().Rows(), 4);
        QCOMPARE(escena.lista().count(), 1); // the one that is open is not offered
        escena.ventana->close();
        QCOMPARE(escena.avisos->dichos.back().texto,
            std::string("Hay un cargo sin guardar. Queda como borrador y se le ofrecerá aquí la próxima "
                        "vez.\r\n\r\n¿Desea salir?"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(Recuperacion_Test)
#include "Recuperacion_test.moc"
