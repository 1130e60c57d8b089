// What the clerk has keyed in is in the charge, or he was asked: quotes, a line that was not accepted, a code
// whose box was not left.
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QPlainTextEdit>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

const Mensaje sin_anadir{
    "Hay una línea tecleada que no se ha añadido al cargo.\r\r¿Desea continuar sin ella?", "¡ Atención !",
    Icono::pregunta, Botones::SiNo, Respuesta::No
};

std::string texto(const EscenaEditor& escena, const std::string& sql)
{
    return CStr(escena.banco.consulta(sql));
}

}

class NadaSePierde_Test : public QObject {
    Q_OBJECT
private slots:
    void a_quote_is_an_accent_wherever_it_is_typed_and_the_charge_is_stored_whole()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1003", "Vino d'Alcoi", "l'últim", "3", "2,5");
        QCOMPARE(escena.rejilla().TextMatrix(1, 1), QStringLiteral("Vino d´Alcoi"));
        escena.c<>("txtObservaciones").setFocus();
        teclea("Factura L'Orotava");
        QCOMPARE(
            escena.c<QPlainTextEdit>("txtObservaciones").toPlainText(), QStringLiteral("Factura L´Orotava"));
        escena.acepta();
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(texto(escena, "SELECT Observ FROM Proveedores_Cargos_Atipicos"),
            std::string("Factura L´Orotava"));
        QCOMPARE(texto(escena, "SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas"),
            std::string("Vino d´Alcoi"));
        QCOMPARE(
            texto(escena, "SELECT Observ FROM Proveedores_Cargos_Atipicos_Lineas"), std::string("l´últim"));
    }

    void accepting_the_charge_asks_about_a_line_that_was_not_accepted()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "50");
        teclea("1003");
        intro(3);
        teclea("2");
        atajo(Qt::Key_A);
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QVERIFY(escena.avisos().back() == sin_anadir);
        QCOMPARE(foco(), QStringLiteral("txtArticulo"));
        QCOMPARE(escena.texto("txtUnidades"), QStringLiteral("2,00"));
        QVERIFY2(escena.form->hay_lineas(), "nothing has been done");
        QCOMPARE(escena.banco.consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos"), Variant(0));

        escena.banco.avisos->respuestas = { Respuesta::Si };
        escena.acepta();
        QCOMPARE(texto(escena, "SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas"),
            std::string("Porte"));
        QVERIFY(!escena.form->hay_lineas());
    }

    void taking_a_line_back_asks_about_another_that_was_not_accepted()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1003", "=", "rota", "2", "1234,5");
        teclea("1006");
        escena.rejilla().setFocus();
        pulsa(Qt::Key_Home);
        atajo(Qt::Key_M);
        QVERIFY(escena.avisos().back() == sin_anadir);
        QCOMPARE(escena.texto("txtObserv"), QString());
        escena.rejilla().setFocus();
        escena.banco.avisos->respuestas = { Respuesta::Si };
        atajo(Qt::Key_M);
        QCOMPARE(escena.texto("txtObserv"), QStringLiteral("rota"));
        // As it was filled it is nothing new.
        escena.rejilla().setFocus();
        const auto dichos = escena.avisos().size();
        atajo(Qt::Key_M);
        QCOMPARE(escena.avisos().size(), dichos);
    }

    void without_lines_nobody_is_asked()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        teclea("1003");
        intro(3);
        teclea("2");
        clic(*escena.form, "cmdModificar");
        atajo(Qt::Key_A);
        QVERIFY(escena.avisos().empty());
    }

    void a_supplier_whose_box_was_not_left_is_in_the_entry_by_his_name()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "50");
        escena.c<>("txtProv").setFocus();
        teclea("101");
        escena.acepta();
        QCOMPARE(escena.banco.consulta("SELECT Proveedor FROM Proveedores_Cargos_Atipicos"), Variant(101));
        QCOMPARE(texto(escena, "SELECT Concepto FROM Bexmor.dbo.Apuntes WHERE Linea =2"),
            std::string("Ingreso atípico Aguas de Ucanca, S.A."));
    }

    void a_code_typed_into_a_box_that_the_program_entered_takes_the_place_of_the_old_one()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1030", "Palé", "", "1", "50");
        escena.rejilla().setFocus();
        pulsa(Qt::Key_Home);
        atajo(Qt::Key_M);
        teclea("1003");
        intro();
        QCOMPARE(escena.texto("txtArticuloDescripcion"), QStringLiteral("Vino tinto joven 75 cl"));
        escena.c<>("txtAlmacen").setFocus();
        escena.banco.avisos->respuestas = { Respuesta::Si };
        pulsa(Qt::Key_Escape); // a new charge: the warehouse is set anew where the focus is
        teclea("3");
        intro();
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("Arrecife"));
    }

    void when_the_last_line_goes_by_mouse_enter_does_not_close_the_form()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "50");
        escena.rejilla().setFocus();
        pulsa(Qt::Key_Home);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        escena.c<>("cmdEliminar").setFocus();
        clic(*escena.form, "cmdEliminar");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(foco(), QStringLiteral("txtArticulo"));
        intro();
        QVERIFY(escena.form->isVisible());
    }
};

ATIPICOS_PRUEBA_VENTANAS(NadaSePierde_Test)
#include "NadaSePierde_test.moc"
