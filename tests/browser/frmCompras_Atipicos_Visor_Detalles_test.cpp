// The charge that the browser shows, and the way from one to the next.
#include "browser/frmCompras_Atipicos_Visor.hpp"

#include "tests/browser/ConTresCargos.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using pruebas::ConTresCargos;
using pruebas::EscenaVisor;

class frmCompras_Atipicos_Visor_Detalles_Test : public QObject {
    Q_OBJECT
private slots:
    void enter_and_double_click_and_the_tab_show_the_chosen_charge()
    {
        const auto abre_detalles = std::vector<std::function<void(EscenaVisor&)>>{
            [](EscenaVisor& visor) { visor.pulsa(Qt::Key_Return); },
            [](EscenaVisor& visor) {
                const auto celda = visor.lista().visualRect(visor.lista().model()->index(2, 0)).center();
                QTest::mouseClick(visor.lista().viewport(), Qt::LeftButton, {}, celda);
                QTest::mouseDClick(visor.lista().viewport(), Qt::LeftButton, {}, celda);
            },
            [](EscenaVisor& visor) {
                auto* barra = visor.pestanas().tabBar();
                QTest::mouseClick(barra, Qt::LeftButton, {}, barra->tabRect(1).center());
            },
        };
        for (const auto& abre : abre_detalles) {
            ConTresCargos visor;
            visor.abre_y_busca();
            visor.lista().set_Row(3);
            abre(visor);
            QCOMPARE(visor.pestanas().currentIndex(), 1);
            QCOMPARE(visor.c<QLabel>("lblCodigo").text(), QStringLiteral("Código: AT260001"));
            QCOMPARE(visor.codigo("txtAlmacenDet").text(), QStringLiteral("2"));
            QCOMPARE(visor.nombre("txtAlmacenDet"), QStringLiteral("La Orotava"));
            QCOMPARE(visor.nombre("txtProveedorDet"), QStringLiteral("Conservas La Graciosa, S.A."));
            QCOMPARE(visor.texto("txtFechaDet"), QStringLiteral("21/11/2026"));
            QCOMPARE(visor.lineas().Rows(), 4);
            QCOMPARE(EscenaVisor::fila(visor.lineas(), 1),
                QStringLiteral("AT260001|1006|Lata abollada|12,000|5,633|67,59|"));
            QCOMPARE(visor.form.Ejercicio, std::int16_t{ 2026 });
            QCOMPARE(visor.form.Almacen_Inicial, std::int16_t{ 2 });
            QCOMPARE(visor.form.Proveedor_Inicial, 104);
            QCOMPARE(
                visor.banco.parte->dichas.size(), std::size_t{ 3 }); // two names and the lines, once each
            QCOMPARE(visor.banco.parte->dichas.back(),
                std::string(
                    "gestion OPEN  SELECT pcl.*   FROM Proveedores_Cargos_Atipicos_Lineas pcl  WHERE "
                    "pcl.Cod_Empresa =1    AND pcl.Cod_Ejercicio =2026    AND pcl.Cod_Almacen =2    AND "
                    "pcl.Codigo ='AT260001' ORDER BY pcl.Num_Linea "));
        }
    }

    void enter_goes_to_the_lines_and_escape_back_to_the_list()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.pulsa(Qt::Key_Down);
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.form.focusWidget(), &visor.lineas());
        visor.pulsa(Qt::Key_Escape);
        QVERIFY(visor.form.isVisible());
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QCOMPARE(visor.form.focusWidget(), &visor.lista());
        QCOMPARE(visor.lista().Row(), 2);
    }

    void the_header_of_the_details_cannot_be_changed()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.pulsa(Qt::Key_Return);
        for (auto* caja : { &visor.codigo("txtAlmacenDet"), &visor.codigo("txtProveedorDet"),
                 &visor.c<QLineEdit>("txtFechaDet") }) {
            const QString antes = caja->text();
            QTest::keyClicks(caja, QStringLiteral("9"));
            QTest::keyClick(caja, Qt::Key_F2);
            QTest::keyClick(caja, Qt::Key_Up);
            QCOMPARE(caja->text(), antes);
        }
    }

    void the_amount_of_a_line_is_computed_and_a_charge_without_lines_has_none()
    {
        EscenaVisor visor;
        visor.graba("SINLINEAS", "21/11/2026");
        visor.graba("CONLINEA", "20/11/2026");
        visor.banco.bases().orvalin->Execute("INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, "
                                             "Cod_Ejercicio, Cod_Almacen, Codigo, "
                                             "Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, "
                                             "Observ) VALUES (1, 2026, 1, 'CONLINEA', 1, "
                                             "1001, 'Rotas', 2.5, 3, 'dos'||char(13)||char(10)||'líneas')");
        visor.abre_y_busca();
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.lineas().Rows(), 1);
        visor.clic("cmdSiguiente");
        QCOMPARE(EscenaVisor::fila(visor.lineas(), 1),
            QStringLiteral("CONLINEA|1001|Rotas|2,500|3,000|7,50|dos\r\nlíneas"));
    }

    void on_the_details_the_buttons_go_from_charge_to_charge()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.pulsa(Qt::Key_Return);
        const auto tras = [&](const char* boton) {
            visor.clic(boton);
            return QString::number(visor.lista().Row()) + visor.c<QLabel>("lblCodigo").text();
        };
        const auto consultas = visor.banco.parte->dichas.size();
        QCOMPARE(tras("cmdAnterior"), QStringLiteral("1Código: AT260002"));
        QCOMPARE(visor.banco.parte->dichas.size(), consultas); // nothing before the first
        QCOMPARE(tras("cmdSiguiente"), QStringLiteral("2Código: AT260001"));
        QCOMPARE(tras("cmdAnterior"), QStringLiteral("1Código: AT260002"));
        QCOMPARE(tras("cmdUltimo"), QStringLiteral("3Código: AT260001"));
        QCOMPARE(visor.nombre("txtAlmacenDet"), QStringLiteral("La Orotava"));
        visor.banco.parte->dichas.clear();
        QCOMPARE(tras("cmdSiguiente"), QStringLiteral("3Código: AT260001"));
        QVERIFY(visor.banco.parte->dichas.empty()); // nothing after the last
        QCOMPARE(tras("cmdPrimero"), QStringLiteral("1Código: AT260002"));
        QCOMPARE(visor.pestanas().currentIndex(), 1);
    }

    void on_the_list_the_buttons_move_the_chosen_row()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        const auto tras = [&](const char* boton) {
            visor.clic(boton);
            return visor.lista().Row();
        };
        QCOMPARE(tras("cmdAnterior"), 1);
        QCOMPARE(tras("cmdSiguiente"), 2);
        QCOMPARE(tras("cmdUltimo"), 3);
        QCOMPARE(tras("cmdSiguiente"), 3);
        QCOMPARE(tras("cmdAnterior"), 2);
        QCOMPARE(tras("cmdPrimero"), 1);
        QCOMPARE(visor.form.focusWidget(), &visor.lista());
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QVERIFY(visor.banco.parte->dichas.empty());
    }

    void the_buttons_do_nothing_in_an_empty_list()
    {
        EscenaVisor visor;
        visor.abre();
        auto* enfocada = visor.form.focusWidget();
        for (const auto* boton : { "cmdPrimero", "cmdAnterior", "cmdSiguiente", "cmdUltimo" })
            visor.c<QPushButton>(boton).click();
        QCOMPARE(visor.lista().Row(), 0);
        QCOMPARE(visor.form.focusWidget(), enfocada);
    }

    void a_failing_read_of_the_lines_is_told()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.banco.parte->falla_en = 3;
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(
            visor.banco.titulos(), std::vector<std::string>{ "frmCompras_Atipicos_Visor:Cargar_Detalles" });
        QCOMPARE(visor.lineas().Rows(), 1);
        visor.clic("cmdSiguiente");
        QCOMPARE(visor.lineas().Rows(), 4);
    }

    void an_error_between_two_lines_leaves_those_before_it_to_be_seen()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.banco.parte->falla_al_avanzar = 2;
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(
            visor.banco.titulos(), std::vector<std::string>{ "frmCompras_Atipicos_Visor:Cargar_Detalles" });
        QCOMPARE(visor.lineas().Rows(), 3);
        QCOMPARE(visor.lineas().model()->rowCount(), 2); // drawn, not only kept
        QCOMPARE(visor.lineas().TextMatrix(2, 4), QStringLiteral("1,198"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Visor_Detalles_Test)
#include "frmCompras_Atipicos_Visor_Detalles_test.moc"
