#include "context/modComun.hpp"
#include "controls/qvDispositivo.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/ventanas/EmpresasRecientes.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/CorreoFingido.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTableWidget>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// The main window on a sample company with charges put straight into their table, on a day of its own.
struct EscenaPanel {
    CarpetaTemporal carpeta;
    app::OpcionesComunes opciones;
    std::shared_ptr<MsgBoxDePrueba> avisos = std::make_shared<MsgBoxDePrueba>();
    std::shared_ptr<RelojDePrueba> reloj = std::make_shared<RelojDePrueba>();
    std::unique_ptr<app::Sesion> sesion;
    std::unique_ptr<app::frmPrincipal> ventana;

    EscenaPanel()
    {
        opciones.datos = carpeta / "datos";
        opciones.usuario = 3;
        bases::crea_bases(opciones.lugar(), false);
        sesion = std::make_unique<app::Sesion>(opciones);
        reloj->valor = dia("17/06/2026");
        modComun::set_Reloj(reloj);
        modComun::set_MsgBox(avisos);
        pon("AT260001", 2, "17/06/2026", 103, "100", 31);
        pon("AT260002", 3, "02/06/2026", 106, "40", 0);
        pon("AT250001", 4, "05/06/2025", 106, "70", 32);
        pon("AT260003", 2, "17/06/2026", 104, "5", 33);
        ventana = std::make_unique<app::frmPrincipal>(*sesion, opciones);
    }
    ~EscenaPanel() { vacia_contexto(); }

    void abre() const
    {
        ventana->show();
        if (!QTest::qWaitForWindowActive(ventana.get(), atipicos::pruebas::paciencia))
            qFatal("the main window is not active");
    }

    void pon(const char* codigo, int almacen, const char* fecha, int proveedor, const char* importe,
        int asiento) const
    {
        const std::string del = std::string(fecha).substr(6) + ", " + std::to_string(almacen);
        auto& orvalin = *sesion->bases.orvalin;
        orvalin.Execute("DELETE FROM Contador_Proveedores_Cargos_Atipicos");
        orvalin.Execute("INSERT INTO Contador_Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, "
                        "Cod_Almacen, Numero) VALUES (1, "
            + del + ", 90)");
        orvalin.Execute("INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, "
                        "Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, "
                        "Observ, Cod_Compra, Documento, Impuesto, Impuesto_Importe, Tipo) VALUES (1, "
            + del + ", '" + codigo + "', " + std::to_string(proveedor) + ", '" + fecha + "', " + importe
            + ", " + std::to_string(asiento) + ", 1, 2026, 2, '" + fecha + "', 'Palé', 0, 0, 7, 0.07, 0)");
    }

    [[nodiscard]] QString celda(int fila, int columna) const
    {
        const auto& lista = control<QTableView>(*ventana, "vsUltimos");
        return lista.model()->index(fila, columna).data().toString();
    }
    [[nodiscard]] int filas() const { return control<QTableView>(*ventana, "vsUltimos").model()->rowCount(); }
    [[nodiscard]] QString dice(const char* nombre) const { return control<QLabel>(*ventana, nombre).text(); }
    [[nodiscard]] QWidget* visor() const
    {
        auto* form = ventana->findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos_Visor"));
        return form != nullptr && form->isVisible() ? form : nullptr;
    }
};

/// The first two of the list.
void elige_dos(const EscenaPanel& escena)
{
    escena.abre();
    if (!QTest::qWaitFor([&] { return escena.filas() == 4; }, atipicos::pruebas::paciencia))
        qFatal("the list is not filled");
    pulsa(Qt::Key_L, Qt::AltModifier);
    pulsa(Qt::Key_Down, Qt::ShiftModifier);
}

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

    void the_chosen_charges_go_into_one_file_in_the_order_of_the_list()
    {
        const EscenaPanel escena;
        elige_dos(escena);
        const auto fichero = escena.carpeta / "dos.pdf";
        {
            const AlAbrirse guardar(
                [&](QWidget& dialogo) {
                    QCOMPARE(control<QLineEdit>(dialogo, "fileNameEdit").text(),
                        QStringLiteral("Reclamaciones, 2 cargos"));
                    control<QLineEdit>(dialogo, "fileNameEdit")
                        .setText(QString::fromStdString(fichero.string()));
                    intro();
                },
                "dlgImprimirElegidos");
            pulsa(Qt::Key_P, Qt::ControlModifier);
        }
        QVERIFY(escena.avisos->dichos.empty());
        const auto pdf = lee_fichero(fichero);
        QVERIFY(pdf.starts_with("%PDF-"));
        QVERIFY2(pdf.find("/Count 2") != std::string::npos, "not two pages");
    }

    void the_chosen_charges_go_to_the_mail_program_in_one_file()
    {
        const CorreoFingido correo;
        const EscenaPanel escena;
        elige_dos(escena);
        pulsa(Qt::Key_M, Qt::ControlModifier);
        QVERIFY(escena.avisos->dichos.empty());
        QCOMPARE(
            correo.dado().at(2), std::string("Reclamaciones a proveedores (2) de Comercial Drago Sur, S.L."));
        QVERIFY(correo.dado().at(4).ends_with("/Reclamaciones, 2 cargos.pdf"));
        QVERIFY2(correo.adjunto().find("/Count 2") != std::string::npos, "not two pages");
        QCOMPARE(escena.ventana->statusBar()->currentMessage(),
            QStringLiteral(
                "Su programa de correo tiene el mensaje con 2 cargos: ponga a quién va y envíelo"));

        const CorreoFingido sin_programa(3);
        pulsa(Qt::Key_M, Qt::ControlModifier);
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 });
        QVERIFY(escena.avisos->dichos[0].texto.find("no hay ningún programa de correo elegido")
            != std::string::npos);
    }

    void the_chosen_charges_are_exported_in_the_order_of_the_list()
    {
        const EscenaPanel escena;
        elige_dos(escena);
        const auto fichero = escena.carpeta / "dos.csv";
        const auto exporta = [&] {
            const AlAbrirse guardar(
                [&](QWidget& dialogo) {
                    QCOMPARE(control<QLineEdit>(dialogo, "fileNameEdit").text(),
                        QStringLiteral("Atípicos, 2 cargos"));
                    control<QLineEdit>(dialogo, "fileNameEdit")
                        .setText(QString::fromStdString(fichero.string()));
                    intro();
                },
                "dlgExportar");
            pulsa(Qt::Key_E, Qt::ControlModifier);
        };
        exporta();
        QVERIFY(escena.avisos->dichos.empty());
        const auto csv = lee_fichero(fichero);
        const auto primero = csv.find("AT260003");
        const auto segundo = csv.find("AT260001");
        QVERIFY2(
            primero != std::string::npos && segundo != std::string::npos && primero < segundo, csv.c_str());
        QCOMPARE(std::count(csv.begin(), csv.end(), '\n'), 3);

        escena.sesion->bases.orvalin->Execute(
            "UPDATE Proveedores_Cargos_Atipicos SET Fecha = '18/06/2026' WHERE Codigo = 'AT260001'");
        std::filesystem::remove(fichero);
        exporta();
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 });
        QCOMPARE(escena.avisos->dichos[0].texto,
            std::string("El cargo AT260001 del almacén 2 ya no es del 17/06/2026, o se ha eliminado. "
                        "Actualice la lista (F5) y vuelva a elegir."));
        QVERIFY(!std::filesystem::exists(fichero));
    }

    void the_chosen_charges_go_to_the_devices_that_are_chosen_for_all_of_them()
    {
        const CorreoFingido correo;
        const EscenaPanel escena;
        elige_dos(escena);
        {
            const AlAbrirse elegir(
                [&](QWidget& dialogo) {
                    control<qvDispositivo>(dialogo, "cboDispositivo_0").set_Codigo(4);
                    control<qvDispositivo>(dialogo, "cboDispositivo_1").set_Codigo(4);
                    clic(dialogo, "cmdAceptar");
                },
                "frmImpresora");
            pulsa(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        }
        QVERIFY(escena.avisos->dichos.empty());
        QCOMPARE(correo.dado().size(), std::size_t{ 10 }); // twice, as it was chosen twice
        QVERIFY2(correo.adjunto().find("/Count 2") != std::string::npos, "not two pages");
        {
            const AlAbrirse dejarlo([](QWidget& dialogo) { clic(dialogo, "cmdCancelar"); }, "frmImpresora");
            pulsa(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        }
        QCOMPARE(correo.dado().size(), std::size_t{ 10 });
    }

    void columns_that_are_dragged_sizes_and_folders_are_there_the_next_time_for_each_user()
    {
        const auto ancho = [](QWidget& form, int columna) {
            return control<VSFlexGrid>(form, "vsCab").columnWidth(columna);
        };
        QSize medida;
        {
            EscenaPanel escena;
            escena.abre();
            control<QAction>(*escena.ventana, "mnuVisor").trigger();
            QWidget& form = *escena.visor();
            auto& cabecera = *control<VSFlexGrid>(form, "vsCab").horizontalHeader();
            QTest::qWait(1);
            control<VSFlexGrid>(form, "vsCab").setColumnWidth(9, 99); // by the program: not the person's wish
            const QPoint borde(
                cabecera.sectionViewportPosition(5) + cabecera.sectionSize(5) - 1, cabecera.height() / 2);
            QTest::mousePress(cabecera.viewport(), Qt::LeftButton, {}, borde);
            cabecera.resizeSection(5, 143);
            QTest::mouseRelease(cabecera.viewport(), Qt::LeftButton, {}, borde);
            const QSize antes = form.size();
            form.resize(antes.width() - 31, antes.height() - 17); // the screen of these tests is small
            medida = form.size();
            QVERIFY(medida != antes);
            form.close();
            QFileDialog dialogo(escena.ventana.get());
            dialogo.setAcceptMode(QFileDialog::AcceptSave);
            dialogo.setOption(QFileDialog::DontUseNativeDialog);
            dialogo.show();
            dialogo.setDirectory(QDir::tempPath());
            dialogo.selectFile(QStringLiteral("lista.csv"));
            static_cast<QDialog&>(dialogo).done(QDialog::Accepted);
        }
        EscenaPanel otra;
        otra.abre();
        control<QAction>(*otra.ventana, "mnuVisor").trigger();
        QTRY_COMPARE(ancho(*otra.visor(), 5), 143);
        QCOMPARE(otra.visor()->size(), medida);
        QVERIFY(ancho(*otra.visor(), 9) != 99);
        QFileDialog dialogo(otra.ventana.get());
        dialogo.setAcceptMode(QFileDialog::AcceptSave);
        dialogo.setOption(QFileDialog::DontUseNativeDialog);
        dialogo.selectFile(QStringLiteral("otra.csv"));
        dialogo.show();
        QCOMPARE(dialogo.directory().absolutePath(), QDir(QDir::tempPath()).absolutePath());
        QVERIFY(dialogo.selectedFiles().value(0).endsWith(QStringLiteral("/otra.csv")));
        dialogo.close();
        const QStringList claves = QSettings().allKeys();
        QVERIFY(claves.contains(QStringLiteral("ventanas/3/frmCompras_Atipicos_Visor/vsCab/5")));
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

    void places_are_remembered_newest_first_and_not_twice()
    {
        const app::EmpresasRecientes recientes;
        QVERIFY(recientes.lista().isEmpty());
        for (int i = 0; i < app::EmpresasRecientes::maximo + 2; ++i)
            recientes.apunta(bases::Lugar(std::filesystem::path("/datos") / std::to_string(i)));
        recientes.apunta(bases::Lugar(std::filesystem::path("/datos/5")));
        recientes.apunta(bases::Lugar::de_conexion("postgresql://ana@servidor/empresa"));
        const auto lista = recientes.lista();
        QCOMPARE(lista.size(), app::EmpresasRecientes::maximo);
        QCOMPARE(lista.mid(0, 3),
            QStringList({ QStringLiteral("postgresql://ana@servidor/empresa"), QStringLiteral("/datos/5"),
                QStringLiteral("/datos/9") }));
        QCOMPARE(lista.count(QStringLiteral("/datos/5")), 1);
        recientes.olvida(QStringLiteral("/datos/5"));
        QVERIFY(!recientes.lista().contains(QStringLiteral("/datos/5")));
        QCOMPARE(
            app::lugar_tecleado(QStringLiteral(" /datos/7 ")).carpeta(), std::filesystem::path("/datos/7"));
        QCOMPARE(app::lugar_tecleado(lista[0]).clase(), bases::Lugar::Clase::postgresql);
        QVERIFY_THROWS_EXCEPTION(Error, static_cast<void>(app::lugar_tecleado(QStringLiteral("  "))));
        QVERIFY_THROWS_EXCEPTION(
            Error, static_cast<void>(app::lugar_tecleado(QStringLiteral("postgresql:servidor"))));
    }
};

ATIPICOS_PRUEBA_VENTANAS(PanelPrincipal_Test)
#include "PanelPrincipal_test.moc"
