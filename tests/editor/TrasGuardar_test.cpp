// What is left of a charge that was saved, also when clearing the form fails; and what loading one leaves as
// it was.
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QPlainTextEdit>
#include <QSignalSpy>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

void pon_oficina_central(const Banco& banco, const char* valor)
{
    banco.bases().orvalin->Execute(
        std::string("UPDATE Parametros SET Valor ='") + valor + "' WHERE Clave ='OficinaCentral'");
    dynamic_cast<orvalin::Empresa&>(*modComun::EmpresaOrvalin()).Recargar();
}

}

class TrasGuardar_Test : public QObject {
    Q_OBJECT
private slots:
    void when_clearing_the_header_fails_no_saved_line_stays()
    {
        EscenaEditor escena("");
        pulsa(Qt::Key_Delete);
        teclea("3");
        EscenaEditor::teclea_cabecera("103");
        EscenaEditor::teclea_linea("1003", "=", "rota", "2", "4,5");
        escena.c<qvMaskEdBox>("txtFecha").set_Fecha(dia("05/03/2026"));
        escena.c<QPlainTextEdit>("txtObservaciones").setPlainText(QStringLiteral("Muelle"));
        {
            const AlAbrirse contabilizar(
                [](QWidget&) { pulsa(Qt::Key_F9); }, "frmCompras_Atipicos_Contabilizar");
            const AlAbrirse impresora(
                [&](QWidget& dialogo) {
                    pon_oficina_central(escena.banco, "quizás");
                    clic(dialogo, "cmdCancelar");
                },
                "frmImpresora");
            atajo(Qt::Key_A);
        }
        QCOMPARE(escena.banco.titulos(),
            (std::vector<std::string>{ "¡ Atención !", "frmCompras_Atipicos:cmdAceptar_Click" }));
        QVERIFY(escena.avisos().back().texto.ends_with("] No coinciden los tipos"));
        QCOMPARE(escena.rejilla().Rows(), 1);
        QVERIFY(!escena.form->hay_lineas());
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("Güímar central"));
        QVERIFY(escena.c<Selector>("txtProv").vacio());
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("21/11/2026"));
        QCOMPARE(escena.c<QPlainTextEdit>("txtObservaciones").toPlainText(), QString());
        QCOMPARE(escena.texto("txtObserv"), QString());
        QCOMPARE(escena.total(), QStringLiteral("0,00"));
        QCOMPARE(foco(), QStringLiteral("txtAlmacen"));

        pon_oficina_central(escena.banco, "1");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "20");
        QCOMPARE(escena.total(), QStringLiteral("20,00"));
        escena.acepta();
        QCOMPARE(
            escena.banco.consulta("SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas"), Variant(2));
    }

    void the_lines_of_a_stored_charge_come_into_the_grid_at_once()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda({}, 2).Codigo;
        escena.abre(); // the grid has its columns
        escena.form->close();
        const QSignalSpy filas(escena.rejilla().model(), &QAbstractItemModel::rowsInserted);
        escena.abre(codigo, 2);
        QCOMPARE(escena.rejilla().Rows(), 4);
        QCOMPARE(filas.count(), 1);
        escena.c<>("txtArticulo").setFocus();
        EscenaEditor::teclea_linea("", "Porte", "", "1", "20");
        QCOMPARE(filas.count(), 2);
    }

    void observations_of_a_host_that_breaks_lines_by_two_characters_stay_as_they_were()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda({}, 2, "uno\r\ndos").Codigo;
        const auto linea = "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Observ = 'tres\r\ncuatro' WHERE "
                           "Num_Linea =2";
        escena.banco.bases().orvalin->Execute(linea);
        escena.abre(codigo, 2);
        escena.rejilla().set_Row(2);
        clic(*escena.form, "cmdModificar");
        EscenaEditor::teclea_linea("=", "=", "=", "=", "=");
        escena.acepta();
        QCOMPARE(CStr(escena.banco.consulta("SELECT Observ FROM Proveedores_Cargos_Atipicos")),
            std::string("uno\r\ndos"));
        QCOMPARE(CStr(escena.banco.consulta(
                     "SELECT Observ FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea =2")),
            std::string("tres\r\ncuatro"));
        escena.c<QPlainTextEdit>("txtObservaciones").setFocus();
        teclea("otro");
        pulsa(Qt::Key_Return, Qt::ControlModifier);
        escena.c<>("txtAlmacen").setFocus();
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "20");
        escena.acepta();
        QCOMPARE(CStr(escena.banco.consulta("SELECT Observ FROM Proveedores_Cargos_Atipicos WHERE Codigo <>'"
                     + codigo + "' OR Cod_Almacen =1")),
            std::string("otro\n"));
    }

    void a_quote_that_another_program_has_stored_is_saved_as_an_accent()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda({}, 2).Codigo;
        escena.banco.bases().orvalin->Execute(
            "UPDATE Proveedores_Cargos_Atipicos SET Observ = 'L''Orotava\r\nuno'");
        escena.abre(codigo, 2);
        escena.acepta();
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QCOMPARE(CStr(escena.banco.consulta("SELECT Observ FROM Proveedores_Cargos_Atipicos")),
            std::string("L´Orotava\r\nuno"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(TrasGuardar_Test)
#include "TrasGuardar_test.moc"
