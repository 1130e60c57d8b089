#include "controls/VSFlexGrid.hpp"
#include "tests/app/EscenaPanel.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTableWidget>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

QString codigo_en(QWidget& form, const char* selector)
{
    return control<QLineEdit>(control(form, selector), "txtCodigo").text();
}

}

class PanelPrincipal_Test : public QObject {
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }

    void it_fills_itself_with_the_latest_charges_the_figures_and_what_needs_attention()
    {
        const EscenaPanel escena;
        escena.abre();
        QTRY_COMPARE(escena.filas(), 4);
        QCOMPARE(escena.celda(0, 0), QStringLiteral("AT260003"));
        QCOMPARE(escena.celda(0, 1), QStringLiteral("2"));
        QCOMPARE(escena.celda(0, 2), QStringLiteral("17/06/2026"));
        QCOMPARE(escena.celda(1, 3), QStringLiteral("Ñandú Exportaciones, S.L."));
        QCOMPARE(escena.celda(1, 6), QStringLiteral("100,07"));
        QCOMPARE(escena.celda(1, 7), QStringLiteral("31"));
        QCOMPARE(escena.celda(2, 7), QString()); // no entry
        QCOMPARE(escena.celda(3, 0), QStringLiteral("AT250001"));
        QCOMPARE(escena.dice("lblCargos"), QStringLiteral("4 cargos"));

        const auto& cifras = control<QTableWidget>(*escena.ventana, "vsCifras");
        QTRY_COMPARE(cifras.item(0, 0)->text(), QStringLiteral("3"));
        QCOMPARE(cifras.item(0, 1)->text(), QStringLiteral("145,00"));
        QCOMPARE(cifras.item(0, 2)->text(), QStringLiteral("0,21"));
        QCOMPARE(cifras.item(0, 3)->text(), QStringLiteral("145,21"));
        QCOMPARE(cifras.item(1, 0)->text(), QStringLiteral("0"));
        QCOMPARE(cifras.item(0, 4)->text(), QString()); // nothing to compare with
        QCOMPARE(cifras.item(3, 3)->text(), QStringLiteral("70,07"));
        QCOMPARE(cifras.item(2, 4)->text(), QStringLiteral("+107 %"));
        QCOMPARE(cifras.item(1, 0)->toolTip(), QStringLiteral("Del 01/05/2026 al 17/05/2026"));

        QTRY_COMPARE(escena.dice("lblSinAsiento"), QStringLiteral("Un cargo sin asiento"));
        QCOMPARE(
            escena.dice("lblSueltos"), QStringLiteral("Ningún asiento de un cargo borrado está sin anular"));
        QCOMPARE(escena.dice("lblPrevisiones"), QStringLiteral("Ninguna previsión vence en 30 días"));
        QVERIFY(control<QPushButton>(*escena.ventana, "cmdSinAsiento").isEnabled());
        QVERIFY(!control<QPushButton>(*escena.ventana, "cmdSueltos").isEnabled());
        QVERIFY(!control<QPushButton>(*escena.ventana, "cmdPrevisiones").isEnabled());
    }

    void where_there_is_little_room_the_total_stays_in_sight_and_what_it_adds_up_goes()
    {
        const EscenaPanel escena;
        escena.abre();
        auto& lista = control<QTableView>(*escena.ventana, "vsUltimos");
        const int letra = lista.fontMetrics().horizontalAdvance(u'0');
        const auto columnas = [&](int cifras) {
            lista.setFixedWidth(cifras * letra);
            QCoreApplication::sendPostedEvents();
            QTest::qWait(1);
            QString vistas;
            for (int i = 0; i < lista.model()->columnCount(); ++i)
                if (!lista.isColumnHidden(i))
                    vistas += lista.model()->headerData(i, Qt::Horizontal).toString() + u' ';
            return vistas;
        };
        QTRY_COMPARE(
            columnas(110), QStringLiteral("Código Almacén Fecha Proveedor Base Impuesto Total Asiento "));
        QTRY_COMPARE(columnas(90), QStringLiteral("Código Almacén Fecha Proveedor Base Total Asiento "));
        QTRY_COMPARE(columnas(80), QStringLiteral("Código Almacén Fecha Proveedor Total Asiento "));
        QTRY_COMPARE(columnas(66), QStringLiteral("Código Almacén Fecha Proveedor Total "));
        QVERIFY(lista.columnViewportPosition(6) + lista.columnWidth(6) <= lista.viewport()->width());
        QTRY_COMPARE(
            columnas(110), QStringLiteral("Código Almacén Fecha Proveedor Base Impuesto Total Asiento "));
    }

    void it_finds_as_one_types_and_escape_brings_the_latest_back()
    {
        const EscenaPanel escena;
        escena.abre();
        QTRY_COMPARE(escena.filas(), 4);
        pulsa(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(foco(), QStringLiteral("txtBuscarCargo"));
        teclea("queseria");
        QTRY_COMPARE(escena.dice("lblCargos"), QStringLiteral("2 cargos encontrados"));
        QCOMPARE(escena.celda(0, 0), QStringLiteral("AT260002"));
        QCOMPARE(escena.celda(1, 0), QStringLiteral("AT250001"));
        pulsa(Qt::Key_A, Qt::ControlModifier);
        teclea("100,07");
        QTRY_COMPARE(escena.dice("lblCargos"), QStringLiteral("Un cargo encontrado"));
        QCOMPARE(escena.celda(0, 0), QStringLiteral("AT260001"));
        pulsa(Qt::Key_A, Qt::ControlModifier);
        teclea("zzz");
        QTRY_COMPARE(escena.dice("lblCargos"), QStringLiteral("No se encuentra ningún cargo"));
        QCOMPARE(escena.filas(), 0);
        pulsa(Qt::Key_Escape);
        QTRY_COMPARE(escena.filas(), 4);
        QCOMPARE(escena.dice("lblCargos"), QStringLiteral("4 cargos"));
    }

    void enter_opens_the_browser_on_the_charge_and_that_is_no_search_of_the_person()
    {
        const EscenaPanel escena;
        escena.abre();
        QTRY_COMPARE(escena.filas(), 4);
        QTRY_VERIFY(control<QPushButton>(*escena.ventana, "cmdSinAsiento").isEnabled());
        for (const char* siguiente :
            { "cmdReclamaciones", "txtBuscarCargo", "vsUltimos", "vsCifras", "cmdSinAsiento" }) {
            QCOMPARE(foco(), QLatin1String(siguiente));
            pulsa(Qt::Key_Tab);
        }
        pulsa(Qt::Key_L, Qt::AltModifier);
        QCOMPARE(foco(), QStringLiteral("vsUltimos"));
        pulsa(Qt::Key_Down);
        intro();
        QWidget* form = escena.visor();
        QVERIFY(form != nullptr);
        QCOMPARE(control<QLineEdit>(*form, "txtFechaI").text(), QStringLiteral("17/06/2026"));
        QCOMPARE(control<QLineEdit>(*form, "txtFechaF").text(), QStringLiteral("17/06/2026"));
        QCOMPARE(codigo_en(*form, "txtAlmacen"), QStringLiteral("2"));
        QCOMPARE(codigo_en(*form, "txtProveedor"), QStringLiteral("103"));
        const auto& lista = control<VSFlexGrid>(*form, "vsCab");
        QCOMPARE(lista.Rows(), 2);
        QCOMPARE(lista.TextMatrix(lista.Row(), 0), QStringLiteral("AT260001"));
        form->close();
        control<QAction>(*escena.ventana, "mnuVisor").trigger();
        QCOMPARE(control<QLineEdit>(*escena.visor(), "txtFechaI").text(), QStringLiteral("01/01/2026"));
        QCOMPARE(codigo_en(*escena.visor(), "txtProveedor"), QString());
    }

    void what_has_changed_meanwhile_is_there_when_the_person_comes_back()
    {
        const EscenaPanel escena;
        escena.abre();
        QTRY_COMPARE(escena.filas(), 4);
        QTRY_COMPARE(escena.dice("lblSinAsiento"), QStringLiteral("Un cargo sin asiento"));
        intro(); // the editor, in which a charge may be saved
        QTRY_VERIFY(QApplication::activeWindow() != escena.ventana.get());
        escena.pon("AT260004", 1, "18/06/2026", 101, "9", -1);
        QApplication::activeWindow()->close();
        escena.ventana->activateWindow();
        QTRY_COMPARE(escena.filas(), 5);
        QCOMPARE(escena.celda(0, 0), QStringLiteral("AT260004"));
        QTRY_COMPARE(escena.dice("lblSinAsiento"), QStringLiteral("2 cargos sin asiento"));
    }

    void a_charge_without_entry_is_told_with_its_command_and_opened()
    {
        const EscenaPanel escena;
        escena.abre();
        QTRY_VERIFY(control<QPushButton>(*escena.ventana, "cmdSinAsiento").isEnabled());
        {
            const AlAbrirse lista(
                [&](QWidget& dialogo) {
                    const auto orden = control<QLineEdit>(dialogo, "txtOrden").text();
                    QVERIFY2(orden.startsWith(QStringLiteral(
                                 "atipicos contabilizar AT260002 --ejercicio 2026 --almacen 3 --datos ")),
                        qPrintable(orden));
                    QVERIFY(orden.endsWith(QStringLiteral(" --empresa 1")));
                    QCOMPARE(control<VSFlexGrid>(dialogo, "vsPendiente").TextMatrix(1, 3),
                        QStringLiteral("Quesería Majorera Tiscamanita"));
                    QCOMPARE(foco(), QStringLiteral("vsPendiente"));
                    clic(dialogo, "cmdCopiarOrden");
                    QCOMPARE(QGuiApplication::clipboard()->text(), orden);
                    control(dialogo, "vsPendiente").setFocus();
                    intro();
                },
                "frmPendiente");
            pulsa(Qt::Key_O, Qt::AltModifier);
            QTRY_VERIFY(escena.visor() != nullptr);
        }
        QCOMPARE(codigo_en(*escena.visor(), "txtAlmacen"), QStringLiteral("3"));
        QCOMPARE(control<VSFlexGrid>(*escena.visor(), "vsCab").TextMatrix(1, 0), QStringLiteral("AT260002"));
    }

    void it_closes_at_once_while_it_is_reading_and_tells_what_cannot_be_read()
    {
        {
            const EscenaPanel escena;
            escena.ventana->show();
            QVERIFY(escena.ventana->close());
        }
        EscenaPanel rota;
        std::filesystem::rename(rota.carpeta / "datos", rota.carpeta / "ya no"); // under its feet
        rota.abre();
        QTRY_VERIFY(rota.dice("lblCargos").startsWith(QStringLiteral("No se pueden leer los cargos: ")));
        QVERIFY(rota.avisos->dichos.empty()); // told beside the list, not in a box
        std::filesystem::rename(rota.carpeta / "ya no", rota.carpeta / "datos");
        pulsa(Qt::Key_F5);
        QTRY_COMPARE(rota.filas(), 4);
    }
};

ATIPICOS_PRUEBA_VENTANAS(PanelPrincipal_Test)
#include "PanelPrincipal_test.moc"
