#include "controls/ModeloRejilla.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using atipicos::ModeloRejilla;

namespace {

/// Two columns, and an eye on what a view expects of a model.
struct DosColumnas {
    ModeloRejilla modelo;
    QAbstractItemModelTester comprobador{ &modelo, QAbstractItemModelTester::FailureReportingMode::QtTest };

    DosColumnas()
    {
        modelo.set_Cols(2);
        modelo.set_TextMatrix(0, 0, QStringLiteral("Código"));
        modelo.set_TextMatrix(0, 1, QStringLiteral("Nombre"));
    }
};

}

class ModeloRejilla_Test : public QObject {
    Q_OBJECT
private slots:
    void shows_no_header_row_among_the_data()
    {
        DosColumnas dos;
        auto& modelo = dos.modelo;
        modelo.AddItem(QByteArrayLiteral("1\tuno"));
        QCOMPARE(modelo.Rows(), 2);
        QCOMPARE(modelo.rowCount(), 1);
        QCOMPARE(modelo.columnCount(), 2);
        QCOMPARE(modelo.data(modelo.index(0, 1)).toString(), QStringLiteral("uno"));
        QCOMPARE(modelo.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Nombre"));
        QVERIFY(!modelo.headerData(2, Qt::Horizontal).isValid());
        QVERIFY(!modelo.headerData(0, Qt::Vertical).isValid());
    }

    void a_cell_has_no_cells_below_it()
    {
        DosColumnas dos;
        auto& modelo = dos.modelo;
        modelo.AddItem(QByteArrayLiteral("1\tuno"));
        QCOMPARE(modelo.rowCount(modelo.index(0, 0)), 0);
        QCOMPARE(modelo.columnCount(modelo.index(0, 0)), 0);
    }

    void the_data_of_a_row_goes_where_the_row_goes()
    {
        DosColumnas dos;
        auto& modelo = dos.modelo;
        modelo.AddItem(QByteArrayLiteral("1\tb"), 71);
        modelo.AddItem(QByteArrayLiteral("2\tc"));
        modelo.AddItem(QByteArrayLiteral("3\ta"), 73);
        modelo.Ordena(1, atipicos::Clase::texto, false);
        QCOMPARE(modelo.RowData(1), 73);
        QCOMPARE(modelo.RowData(2), 71);
        QCOMPARE(modelo.RowData(3), 0);
        modelo.set_TextMatrix(2, 1, QStringLiteral("z"));
        modelo.RemoveItem(1);
        QCOMPARE(modelo.RowData(1), 71);
    }

    void what_does_not_fit_can_be_read_in_a_hint_as_it_was_written()
    {
        DosColumnas dos;
        auto& modelo = dos.modelo;
        modelo.AddItem(QByteArrayLiteral("1\tde <b>aquí</b>\r\na & b"));
        QCOMPARE(modelo.data(modelo.index(0, 1)).toString(), QStringLiteral("de <b>aquí</b> a & b"));
        QCOMPARE(modelo.data(modelo.index(0, 1), Qt::ToolTipRole).toString(),
            QStringLiteral("de &lt;b&gt;aquí&lt;/b&gt;\r\na &amp; b"));
    }

    void aligns_each_column_on_its_own()
    {
        DosColumnas dos;
        auto& modelo = dos.modelo;
        modelo.AddItem(QByteArrayLiteral("1\tuno"));
        modelo.set_ColAlignment(0, Qt::AlignRight);
        const auto alineacion = [&](int columna) {
            return modelo.data(modelo.index(0, columna), Qt::TextAlignmentRole).value<Qt::Alignment>();
        };
        QCOMPARE(alineacion(0), Qt::AlignRight);
        QCOMPARE(alineacion(1), Qt::AlignLeft | Qt::AlignVCenter);
    }

    void tells_the_view_what_changes()
    {
        DosColumnas dos;
        auto& modelo = dos.modelo;
        modelo.AddItem(QByteArrayLiteral("1\tuno"));
        const QSignalSpy cambiadas(&modelo, &ModeloRejilla::dataChanged);
        const QSignalSpy titulos(&modelo, &ModeloRejilla::headerDataChanged);
        const QSignalSpy quitadas(&modelo, &ModeloRejilla::rowsRemoved);
        modelo.set_TextMatrix(1, 1, QStringLiteral("dos"));
        QCOMPARE(cambiadas.count(), 1);
        QCOMPARE(cambiadas.at(0).at(0).toModelIndex(), modelo.index(0, 1));
        modelo.set_TextMatrix(0, 1, QStringLiteral("Descripción"));
        QCOMPARE(titulos.count(), 1);
        modelo.RemoveItem(1);
        QCOMPARE(quitadas.count(), 1);
    }

    void more_rows_than_there_are_come_empty()
    {
        DosColumnas dos;
        auto& modelo = dos.modelo;
        modelo.set_Rows(4);
        QCOMPARE(modelo.Rows(), 4);
        QCOMPARE(modelo.TextMatrix(3, 1), QString());
        modelo.set_TextMatrix(3, 1, QStringLiteral("tres"));
        QCOMPARE(modelo.TextMatrix(3, 1), QStringLiteral("tres"));
        modelo.set_Rows(0); // the header row stays
        QCOMPARE(modelo.Rows(), 1);
    }

    void rows_kept_back_are_changed_without_a_word_to_the_view()
    {
        DosColumnas dos;
        auto& modelo = dos.modelo;
        modelo.set_Redraw(false);
        modelo.AddItem(QByteArrayLiteral("1\tuno"));
        const QSignalSpy cambiadas(&modelo, &ModeloRejilla::dataChanged);
        modelo.set_TextMatrix(1, 1, QStringLiteral("dos"));
        QCOMPARE(cambiadas.count(), 0);
        modelo.set_Redraw(true);
        QCOMPARE(modelo.data(modelo.index(0, 1)).toString(), QStringLiteral("dos"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(ModeloRejilla_Test)
#include "ModeloRejilla_test.moc"
