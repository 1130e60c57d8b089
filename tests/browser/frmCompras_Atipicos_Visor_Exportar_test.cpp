// The charge browser exports its list.
#include "browser/ExportarVisorQt.hpp"
#include "tests/browser/ConTresCargos.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QTemporaryDir>

using namespace atipicos;
using pruebas::ConTresListados;
using pruebas::EscenaVisor;

class frmCompras_Atipicos_Visor_Exportar_Test : public QObject {
    Q_OBJECT
private slots:
    void the_list_is_exported_as_it_is_shown_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QByteArray>("comienzo");
        QTest::newRow("csv") << QStringLiteral("lista.csv")
                             << QByteArray(
                                    "Código;Almacén;Nombre del almacén;Proveedor;Nombre del proveedor;Fecha;"
                                    "Importe;Impuesto;% impuesto;Asiento;Usuario;Nombre del "
                                    "usuario;Observaciones\r\nAT260002;1;Güímar central;104;Conservas La "
                                    "Graciosa, S.A.;21/11/2026;231,96;16,24;7,00 %;3;1;Begoña Hernández;Palé "
                                    "dañado\r\nAT260001;1;");
        QTest::newRow("workbook") << QStringLiteral("lista.xlsx") << QByteArray("PK");
        QTest::newRow("no ending") << QStringLiteral("lista") << QByteArray("PK");
    }

    void the_list_is_exported_as_it_is_shown()
    {
        QFETCH(const QString, nombre);
        QFETCH(const QByteArray, comienzo);
        ConTresListados visor;
        const QTemporaryDir carpeta;
        QVERIFY(exporta(visor, carpeta.filePath(nombre)));
        QFile fichero(carpeta.filePath(nombre.contains(u'.') ? nombre : nombre + QStringLiteral(".xlsx")));
        QVERIFY(fichero.open(QIODevice::ReadOnly));
        QCOMPARE(fichero.readAll().left(comienzo.size()), comienzo);
        QCOMPARE(visor.estado(), QStringLiteral("Exportado a ") + fichero.fileName());
        QVERIFY(visor.banco.titulos().empty());
    }

    void the_export_has_the_order_of_the_rows_and_the_values_that_were_read()
    {
        ConTresListados visor;
        auto& lista = visor.lista();
        emit lista.horizontalHeader()->sectionClicked(9); // by entry: the last one read comes first
        QCOMPARE(visor.listados(), QStringLiteral("AT260001/1 AT260001/2 AT260002/1"));
        lista.set_TextMatrix(1, 12, QStringLiteral("otra cosa"));
        const QTemporaryDir carpeta;
        QVERIFY(exporta(visor, carpeta.filePath(QStringLiteral("l.csv"))));
        QFile fichero(carpeta.filePath(QStringLiteral("l.csv")));
        QVERIFY(fichero.open(QIODevice::ReadOnly));
        const auto lineas = fichero.readAll().split('\n');
        QVERIFY(lineas.at(1).startsWith("AT260001;1;"));
        QVERIFY(lineas.at(1).endsWith(";Palé dañado\r"));
        QVERIFY(lineas.at(2).startsWith("AT260001;2;"));
        QVERIFY(lineas.at(3).startsWith("AT260002;1;"));
    }

    void the_export_is_named_after_what_has_been_searched_for()
    {
        ConTresListados visor;
        const auto propuesto = [&] {
            QString nombre;
            const auto mira = [&](QFileDialog& dialogo) {
                nombre = pruebas::control<QLineEdit>(dialogo, "fileNameEdit").text();
                dialogo.reject();
            };
            if (!pruebas::con_dialogo<QFileDialog>([&] { visor.clic("cmdExportar"); }, mira))
                return QStringLiteral("no dialog");
            visor.activa();
            return nombre;
        };
        QCOMPARE(propuesto(), QStringLiteral("Atípicos 2026-11-01 a 2026-11-30"));
        visor.codigo("txtAlmacen").setText(QStringLiteral("2")); // not searched for yet
        QCOMPARE(propuesto(), QStringLiteral("Atípicos 2026-11-01 a 2026-11-30"));
        visor.codigo("txtProveedor").setText(QStringLiteral("104"));
        visor.pulsa(Qt::Key_F5);
        QCOMPARE(propuesto(), QStringLiteral("Atípicos 2026-11-01 a 2026-11-30, almacén 2, proveedor 104"));
        QCOMPARE(nombre_de_fichero({ "31/02/2026", "01/03/2026", 1, 1 }),
            QStringLiteral("Atípicos 31-02-2026 a 2026-03-01, almacén 1, proveedor 1"));
    }

    void the_dialog_of_the_export_speaks_spanish_and_its_kind_of_file_is_the_ending()
    {
        ConTresListados visor;
        const QTemporaryDir carpeta;
        for (const bool texto : { true, false })
            QVERIFY(pruebas::con_dialogo<QFileDialog>([&] { visor.clic("cmdExportar"); },
                [&](QFileDialog& dialogo) {
                    QCOMPARE(dialogo.objectName(), QStringLiteral("dlgExportar")); // its page of the manual
                    QCOMPARE(dialogo.locale().language(), QLocale::Spanish);
                    auto& clases = pruebas::control<QComboBox>(dialogo, "fileTypeCombo");
                    QCOMPARE(clases.itemText(0), QStringLiteral("Libro de cálculo (*.xlsx)"));
                    QCOMPARE(clases.itemText(1), QStringLiteral("Texto separado por punto y coma (*.csv)"));
                    QTest::keyClick(&clases, Qt::Key_Down);
                    if (!texto)
                        QTest::keyClick(&clases, Qt::Key_Up);
                    auto& nombre = pruebas::control<QLineEdit>(dialogo, "fileNameEdit");
                    nombre.setText(carpeta.filePath(QStringLiteral("lista")));
                    QTest::keyClick(&nombre, Qt::Key_Return);
                }));
        const QDir escritos(carpeta.path());
        QCOMPARE(escritos.entryList(QDir::Files).join(u' '), QStringLiteral("lista.csv lista.xlsx"));
    }

    void giving_the_export_up_writes_nothing()
    {
        ConTresListados visor;
        QVERIFY(pruebas::con_dialogo<QFileDialog>(
            [&] { visor.clic("cmdExportar"); }, [](QFileDialog& dialogo) { dialogo.reject(); }));
        QVERIFY(visor.estado().startsWith(QStringLiteral("3 atípicos")));
    }

    void what_cannot_be_written_is_told()
    {
        ConTresListados visor;
        QVERIFY(exporta(visor, QStringLiteral("/proc/lista.csv")));
        QCOMPARE(
            visor.banco.titulos(), std::vector<std::string>{ "frmCompras_Atipicos_Visor:cmdExportar_Click" });
        QVERIFY(visor.banco.avisos->dichos[0].texto.find("No se puede escribir «/proc/lista.csv»")
            != std::string::npos);
    }

private:
    /// Presses the button and types the name of the file.
    static bool exporta(EscenaVisor& visor, const QString& fichero)
    {
        return pruebas::con_dialogo<QFileDialog>([&] { visor.clic("cmdExportar"); },
            [&](QFileDialog& dialogo) {
                auto& nombre = pruebas::control<QLineEdit>(dialogo, "fileNameEdit");
                nombre.setFocus();
                nombre.selectAll();
                pruebas::teclea(&nombre, fichero);
                QTest::keyClick(&nombre, Qt::Key_Return);
            });
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Visor_Exportar_Test)
#include "frmCompras_Atipicos_Visor_Exportar_test.moc"
