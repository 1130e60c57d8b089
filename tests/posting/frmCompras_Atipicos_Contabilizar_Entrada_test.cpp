// A forecast keyed in, field by field.
#include "controls/qvCuenta.hpp"
#include "controls/qvMaskEdBox.hpp"
#include "controls/qvTipoDocumento.hpp"
#include "tests/posting/EscenaContabilizar.hpp"

#include <QLineEdit>
#include <QStyledItemDelegate>

using namespace atipicos::pruebas;

class frmCompras_Atipicos_Contabilizar_Entrada_Test : public QObject {
    Q_OBJECT
private slots:
    void a_type_that_does_not_exist_is_said_where_it_can_be_read()
    {
        EscenaContabilizar escena(false);
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
        EscenaContabilizar escena(false, "150", 101);
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
        EscenaContabilizar escena(false, "150", 101);
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
        EscenaContabilizar escena(false);
        EscenaContabilizar::teclea_prevision("150", "2", "", "10122026");
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
        EscenaContabilizar escena(false);
        intro();
        QCOMPARE(foco(), QStringLiteral("txtPrevImp"));
        teclea("0");
        intro();
        QCOMPARE(foco(), QStringLiteral("txtPrevImp"));
    }

    void without_an_amount_the_due_date_adds_nothing()
    {
        EscenaContabilizar escena(false);
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
        EscenaContabilizar escena(false);
        EscenaContabilizar::teclea_prevision("150", "", "57299999", "10122026");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(foco(), QStringLiteral("txtBanco"));
        QVERIFY(escena.banco.avisos->dichos.empty());
    }

    void an_impossible_date_is_cleared_and_adds_nothing()
    {
        EscenaContabilizar escena(false);
        EscenaContabilizar::teclea_prevision("150", "", "", "31022026");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(control<QLineEdit>(*escena.dialogo, "txtPrevVto").text(), QStringLiteral("//"));
        QCOMPARE(foco(), QStringLiteral("txtPrevVto"));
        QVERIFY(escena.banco.avisos->dichos.empty());
    }

    void a_due_date_takes_digits_again_after_an_impossible_one_and_is_completed()
    {
        EscenaContabilizar escena(false, "150", 104, "05/03/2026");
        const auto texto = [&] { return control<QLineEdit>(*escena.dialogo, "txtPrevVto").text(); };
        EscenaContabilizar::teclea_prevision("150", "", "", "31022027");
        QCOMPARE(texto(), QStringLiteral("//"));
        teclea("15122026");
        QCOMPARE(texto(), QStringLiteral("15/12/2026"));
        pulsa(Qt::Key_A, Qt::ControlModifier);
        pulsa(Qt::Key_Delete);
        teclea("+30"); // from the charge
        intro();
        QCOMPARE(escena.rejilla().TextMatrix(1, 2), QStringLiteral("04/04/2026"));
        EscenaContabilizar::teclea_prevision("1", "", "", "17");
        QCOMPARE(escena.rejilla().Rows(), 3);
        QCOMPARE(escena.rejilla().TextMatrix(2, 2), QStringLiteral("17/03/2026"));
    }

    void a_type_that_does_not_exist_holds_the_focus_and_is_not_added()
    {
        EscenaContabilizar escena(false);
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
        EscenaContabilizar::teclea_prevision("1", "0", "", "11122026"); // none
        QCOMPARE(escena.rejilla().TextMatrix(2, 1), QStringLiteral("SIN ESPECIFICAR"));
    }

    void a_due_date_before_the_charge_is_added_and_stands_out()
    {
        EscenaContabilizar escena(false);
        auto& aviso = control<QLabel>(*escena.dialogo, "lblAvisoVto");
        EscenaContabilizar::teclea_prevision("50", "", "", "21112026");
        QCOMPARE(aviso.text(), QString());
        EscenaContabilizar::teclea_prevision("50", "", "", "15012020");
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

    void an_error_while_adding_or_deleting_is_told_with_its_line()
    {
        EscenaContabilizar escena(false, "150", 101);
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

    void what_could_not_be_looked_up_in_its_field_is_looked_up_when_it_is_added()
    {
        EscenaContabilizar escena(false);
        const auto falla_lo_siguiente
            = [&] { escena.banco.parte->falla_en = escena.banco.parte->dichas.size() + 1; };
        teclea("150");
        intro();
        teclea("2");
        falla_lo_siguiente();
        intro();
        QCOMPARE(foco(), QStringLiteral("txtPrevTipoDoc")); // it is not known whether it exists
        control<QWidget>(*escena.dialogo, "txtBanco").setFocus();
        pulsa(Qt::Key_A, Qt::ControlModifier);
        teclea("57200002");
        falla_lo_siguiente();
        intro();
        QCOMPARE(escena.banco.titulos().size(), std::size_t{ 2 });
        teclea("10122026");
        intro();
        QCOMPARE(escena.rejilla().Rows(), 2);
        QCOMPARE(escena.rejilla().TextMatrix(1, 1), QStringLiteral("Transferencia"));
        QCOMPARE(escena.rejilla().TextMatrix(1, 4), QStringLiteral("57200002"));
        QVERIFY(!escena.rejilla().TextMatrix(1, 5).isEmpty());
    }

    void types_and_banks_are_asked_of_the_accounting_product()
    {
        EscenaContabilizar escena(false, "150", 101);
        EscenaContabilizar::teclea_prevision("150", "2", "57200002", "10122026");
        QCOMPARE(escena.rejilla().Rows(), 2);
        int preguntas = 0;
        for (const auto& dicha : escena.banco.parte->dichas)
            if (dicha.find(" FROM Cuentas") != std::string::npos
                || dicha.find(" FROM Tipos_Doc") != std::string::npos) {
                QVERIFY2(dicha.starts_with("contabilidad "), dicha.c_str());
                ++preguntas;
            }
        QVERIFY(preguntas >= 3);
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Contabilizar_Entrada_Test)
#include "frmCompras_Atipicos_Contabilizar_Entrada_test.moc"
