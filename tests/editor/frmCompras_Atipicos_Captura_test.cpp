// Lines are keyed in, accepted and taken back.
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using namespace atipicos::pruebas;

class frmCompras_Atipicos_Captura_Test : public QObject {
    Q_OBJECT
private slots:
    void enter_moves_on_through_header_and_line()
    {
        EscenaEditor escena("");
        QStringList recorrido;
        for (int i = 0; i < 11; ++i) {
            recorrido << foco();
            if (foco() == QLatin1String("txtProv"))
                teclea("104");
            intro();
        }
        QCOMPARE(recorrido.join(u' '),
            QStringLiteral("txtAlmacen txtProv txtFecha txtObservaciones chkFranquiciado txtArticulo "
                           "txtArticuloDescripcion txtObserv txtUnidades txtCosto txtImporte"));
        QCOMPARE(escena.rejilla().Rows(), 2);
        QCOMPARE(foco(), QStringLiteral("txtArticulo"));
    }

    void an_unknown_supplier_keeps_the_focus()
    {
        EscenaEditor escena("");
        intro();
        teclea("9999");
        intro();
        QCOMPARE(foco(), QStringLiteral("txtProv"));
        QVERIFY(!escena.c<Selector>("txtProv").Elegido());
    }

    void a_looked_up_article_fills_its_description()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        teclea("1003");
        intro();
        QCOMPARE(escena.texto("txtArticuloDescripcion"), QStringLiteral("Vino tinto joven 75 cl"));
        QCOMPARE(foco(), QStringLiteral("txtArticuloDescripcion"));
        pulsa(Qt::Key_Tab, Qt::ShiftModifier);
        teclea("9999");
        intro();
        QCOMPARE(escena.texto("txtArticuloDescripcion"), QString());
    }

    void the_amount_follows_units_and_cost_and_cannot_be_typed()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        intro(3);
        teclea("12");
        QCOMPARE(escena.texto("txtImporte"), QStringLiteral("0,00"));
        intro();
        teclea("5,6325");
        QCOMPARE(escena.texto("txtImporte"), QStringLiteral("67,59"));
        QCOMPARE(escena.texto("txtCosto"), QStringLiteral("5,6325"));
        intro();
        teclea("999");
        pulsa(Qt::Key_Delete);
        QCOMPARE(escena.texto("txtImporte"), QStringLiteral("67,59"));
        pulsa(Qt::Key_Tab, Qt::ShiftModifier);
        pulsa(Qt::Key_A, Qt::ControlModifier);
        teclea("1234,5");
        intro();
        QCOMPARE(escena.texto("txtCosto"), QStringLiteral("1.234,5000"));
        QCOMPARE(escena.texto("txtImporte"), QStringLiteral("14.814,00"));
        QCOMPARE(escena.rejilla().Rows(), 1);
    }

    void an_accepted_line_goes_into_the_grid()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1003", "=", "rota", "12,485", "9,75");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "10");
        QCOMPARE(
            escena.fila(1), QStringLiteral("1003|Vino tinto joven 75 cl|rota|12,49|9,7500|121,73|75900010"));
        QCOMPARE(escena.fila(2), QStringLiteral("0|Porte||1,00|10,0000|10,00|"));
        QCOMPARE(escena.total(), QStringLiteral("131,73"));
        QCOMPARE(escena.cinco_botones(), QStringLiteral("enabled"));
        QCOMPARE(escena.rejilla().Row(), 0);
        QCOMPARE(foco(), QStringLiteral("txtArticulo"));
        for (const auto* nombre : { "txtUnidades", "txtCosto", "txtImporte" })
            QCOMPARE(escena.texto(nombre), QStringLiteral("0"));
        for (const auto* nombre : { "txtArticuloDescripcion", "txtObserv" })
            QCOMPARE(escena.texto(nombre), QString());
        QVERIFY(escena.c<Selector>("txtArticulo").vacio());
    }

    void the_header_is_asked_for_in_order()
    {
        EscenaEditor escena("");
        pulsa(Qt::Key_Delete); // no warehouse, no supplier, and no date either
        escena.c<qvMaskEdBox>("txtFecha").Limpiar();
        escena.c<>("txtAlmacen").setEnabled(false);
        const auto acepta = [&] {
            escena.c<>("txtImporte").setFocus();
            intro();
        };
        acepta();
        QVERIFY(escena.avisos().back()
            == (Mensaje{ "Debe especificar el Almacén", "¡ Atención !", Icono::exclamacion }));
        QVERIFY(escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(foco(), QStringLiteral("txtAlmacen"));
        teclea("1");
        escena.c<>("txtProv").setEnabled(false);
        acepta();
        QVERIFY(escena.avisos().back()
            == (Mensaje{ "Debe especificar el Proveedor", "¡ Atención !", Icono::exclamacion }));
        QCOMPARE(foco(), QStringLiteral("txtProv"));
        teclea("104");
        acepta();
        QVERIFY(escena.avisos().back()
            == (Mensaje{ "Debe seleccionar una Fecha válida", "¡ Atencion !", Icono::exclamacion }));
        QCOMPARE(foco(), QStringLiteral("txtFecha"));
        teclea("31022026");
        acepta();
        QCOMPARE(escena.avisos().size(), std::size_t{ 4 });
        QCOMPARE(escena.rejilla().Rows(), 1);
        escena.c<qvMaskEdBox>("txtFecha").set_Fecha(dia("28/02/2026"));
        acepta();
        QCOMPARE(escena.avisos().size(), std::size_t{ 4 });
        QCOMPARE(escena.rejilla().Rows(), 2);
    }

    void an_error_while_accepting_keeps_what_was_typed()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1003", "=", "", "1", "1");
        EscenaEditor::teclea_linea("1004", "=", "x", "2", "3");
        QCOMPARE(escena.rejilla().Rows(), 3);
        teclea("1005");
        intro();
        intro(4);
        escena.banco.parte->falla_en = escena.banco.parte->dichas.size() + 1; // the lookup of the account
        const auto antes = escena.banco.parte->dichas.size();
        intro();
        QCOMPARE(escena.banco.parte->dichas.size(), antes + 1);
        QVERIFY(escena.banco.parte->dichas.back().find("FROM Articulos") != std::string::npos);
        QVERIFY(escena.avisos().back()
            == (Mensaje{ std::string("Error inesperado. Repita la operación\r") + Parte::descripcion,
                "¡ Atención !", Icono::exclamacion }));
        QCOMPARE(escena.rejilla().Rows(), 3);
        QCOMPARE(escena.texto("txtArticuloDescripcion"), QStringLiteral("Aceite de oliva 5 l"));
        intro();
        QCOMPARE(escena.rejilla().Rows(), 4);
    }

    void an_amount_that_does_not_fit_is_told()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        intro(3);
        teclea("900000000000");
        intro();
        teclea("9000");
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QCOMPARE(escena.avisos().front().titulo, std::string("frmCompras_Atipicos:txtCosto_Change"));
        QVERIFY(escena.avisos().front().texto.ends_with("] Desbordamiento"));
        intro(2);
        QVERIFY(escena.avisos().back()
            == (Mensaje{ "Error inesperado. Repita la operación\rDesbordamiento", "¡ Atención !",
                Icono::exclamacion }));
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
    }

    void a_line_is_taken_back_and_written_back()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1003", "=", "rota", "2", "1234,5");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "10");
        escena.rejilla().setFocus();
        pulsa(Qt::Key_Home);
        atajo(Qt::Key_M);
        QCOMPARE(foco(), QStringLiteral("txtArticulo"));
        QCOMPARE(control<QLineEdit>(escena.c<>("txtArticulo"), "txtCodigo").text(), QStringLiteral("1003"));
        QCOMPARE(escena.texto("txtArticuloDescripcion"), QStringLiteral("Vino tinto joven 75 cl"));
        QCOMPARE(escena.texto("txtObserv"), QStringLiteral("rota"));
        QCOMPARE(escena.texto("txtUnidades"), QStringLiteral("2,00"));
        QCOMPARE(escena.texto("txtCosto"), QStringLiteral("1.234,5000"));
        QCOMPARE(escena.texto("txtImporte"), QStringLiteral("2.469,00"));
        EscenaEditor::teclea_linea("1006", "=", "vista", "3", "=");
        QCOMPARE(escena.fila(1),
            QStringLiteral("1006|Atún en aceite, lata de 900 g|vista|3,00|1.234,5000|3.703,50|75900010"));
        QCOMPARE(escena.rejilla().Rows(), 3);
        QCOMPARE(escena.total(), QStringLiteral("3.713,50"));
        EscenaEditor::teclea_linea("", "Otra", "", "1", "1"); // a new line again
        QCOMPARE(escena.rejilla().Rows(), 4);
        const QPoint celda = escena.rejilla().visualRect(escena.rejilla().model()->index(1, 1)).center();
        QTest::mouseClick(escena.rejilla().viewport(), Qt::LeftButton, {}, celda);
        QTest::mouseDClick(escena.rejilla().viewport(), Qt::LeftButton, {}, celda);
        QCOMPARE(escena.texto("txtArticuloDescripcion"), QStringLiteral("Porte"));
    }

    void nothing_is_taken_back_without_a_chosen_line()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "10");
        clic(*escena.form, "cmdModificar");
        QCOMPARE(escena.texto("txtArticuloDescripcion"), QString());
        clic(*escena.form, "cmdEliminar");
        clic(*escena.form, "cmdComent");
        QCOMPARE(escena.rejilla().Rows(), 2);
        QVERIFY(escena.avisos().empty());
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Captura_Test)
#include "frmCompras_Atipicos_Captura_test.moc"
