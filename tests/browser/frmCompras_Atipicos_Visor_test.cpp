#include "browser/frmCompras_Atipicos_Visor.hpp"

#include "browser/RejillasVisorQt.hpp"
#include "controls/Twips.hpp"
#include "tests/browser/CatorceColumnas.hpp"
#include "tests/browser/ConTresCargos.hpp"
#include "tests/support/Ventanas.hpp"

#include <QDir>
#include <QHeaderView>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace atipicos;
using pruebas::ConTresCargos;
using pruebas::EscenaVisor;

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
