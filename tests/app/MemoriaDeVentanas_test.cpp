#include "controls/VSFlexGrid.hpp"
#include "host/ventanas/EmpresasRecientes.hpp"
#include "tests/app/EscenaPanel.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QFileDialog>
#include <QHeaderView>
#include <QSettings>

using namespace atipicos;
using namespace atipicos::pruebas;

class MemoriaDeVentanas_Test : public QObject {
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }

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

    void records_of_one_kind_do_not_get_the_size_of_another()
    {
        const EscenaPanel escena;
        escena.abre();
        const auto ancho_de = [&](const char* orden, int ensancha) {
            int ancho = 0;
            const AlAbrirse lista(
                [&](QWidget& dialogo) {
                    ancho = dialogo.width();
                    dialogo.resize(ancho + ensancha, dialogo.height());
                    pulsa(Qt::Key_Escape);
                },
                "frmFichas");
            control<QAction>(*escena.ventana, orden).trigger();
            return ancho;
        };
        const int articulos = ancho_de("mnuArticulos", 0);
        const int proveedores = ancho_de("mnuProveedores", -23);
        QCOMPARE(ancho_de("mnuProveedores", 0), proveedores - 23);
        QCOMPARE(ancho_de("mnuArticulos", 0), articulos);
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

ATIPICOS_PRUEBA_VENTANAS(MemoriaDeVentanas_Test)
#include "MemoriaDeVentanas_test.moc"
