#include "browser/frmCompras_Atipicos_Visor.hpp"

#include "browser/RejillasVisorQt.hpp"
#include "controls/Twips.hpp"
#include "tests/browser/CatorceColumnas.hpp"
#include "tests/browser/EscenaVisor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QDir>
#include <QHeaderView>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace atipicos;
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

/// Three charges of 21/11/2026: two of warehouse 1 and one of warehouse 2.
struct ConTresCargos : EscenaVisor {
    ConTresCargos()
    {
        for (const int almacen : { 1, 2, 1 })
            banco.guarda({}, static_cast<std::int16_t>(almacen));
        banco.avisos->dichos.clear();
    }
};

}

class frmCompras_Atipicos_Visor_Test : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_ajustes.isValid());
        QCoreApplication::setOrganizationName({}); // as in a host that has none
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_ajustes.path());
    }

    // Opening

    void opens_empty_with_its_commands_disabled()
    {
        EscenaVisor visor;
        visor.abre();
        QCOMPARE(visor.form.windowTitle(), QStringLiteral("Visor de Atípicos"));
        QCOMPARE(visor.pestanas().tabText(0), QStringLiteral("Documentos"));
        QCOMPARE(visor.pestanas().tabText(1), QStringLiteral("Detalles"));
        QCOMPARE(visor.comandos(), QStringLiteral("disabled"));
        QCOMPARE(visor.lista().Rows(), 1);
        QCOMPARE(EscenaVisor::fila(visor.lista(), 0),
            QStringLiteral(
                "Código|Almacén|Almacén|Proveedor|Proveedor|Fecha|Importe|Impuesto|Impuesto|Asiento|"
                "Usuario|Usuario|Observaciones"));
        QCOMPARE(EscenaVisor::fila(visor.lineas(), 0),
            QStringLiteral("Código|Artículo|Artículo|Unidades|Precio|Importe|Observaciones"));
        for (const auto& [nombre, texto] :
            { std::pair{ "lblFechaI", "Fecha Inicial:" }, { "lblGuion", "-" }, { "lblAlmacen", "Almacén:" },
                { "lblProveedor", "Proveedor:" }, { "lblAlmacenDet", "Almacén:" },
                { "lblProvDet", "Proveedor:" }, { "lblFechaDet", "Fecha:" } })
            QCOMPARE(visor.c<QLabel>(nombre).text(), QString::fromUtf8(texto));
        for (const auto& [nombre, texto] : { std::pair{ "cmdImprimir", "&Imprimir" },
                 { "cmdModificar", "&Modificar" }, { "cmdEliminar", "&Eliminar" }, { "cmdSalir", "&Salir" } })
            QCOMPARE(visor.c<QPushButton>(nombre).text(), QString::fromUtf8(texto));
    }

    void opens_with_the_filters_it_was_given()
    {
        EscenaVisor visor;
        visor.form.Almacen_Inicial = 3;
        visor.form.Proveedor_Inicial = 104;
        visor.abre("01/02/2026", "28/02/2026");
        QCOMPARE(visor.texto("txtFechaI"), QStringLiteral("01/02/2026"));
        QCOMPARE(visor.texto("txtFechaF"), QStringLiteral("28/02/2026"));
        QCOMPARE(visor.nombre("txtProveedor"), QStringLiteral("Conservas La Graciosa, S.A."));
        QCOMPARE(visor.nombre("txtAlmacen"), QStringLiteral("Arrecife"));
    }

    void its_pickers_have_their_width()
    {
        EscenaVisor visor;
        visor.abre();
        for (const auto* nombre : { "txtAlmacen", "txtProveedor" })
            QCOMPARE(visor.c<>(nombre).minimumWidth(), twips_a_pixeles(3000, visor.c<>(nombre)));
    }

    void without_filters_it_opens_on_this_year()
    {
        EscenaVisor visor;
        visor.abre_sin_rango();
        QCOMPARE(visor.texto("txtFechaI"), QStringLiteral("01/01/2026"));
        QCOMPARE(visor.texto("txtFechaF"), QStringLiteral("21/11/2026"));
        QVERIFY(visor.codigo("txtAlmacen").text().isEmpty());
    }

    void what_the_launcher_gives_wins_whatever_was_searched_for_before()
    {
        {
            EscenaVisor visor;
            visor.form.Almacen_Inicial = 2;
            visor.form.Proveedor_Inicial = 104;
            visor.abre_y_busca("01/02/2025", "20/11/2026");
        }
        EscenaVisor visor;
        visor.abre_sin_rango();
        QCOMPARE(visor.texto("txtFechaI"), QStringLiteral("01/01/2026"));
        QCOMPARE(visor.texto("txtFechaF"), QStringLiteral("21/11/2026"));
        QVERIFY(visor.codigo("txtAlmacen").text().isEmpty());
        QVERIFY(visor.codigo("txtProveedor").text().isEmpty());
        QVERIFY(QDir(m_ajustes.path()).isEmpty()); // nor is anything kept
    }

    void a_search_that_has_been_run_is_told_with_its_conditions()
    {
        ConTresCargos visor;
        std::vector<FiltroAtipicos> buscados;
        connect(&visor.form, &frmCompras_Atipicos_Visor::Buscado, &visor.form,
            [&](const FiltroAtipicos& filtro) { buscados.push_back(filtro); });
        visor.form.Almacen_Inicial = 2;
        visor.form.Proveedor_Inicial = 104;
        visor.abre_y_busca("02/02/2026", "30/11/2026");
        QCOMPARE(buscados.size(), std::size_t{ 1 });
        QCOMPARE(buscados[0].FechaI, std::string("02/02/2026"));
        QCOMPARE(buscados[0].FechaF, std::string("30/11/2026"));
        QCOMPARE(buscados[0].Almacen, std::int16_t{ 2 });
        QCOMPARE(buscados[0].Proveedor, 104);
        visor.banco.parte->falla_en = 1;
        visor.c<>("txtFechaF").setFocus();
        visor.busca();
        QCOMPARE(buscados.size(), std::size_t{ 1 }); // what failed is no search
    }

    void a_null_user_of_the_company_harms_nothing()
    {
        ConTresCargos visor;
        auto empresa = std::make_shared<pruebas::EmpresaDePrueba>();
        empresa->parametros["UsuarioActual"] = Nulo{};
        modComun::set_EmpresaOrvalin(empresa);
        visor.abre_sin_rango();
        visor.c<>("txtFechaF").setFocus();
        visor.busca();
        QCOMPARE(visor.comandos(), QStringLiteral("enabled"));
        QVERIFY(visor.banco.titulos().empty());
    }

    void each_opening_begins_anew()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.pestanas().currentIndex(), 1);
        visor.form.close();
        visor.abre("01/11/2026", "15/11/2026");
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QCOMPARE(visor.lista().Rows(), 1);
        QCOMPARE(visor.comandos(), QStringLiteral("disabled"));
        QCOMPARE(visor.texto("txtFechaF"), QStringLiteral("15/11/2026"));
        QCOMPARE(visor.estado(), QString());
    }

    void the_focus_goes_through_it_as_a_clerk_reads()
    {
        ConTresCargos visor;
        visor.abre_y_busca();
        visor.codigo("txtAlmacen").setFocus();
        const auto recorre = [&](int cuantos) {
            QStringList nombres;
            for (int i = 0; i < cuantos; ++i) {
                const auto* enfocado = visor.form.focusWidget();
                const bool de_selector = enfocado->objectName() == QLatin1String("txtCodigo");
                nombres << (de_selector ? enfocado->parent()->objectName() : enfocado->objectName());
                if (enfocado->accessibleName().isEmpty() && !enfocado->inherits("QPushButton")
                    && !enfocado->inherits("QTabBar"))
                    nombres.back() += QStringLiteral("(nameless)");
                visor.pulsa(Qt::Key_Tab);
            }
            return nombres.join(u' ');
        };
        const QString botones = QStringLiteral(" cmdPrimero cmdAnterior cmdSiguiente cmdUltimo cmdExportar "
                                               "cmdImprimir cmdModificar cmdEliminar cmdSalir "
                                               "qt_tabwidget_tabbar");
        QCOMPARE(recorre(16),
            QStringLiteral("txtAlmacen txtProveedor txtFechaI txtFechaF cmdBuscarAtipicos vsCab") + botones);
        visor.lista().setFocus();
        visor.pulsa(Qt::Key_Return);
        visor.codigo("txtAlmacenDet").setFocus();
        QCOMPARE(recorre(15),
            QStringLiteral("txtAlmacenDet txtProveedorDet txtFechaDet txtObservDet vsDetalles") + botones);
    }

    // Search

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

    // Details and navigation

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

    // A column more

    void the_headings_are_set_in_their_order_those_of_the_tax_last()
    {
        VSFlexGrid rejilla;
        QSignalSpy puestos(rejilla.model(), &QAbstractItemModel::headerDataChanged);
        prepara_vsCab(rejilla);
        QStringList columnas;
        for (const auto& puesto : puestos)
            columnas << puesto.at(1).toString();
        QCOMPARE(columnas.join(u' '), QStringLiteral("0 1 2 3 4 5 6 9 10 11 12 7 8"));
    }

    void a_fourteenth_column_has_its_heading_width_and_order()
    {
        const auto catorce = pruebas::catorce_columnas();
        VSFlexGrid rejilla;
        prepara_vsCab(rejilla, catorce);
        QCOMPARE(rejilla.Cols(), 14);
        QCOMPARE(rejilla.TextMatrix(0, 13), QStringLiteral("Emp."));
        QCOMPARE(rejilla.TextMatrix(0, 12), QStringLiteral("Observaciones"));
        QCOMPARE(rejilla.ColWidth(13), twips_a_pixeles(600, rejilla));
        CargoListado cargo;
        for (const std::int32_t empresa : { 20, 3 }) {
            cargo.otros = { empresa };
            std::string fila;
            anexa_fila(fila, cargo, catorce);
            rejilla.AddItem(QByteArray::fromStdString(fila));
        }
        QCOMPARE(rejilla.model()->index(0, 13).data(Qt::TextAlignmentRole).value<Qt::Alignment>(),
            Qt::AlignRight | Qt::AlignVCenter);
        emit rejilla.horizontalHeader()->sectionClicked(13);
        QCOMPARE(rejilla.TextMatrix(1, 13), QStringLiteral("3"));
    }

    // Order by heading

    void a_heading_orders_the_list_and_commands_act_on_the_chosen_charge()
    {
        ConTresCargos visor;
        visor.graba("CARO", "02/11/2026", "Importe = 5000");
        visor.abre_y_busca();
        auto* cabecera = visor.lista().horizontalHeader();
        const QPoint importe(cabecera->sectionViewportPosition(6) + 10, cabecera->height() / 2);
        QTest::mouseClick(cabecera->viewport(), Qt::LeftButton, {}, importe);
        QTest::mouseClick(cabecera->viewport(), Qt::LeftButton, {}, importe);
        QCOMPARE(visor.listados(), QStringLiteral("CARO/1 AT260002/1 AT260001/1 AT260001/2"));
        QCOMPARE(visor.lista().Row(), 2); // the same charge as before
        visor.clic("cmdAnterior");
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.c<QLabel>("lblCodigo").text(), QStringLiteral("Código: CARO"));
    }

private:
    QTemporaryDir m_ajustes;
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Visor_Test)
#include "frmCompras_Atipicos_Visor_test.moc"
