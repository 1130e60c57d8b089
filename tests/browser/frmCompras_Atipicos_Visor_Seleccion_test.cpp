// Which charge the browser shows and acts on: the chosen one, whatever is clicked and whatever fails.
#include "editor/frmCompras_Atipicos.hpp"
#include "tests/browser/EscenaVisor.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QPlainTextEdit>

using namespace atipicos;
using pruebas::EscenaVisor;

namespace {

/// Three charges, listed as AT260002/1 AT260001/1 AT260001/2.
struct ConListaAbierta : EscenaVisor {
    ConListaAbierta()
    {
        for (const int almacen : { 1, 2, 1 })
            banco.guarda({}, static_cast<std::int16_t>(almacen));
        banco.avisos->dichos.clear();
        abre_y_busca();
    }

    void elimina()
    {
        banco.avisos->respuestas = { Respuesta::Si };
        clic("cmdEliminar");
    }
    QString mostrado() { return c<QLabel>("lblCodigo").text(); }
    void clic_en_la_lista(const QPoint& donde, Qt::KeyboardModifiers con = Qt::NoModifier)
    {
        QTest::mouseClick(lista().viewport(), Qt::LeftButton, con, donde);
    }
    QPoint celda(int fila) { return lista().visualRect(lista().model()->index(fila - 1, 0)).center(); }
    QPoint debajo() { return { 20, lista().viewport()->height() - 4 }; }

    /// What the bold rows are, as in "2: AT260001".
    QString marcadas()
    {
        QStringList hay;
        for (int fila = 1; fila < lista().Rows(); ++fila)
            if (lista().model()->index(fila - 1, 0).data(Qt::FontRole).value<QFont>().bold())
                hay << QStringLiteral("%1: %2").arg(fila).arg(lista().TextMatrix(fila, 0));
        return hay.join(u' ');
    }
    bool modifica(const std::function<void(frmCompras_Atipicos&)>& mientras = {})
    {
        banco.avisos->respuestas = { Respuesta::Si };
        return pruebas::con_dialogo<frmCompras_Atipicos>([&] { clic("cmdModificar"); },
            [&](frmCompras_Atipicos& editor) {
                if (mientras)
                    mientras(editor);
                editor.close();
            });
    }
};

}

class frmCompras_Atipicos_Visor_Seleccion_Test : public QObject {
    Q_OBJECT
private slots:
    void a_click_below_the_list_or_with_ctrl_changes_nothing_of_what_is_shown()
    {
        ConListaAbierta visor;
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.mostrado(), QStringLiteral("Código: AT260002"));
        visor.pulsa(Qt::Key_Escape);
        visor.clic_en_la_lista(visor.celda(3));
        visor.clic_en_la_lista(visor.debajo());
        visor.clic_en_la_lista(visor.celda(3), Qt::ControlModifier);
        QCOMPARE(visor.lista().Row(), 3);
        auto* barra = visor.pestanas().tabBar();
        QTest::mouseClick(barra, Qt::LeftButton, {}, barra->tabRect(1).center());
        QCOMPARE(visor.mostrado(), QStringLiteral("Código: AT260001"));
        QCOMPARE(visor.codigo("txtAlmacenDet").text(), QStringLiteral("2"));
    }

    void with_no_row_chosen_by_a_program_the_details_show_no_charge()
    {
        ConListaAbierta visor;
        visor.pulsa(Qt::Key_Return);
        visor.pulsa(Qt::Key_Escape);
        visor.lista().set_Row(0);
        visor.pestanas().setCurrentIndex(1);
        QCOMPARE(visor.mostrado(), QStringLiteral("Código: "));
        QVERIFY(visor.codigo("txtAlmacenDet").text().isEmpty());
        QVERIFY(visor.codigo("txtProveedorDet").text().isEmpty());
        QCOMPARE(visor.texto("txtFechaDet"), QStringLiteral("//"));
        for (const auto* nombre : { "lblImportesDet", "lblAsientoDet" })
            QVERIFY2(visor.c<QLabel>(nombre).text().isEmpty(), nombre);
        QVERIFY(visor.c<QPlainTextEdit>("txtObservDet").toPlainText().isEmpty());
        QCOMPARE(visor.lineas().Rows(), 1);
    }

    void a_deletion_from_the_details_whose_search_fails_shows_the_list_without_the_charge()
    {
        ConListaAbierta visor;
        visor.lista().set_Row(2);
        visor.pulsa(Qt::Key_Return);
        visor.banco.parte->falla_en = visor.banco.parte->dichas.size() + 5;
        visor.elimina();
        QCOMPARE(visor.banco.titulos().back(), std::string("frmCompras_Atipicos_Visor:cmdEliminar_Click"));
        QCOMPARE(visor.banco.titulos().size(), std::size_t{ 2 });
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/2"));
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QCOMPARE(visor.form.focusWidget(), &visor.lista());
        QVERIFY2(visor.estado().startsWith(QStringLiteral("Eliminado AT260001 del almacén 1.")),
            qPrintable(visor.estado()));
        QVERIFY(visor.mostrado() != QStringLiteral("Código: AT260001"));
        visor.pestanas().setCurrentIndex(1);
        QCOMPARE(visor.mostrado(), QStringLiteral("Código: AT260001"));
        QCOMPARE(visor.codigo("txtAlmacenDet").text(), QStringLiteral("2")); // the other one of that code
        visor.elimina();
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1"));
    }

    void a_deletion_from_the_details_with_an_impossible_date_leads_to_the_box_in_sight()
    {
        for (const auto* caja : { "txtFechaI", "txtFechaF" }) {
            ConListaAbierta visor;
            visor.c<QLineEdit>(caja).setText(QStringLiteral("31/02/2026"));
            visor.lista().setFocus();
            visor.pulsa(Qt::Key_Return);
            visor.elimina();
            QCOMPARE(visor.banco.avisos->dichos.back().texto, std::string(" Se esperaba Fecha "));
            QCOMPARE(visor.listados(), QStringLiteral("AT260001/1 AT260001/2"));
            QVERIFY(visor.form.focusWidget()->isVisible());
            QCOMPARE(visor.form.focusWidget(), &visor.c<>(caja));
            QCOMPARE(visor.pestanas().currentIndex(), 0);
            QVERIFY(visor.mostrado() != QStringLiteral("Código: AT260002"));
        }
    }

    void f5_in_the_details_with_an_impossible_date_leads_to_the_box_in_sight()
    {
        ConListaAbierta visor;
        visor.c<QLineEdit>("txtFechaF").setText(QStringLiteral("31/02/2026"));
        visor.lista().setFocus();
        visor.pulsa(Qt::Key_Return);
        visor.pulsa(Qt::Key_F5);
        QVERIFY(visor.form.focusWidget()->isVisible());
        QCOMPARE(visor.form.focusWidget(), &visor.c<>("txtFechaF"));
        QCOMPARE(visor.lista().Rows(), 4);
    }

    void the_last_charge_deleted_disables_the_commands_also_when_the_search_fails()
    {
        EscenaVisor visor;
        visor.graba("UNICO", "21/11/2026");
        visor.graba("OTRO", "22/11/2026");
        visor.abre_y_busca();
        visor.banco.avisos->respuestas = { Respuesta::Si };
        visor.banco.parte->falla_en = visor.banco.parte->dichas.size() + 5;
        visor.clic("cmdEliminar");
        QCOMPARE(visor.listados(), QStringLiteral("UNICO/1"));
        QCOMPARE(visor.comandos(), QStringLiteral("enabled")); // there is one left
        QCOMPARE(visor.form.focusWidget(), &visor.c<>("cmdEliminar")); // and the list was in sight anyway
        visor.banco.avisos->respuestas = { Respuesta::Si };
        visor.banco.parte->falla_en = visor.banco.parte->dichas.size() + 5;
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.titulos().back(), std::string("frmCompras_Atipicos_Visor:cmdEliminar_Click"));
        QCOMPARE(visor.lista().Rows(), 1);
        QCOMPARE(visor.comandos(), QStringLiteral("disabled"));
    }

    void change_shows_the_list_before_the_editor_opens()
    {
        ConListaAbierta visor;
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.pestanas().currentIndex(), 1);
        int pestana = -1;
        QVERIFY(visor.modifica([&](frmCompras_Atipicos&) { pestana = visor.pestanas().currentIndex(); }));
        QCOMPARE(pestana, 0);
    }

    void after_a_change_the_first_row_is_chosen_and_the_changed_charge_one_key_away()
    {
        ConListaAbierta visor;
        visor.lista().set_Row(3);
        QVERIFY(visor.modifica());
        visor.activa();
        QCOMPARE(visor.lista().Row(), 1);
        QCOMPARE(visor.marcadas(), QStringLiteral("3: AT260001"));
        QVERIFY2(visor.estado().endsWith(QStringLiteral("F6: AT260001 del almacén 2, el último abierto")),
            qPrintable(visor.estado()));
        visor.lista().setFocus();
        visor.pulsa(Qt::Key_Return); // from the details too
        visor.pulsa(Qt::Key_F6);
        QCOMPARE(visor.lista().Row(), 3);
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QCOMPARE(visor.form.focusWidget(), &visor.lista());
        visor.lista().set_Row(1);
        visor.codigo("txtProveedor").setFocus();
        visor.pulsa(Qt::Key_F6);
        QCOMPARE(visor.lista().Row(), 3);
        QCOMPARE(visor.form.focusWidget(), &visor.lista());
        visor.pulsa(Qt::Key_F5); // a list of its own
        QCOMPARE(visor.marcadas(), QString());
        visor.pulsa(Qt::Key_F6);
        QCOMPARE(visor.lista().Row(), 1);
    }

    void a_changed_charge_that_is_no_longer_listed_is_not_offered()
    {
        ConListaAbierta visor;
        visor.lista().set_Row(2);
        QVERIFY(visor.modifica([&](frmCompras_Atipicos&) {
            visor.banco.bases().orvalin->Execute(
                "UPDATE Proveedores_Cargos_Atipicos SET Fecha = '15/10/2026' WHERE Cod_Almacen = 1 AND "
                "Codigo = 'AT260001'");
        }));
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/2"));
        QCOMPARE(visor.marcadas(), QString());
        QVERIFY(!visor.estado().contains(QStringLiteral("F6")));
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Visor_Seleccion_Test)
#include "frmCompras_Atipicos_Visor_Seleccion_test.moc"
