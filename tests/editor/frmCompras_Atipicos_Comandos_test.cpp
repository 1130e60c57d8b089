// The commands of the editor.
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QCheckBox>
#include <QPlainTextEdit>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

const Mensaje cancelar{ "¿Esta seguro que desea cancelar el Atípico?", "Confirmar", Icono::pregunta,
    Botones::SiNo, Respuesta::No };
const Mensaje eliminar{ "¿Está seguro que desea eliminar el atípico seleccionado?", "¡ Atención !",
    Icono::pregunta, Botones::SiNo, Respuesta::No };

}

class frmCompras_Atipicos_Comandos_Test : public QObject {
    Q_OBJECT
private slots:
    void removing_a_line_asks_first()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "", "1", "10");
        EscenaEditor::teclea_linea("", "Dos", "", "1", "20");
        escena.rejilla().setFocus();
        pulsa(Qt::Key_Home);
        pulsa(Qt::Key_Delete);
        QVERIFY(escena.avisos().back() == eliminar);
        QCOMPARE(escena.rejilla().Rows(), 3);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        pulsa(Qt::Key_Delete);
        QCOMPARE(escena.rejilla().Rows(), 2);
        QCOMPARE(escena.rejilla().TextMatrix(1, 1), QStringLiteral("Dos"));
        QCOMPARE(escena.total(), QStringLiteral("20,00"));
        QCOMPARE(escena.cinco_botones(), QStringLiteral("enabled"));
        escena.c<QLineEdit>("txtObserv").setText(QStringLiteral("a medias"));
        escena.c<>("txtAlmacen").setEnabled(false);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.total(), QStringLiteral("0,00"));
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
        QVERIFY(escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(escena.texto("txtObserv"), QString());
    }

    void a_change_never_lands_in_the_wrong_line()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        for (const auto* nombre : { "Uno", "Dos", "Tres" })
            EscenaEditor::teclea_linea("", nombre, "", "1", "10");
        escena.rejilla().set_Row(3);
        clic(*escena.form, "cmdModificar");
        escena.rejilla().set_Row(1);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        escena.c<>("txtArticulo").setFocus();
        EscenaEditor::teclea_linea("", "Cambiada", "=", "=", "=");
        QCOMPARE(escena.fila(1), QStringLiteral("0|Dos||1,00|10,0000|10,00|"));
        QCOMPARE(escena.fila(2), QStringLiteral("0|Cambiada||1,00|10,0000|10,00|"));
        QCOMPARE(escena.rejilla().Rows(), 3);
    }

    void long_observations_of_a_line()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "corta", "1", "10");
        escena.rejilla().set_Row(1);
        {
            const AlAbrirse editor([](QWidget& dialogo) {
                QCOMPARE(dialogo.objectName(), QStringLiteral("frmEditor_Comentarios"));
                QCOMPARE(
                    control<QPlainTextEdit>(dialogo, "txtComent").toPlainText(), QStringLiteral("corta"));
                pulsa(Qt::Key_End, Qt::ControlModifier);
                teclea(" y d'otra");
                intro();
                teclea("línea");
                pulsa(Qt::Key_F9);
            });
            clic(*escena.form, "cmdComent");
        }
        QCOMPARE(escena.rejilla().TextMatrix(1, 2), QStringLiteral("corta Y D´OTRA\nLÍNEA"));
        {
            const AlAbrirse editor([](QWidget&) {
                teclea("nada");
                pulsa(Qt::Key_Escape);
            });
            pulsa(Qt::Key_F4);
        }
        QCOMPARE(escena.rejilla().TextMatrix(1, 2), QStringLiteral("corta Y D´OTRA\nLÍNEA"));
    }

    void cancelling_asks_only_when_there_are_lines()
    {
        EscenaEditor escena("");
        pulsa(Qt::Key_Escape);
        QVERIFY(escena.avisos().empty());
        QVERIFY(escena.form->isVisible());
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "", "1", "10");
        escena.c<>("cmdCancelar").setFocus();
        intro(); // on a button it is its click
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        clic(*escena.form, "cmdCancelar");
        QCOMPARE(escena.avisos().size(), std::size_t{ 2 });
        QVERIFY(escena.avisos().back() == cancelar);
        QCOMPARE(escena.rejilla().Rows(), 2);
        escena.c<QCheckBox>("chkFranquiciado").setChecked(true);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdCancelar");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.total(), QStringLiteral("0,00"));
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
        QVERIFY(escena.c<Selector>("txtProv").vacio());
        QVERIFY(!escena.c<QCheckBox>("chkFranquiciado").isChecked());
        QCOMPARE(foco(), QStringLiteral("txtAlmacen"));
        for (const auto& [tabla, filas] : escena.banco.estado())
            QVERIFY2(filas == 0, tabla.c_str());
    }

    void accepting_without_lines_does_nothing()
    {
        EscenaEditor escena("");
        escena.c<QAbstractButton>("cmdAceptar").setEnabled(true);
        clic(*escena.form, "cmdAceptar");
        QVERIFY(escena.avisos().empty());
        QVERIFY(escena.banco.parte->dichas.empty());
    }

    void giving_the_forecasts_up_writes_nothing()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "", "1", "10");
        const AlAbrirse previsiones([&](QWidget& dialogo) {
            escena.c<>("cmdComent").setEnabled(false);
            clic(dialogo, "cmdCancelar");
        });
        atajo(Qt::Key_A);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("enabled"));
        QCOMPARE(escena.rejilla().Rows(), 2);
        QVERIFY(escena.avisos().empty());
        for (const auto& [tabla, filas] : escena.banco.estado())
            QVERIFY2(filas == 0, tabla.c_str());
    }

    void an_impossible_date_is_an_error_of_the_save()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "", "1", "10");
        escena.c<QLineEdit>("txtFecha").setText(QStringLiteral("31/02/2026"));
        clic(*escena.form, "cmdAceptar");
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QCOMPARE(escena.avisos().front().titulo, std::string("frmCompras_Atipicos:cmdAceptar_Click"));
        QVERIFY(escena.avisos().front().texto.ends_with(
            "] No existe el día 31/02/2026. Corrija la fecha del cargo y acéptelo de nuevo."));
        QCOMPARE(escena.rejilla().Rows(), 2);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("enabled"));
    }

    void where_charges_are_not_posted_the_message_names_no_entry()
    {
        EscenaEditor escena;
        escena.banco.bases().orvalin->Execute("UPDATE Empresas SET EnlaceContable =0");
        dynamic_cast<orvalin::Empresa&>(*modComun::EmpresaOrvalin()).Recargar();
        escena.abre();
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "", "1", "10");
        escena.acepta();
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QVERIFY(escena.avisos().front()
            == (Mensaje{ "Atípico AT260001 generado correctamente.", "¡ Atención !", Icono::informacion }));
        QCOMPARE(escena.banco.estado().at("Proveedores_Cargos_Atipicos"), 1);
        QCOMPARE(escena.banco.estado().at("Bexmor.dbo.Asientos"), 0);
    }

    void accepting_twice_quickly_saves_once()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "", "1", "10");
        escena.acepta([&](QWidget&) {
            escena.c<QAbstractButton>("cmdAceptar").click(); // as a second press that came first
            pulsa(Qt::Key_F9);
        });
        escena.c<QAbstractButton>("cmdAceptar").click();
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QCOMPARE(escena.banco.estado().at("Proveedores_Cargos_Atipicos"), 1);
    }

    void holding_enter_down_in_the_amount_accepts_one_line()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        escena.c<>("txtImporte").setFocus();
        for (const bool repetida : { false, true, true, true, true, true, true, true }) {
            QKeyEvent baja(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), repetida);
            QApplication::sendEvent(&enfocado(), &baja);
        }
        QCOMPARE(escena.rejilla().Rows(), 2);
    }

    void a_host_that_cannot_print_is_told_so_and_the_charge_is_not_saved_twice()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "", "1", "10");
        const AlAbrirse contabilizar([](QWidget&) { pulsa(Qt::Key_F9); }, "frmCompras_Atipicos_Contabilizar");
        const AlAbrirse impresora([](QWidget& dialogo) { clic(dialogo, "cmdAceptar"); }, "frmImpresora");
        clic(*escena.form, "cmdAceptar");
        QCOMPARE(escena.banco.titulos(),
            (std::vector<std::string>{ "¡ Atención !", "frmCompras_Atipicos:Imprimir_Atipico" }));
        QVERIFY(escena.avisos().back().texto.ends_with("La variable de objeto no está establecida"));
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
        QCOMPARE(escena.banco.estado().at("Proveedores_Cargos_Atipicos"), 1);
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Comandos_Test)
#include "frmCompras_Atipicos_Comandos_test.moc"
