#include "posting/frmCompras_Atipicos_Contabilizar.hpp"

#include "controls/Anclaje.hpp"
#include "controls/CabeceraUnida.hpp"
#include "controls/qvCuenta.hpp"
#include "controls/qvMaskEdBox.hpp"
#include "controls/qvTextBox.hpp"
#include "controls/qvTipoDocumento.hpp"
#include "controls/Twips.hpp"
#include "controls/VSFlexGrid.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyledItemDelegate>

using atipicos::Contabilizacion;
using atipicos::Currency;
using atipicos::frmCompras_Atipicos_Contabilizar;
using atipicos::Mensaje;
using namespace atipicos::pruebas;

namespace {

/// The dialog for 150,00 to be paid to a supplier of three instalments, on the sample company.
struct Escena {
    Banco banco;
    std::unique_ptr<frmCompras_Atipicos_Contabilizar> dialogo;

    explicit Escena(bool proponer = true, const char* importe = "150", std::int32_t proveedor = 104,
        const char* fecha = "21/11/2026")
    {
        dialogo = std::make_unique<frmCompras_Atipicos_Contabilizar>(
            Contabilizacion{ moneda(importe), proveedor, dia(fecha), 1, proponer });
        dialogo->show();
        if (!QTest::qWaitForWindowActive(dialogo.get(), atipicos::pruebas::paciencia))
            qFatal("the dialog is not active");
    }

    atipicos::VSFlexGrid& rejilla() { return control<atipicos::VSFlexGrid>(*dialogo, "vsPrev"); }
    QString resto() { return control<QLabel>(*dialogo, "lblResto").text(); }
    bool puede_eliminar() { return control<QPushButton>(*dialogo, "cmdPrevEliminar").isEnabled(); }

    /// Amount, type, bank and due date, each ended by Enter; "=" leaves what the dialog proposes.
    static void teclea_prevision(
        const char* importe, const char* tipo, const char* banco, const char* vencimiento)
    {
        const auto campo = [](const char* texto) {
            if (QLatin1String(texto) != QLatin1String("=")) {
                pulsa(Qt::Key_A, Qt::ControlModifier);
                pulsa(Qt::Key_Delete);
                teclea(texto);
            }
            intro();
        };
        campo(importe);
        campo(tipo);
        campo(banco);
        campo(vencimiento);
    }
};

}

class frmCompras_Atipicos_Contabilizar_Test : public QObject {
    Q_OBJECT
private slots:
    void the_proposal_fills_the_grid()
    {
        Escena escena;
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
        Escena escena(false);
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.resto(), QStringLiteral("150,00"));
        QVERIFY(!escena.puede_eliminar());
    }

    void the_columns_of_the_grid()
    {
        Escena escena;
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
        Escena escena(false);
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

    void a_type_that_does_not_exist_is_said_where_it_can_be_read()
    {
        Escena escena(false);
        const auto& nombre = control<QLineEdit>(control<>(*escena.dialogo, "txtPrevTipoDoc"), "lblNombre");
        const auto se_lee = [&] {
            return nombre.fontMetrics().horizontalAdvance(nombre.text()) < nombre.width()
                && nombre.cursorPosition() == 0;
        };
        const int minimo = escena.dialogo->minimumSizeHint().width();
        escena.dialogo->resize(880, escena.dialogo->height()); // as it opens where the screen has room
        control<QLineEdit>(control<>(*escena.dialogo, "txtPrevTipoDoc"), "txtCodigo").setFocus();
        teclea("88");
        intro();
        QCOMPARE(nombre.text(), QStringLiteral("No existe el tipo de documento"));
        QVERIFY(se_lee());
        escena.dialogo->resize(minimo, escena.dialogo->height());
        QTRY_COMPARE(nombre.text(), QStringLiteral("No existe"));
        QVERIFY(se_lee());
        escena.dialogo->resize(1000, escena.dialogo->height());
        QTRY_COMPARE(nombre.text(), QStringLiteral("No existe el tipo de documento"));
    }

    void the_bank_of_the_supplier_is_proposed()
    {
        Escena escena(false, "150", 101);
        QCOMPARE(control<atipicos::qvCuenta>(*escena.dialogo, "txtBanco").Cuenta(), std::string("57200001"));
        QVERIFY(!control<atipicos::qvCuenta>(*escena.dialogo, "txtBanco").Nombre().isEmpty());
        QVERIFY(std::any_of(escena.banco.parte->dichas.begin(), escena.banco.parte->dichas.end(),
            [](const std::string& dicha) {
                return dicha
                    == "gestion OPEN SELECT CtaBancoPago FROM Proveedores WHERE Cod_Empresa =1 AND Codigo "
                       "=101";
            }));
    }

    void a_forecast_is_added_field_by_field()
    {
        Escena escena(false, "150", 101);
        teclea("1");
        pulsa(Qt::Key_Comma);
        teclea("5");
        intro();
        QCOMPARE(foco(), QStringLiteral("txtPrevTipoDoc"));
        intro();
        QCOMPARE(foco(), QStringLiteral("txtBanco"));
        intro();
        QCOMPARE(foco(), QStringLiteral("txtPrevVto"));
        teclea("10122026");
        intro();
        QCOMPARE(escena.rejilla().Rows(), 2);
        QCOMPARE(escena.rejilla().TextMatrix(1, 0), QStringLiteral("1,50"));
        QCOMPARE(escena.rejilla().TextMatrix(1, 1), QStringLiteral("SIN ESPECIFICAR"));
        QCOMPARE(escena.rejilla().TextMatrix(1, 2), QStringLiteral("10/12/2026"));
        QCOMPARE(escena.rejilla().TextMatrix(1, 3), QStringLiteral("0"));
        QCOMPARE(escena.rejilla().TextMatrix(1, 4), QStringLiteral("57200001"));
        QVERIFY(!escena.rejilla().TextMatrix(1, 5).isEmpty());
        QCOMPARE(escena.resto(), QStringLiteral("148,50"));
        QVERIFY(escena.puede_eliminar());
        QCOMPARE(foco(), QStringLiteral("txtPrevImp"));
        QCOMPARE(control<QLineEdit>(*escena.dialogo, "txtPrevImp").text(), QString());
        QVERIFY(!control<atipicos::qvMaskEdBox>(*escena.dialogo, "txtPrevVto").Fecha());
        QCOMPARE(control<atipicos::qvCuenta>(*escena.dialogo, "txtBanco").Cuenta(), std::string("57200001"));
    }

    void the_type_is_named()
    {
        Escena escena(false);
        Escena::teclea_prevision("150", "2", "", "10122026");
        QCOMPARE(escena.rejilla().TextMatrix(1, 3), QStringLiteral("2"));
        QVERIFY(escena.rejilla().TextMatrix(1, 1) != QStringLiteral("SIN ESPECIFICAR"));
        QVERIFY(!escena.rejilla().TextMatrix(1, 1).isEmpty());
        QCOMPARE(control<atipicos::qvTipoDocumento>(*escena.dialogo, "txtPrevTipoDoc").Codigo(),
            std::int16_t{ 0 });
        QCOMPARE(escena.rejilla().TextMatrix(1, 4), QString());
        QCOMPARE(escena.dialogo->PrevPago_TipoDoc(1), std::int16_t{ 2 });
        QCOMPARE(escena.dialogo->PrevPago_Banco(1), std::string());
    }

    void an_amount_of_0_stays_where_it_is()
    {
        Escena escena(false);
        intro();
        QCOMPARE(foco(), QStringLiteral("txtPrevImp"));
        teclea("0");
        intro();
        QCOMPARE(foco(), QStringLiteral("txtPrevImp"));
    }

    void without_an_amount_the_due_date_adds_nothing()
    {
        Escena escena(false);
        control<QWidget>(*escena.dialogo, "txtPrevVto").setFocus();
        teclea("10122026");
        intro();
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(foco(), QStringLiteral("txtImporte"));
        intro();
        QCOMPARE(foco(), QStringLiteral("cmdAceptar"));
    }

    void an_unknown_bank_account_adds_nothing()
    {
        Escena escena(false);
        Escena::teclea_prevision("150", "", "57299999", "10122026");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(foco(), QStringLiteral("txtBanco"));
        QVERIFY(escena.banco.avisos->dichos.empty());
    }

    void an_impossible_date_is_cleared_and_adds_nothing()
    {
        Escena escena(false);
        Escena::teclea_prevision("150", "", "", "31022026");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(control<QLineEdit>(*escena.dialogo, "txtPrevVto").text(), QStringLiteral("//"));
        QCOMPARE(foco(), QStringLiteral("txtPrevVto"));
        QVERIFY(escena.banco.avisos->dichos.empty());
    }

    void a_due_date_takes_digits_again_after_an_impossible_one_and_is_completed()
    {
        Escena escena(false, "150", 104, "05/03/2026");
        const auto texto = [&] { return control<QLineEdit>(*escena.dialogo, "txtPrevVto").text(); };
        Escena::teclea_prevision("150", "", "", "31022027");
        QCOMPARE(texto(), QStringLiteral("//"));
        teclea("15122026");
        QCOMPARE(texto(), QStringLiteral("15/12/2026"));
        pulsa(Qt::Key_A, Qt::ControlModifier);
        pulsa(Qt::Key_Delete);
        teclea("+30"); // from the charge
        intro();
        QCOMPARE(escena.rejilla().TextMatrix(1, 2), QStringLiteral("04/04/2026"));
        Escena::teclea_prevision("1", "", "", "17");
        QCOMPARE(escena.rejilla().Rows(), 3);
        QCOMPARE(escena.rejilla().TextMatrix(2, 2), QStringLiteral("17/03/2026"));
    }

    void a_type_that_does_not_exist_holds_the_focus_and_is_not_added()
    {
        Escena escena(false);
        teclea("150");
        intro();
        teclea("99");
        intro();
        QCOMPARE(foco(), QStringLiteral("txtPrevTipoDoc"));
        QCOMPARE(
            control<QLineEdit>(control<QWidget>(*escena.dialogo, "txtPrevTipoDoc"), "lblNombre").toolTip(),
            QStringLiteral("No existe el tipo de documento"));
        control<QWidget>(*escena.dialogo, "txtPrevVto").setFocus();
        teclea("10122026");
        intro();
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(foco(), QStringLiteral("txtPrevTipoDoc"));
        QVERIFY(escena.banco.avisos->dichos.empty());
        teclea("2"); // instead of the 99
        intro(3);
        QCOMPARE(escena.rejilla().TextMatrix(1, 3), QStringLiteral("2"));
        Escena::teclea_prevision("1", "0", "", "11122026"); // none
        QCOMPARE(escena.rejilla().TextMatrix(2, 1), QStringLiteral("SIN ESPECIFICAR"));
    }

    void a_due_date_before_the_charge_is_added_and_stands_out()
    {
        Escena escena(false);
        auto& aviso = control<QLabel>(*escena.dialogo, "lblAvisoVto");
        Escena::teclea_prevision("50", "", "", "21112026");
        QCOMPARE(aviso.text(), QString());
        Escena::teclea_prevision("50", "", "", "15012020");
        QCOMPARE(escena.rejilla().Rows(), 3);
        QCOMPARE(escena.rejilla().TextMatrix(2, 2), QStringLiteral("15/01/2020"));
        QCOMPARE(
            aviso.text(), QStringLiteral("La previsión 2 vence antes de la fecha del cargo, 21/11/2026."));
        const auto como_se_pinta = [&](int fila) {
            QStyleOptionViewItem opcion;
            const auto indice = escena.rejilla().model()->index(fila - 1, 2);
            const auto* pintor = escena.rejilla().itemDelegateForIndex(indice);
            struct Abierto : QStyledItemDelegate {
                using QStyledItemDelegate::initStyleOption;
            };
            (dynamic_cast<const QStyledItemDelegate*>(pintor)->*&Abierto::initStyleOption)(&opcion, indice);
            if (opcion.text != indice.data().toString())
                qFatal("painted as «%s»", qPrintable(opcion.text));
            return std::pair(opcion.font.bold(), opcion.palette.color(QPalette::Text));
        };
        QVERIFY(!como_se_pinta(1).first);
        QVERIFY(como_se_pinta(2).first);
        QVERIFY(como_se_pinta(2).second != como_se_pinta(1).second);
        escena.rejilla().set_Row(2);
        clic(*escena.dialogo, "cmdPrevEliminar");
        QCOMPARE(aviso.text(), QString());
    }

    void a_forecast_is_deleted()
    {
        Escena escena;
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
        Escena escena(false, "100");
        Escena::teclea_prevision("49,99", "", "", "10122026");
        Escena::teclea_prevision("50", "", "", "10012027");
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
        Escena escena(false, "100");
        Escena::teclea_prevision("50", "1", "57200002", "10122026");
        Escena::teclea_prevision("50", "", "", "10012027");
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
        Escena nada(true, "0");
        QCOMPARE(nada.rejilla().Rows(), 1);
        clic(*nada.dialogo, "cmdAceptar");
        QVERIFY(nada.dialogo->Aceptado());
        Escena algo(false, "0.01");
        clic(*algo.dialogo, "cmdAceptar");
        QVERIFY(!algo.dialogo->Aceptado());
    }

    void what_is_handed_over_is_what_the_grid_shows_and_the_sum_stays_exact()
    {
        Escena escena(true, "107.054");
        QCOMPARE(escena.rejilla().TextMatrix(3, 0), QStringLiteral("35,69"));
        QCOMPARE(escena.resto(), QStringLiteral("0,00"));
        pulsa(Qt::Key_F9);
        QVERIFY(escena.dialogo->Aceptado());
        QVERIFY(escena.dialogo->PrevPago_Importe(1) == moneda("35.68"));
        QVERIFY(escena.dialogo->PrevPago_Importe(3) == moneda("35.69"));
    }

    void an_error_while_adding_or_deleting_is_told_with_its_line()
    {
        Escena escena(false, "150", 101);
        teclea("150");
        intro(3);
        teclea("10122026");
        escena.banco.parte->falla_en = escena.banco.parte->dichas.size() + 1; // whether the bank exists
        intro();
        QCOMPARE(escena.banco.titulos(), std::vector<std::string>{ "¡ Atención !" });
        const auto& dicho = escena.banco.avisos->dichos.front();
        QVERIFY(dicho.icono == atipicos::Icono::critico);
        QVERIFY(dicho.texto.starts_with("["));
        QVERIFY(dicho.texto.ends_with(std::string("] ") + Parte::descripcion));
        QCOMPARE(escena.rejilla().Rows(), 1);
    }

    void only_its_buttons_end_it()
    {
        Escena escena;
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
        Escena escena;
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
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Contabilizar_Test)
#include "frmCompras_Atipicos_Contabilizar_test.moc"
