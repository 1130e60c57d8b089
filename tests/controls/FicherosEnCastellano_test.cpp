#include "controls/FicherosEnCastellano.hpp"

#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QTest>
#include <QTreeView>

using namespace atipicos;

class FicherosEnCastellano_Test : public QObject {
    Q_OBJECT
private slots:
    void kinds_sizes_days_and_headings_are_spanish()
    {
        const pruebas::CarpetaTemporal carpeta;
        const QDir dentro(QString::fromStdString((carpeta / "").string()));
        QVERIFY(dentro.mkdir(QStringLiteral("cargos de marzo")));
        QFile lista(dentro.filePath(QStringLiteral("lista.xlsx")));
        QVERIFY(lista.open(QIODevice::WriteOnly));
        lista.write(QByteArray(3000, 'x'));
        QVERIFY(lista.flush());
        QVERIFY(
            lista.setFileTime(QDateTime(QDate(2025, 3, 7), QTime(9, 5)), QFileDevice::FileModificationTime));
        lista.close();

        QFileDialog dialogo(nullptr, QStringLiteral("Exportar la lista"), dentro.path());
        dialogo.setOption(QFileDialog::DontUseNativeDialog);
        dialogo.setAcceptMode(QFileDialog::AcceptSave);
        dialogo.setViewMode(QFileDialog::Detail);
        FicherosEnCastellano::pon(dialogo);
        dialogo.selectFile(QStringLiteral("otra.xlsx"));
        dialogo.show();
        auto* arbol = dialogo.findChild<QTreeView*>(QStringLiteral("treeView"));
        QVERIFY(arbol != nullptr);
        auto* modelo = arbol->model();
        QVERIFY(qobject_cast<FicherosEnCastellano*>(modelo) != nullptr);
        QStringList titulos;
        for (int columna = 0; columna < 4; ++columna)
            titulos << modelo->headerData(columna, Qt::Horizontal).toString();
        QCOMPARE(titulos.join(u'|'), QStringLiteral("Nombre|Tamaño|Tipo|Modificado"));

        QTRY_COMPARE(modelo->rowCount(arbol->rootIndex()), 2);
        const auto fila = [&](const QString& nombre) {
            QStringList celdas;
            for (int i = 0; i < 2; ++i)
                if (modelo->index(i, 0, arbol->rootIndex()).data().toString() == nombre)
                    for (int columna = 1; columna < 4; ++columna)
                        celdas << modelo->index(i, columna, arbol->rootIndex()).data().toString();
            return celdas;
        };
        QCOMPARE(fila(QStringLiteral("cargos de marzo")).mid(0, 2),
            QStringList({ {}, QStringLiteral("Carpeta") }));
        QCOMPARE(fila(QStringLiteral("lista.xlsx")).mid(1),
            QStringList({ QStringLiteral("Fichero XLSX"), QStringLiteral("07/03/2025 9:05") }));
        QVERIFY(fila(QStringLiteral("lista.xlsx")).first().startsWith(QStringLiteral("3 ")));
        QVERIFY(dialogo.selectedFiles().value(0).endsWith(QStringLiteral("otra.xlsx")));
        QVERIFY(arbol->columnWidth(3) > arbol->fontMetrics().horizontalAdvance(
                    QStringLiteral("28/08/2028 20:38"))); // the day is not cut
        for (const auto& [rotulo, combo] :
            { std::pair{ "lookInLabel", "lookInCombo" }, { "fileTypeLabel", "fileTypeCombo" } })
            QCOMPARE(dialogo.findChild<QLabel*>(QLatin1String(rotulo))->buddy()->objectName(),
                QLatin1String(combo));
    }
};

ATIPICOS_PRUEBA_VENTANAS(FicherosEnCastellano_Test)
#include "FicherosEnCastellano_test.moc"
