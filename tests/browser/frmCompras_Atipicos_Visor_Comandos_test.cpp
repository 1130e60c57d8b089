// The commands of the charge browser: delete, change, close.
#include "editor/frmCompras_Atipicos.hpp"
#include "tests/browser/ConTresCargos.hpp"
#include "tests/support/Ventanas.hpp"

#include <QSignalSpy>

using namespace atipicos;
using pruebas::ConTresListados;
using pruebas::EscenaVisor;

namespace {

Mensaje pregunta_eliminar(const std::string& asiento)
{
    return { "Deberá ir a contabilidad y eliminar manualmente el asiento asociado " + asiento
            + ".\r\n\r\n¿Está seguro que desea eliminar el atípico seleccionado?",
        "¡ Atención !", Icono::pregunta, Botones::SiNo, Respuesta::No };
}

Mensaje pregunta_modificar()
{
    return {
        "Se va a generar un nuevo asiento, asegúrese de eliminar el ya existente en Contabilidad junto a sus "
        "previsiones de pago.\r\n\r\n¿Desea Continuar?",
        "¡ Atención !", Icono::pregunta, Botones::SiNo, Respuesta::No
    };
}

}

class frmCompras_Atipicos_Visor_Comandos_Test : public QObject {
    Q_OBJECT
private slots:
    // Delete

    void delete_asks_first_and_no_leaves_everything()
    {
        ConTresListados visor;
        const auto antes = visor.banco.estado();
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_eliminar("3") });
        QVERIFY(visor.banco.estado() == antes);
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/1 AT260001/2"));
        QVERIFY(visor.banco.parte->dichas.empty());
    }

    void delete_takes_the_chosen_charge_in_one_transaction_and_searches_again()
    {
        ConTresListados visor;
        visor.lista().set_Row(3);
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_eliminar("2") });
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/1"));
        QCOMPARE(visor.lista().Row(), 1);
        QCOMPARE(visor.form.focusWidget(), &visor.lista());
        const auto& dichas = visor.banco.parte->dichas;
        QCOMPARE(dichas.size(), std::size_t{ 5 });
        QCOMPARE(dichas[0], std::string("gestion BEGIN"));
        QVERIFY(dichas[1].starts_with("gestion EXEC DELETE FROM Proveedores_Cargos_Atipicos_Lineas "));
        QVERIFY(dichas[2].starts_with("gestion EXEC DELETE FROM Proveedores_Cargos_Atipicos "));
        QCOMPARE(dichas[3], std::string("gestion COMMIT"));
        QVERIFY(dichas[4].starts_with("gestion OPEN SELECT pc.* ,"));
        QCOMPARE(visor.banco.estado()["Proveedores_Cargos_Atipicos_Lineas"], 6);
        QCOMPARE(visor.banco.estado()["Bexmor.dbo.Asientos"], 3); // left to be deleted by hand
    }

    void a_charge_that_was_not_posted_has_no_entry_number_in_the_question()
    {
        EscenaVisor visor;
        visor.graba("SINASIENTO", "21/11/2026");
        visor.abre_y_busca();
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_eliminar("") });
    }

    void deleting_the_last_charge_leaves_the_heading_and_disables_the_commands()
    {
        EscenaVisor visor;
        visor.graba("UNICO", "21/11/2026");
        visor.abre_y_busca();
        visor.banco.avisos->respuestas = { Respuesta::Si };
        visor.clic("cmdEliminar");
        QCOMPARE(visor.lista().Rows(), 1);
        QCOMPARE(visor.comandos(), QStringLiteral("disabled"));
        QCOMPARE(visor.banco.estado()["Proveedores_Cargos_Atipicos"], 0);
    }

    void from_the_details_delete_goes_back_to_the_list()
    {
        ConTresListados visor;
        visor.pulsa(Qt::Key_Return);
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QCOMPARE(visor.listados(), QStringLiteral("AT260001/1 AT260001/2"));
    }

    void the_key_of_the_deletion_comes_from_the_row_and_not_from_the_form()
    {
        ConTresListados visor;
        visor.form.Ejercicio = 1999;
        visor.form.Almacen_Inicial = 77;
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.listados(), QStringLiteral("AT260001/1 AT260001/2"));
    }

    void what_the_cells_show_decides_nothing()
    {
        ConTresListados visor;
        auto& lista = visor.lista();
        lista.set_Row(3);
        for (const int columna : { 0, 1, 3, 5, 9 })
            lista.set_TextMatrix(3, columna, QStringLiteral("otra cosa"));
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.c<QLabel>("lblCodigo").text(), QStringLiteral("Código: AT260001"));
        QCOMPARE(visor.texto("txtFechaDet"), QStringLiteral("21/11/2026"));
        QCOMPARE(visor.codigo("txtAlmacenDet").text(), QStringLiteral("2"));
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_eliminar("2") });
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/1"));
    }

    void a_failing_deletion_shows_one_box_and_changes_nothing_data()
    {
        QTest::addColumn<int>("operacion");
        QTest::addColumn<QString>("titulo");
        QTest::newRow("begin") << 1 << QStringLiteral("frmCompras_Atipicos_Visor:cmdEliminar_Click");
        QTest::newRow("lines") << 2 << QStringLiteral("clsAtipico:Eliminar_Atipico");
        QTest::newRow("header") << 3 << QStringLiteral("clsAtipico:Eliminar_Atipico");
        QTest::newRow("commit") << 4 << QStringLiteral("frmCompras_Atipicos_Visor:cmdEliminar_Click");
    }

    void a_failing_deletion_shows_one_box_and_changes_nothing()
    {
        QFETCH(const int, operacion);
        QFETCH(const QString, titulo);
        ConTresListados visor;
        const auto antes = visor.banco.estado();
        visor.lista().set_Row(2);
        visor.banco.parte->falla_en = static_cast<std::size_t>(operacion);
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.titulos(), (std::vector<std::string>{ "¡ Atención !", titulo.toStdString() }));
        QVERIFY(visor.banco.avisos->dichos[1].texto.ends_with("] fallo provocado"));
        QVERIFY(visor.banco.estado() == antes);
        QCOMPARE(visor.lista().Rows(), 4);
        QCOMPARE(visor.lista().Row(), 2); // the list has not been read again
        QCOMPARE(visor.comandos(), QStringLiteral("enabled"));
    }

    void a_search_that_fails_after_the_deletion_is_told_by_the_command()
    {
        ConTresListados visor;
        visor.banco.parte->falla_en = 5;
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.titulos(),
            (std::vector<std::string>{ "¡ Atención !", "frmCompras_Atipicos_Visor:cmdEliminar_Click" }));
        QCOMPARE(visor.listados(), QStringLiteral("AT260001/1 AT260001/2")); // the charge is gone
        QCOMPARE(visor.banco.estado()["Proveedores_Cargos_Atipicos"], 2);
    }

    // Change

    void change_asks_first_and_no_opens_nothing()
    {
        ConTresListados visor;
        visor.clic("cmdModificar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_modificar() });
        QVERIFY(!frmCompras_Atipicos::compartido().isVisible());
        QVERIFY(visor.banco.parte->dichas.empty());
    }

    void change_opens_the_editor_for_the_chosen_charge_and_shows_what_has_changed()
    {
        ConTresListados visor;
        visor.lista().set_Row(3);
        visor.pulsa(Qt::Key_Return); // from the details
        visor.form.Ejercicio = 1999; // the year is that of the charge's date
        visor.responde(Respuesta::Si);
        QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos>([&] { visor.clic("cmdModificar"); },
            [&](frmCompras_Atipicos& editor) {
                QCOMPARE(&editor, &frmCompras_Atipicos::compartido());
                QCOMPARE(editor.windowTitle(), QStringLiteral("Reclamaciones a Proveedores - AT260001"));
                QCOMPARE(editor.Ejercicio, std::int16_t{ 2026 });
                QCOMPARE(editor.Almacen, std::int16_t{ 2 });
                QCOMPARE(editor.findChild<VSFlexGrid*>(QStringLiteral("vsCargos"))->Rows(), 4);
                visor.banco.bases().orvalin->Execute(
                    "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 77 WHERE Cod_Almacen = 2");
                editor.close();
            }));
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QCOMPARE(visor.lista().TextMatrix(3, 9), QStringLiteral("77"));
        QCOMPARE(visor.lista().Row(), 1);
        QCOMPARE(visor.banco.avisos->dichos.size(), std::size_t{ 1 });
    }

    void a_second_change_opens_the_other_charge()
    {
        ConTresListados visor;
        QStringList titulos;
        for (const int fila : { 1, 2 }) {
            visor.activa();
            visor.lista().set_Row(fila);
            visor.responde(Respuesta::Si);
            QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos>([&] { visor.clic("cmdModificar"); },
                [&](frmCompras_Atipicos& editor) {
                    titulos << editor.windowTitle();
                    editor.close();
                }));
        }
        QCOMPARE(titulos.join(u' '),
            QStringLiteral("Reclamaciones a Proveedores - AT260002 Reclamaciones a Proveedores - AT260001"));
    }

    void a_search_that_fails_after_the_change_is_told_by_the_command()
    {
        ConTresListados visor;
        visor.responde(Respuesta::Si);
        QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos>([&] { visor.clic("cmdModificar"); },
            [&](frmCompras_Atipicos& editor) {
                visor.banco.parte->falla_en = visor.banco.parte->dichas.size() + 1;
                editor.close();
            }));
        QCOMPARE(visor.banco.titulos(),
            (std::vector<std::string>{ "¡ Atención !", "frmCompras_Atipicos_Visor:cmdModificar_Click" }));
        QCOMPARE(visor.lista().Rows(), 4);
    }

    // Without a chosen row, and closing

    void without_a_chosen_row_the_commands_do_nothing()
    {
        ConTresListados visor;
        visor.lista().set_Row(0);
        for (const auto* boton : { "cmdImprimir", "cmdModificar", "cmdEliminar" })
            visor.clic(boton);
        QVERIFY(visor.banco.titulos().empty());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void the_commands_have_their_letters()
    {
        ConTresListados visor;
        visor.pulsa(Qt::Key_E, Qt::AltModifier);
        QTRY_COMPARE(visor.banco.avisos->dichos.size(), std::size_t{ 1 });
        QCOMPARE(visor.banco.avisos->dichos.back(), pregunta_eliminar("3"));
        visor.pulsa(Qt::Key_M, Qt::AltModifier);
        QTRY_COMPARE(visor.banco.avisos->dichos.size(), std::size_t{ 2 });
        QCOMPARE(visor.banco.avisos->dichos.back(), pregunta_modificar());
    }

    void it_closes_by_button_and_escape_and_its_frame_and_says_so_once()
    {
        const auto cierra = std::vector<std::function<void(EscenaVisor&)>>{
            [](EscenaVisor& visor) { visor.clic("cmdSalir"); },
            [](EscenaVisor& visor) { visor.pulsa(Qt::Key_Escape); },
            [](EscenaVisor& visor) { visor.form.close(); },
        };
        for (const auto& accion : cierra) {
            ConTresListados visor;
            QSignalSpy descargas(&visor.form, &frmCompras_Atipicos_Visor::Descargado);
            accion(visor);
            QVERIFY(!visor.form.isVisible());
            QCOMPARE(descargas.count(), 1);
        }
    }

    void modal_it_returns_when_it_is_closed()
    {
        EscenaVisor visor;
        QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos_Visor>(
            [&] { visor.form.Show(1); }, [](frmCompras_Atipicos_Visor& form) { form.close(); }));
        QVERIFY(!visor.form.isVisible());
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Visor_Comandos_Test)
#include "frmCompras_Atipicos_Visor_Comandos_test.moc"
