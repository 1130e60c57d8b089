// The line that is being keyed in: what the form says of it, how it is reached, accepted and given up.
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLayout>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QToolButton>

#include <set>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

QString rotulo(EscenaEditor& escena, const char* nombre) { return escena.c<QLabel>(nombre).text(); }

const QString anade = QStringLiteral("Intro en Importe añade la línea (F8 lleva allí)");
const QString guarda = QStringLiteral("Intro en Importe guarda el cambio (F8 lleva allí)");

/// Two lines, the focus in the article of a third.
void teclea_dos(EscenaEditor& escena)
{
    EscenaEditor::teclea_cabecera("103");
    EscenaEditor::teclea_linea("1003", "=", "rota", "2", "4,5");
    EscenaEditor::teclea_linea("1006", "Lata", "abollada", "3", "1,25");
    QCOMPARE(escena.rejilla().Rows(), 3);
}

void toma(EscenaEditor& escena, int fila)
{
    escena.rejilla().set_Row(fila);
    clic(*escena.form, "cmdModificar");
}

/// The entry row, fields between "|".
QString entrada(EscenaEditor& escena)
{
    return QStringList{ QString::number(escena.c<Selector>("txtArticulo").vacio() ? 0 : 1),
        escena.texto("txtArticuloDescripcion"), escena.texto("txtObserv"), escena.texto("txtUnidades"),
        escena.texto("txtCosto"), escena.texto("txtImporte") }
        .join(u'|');
}

}

class LineaEnCurso_Test : public QObject {
    Q_OBJECT
private slots:
    void the_form_says_which_line_is_being_changed()
    {
        EscenaEditor escena("");
        QCOMPARE(rotulo(escena, "lblPista"), anade);
        QVERIFY(!escena.c<>("cmdDejarCambio").isVisible());
        teclea_dos(escena);
        toma(escena, 2);
        QCOMPARE(rotulo(escena, "lblCambiando"), QStringLiteral("Cambiando la línea 2"));
        QVERIFY(escena.c<>("lblCambiando").isVisible());
        QVERIFY(escena.c<>("cmdDejarCambio").isVisible());
        QCOMPARE(rotulo(escena, "lblPista"), guarda);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        escena.rejilla().set_Row(1);
        clic(*escena.form, "cmdEliminar"); // and the line moves up
        QCOMPARE(rotulo(escena, "lblCambiando"), QStringLiteral("Cambiando la línea 1"));
        escena.c<>("txtArticulo").setFocus();
        EscenaEditor::teclea_linea("=", "Lata grande", "=", "=", "=");
        QVERIFY(!escena.c<>("lblCambiando").isVisible());
        QCOMPARE(rotulo(escena, "lblPista"), anade);
        QCOMPARE(escena.rejilla().TextMatrix(1, 1), QStringLiteral("Lata grande"));
        toma(escena, 1);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdEliminar"); // the line itself
        QVERIFY(!escena.c<>("lblCambiando").isVisible());
    }

    void the_hints_stand_side_by_side_in_a_row_of_no_margins()
    {
        EscenaEditor escena("");
        teclea_dos(escena);
        auto& pista = escena.c<>("pista");
        const int alto = pista.height();
        toma(escena, 2);
        teclea("7777");
        intro();
        QVERIFY(escena.c<>("cmdDejarCambio").isVisible());
        QCOMPARE(pista.height(), alto); // nothing below it moves
        QVERIFY(escena.c<>("lblCambiando").font().bold());
        QCOMPARE(escena.c<QLabel>("lblPista").alignment(), Qt::AlignRight | Qt::AlignVCenter);
        QCOMPARE(pista.layout()->contentsMargins(), QMargins());
        int fin = -1;
        for (const auto* nombre : { "lblCambiando", "cmdDejarCambio", "lblAvisoArticulo", "lblPista" }) {
            const QRect suyo = escena.c<>(nombre).geometry();
            QVERIFY2(!suyo.isEmpty() && suyo.left() > fin, nombre);
            fin = suyo.right();
        }
        std::set<QString> recorrido; // Tab comes by everything but the button, which Escape stands for
        while (recorrido.insert(foco()).second)
            pulsa(Qt::Key_Tab);
        QVERIFY(recorrido.size() > 10);
        QVERIFY(!recorrido.contains(QStringLiteral("cmdDejarCambio")));
    }

    void a_saved_or_cancelled_charge_leaves_no_line_being_changed()
    {
        EscenaEditor escena("");
        teclea_dos(escena);
        toma(escena, 1);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdCancelar");
        QVERIFY(!escena.c<>("lblCambiando").isVisible());
        QVERIFY(!escena.c<>("cmdDejarCambio").isVisible());
        QCOMPARE(rotulo(escena, "lblPista"), anade);
    }

    void escape_in_the_entry_row_gives_up_the_change_and_nothing_else()
    {
        EscenaEditor escena("");
        teclea_dos(escena);
        toma(escena, 1);
        intro(3);
        teclea("77");
        pulsa(Qt::Key_Escape);
        QVERIFY(escena.avisos().empty());
        QVERIFY(escena.form->isVisible());
        QCOMPARE(entrada(escena), QStringLiteral("0|||0|0|0"));
        QCOMPARE(foco(), QStringLiteral("txtArticulo"));
        QVERIFY(!escena.c<>("lblCambiando").isVisible());
        QCOMPARE(
            escena.fila(1), QStringLiteral("1003|Vino tinto joven 75 cl|rota|2,00|4,5000|9,00|75900010"));
        QCOMPARE(escena.total(), QStringLiteral("12,75"));
        EscenaEditor::teclea_linea("", "Porte", "", "1", "20"); // a new one
        QCOMPARE(escena.rejilla().Rows(), 4);
        QCOMPARE(
            escena.fila(1), QStringLiteral("1003|Vino tinto joven 75 cl|rota|2,00|4,5000|9,00|75900010"));
        pulsa(Qt::Key_Escape); // a new line again: the charge is asked about
        QCOMPARE(escena.avisos().back().titulo, std::string("Confirmar"));
    }

    void elsewhere_escape_asks_about_the_charge()
    {
        EscenaEditor escena("");
        teclea_dos(escena);
        toma(escena, 1);
        escena.rejilla().setFocus();
        pulsa(Qt::Key_Escape);
        QCOMPARE(escena.avisos().back().titulo, std::string("Confirmar"));
        QVERIFY(escena.c<>("lblCambiando").isVisible());
    }

    void so_does_the_small_button()
    {
        EscenaEditor escena("");
        teclea_dos(escena);
        toma(escena, 2);
        escena.c<>("txtCosto").setFocus();
        clic(*escena.form, "cmdDejarCambio");
        QVERIFY(escena.avisos().empty());
        QCOMPARE(entrada(escena), QStringLiteral("0|||0|0|0"));
        QCOMPARE(escena.rejilla().TextMatrix(2, 1), QStringLiteral("Lata"));
        QCOMPARE(foco(), QStringLiteral("txtArticulo"));
        escena.acepta(); // nothing is pending
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
    }

    void an_unknown_article_is_told_at_once_and_refused_when_the_line_is_accepted()
    {
        EscenaEditor escena("");
        teclea_dos(escena);
        teclea("7777");
        intro();
        QCOMPARE(foco(), QStringLiteral("txtArticuloDescripcion"));
        QCOMPARE(rotulo(escena, "lblAvisoArticulo"), QStringLiteral("No existe el artículo"));
        teclea("Cosa");
        intro(2);
        teclea("2");
        intro();
        teclea("3");
        intro(2);
        QVERIFY(escena.avisos().back()
            == (Mensaje{ "Error inesperado. Repita la operación\rNo existe el artículo 7777. Corrija su "
                         "código o déjelo vacío.",
                "¡ Atención !", Icono::exclamacion }));
        QCOMPARE(escena.rejilla().Rows(), 3);
        QCOMPARE(escena.total(), QStringLiteral("12,75"));
        QCOMPARE(entrada(escena), QStringLiteral("1|Cosa||2,00|3,0000|6,00"));
        QCOMPARE(foco(), QStringLiteral("txtArticulo"));
        teclea("1007");
        QCOMPARE(rotulo(escena, "lblAvisoArticulo"), QString());
        pulsa(Qt::Key_F8);
        QCOMPARE(foco(), QStringLiteral("txtImporte"));
        intro();
        QCOMPARE(escena.rejilla().Rows(), 4);
        QCOMPARE(escena.rejilla().TextMatrix(3, 0), QStringLiteral("1007"));
    }

    void an_article_that_has_gone_since_stays_but_no_line_changes_to_one()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda({}, 3).Codigo;
        escena.banco.bases().orvalin->Execute(
            "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Cod_Articulo =9999 WHERE Num_Linea =2");
        escena.abre(codigo, 3);
        toma(escena, 2);
        EscenaEditor::teclea_linea("=", "Lata sin ficha", "=", "=", "=");
        QVERIFY(escena.avisos().empty());
        QCOMPARE(escena.rejilla().TextMatrix(2, 0), QStringLiteral("9999"));
        QCOMPARE(escena.rejilla().TextMatrix(2, 1), QStringLiteral("Lata sin ficha"));
        toma(escena, 1);
        EscenaEditor::teclea_linea("9999", "=", "=", "=", "=");
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QCOMPARE(escena.rejilla().TextMatrix(1, 0), QStringLiteral("1006"));
        QCOMPARE(rotulo(escena, "lblCambiando"), QStringLiteral("Cambiando la línea 1"));
        pulsa(Qt::Key_Escape);
        EscenaEditor::teclea_linea("9999", "Otra", "", "1", "1");
        QCOMPARE(escena.rejilla().Rows(), 4);
    }

    void base_tax_and_total_follow_the_lines()
    {
        EscenaEditor escena;
        escena.banco.bases().orvalin->Execute("UPDATE Tipos_Impuesto SET Porcentaje =3.5 WHERE Codigo =1");
        dynamic_cast<orvalin::Empresa&>(*modComun::EmpresaOrvalin()).Recargar();
        const auto codigo = escena.banco.guarda({}, 3).Codigo;
        escena.abre(codigo, 3);
        const auto cuenta = [&] { return rotulo(escena, "lblConImpuesto"); };
        QCOMPARE(
            cuenta(), QStringLiteral("Base 231,96  +  impuesto (3,5 %) 8,12  =  total con impuesto 240,08"));
        escena.rejilla().set_Row(3);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        QCOMPARE(
            cuenta(), QStringLiteral("Base 81,96  +  impuesto (3,5 %) 2,87  =  total con impuesto 84,83"));
        escena.c<>("txtArticulo").setFocus();
        EscenaEditor::teclea_linea("", "Porte", "", "2", "9,02");
        QCOMPARE(
            cuenta(), QStringLiteral("Base 100,00  +  impuesto (3,5 %) 3,50  =  total con impuesto 103,50"));
        QString a_contabilizar;
        escena.acepta([&](QWidget& dialogo) {
            a_contabilizar = control<QLineEdit>(dialogo, "txtImporte").text();
            pulsa(Qt::Key_F9);
        });
        QCOMPARE(a_contabilizar, QStringLiteral("103,50"));
        QCOMPARE(cuenta(), QStringLiteral("Base 0,00  +  impuesto (3,5 %) 0,00  =  total con impuesto 0,00"));
    }

    void letters_lead_to_the_fields_and_no_two_are_the_same()
    {
        EscenaEditor escena("");
        teclea_dos(escena);
        std::set<QString> letras;
        for (const auto* boton : { "A", "C", "E", "M", "S" })
            letras.insert(QStringLiteral("Alt+") + QLatin1String(boton));
        for (const auto& [campo, letra] :
            { std::pair{ "txtAlmacen", Qt::Key_L }, { "txtProv", Qt::Key_P }, { "txtFecha", Qt::Key_F },
                { "txtObservaciones", Qt::Key_O }, { "chkFranquiciado", Qt::Key_Q },
                { "txtArticulo", Qt::Key_R }, { "txtArticuloDescripcion", Qt::Key_D },
                { "txtObserv", Qt::Key_V }, { "txtUnidades", Qt::Key_U }, { "txtCosto", Qt::Key_T },
                { "txtImporte", Qt::Key_I }, { "vsCargos", Qt::Key_N } }) {
            pulsa(letra, Qt::AltModifier);
            QCOMPARE(foco(), QLatin1String(campo));
            const QString nombre = QKeySequence(Qt::ALT | letra).toString();
            QVERIFY2(letras.insert(nombre).second, campo);
            QVERIFY2(escena.c<>(campo).toolTip().contains(nombre), campo);
        }
        const auto atajos = escena.form->findChildren<QShortcut*>();
        for (const auto* uno : atajos)
            letras.insert(uno->key().toString());
        QCOMPARE(letras.size(), std::size_t{ 5 + 12 });
    }

    void f8_leads_to_the_amount_from_everywhere()
    {
        EscenaEditor escena("");
        teclea_dos(escena);
        for (const auto* desde : { "txtProv", "txtFecha", "txtObservaciones", "txtArticulo", "vsCargos",
                 "cmdAceptar", "chkFranquiciado" }) {
            escena.c<>(desde).setFocus();
            pulsa(Qt::Key_F8);
            QCOMPARE(foco(), QStringLiteral("txtImporte"));
        }
    }

    void the_tool_tips_of_the_buttons_name_their_keys()
    {
        EscenaEditor escena("");
        for (const auto& [boton, tecla] :
            { std::pair{ "cmdAceptar", "Alt+A" }, { "cmdCancelar", "Alt+C, Esc" }, { "cmdSalir", "Alt+S" },
                { "cmdModificar", "Alt+M" }, { "cmdEliminar", "Alt+E, Supr" }, { "cmdComent", "F4" },
                { "cmdDejarCambio", "Esc" }, { "txtImporte", "F8" } })
            QVERIFY2(escena.c<>(boton).toolTip().contains(QLatin1String(tecla)), boton);
    }
};

ATIPICOS_PRUEBA_VENTANAS(LineaEnCurso_Test)
#include "LineaEnCurso_test.moc"
