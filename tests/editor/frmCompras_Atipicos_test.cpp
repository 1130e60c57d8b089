#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QSignalSpy>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

const Mensaje cancelar{ "¿Esta seguro que desea cancelar el Atípico?", "Confirmar", Icono::pregunta,
    Botones::SiNo, Respuesta::No };
const Mensaje eliminar{ "¿Está seguro que desea eliminar el atípico seleccionado?", "¡ Atención !",
    Icono::pregunta, Botones::SiNo, Respuesta::No };

void pon_parametro(const Banco& banco, const std::string& clave, const std::string& valor)
{
    banco.bases().orvalin->Execute(
        "UPDATE Parametros SET Valor ='" + valor + "' WHERE Clave ='" + clave + "'");
    dynamic_cast<orvalin::Empresa&>(*modComun::EmpresaOrvalin()).Recargar();
}

}

class frmCompras_Atipicos_Test : public QObject {
    Q_OBJECT
private slots:
    // Opening

    void opened_for_a_new_charge()
    {
        EscenaEditor escena("");
        QCOMPARE(escena.form->windowTitle(), QStringLiteral("Reclamaciones a Proveedores"));
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("Güímar central"));
        QVERIFY(escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("21/11/2026"));
        QCOMPARE(escena.total(), QStringLiteral("0,00"));
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
        QVERIFY(escena.c<>("cmdSalir").isEnabled());
        QCOMPARE(foco(), QStringLiteral("txtAlmacen"));
        QVERIFY(escena.avisos().empty());
    }

    void the_columns_of_the_grid()
    {
        EscenaEditor escena("");
        QCOMPARE(escena.fila(0), QStringLiteral("Artículo|Artículo|Observaciones|Unidades|Costo|Importe|"));
        QVERIFY(escena.rejilla().isColumnHidden(6));
        const int derecha = Qt::AlignRight | Qt::AlignVCenter;
        const int izquierda = Qt::AlignLeft | Qt::AlignVCenter;
        const std::vector<int> alineaciones{ derecha, izquierda, izquierda, derecha, derecha, derecha };
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1006", "=", "", "1", "1");
        for (int columna = 0; columna < 6; ++columna)
            QCOMPARE(escena.rejilla().model()->index(0, columna).data(Qt::TextAlignmentRole).toInt(),
                alineaciones[static_cast<std::size_t>(columna)]);
        const int mil = escena.rejilla().logicalDpiX() * 1000 / 1440;
        for (const int columna : { 0, 3, 4 })
            QVERIFY(std::abs(escena.rejilla().ColWidth(columna) - mil) <= 1);
    }

    void description_and_observations_share_what_the_window_gains()
    {
        EscenaEditor escena("");
        const int descripcion = escena.rejilla().ColWidth(1);
        const int observaciones = escena.rejilla().ColWidth(2);
        const int unidades = escena.rejilla().ColWidth(3);
        escena.form->resize(escena.form->width() + 200, escena.form->height());
        QTRY_COMPARE(escena.rejilla().ColWidth(1), descripcion + 100);
        QCOMPARE(escena.rejilla().ColWidth(2), observaciones + 100);
        QCOMPARE(escena.rejilla().ColWidth(3), unidades);
    }

    void outside_the_head_office_the_warehouse_is_fixed()
    {
        EscenaEditor escena;
        pon_parametro(escena.banco, "OficinaCentral", "0");
        escena.abre();
        QVERIFY(!escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("Güímar central"));
        QCOMPARE(foco(), QStringLiteral("txtProv"));
        teclea("104");
        intro(4);
        EscenaEditor::teclea_linea("", "Porte", "", "1", "10");
        QCOMPARE(escena.rejilla().Rows(), 2);
        escena.rejilla().set_Row(1);
        escena.banco.avisos->respuestas = { Respuesta::Si, Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QVERIFY2(!escena.c<>("txtAlmacen").isEnabled(), "the last line is gone");
        escena.c<>("txtArticulo").setFocus();
        EscenaEditor::teclea_linea("", "Porte", "", "1", "10");
        pulsa(Qt::Key_Escape);
        QVERIFY(!escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(foco(), QStringLiteral("txtProv"));
    }

    void closing_unloads_it_and_showing_loads_it_anew()
    {
        EscenaEditor escena("");
        QSignalSpy descargado(escena.form.get(), &frmCompras_Atipicos::Descargado);
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "10");
        QVERIFY(escena.form->hay_lineas());
        clic(*escena.form, "cmdSalir");
        QCOMPARE(descargado.count(), 1);
        QVERIFY(!escena.form->isVisible());
        QVERIFY2(escena.avisos().empty(), "an unsaved charge is dropped without a question");
        escena.abre();
        QCOMPARE(escena.rejilla().Rows(), 1);
        QVERIFY(!escena.form->hay_lineas());
        QCOMPARE(escena.total(), QStringLiteral("0,00"));
        QVERIFY(escena.c<Selector>("txtProv").vacio());
        escena.form->close();
        QCOMPARE(descargado.count(), 2);
    }

    void without_a_context_it_says_so()
    {
        EscenaEditor escena;
        vacia_contexto();
        modComun::set_MsgBox(escena.banco.avisos);
        escena.form->Show();
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QCOMPARE(escena.avisos().front().titulo, std::string("frmCompras_Atipicos:Form_Load"));
        QVERIFY(escena.avisos().front().texto.ends_with("La variable de objeto no está establecida"));
    }

    // Line entry

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

    // Commands

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

    // A charge opened for change

    void a_stored_charge_is_loaded_in_line_order()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda({}, 2).Codigo;
        auto& gestion = *escena.banco.bases().orvalin;
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos SET Fecha ='03/05/2026'");
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos_Lineas SET Num_Linea = 9 - Num_Linea");
        gestion.Execute(
            "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Cod_Articulo =9999 WHERE Num_Linea =6");
        escena.abre(codigo, 2);
        QCOMPARE(escena.form->windowTitle(), QStringLiteral("Reclamaciones a Proveedores - AT260001"));
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("La Orotava"));
        QVERIFY(!escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("03/05/2026"));
        QCOMPARE(escena.c<Selector>("txtProv").Nombre(), QStringLiteral("Conservas La Graciosa, S.A."));
        QCOMPARE(escena.c<QPlainTextEdit>("txtObservaciones").toPlainText(), QStringLiteral("Palé dañado"));
        QCOMPARE(escena.fila(1), QStringLiteral("9999|Lata abollada||12,00|12,5000|150,00|"));
        QCOMPARE(escena.fila(2), QStringLiteral("1006|Lata abollada||12,00|1,1975|14,37|"));
        QCOMPARE(escena.fila(3), QStringLiteral("1006|Lata abollada||12,00|5,6325|67,59|"));
        QCOMPARE(escena.total(), QStringLiteral("231,96"));
        QCOMPARE(escena.rejilla().Row(), 0);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("enabled"));
        QVERIFY(escena.avisos().empty());
    }

    void a_changed_charge_keeps_its_code_and_the_next_one_gets_its_own()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda().Codigo;
        escena.abre(codigo);
        escena.rejilla().set_Row(1);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        escena.acepta();
        QCOMPARE(escena.avisos().back().texto,
            std::string("Atípico AT260001 generado correctamente.\r\nAsiento: 2"));
        auto estado = escena.banco.estado();
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos"), 1);
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos_Lineas"), 2);
        QCOMPARE(escena.form->windowTitle(), QStringLiteral("Reclamaciones a Proveedores"));
        QVERIFY(escena.c<>("txtAlmacen").isEnabled());
        EscenaEditor::teclea_cabecera("101");
        EscenaEditor::teclea_linea("", "Nuevo", "", "1", "10");
        escena.acepta();
        QCOMPARE(escena.avisos().back().texto,
            std::string("Atípico AT260002 generado correctamente.\r\nAsiento: 3"));
        estado = escena.banco.estado();
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos"), 2);
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos_Lineas"), 3);
    }

    void a_cancelled_change_leaves_the_stored_charge_alone()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda().Codigo;
        const auto antes = escena.banco.estado();
        escena.abre(codigo);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdCancelar");
        QVERIFY(escena.form->Codigo.empty());
        QVERIFY(escena.banco.estado() == antes);
    }

    void a_charge_without_header_leaves_the_fields_as_they_were()
    {
        EscenaEditor escena("AT269999");
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("21/11/2026"));
        QVERIFY(escena.c<Selector>("txtProv").vacio());
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
        QVERIFY(escena.avisos().empty());
    }

    void a_failure_while_loading_leaves_what_was_filled()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda().Codigo;
        escena.banco.parte->dichas.clear();
        escena.banco.parte->falla_en = 5; // after the name of both pickers and the header: the lines
        escena.abre(codigo);
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QCOMPARE(escena.avisos().front().titulo, std::string("frmCompras_Atipicos:Cargar_Atipico"));
        QVERIFY(escena.avisos().front().icono == Icono::critico);
        QVERIFY(escena.avisos().front().texto.ends_with(std::string("] ") + Parte::descripcion));
        QVERIFY(!escena.c<Selector>("txtProv").vacio());
        QCOMPARE(escena.rejilla().Rows(), 1);
        QVERIFY(escena.form->isVisible());
    }

    // Hands and eyes

    void every_field_has_a_name_and_the_focus_goes_round_as_one_reads()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "", "1", "10");
        escena.c<>("txtAlmacen").setFocus();
        QStringList recorrido;
        for (int i = 0; i < 18; ++i) {
            const auto* boton = qobject_cast<QAbstractButton*>(&enfocado());
            QVERIFY2(boton != nullptr ? !boton->text().isEmpty() : !enfocado().accessibleName().isEmpty(),
                qPrintable(foco()));
            recorrido << foco();
            pulsa(Qt::Key_Tab);
        }
        QCOMPARE(recorrido.join(u' '),
            QStringLiteral(
                "txtAlmacen txtProv txtFecha txtObservaciones chkFranquiciado txtArticulo "
                "txtArticuloDescripcion txtObserv txtUnidades txtCosto txtImporte vsCargos cmdComent "
                "cmdModificar cmdEliminar cmdAceptar cmdCancelar cmdSalir"));
    }

    void every_label_leads_to_its_field()
    {
        EscenaEditor escena("");
        for (const auto& [etiqueta, campo, texto] : { std::tuple{ "lblAlmacen", "txtAlmacen", "Almacén:" },
                 { "lblProveedor", "txtProv", "Proveedor:" }, { "lblFecha", "txtFecha", "Fecha:" },
                 { "lblObservacionesCab", "txtObservaciones", "Observaciones:" },
                 { "lblArticulo", "txtArticulo", "Artículo:" },
                 { "lblObservacionesLin", "txtObserv", "Observaciones:" },
                 { "lblUnidades", "txtUnidades", "Unidades:" }, { "lblCosto", "txtCosto", "Costo:" },
                 { "lblImporte", "txtImporte", "Importe:" } }) {
            auto& hallada = escena.c<QLabel>(etiqueta);
            QCOMPARE(hallada.text(), QString::fromUtf8(texto));
            QCOMPARE(hallada.buddy(), &escena.c<>(campo));
        }
        QCOMPARE(escena.c<QLabel>("lblTxtTotal").text(), QStringLiteral("Total:"));
        for (const auto& [boton, texto] :
            { std::pair{ "cmdComent", "+ Observaciones" }, { "cmdModificar", "&Modificar" },
                { "cmdEliminar", "&Eliminar" }, { "cmdAceptar", "&Aceptar" }, { "cmdCancelar", "&Cancelar" },
                { "cmdSalir", "&Salir" }, { "chkFranquiciado", "Franquiciado" } })
            QCOMPARE(escena.c<QAbstractButton>(boton).text(), QLatin1String(texto));
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Test)
#include "frmCompras_Atipicos_test.moc"
