// What the browser finds, and what it says of it.
#include "browser/frmCompras_Atipicos_Visor.hpp"

#include "tests/browser/ConTresCargos.hpp"
#include "tests/support/Ventanas.hpp"

#include <QSignalSpy>

using namespace atipicos;
using pruebas::ConTresCargos;
using pruebas::EscenaVisor;

namespace {

Mensaje se_esperaba_fecha() { return { " Se esperaba Fecha ", "¡ Atención !", Icono::informacion }; }

std::string lista_de(const std::string& filtros, const char* desde, const char* hasta)
{
    return "gestion OPEN SELECT pc.* , ISNULL(prov.Nombre ,'') as Nombre_Proveedor , ISNULL(alm.Nombre ,'') "
           "as "
           "Nombre_Almacen,  ISNULL(usu.Nombre, '') AS Nombre_Usuario FROM Proveedores_Cargos_Atipicos pc "
           "LEFT "
           "JOIN Almacenes alm ON alm.Cod_Empresa = pc.Cod_Empresa AND alm.Codigo = pc.Cod_Almacen LEFT JOIN "
           "Proveedores prov ON prov.Cod_Empresa =1 AND prov.Codigo = pc.Proveedor LEFT JOIN SGD_Usuarios "
           "usu ON "
           "usu.Codigo = pc.Usuario WHERE pc.Cod_Empresa =1"
        + filtros + " AND pc.Fecha BETWEEN '" + desde + "' AND '" + hasta
        + "' ORDER BY pc.Fecha DESC, pc.Cod_Almacen ASC, pc.Codigo DESC";
}

}

class frmCompras_Atipicos_Visor_Busqueda_Test : public QObject {
    Q_OBJECT
private slots:
    void a_search_is_typed_without_the_mouse()
    {
        ConTresCargos visor;
        visor.abre();
        visor.codigo("txtAlmacen").setFocus();
        visor.banco.parte->dichas.clear();
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("2"));
        visor.pulsa(Qt::Key_Return);
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("104"));
        visor.pulsa(Qt::Key_Return);
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("1/1/2026"));
        visor.pulsa(Qt::Key_Return);
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("31/12/2026"));
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.banco.parte->dichas.back(),
            lista_de(" AND pc.Cod_Almacen =2 AND pc.Proveedor =104", "01/01/2026", "31/12/2026"));
        QCOMPARE(visor.listados(), QStringLiteral("AT260001/2"));
    }

    void the_statement_bears_the_filters_that_are_given()
    {
        EscenaVisor visor;
        visor.abre();
        for (const auto& [almacen, proveedor, filtros] :
            { std::tuple{ "", "", "" }, { "1", "", " AND pc.Cod_Almacen =1" },
                { "", "104", " AND pc.Proveedor =104" }, { "0", "0", "" } }) {
            visor.codigo("txtAlmacen").setText(QLatin1String(almacen));
            visor.codigo("txtProveedor").setText(QLatin1String(proveedor));
            visor.c<>("txtFechaF").setFocus();
            visor.busca();
            QCOMPARE(visor.banco.parte->dichas.back(), lista_de(filtros, "01/11/2026", "30/11/2026"));
        }
    }

    void a_day_typed_in_part_is_searched_for_whole()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.c<>("txtFechaF").setFocus();
        pruebas::teclea(&visor.c<>("txtFechaF"), QStringLiteral("281226"));
        visor.c<QLineEdit>("txtFechaF").deselect();
        visor.busca();
        QVERIFY(visor.banco.avisos->dichos.empty());
        QCOMPARE(visor.banco.parte->dichas.back(), lista_de("", "01/11/2026", "28/12/2026"));
    }

    void an_impossible_day_is_told_and_nothing_is_searched_data()
    {
        QTest::addColumn<QString>("caja");
        QTest::addColumn<QString>("teclas");
        QTest::newRow("31 February in the last") << QStringLiteral("txtFechaF") << QStringLiteral("31022026");
        QTest::newRow("31 February in the first")
            << QStringLiteral("txtFechaI") << QStringLiteral("31022026");
        QTest::newRow("three digits for the year")
            << QStringLiteral("txtFechaF") << QStringLiteral("3112026");
        QTest::newRow("empty") << QStringLiteral("txtFechaI") << QString();
    }

    void an_impossible_day_is_told_and_nothing_is_searched()
    {
        QFETCH(const QString, caja);
        QFETCH(const QString, teclas);
        ConTresCargos visor;
        visor.abre_y_busca();
        auto& fecha = visor.c<QLineEdit>(caja.toLatin1().constData());
        fecha.setFocus();
        visor.pulsa(Qt::Key_Delete); // all of it is selected
        pruebas::teclea(&fecha, teclas);
        visor.c<>("txtFechaF").setFocus();
        visor.c<QLineEdit>("txtFechaF").deselect();
        visor.busca();
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ se_esperaba_fecha() });
        QCOMPARE(visor.form.focusWidget(), &fecha);
        QCOMPARE(visor.lista().Rows(), 4);
        QVERIFY(visor.banco.parte->dichas.empty());
    }

    void f5_and_the_button_search_like_enter_and_look_up_what_is_being_typed()
    {
        ConTresCargos visor;
        visor.abre();
        visor.codigo("txtProveedor").setFocus();
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("104"));
        visor.pulsa(Qt::Key_F5);
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/1 AT260001/2"));
        QCOMPARE(visor.nombre("txtProveedor"), QStringLiteral("Conservas La Graciosa, S.A."));
        QCOMPARE(visor.form.focusWidget(), &visor.lista());
        visor.codigo("txtAlmacen").setFocus();
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("2"));
        visor.clic("cmdBuscarAtipicos");
        QCOMPARE(visor.banco.parte->dichas.back(),
            lista_de(" AND pc.Cod_Almacen =2 AND pc.Proveedor =104", "01/11/2026", "30/11/2026"));
        QCOMPARE(visor.nombre("txtAlmacen"), QStringLiteral("La Orotava"));
        visor.codigo("txtProveedor").setFocus(); // where the focus stays when nothing is found
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("103"));
        visor.pulsa(Qt::Key_F5);
        QCOMPARE(visor.lista().Rows(), 1);
        QCOMPARE(visor.nombre("txtProveedor"), QStringLiteral("Ñandú Exportaciones, S.L."));
        visor.codigo("txtProveedor").selectAll();
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("104"));
        visor.pulsa(Qt::Key_F5);
        visor.pulsa(Qt::Key_Return); // to the details, from where F5 leads back
        QCOMPARE(visor.pestanas().currentIndex(), 1);
        visor.pulsa(Qt::Key_F5);
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        visor.banco.parte->falla_en = visor.banco.parte->dichas.size() + 1;
        visor.pulsa(Qt::Key_F5);
        QCOMPARE(visor.banco.titulos(),
            std::vector<std::string>{ "frmCompras_Atipicos_Visor:txtFechaF_KeyPress" });
    }

    void the_list_says_how_it_is_filled_while_it_is_empty()
    {
        ConTresCargos visor;
        visor.abre("01/10/2026", "31/10/2026");
        QVERIFY(visor.lista().accessibleDescription().contains(QStringLiteral("F5")));
        visor.c<>("txtFechaF").setFocus();
        visor.busca();
        QCOMPARE(
            visor.lista().accessibleDescription(), QStringLiteral("No hay atípicos con estas condiciones."));
        visor.form.close();
        visor.abre();
        QVERIFY(visor.lista().accessibleDescription().contains(QStringLiteral("F5")));
    }

    void totals_that_do_not_fit_leave_the_list_and_say_why()
    {
        EscenaVisor visor;
        visor.graba("UNO", "12/11/2026", "Importe = 900000000000000, Impuesto_Importe = 2.5");
        visor.graba("DOS", "13/11/2026", "Importe = 900000000000000, Impuesto_Importe = 1");
        visor.abre_y_busca();
        QCOMPARE(visor.listados(), QStringLiteral("DOS/1 UNO/1"));
        QCOMPARE(visor.comandos(), QStringLiteral("enabled"));
        QCOMPARE(visor.estado(), QStringLiteral("2 atípicos     Importe: …     Impuesto: 3,50"));
        QVERIFY(visor.c<QLabel>("lblEstado").toolTip().contains(QStringLiteral("no cabe")));
        visor.c<QLineEdit>("txtFechaF").setFocus();
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("12112026"));
        visor.busca();
        QCOMPARE(visor.estado(),
            QStringLiteral("1 atípico     Importe: 900.000.000.000.000,00     Impuesto: 2,50"));
        QVERIFY(visor.c<QLabel>("lblEstado").toolTip().isEmpty());
        QVERIFY(visor.banco.titulos().empty());
    }

    void an_error_between_two_rows_leaves_the_list_that_was_there()
    {
        ConTresCargos visor;
        visor.graba("OTRO", "02/11/2026");
        visor.abre_y_busca("20/11/2026", "30/11/2026");
        QCOMPARE(visor.lista().Rows(), 4);
        visor.c<QLineEdit>("txtFechaI").setFocus();
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("01112026"));
        visor.c<>("txtFechaF").setFocus();
        visor.banco.parte->falla_al_avanzar = 2;
        visor.busca();
        QCOMPARE(visor.banco.titulos(),
            std::vector<std::string>{ "frmCompras_Atipicos_Visor:txtFechaF_KeyPress" });
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/1 AT260001/2"));
        QCOMPARE(visor.comandos(), QStringLiteral("enabled"));
        visor.banco.avisos->dichos.clear();
        visor.busca();
        QCOMPARE(visor.lista().Rows(), 5);
    }

    void the_list_and_the_lines_are_filled_without_redrawing()
    {
        ConTresCargos visor;
        visor.abre();
        QSignalSpy cargos(visor.lista().model(), &QAbstractItemModel::rowsInserted);
        visor.c<>("txtFechaF").setFocus();
        visor.busca();
        QCOMPARE(visor.lista().Rows(), 4);
        QCOMPARE(cargos.count(), 1);
        QSignalSpy lineas(visor.lineas().model(), &QAbstractItemModel::rowsInserted);
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.lineas().Rows(), 4);
        QCOMPARE(lineas.count(), 1);
    }

    void the_charges_found_are_listed_newest_first_with_the_first_chosen()
    {
        ConTresCargos visor;
        visor.graba("VIEJO", "02/11/2026");
        visor.abre_y_busca();
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/1 AT260001/2 VIEJO/1"));
        QCOMPARE(EscenaVisor::fila(visor.lista(), 3),
            QStringLiteral(
                "AT260001|2|La Orotava|104|Conservas La Graciosa, S.A.|21/11/2026|231,96|16,24|7,00 %|2|"
                "1|Begoña Hernández|Palé dañado"));
        QCOMPARE(visor.lista().Row(), 1);
        QCOMPARE(visor.form.focusWidget(), &visor.lista());
        QCOMPARE(visor.comandos(), QStringLiteral("enabled"));
        QCOMPARE(visor.estado(), QStringLiteral("4 atípicos     Importe: 705,88     Impuesto: 48,72"));
    }

    void what_no_longer_exists_and_what_was_not_posted_gives_empty_cells()
    {
        EscenaVisor visor;
        visor.graba("SINNADA", "21/11/2026", "Proveedor = 9, Cod_Almacen = 9, Usuario = 9, Asiento = -1");
        visor.abre_y_busca();
        QCOMPARE(EscenaVisor::fila(visor.lista(), 1),
            QStringLiteral("SINNADA|9||9||21/11/2026|10,00|0,00|0,00 %||9||"));
        QCOMPARE(visor.estado(), QStringLiteral("1 atípico     Importe: 10,00     Impuesto: 0,00"));
    }

    void a_search_that_finds_nothing_says_so_and_disables_the_commands()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.c<QLineEdit>("txtFechaF").setFocus();
        pruebas::teclea(visor.form.focusWidget(), QStringLiteral("20112026"));
        visor.busca();
        QCOMPARE(visor.lista().Rows(), 1);
        QCOMPARE(visor.comandos(), QStringLiteral("disabled"));
        QCOMPARE(visor.estado(), QStringLiteral("No hay atípicos con estas condiciones."));
        visor.lista().setFocus();
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QVERIFY(visor.banco.titulos().empty());
    }

    void a_failing_search_is_told_and_leaves_the_list_as_it_was()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.banco.parte->falla_en = 1;
        visor.c<>("txtFechaF").setFocus();
        visor.busca();
        QCOMPARE(visor.banco.titulos(),
            std::vector<std::string>{ "frmCompras_Atipicos_Visor:txtFechaF_KeyPress" });
        QVERIFY(visor.banco.avisos->dichos[0].texto.ends_with("] fallo provocado"));
        QCOMPARE(visor.lista().Rows(), 4);
        QCOMPARE(visor.comandos(), QStringLiteral("enabled"));
    }

    void holding_enter_down_does_not_run_into_the_details()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        QKeyEvent repetida(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
        QCoreApplication::sendEvent(&visor.lista(), &repetida);
        QCOMPARE(visor.pestanas().currentIndex(), 0);
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Visor_Busqueda_Test)
#include "frmCompras_Atipicos_Visor_Busqueda_test.moc"
