// What the dialog of the forecasts shows, deletes and hands over.
#include "controls/Anclaje.hpp"
#include "controls/CabeceraUnida.hpp"
#include "controls/Twips.hpp"
#include "tests/posting/EscenaContabilizar.hpp"

#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>

using atipicos::Contabilizacion;
using atipicos::frmCompras_Atipicos_Contabilizar;
using atipicos::Mensaje;

using namespace atipicos::pruebas;

class frmCompras_Atipicos_Contabilizar_Test : public QObject {
    Q_OBJECT
private slots:
    void the_proposal_fills_the_grid()
    {
        EscenaContabilizar escena;
        QCOMPARE(escena.dialogo->windowTitle(), QStringLiteral("Previsiones de Pago"));
        QCOMPARE(escena.rejilla().Rows(), 4);
        QCOMPARE(escena.rejilla().TextMatrix(1, 0), QStringLiteral("50,00"));
        QCOMPARE(escena.resto(), QStringLiteral("0,00"));
        QVERIFY(escena.puede_eliminar());
        QCOMPARE(control<QLineEdit>(*escena.dialogo, "txtImporte").text(), QStringLiteral("150,00"));
        QCOMPARE(foco(), QStringLiteral("txtPrevImp"));
    }

    void without_a_proposal_the_whole_amount_remains()
    {
        EscenaContabilizar escena(false);
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.resto(), QStringLiteral("150,00"));
        QVERIFY(!escena.puede_eliminar());
    }

    void the_columns_of_the_grid()
    {
        EscenaContabilizar escena;
        QStringList titulos;
        for (int columna = 0; columna < 6; ++columna)
            titulos << escena.rejilla().TextMatrix(0, columna);
        QCOMPARE(titulos.join(u'|'), QStringLiteral("Importe|Tipo|Vencimiento||Banco|Banco"));
        QVERIFY(escena.rejilla().isColumnHidden(3));
        const auto alineacion = [&](int columna) {
            return escena.rejilla().model()->index(0, columna).data(Qt::TextAlignmentRole).toInt();
        };
        QCOMPARE(alineacion(0), int(Qt::AlignRight | Qt::AlignVCenter));
        QCOMPARE(alineacion(1), int(Qt::AlignLeft | Qt::AlignVCenter));
        QCOMPARE(alineacion(2), int(Qt::AlignHCenter | Qt::AlignVCenter));
        QCOMPARE(alineacion(4), int(Qt::AlignRight | Qt::AlignVCenter));
        QCOMPARE(alineacion(5), int(Qt::AlignLeft | Qt::AlignVCenter));
        const auto* cabecera = escena.rejilla().findChild<atipicos::CabeceraUnida*>();
        QCOMPARE(cabecera->celda(4), cabecera->celda(5));
        auto* tabla = QAccessible::queryAccessibleInterface(&escena.rejilla())->tableInterface();
        QStringList leidos;
        for (const int columna : { 3, 4 })
            leidos << tabla->cellAt(0, columna)
                          ->tableCellInterface()
                          ->columnHeaderCells()
                          .front()
                          ->text(QAccessible::Name);
        QCOMPARE(leidos.join(u'|'), QStringLiteral("Código del tipo|Cuenta del banco"));
        auto* resto = QAccessible::queryAccessibleInterface(&control<QLabel>(*escena.dialogo, "lblResto"));
        QCOMPARE(resto->text(QAccessible::Name), QStringLiteral("Resto: 0,00"));
    }

    void the_columns_have_their_widths_at_the_design_size_and_share_what_there_is_more()
    {
        EscenaContabilizar escena(false);
        auto& rejilla = escena.rejilla();
        const auto& anclaje = *rejilla.findChild<atipicos::Anclaje*>();
        const auto twips = [&](int cuantos) { return atipicos::twips_a_pixeles(cuantos, rejilla); };
        const int vencimiento = rejilla.horizontalHeader()->defaultSectionSize();
        for (const int gana : { 0, 310, 900, 0 }) {
            const int ancho = anclaje.AnchoDeDiseno() + gana;
            escena.dialogo->resize(
                escena.dialogo->width() + ancho - rejilla.viewport()->width(), escena.dialogo->height());
            QTRY_COMPARE(rejilla.viewport()->width(), ancho);
            std::vector<int> anchos;
            for (int columna = 0; columna < rejilla.Cols(); ++columna)
                anchos.push_back(rejilla.ColWidth(columna));
            QCOMPARE(anchos,
                (std::vector<int>{ twips(1100), twips(2600) + gana / 2, vencimiento, 0, twips(1000),
                    twips(2000) + gana / 2 }));
        }
    }

    void a_forecast_is_deleted()
    {
        EscenaContabilizar escena;
        clic(*escena.dialogo, "cmdPrevEliminar"); // nothing is selected
        QCOMPARE(escena.rejilla().Rows(), 4);
        QVERIFY(escena.banco.avisos->dichos.empty());
        escena.rejilla().set_Row(2);
        clic(*escena.dialogo, "cmdPrevEliminar");
        QCOMPARE(escena.rejilla().Rows(), 3);
        QCOMPARE(escena.resto(), QStringLiteral("50,00"));
        QCOMPARE(foco(), QStringLiteral("txtPrevImp"));
        for (int i = 0; i < 2; ++i) {
            QVERIFY(escena.puede_eliminar());
            escena.rejilla().setFocus();
            pulsa(Qt::Key_Home);
            pulsa(Qt::Key_F2); // no other key does
            QCOMPARE(escena.rejilla().Rows(), 3 - i);
            pulsa(Qt::Key_Delete);
        }
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.resto(), QStringLiteral("150,00"));
        QVERIFY(!escena.puede_eliminar());
    }

    void what_does_not_add_up_is_refused()
    {
        EscenaContabilizar escena(false, "100");
        EscenaContabilizar::teclea_prevision("49,99", "", "", "10122026");
        EscenaContabilizar::teclea_prevision("50", "", "", "10012027");
        QCOMPARE(escena.resto(), QStringLiteral("0,01"));
        control<QWidget>(*escena.dialogo, "vsPrev").setFocus();
        clic(*escena.dialogo, "cmdAceptar");
        QCOMPARE(escena.banco.avisos->dichos.size(), std::size_t{ 1 });
        QVERIFY(escena.banco.avisos->dichos.front()
            == (Mensaje{ "La suma de los vencimientos de pago no coincide con el total a contabilizar",
                "¡ Atención !", atipicos::Icono::informacion }));
        QCOMPARE(foco(), QStringLiteral("txtPrevImp"));
        QVERIFY(escena.dialogo->isVisible());
        QVERIFY(!escena.dialogo->Aceptado());
    }

    void what_adds_up_is_accepted_and_can_be_read()
    {
        EscenaContabilizar escena(false, "100");
        EscenaContabilizar::teclea_prevision("50", "1", "57200002", "10122026");
        EscenaContabilizar::teclea_prevision("50", "", "", "10012027");
        pulsa(Qt::Key_F9);
        QVERIFY(escena.dialogo->Aceptado());
        QVERIFY(!escena.dialogo->isVisible());
        QCOMPARE(escena.dialogo->PrevPago_NroVencimientos(), 2);
        QVERIFY(escena.dialogo->PrevPago_Importe(1) == moneda("50"));
        QCOMPARE(escena.dialogo->PrevPago_TipoDoc(1), std::int16_t{ 1 });
        QVERIFY(escena.dialogo->PrevPago_Vencimiento(2) == dia("10/01/2027"));
        QCOMPARE(escena.dialogo->PrevPago_Banco(1), std::string("57200002"));
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(escena.dialogo->PrevPago_Importe(3)), atipicos::Error);
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(escena.dialogo->PrevPago_Banco(0)), atipicos::Error);
        QVERIFY(escena.banco.avisos->dichos.empty());
    }

    void an_empty_grid_is_accepted_for_nothing_only()
    {
        EscenaContabilizar nada(true, "0");
        QCOMPARE(nada.rejilla().Rows(), 1);
        clic(*nada.dialogo, "cmdAceptar");
        QVERIFY(nada.dialogo->Aceptado());
        EscenaContabilizar algo(false, "0.01");
        clic(*algo.dialogo, "cmdAceptar");
        QVERIFY(!algo.dialogo->Aceptado());
    }

    void what_is_handed_over_is_what_the_grid_shows_and_the_sum_stays_exact()
    {
        EscenaContabilizar escena(true, "107.054");
        QCOMPARE(escena.rejilla().TextMatrix(3, 0), QStringLiteral("35,69"));
        QCOMPARE(escena.resto(), QStringLiteral("0,00"));
        pulsa(Qt::Key_F9);
        QVERIFY(escena.dialogo->Aceptado());
        QVERIFY(escena.dialogo->PrevPago_Importe(1) == moneda("35.68"));
        QVERIFY(escena.dialogo->PrevPago_Importe(3) == moneda("35.69"));
    }

    void only_its_buttons_end_it()
    {
        EscenaContabilizar escena;
        QVERIFY(!escena.dialogo->close());
        pulsa(Qt::Key_Escape);
        QVERIFY(escena.dialogo->isVisible());
        clic(*escena.dialogo, "cmdCancelar");
        QVERIFY(!escena.dialogo->isVisible());
        QVERIFY(!escena.dialogo->Aceptado());
        escena.dialogo->show();
        control<QPushButton>(*escena.dialogo, "cmdCancelar").setFocus();
        intro();
        QVERIFY(!escena.dialogo->isVisible());
    }

    void a_failing_database_is_told_once_for_each_question()
    {
        Banco banco;
        banco.parte->falla_en = 1;
        banco.parte->conexion_perdida = true;
        const frmCompras_Atipicos_Contabilizar dialogo(
            Contabilizacion{ moneda("150"), 104, dia("21/11/2026"), 1, true });
        QCOMPARE(banco.titulos(), std::vector<std::string>{ "¡ Atención !" });
        QVERIFY(banco.avisos->dichos.front().texto.starts_with("["));
        QVERIFY(banco.avisos->dichos.front().texto.ends_with(std::string("] ") + Parte::descripcion));
        QVERIFY(banco.avisos->dichos.front().icono == atipicos::Icono::critico);
        QCOMPARE(dialogo.PrevPago_NroVencimientos(), 0);
        QCOMPARE(dialogo.findChild<QLabel*>(QStringLiteral("lblResto"))->text(), QStringLiteral("150,00"));
    }

    void every_field_has_a_name_and_the_focus_goes_round_as_one_reads()
    {
        EscenaContabilizar escena;
        QStringList recorrido;
        for (int i = 0; i < 8; ++i) {
            QVERIFY2(!enfocado().accessibleName().isEmpty() || qobject_cast<QAbstractButton*>(&enfocado()),
                qPrintable(foco()));
            recorrido << foco();
            pulsa(Qt::Key_Tab);
        }
        QCOMPARE(recorrido.join(u' '),
            QStringLiteral("txtPrevImp txtPrevTipoDoc txtBanco txtPrevVto vsPrev cmdPrevEliminar cmdAceptar "
                           "cmdCancelar"));
    }

    void one_proposed_forecast_is_one_that_can_be_deleted()
    {
        EscenaContabilizar escena(true, "150", 103);
        QCOMPARE(escena.rejilla().Rows(), 2);
        QVERIFY(escena.puede_eliminar());
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Contabilizar_Test)
#include "frmCompras_Atipicos_Contabilizar_test.moc"
