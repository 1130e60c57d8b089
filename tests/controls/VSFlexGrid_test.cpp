#include "controls/Anclaje.hpp"
#include "controls/CabeceraUnida.hpp"
#include "controls/VSFlexGrid.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

using atipicos::Anclaje;
using atipicos::CabeceraUnida;
using atipicos::Clase;
using atipicos::VSFlexGrid;

namespace {

/// Four columns: code (hidden), article twice, amount to the right.
struct Rejilla : VSFlexGrid {
    QAbstractItemModelTester comprobador{ model(), QAbstractItemModelTester::FailureReportingMode::QtTest };

    Rejilla()
    {
        set_Cols(4);
        int columna = 0;
        for (const auto* titulo : { "", "Artículo", "Artículo", "Importe" }) {
            set_TextMatrix(0, columna, QString::fromUtf8(titulo));
            set_ColWidth(columna++, 1000);
        }
        set_ColAlignment(3, Qt::AlignRight | Qt::AlignVCenter);
        set_ColHidden(0, true);
        resize(400, 300);
        show();
    }

    void llena(int filas)
    {
        for (int i = 1; i <= filas; ++i)
            AddItem(QStringLiteral("c%1\tA%1\tartículo %1\t%1,00").arg(i));
    }
};

}

class VSFlexGrid_Test : public QObject {
    Q_OBJECT
private slots:
    void a_new_grid_has_its_header_row_alone()
    {
        const Rejilla rejilla;
        QCOMPARE(rejilla.Rows(), 1);
        QCOMPARE(rejilla.Row(), 0);
        QCOMPARE(rejilla.TextMatrix(0, 3), QStringLiteral("Importe"));
        QCOMPARE(rejilla.TextMatrix(1, 0), QString());
        QCOMPARE(rejilla.TextMatrix(0, 4), QString());
    }

    void rows_are_added_as_text_between_tabs()
    {
        Rejilla rejilla;
        rejilla.AddItem(QStringLiteral("c\tA\tuno\t1,00"));
        rejilla.AddItem(QStringLiteral("d"));
        rejilla.AddItem(QStringLiteral("e\tB\t\t2,00\tsobra"));
        QCOMPARE(rejilla.Rows(), 4);
        QCOMPARE(rejilla.TextMatrix(1, 2), QStringLiteral("uno"));
        QCOMPARE(rejilla.TextMatrix(2, 0), QStringLiteral("d"));
        QCOMPARE(rejilla.TextMatrix(2, 3), QString());
        QCOMPARE(rejilla.TextMatrix(3, 2), QString());
        QCOMPARE(rejilla.TextMatrix(3, 3), QStringLiteral("2,00"));
    }

    void a_cell_is_changed_without_touching_its_neighbours()
    {
        Rejilla rejilla;
        rejilla.AddItem(QStringLiteral("c\tA\tuno\t1,00"));
        rejilla.set_TextMatrix(1, 2, QStringLiteral("con\ttabulador"));
        QCOMPARE(rejilla.TextMatrix(1, 1), QStringLiteral("A"));
        QCOMPARE(rejilla.TextMatrix(1, 2), QStringLiteral("con tabulador"));
        QCOMPARE(rejilla.TextMatrix(1, 3), QStringLiteral("1,00"));
        rejilla.set_TextMatrix(2, 0, QStringLiteral("no hay fila 2"));
        QCOMPARE(rejilla.Rows(), 2);
    }

    void a_line_break_is_kept_and_shown_as_a_blank()
    {
        Rejilla rejilla;
        rejilla.AddItem(QStringLiteral("c\tA\tuno\r\ndos\ntres\t1,00"));
        QCOMPARE(rejilla.TextMatrix(1, 2), QStringLiteral("uno\r\ndos\ntres"));
        QCOMPARE(rejilla.model()->index(0, 2).data().toString(), QStringLiteral("uno dos tres"));
    }

    void removing_the_chosen_row_chooses_the_one_that_moves_up()
    {
        Rejilla rejilla;
        rejilla.llena(3);
        rejilla.set_Row(2);
        rejilla.RemoveItem(2);
        QCOMPARE(rejilla.Row(), 2);
        QCOMPARE(rejilla.TextMatrix(2, 0), QStringLiteral("c3"));
        rejilla.RemoveItem(2);
        QCOMPARE(rejilla.Row(), 1);
        rejilla.RemoveItem(0); // the header row stays
        rejilla.RemoveItem(9);
        QCOMPARE(rejilla.Rows(), 2);
        rejilla.RemoveItem(1);
        QCOMPARE(rejilla.Rows(), 1);
        QCOMPARE(rejilla.Row(), 0);
    }

    void removing_a_row_above_leaves_the_same_charge_chosen()
    {
        Rejilla rejilla;
        rejilla.llena(3);
        rejilla.set_Row(3);
        rejilla.RemoveItem(1);
        QCOMPARE(rejilla.Row(), 2);
        QCOMPARE(rejilla.TextMatrix(rejilla.Row(), 0), QStringLiteral("c3"));
    }

    void rows_can_be_cut_back_to_the_header()
    {
        Rejilla rejilla;
        rejilla.llena(5);
        rejilla.set_Row(4);
        rejilla.set_Rows(1);
        QCOMPARE(rejilla.Rows(), 1);
        QCOMPARE(rejilla.Row(), 0);
    }

    void without_redrawing_the_view_gets_all_rows_at_once()
    {
        Rejilla rejilla;
        rejilla.llena(2);
        QSignalSpy insertadas(rejilla.model(), &QAbstractItemModel::rowsInserted);
        rejilla.set_Redraw(false);
        rejilla.llena(50);
        QCOMPARE(rejilla.Rows(), 53);
        QCOMPARE(rejilla.TextMatrix(52, 0), QStringLiteral("c50"));
        QCOMPARE(insertadas.count(), 0);
        QCOMPARE(rejilla.model()->rowCount(), 2);
        rejilla.set_Redraw(true);
        QCOMPARE(insertadas.count(), 1);
        QCOMPARE(rejilla.model()->rowCount(), 52);
    }

    void without_redrawing_rows_can_still_be_removed()
    {
        Rejilla rejilla;
        rejilla.set_Redraw(false);
        rejilla.llena(3);
        rejilla.RemoveItem(2);
        QCOMPARE(rejilla.TextMatrix(2, 0), QStringLiteral("c3"));
        rejilla.set_Rows(1);
        rejilla.set_Redraw(true);
        QCOMPARE(rejilla.model()->rowCount(), 0);
    }

    void keys_move_the_chosen_row()
    {
        Rejilla rejilla;
        rejilla.llena(4);
        rejilla.setFocus();
        QTest::keyClick(&rejilla, Qt::Key_Down);
        QCOMPARE(rejilla.Row(), 1);
        QTest::keyClick(&rejilla, Qt::Key_Down);
        QCOMPARE(rejilla.Row(), 2);
        QTest::keyClick(&rejilla, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(rejilla.Row(), 4);
        QTest::keyClick(&rejilla, Qt::Key_Down);
        QCOMPARE(rejilla.Row(), 4);
        QTest::keyClick(&rejilla, Qt::Key_Up);
        QCOMPARE(rejilla.Row(), 3);
        QTest::keyClick(&rejilla, Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(rejilla.Row(), 1);
    }

    void keys_in_an_empty_grid_choose_nothing()
    {
        Rejilla rejilla;
        for (const auto tecla : { Qt::Key_Down, Qt::Key_Home, Qt::Key_End })
            QTest::keyClick(&rejilla, tecla);
        QCOMPARE(rejilla.Row(), 0);
    }

    void the_chosen_row_is_copied_without_hidden_columns()
    {
        Rejilla rejilla;
        rejilla.llena(1);
        rejilla.set_Row(1);
        QTest::keyClick(&rejilla, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("A1\tartículo 1\t1,00"));
    }

    void widths_come_in_twips()
    {
        Rejilla rejilla;
        rejilla.set_ColWidth(1, 1440);
        QCOMPARE(rejilla.ColWidth(1), rejilla.logicalDpiX());
    }

    void a_number_is_never_cut()
    {
        Rejilla rejilla;
        rejilla.AddItem(QStringLiteral("c\tA\tuno\t123.456.789.012,34"));
        QVERIFY(rejilla.ColWidth(3)
            > rejilla.fontMetrics().horizontalAdvance(QStringLiteral("123.456.789.012,34")));
    }

    void equal_neighbours_of_the_header_show_as_one()
    {
        Rejilla rejilla;
        auto* cabecera = rejilla.findChild<CabeceraUnida*>();
        QVERIFY(cabecera != nullptr);
        QCOMPARE(cabecera->celda(1).width(), rejilla.ColWidth(1));
        rejilla.set_MergeRow(true);
        QCOMPARE(cabecera->celda(1).width(), rejilla.ColWidth(1) + rejilla.ColWidth(2));
        QCOMPARE(cabecera->celda(1), cabecera->celda(2));
        QCOMPARE(cabecera->celda(3).width(), rejilla.ColWidth(3));
    }

    void a_click_on_a_heading_orders_the_rows_and_keeps_the_chosen_one()
    {
        Rejilla rejilla;
        rejilla.set_ColOrden(3, Clase::numero);
        for (const auto* fila : { "b\t\t\t20,00", "c\t\t\t3,00", "a\t\t\t1.000,00" })
            rejilla.AddItem(QString::fromUtf8(fila));
        rejilla.set_Row(1);
        auto* cabecera = rejilla.findChild<CabeceraUnida*>();
        const auto pulsa = [&](int columna) {
            QTest::mouseClick(cabecera->viewport(), Qt::LeftButton, {}, cabecera->celda(columna).center());
            QString orden;
            for (int fila = 1; fila < rejilla.Rows(); ++fila)
                orden += rejilla.TextMatrix(fila, 0);
            return orden + QString::number(rejilla.Row());
        };
        QCOMPARE(pulsa(3), QStringLiteral("cba2"));
        QCOMPARE(pulsa(3), QStringLiteral("abc2"));
        QCOMPARE(pulsa(3), QStringLiteral("cba2"));
        QCOMPARE(pulsa(1), QStringLiteral("cba2")); // that column has no order
        rejilla.set_Rows(1);
        QVERIFY(!cabecera->isSortIndicatorShown());
    }

    void registered_columns_share_what_the_grid_gains()
    {
        Rejilla rejilla;
        Anclaje anclaje(rejilla);
        const int ancho = rejilla.ColWidth(1);
        anclaje.AgregarColumna(1, 50);
        anclaje.AgregarColumna(2, 50);
        const int fijo = rejilla.ColWidth(3);
        for (const int exterior : { 600, 900, 500 }) {
            rejilla.resize(exterior, 300);
            const int ganado = rejilla.viewport()->width() - 3 * ancho;
            QCOMPARE(rejilla.ColWidth(1), ancho + ganado / 2);
            QCOMPARE(rejilla.ColWidth(2), ancho + ganado / 2);
            QCOMPARE(rejilla.ColWidth(3), fijo);
        }
    }

    void what_is_lost_never_leaves_a_column_out_of_sight()
    {
        Rejilla rejilla;
        for (int columna = 0; columna < rejilla.Cols(); ++columna)
            rejilla.setColumnWidth(columna, 200);
        Anclaje anclaje(rejilla);
        anclaje.AgregarColumna(3, 33);
        anclaje.AgregarColumna(1, 33);
        anclaje.AgregarColumna(2, 34);
        for (const int exterior : { 517, 518, 519, 520 }) {
            rejilla.resize(exterior, 300);
            int todas = 0;
            for (int columna = 0; columna < rejilla.Cols(); ++columna)
                todas += rejilla.ColWidth(columna);
            QVERIFY(todas <= rejilla.viewport()->width());
            QVERIFY(todas >= rejilla.viewport()->width() - 3);
        }
    }

    void columns_that_share_make_room_for_a_long_number()
    {
        Rejilla rejilla;
        Anclaje anclaje(rejilla);
        anclaje.AgregarColumna(1, 50);
        anclaje.AgregarColumna(2, 50);
        rejilla.resize(500, 300);
        rejilla.AddItem(QStringLiteral("c\tA\tuno\t123.456.789.012,34"));
        QVERIFY(
            rejilla.ColWidth(1) + rejilla.ColWidth(2) + rejilla.ColWidth(3) <= rejilla.viewport()->width());
    }

    void whatever_is_clicked_one_row_stays_chosen()
    {
        Rejilla rejilla;
        rejilla.llena(3);
        rejilla.set_Row(2);
        const auto donde
            = [&](int fila) { return rejilla.visualRect(rejilla.model()->index(fila - 1, 1)).center(); };
        const QPoint debajo(donde(3).x(), rejilla.viewport()->height() - 5);
        QVERIFY(!rejilla.indexAt(debajo).isValid());
        for (const auto con : { Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier }) {
            QTest::mouseClick(rejilla.viewport(), Qt::LeftButton, con, debajo);
            QCOMPARE(rejilla.Row(), 2);
            QTest::mouseClick(rejilla.viewport(), Qt::LeftButton, con, donde(2));
            QCOMPARE(rejilla.Row(), 2);
        }
        QTest::mousePress(rejilla.viewport(), Qt::LeftButton, {}, donde(3));
        QTest::mouseMove(rejilla.viewport(), debajo);
        QTest::mouseRelease(rejilla.viewport(), Qt::LeftButton, {}, debajo);
        QCOMPARE(rejilla.Row(), 3);
        rejilla.setFocus();
        QTest::keyClick(&rejilla, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(rejilla.Row(), 3);
        QTest::mouseClick(rejilla.viewport(), Qt::LeftButton, Qt::ControlModifier, donde(1));
        QCOMPARE(rejilla.Row(), 1);
        rejilla.set_Row(0); // a program may still choose none
        QCOMPARE(rejilla.Row(), 0);
    }

    void an_empty_grid_says_what_fills_it()
    {
        Rejilla rejilla;
        const auto oscuros = [&] {
            const auto imagen = rejilla.viewport()->grab().toImage();
            int cuantos = 0;
            for (int y = 0; y < imagen.height(); ++y)
                for (int x = 0; x < imagen.width(); ++x)
                    cuantos += imagen.pixelColor(x, y).lightness() < 100;
            return cuantos;
        };
        QCOMPARE(oscuros(), 0);
        rejilla.set_Aviso(QStringLiteral("Todavía no se ha buscado"));
        QVERIFY(oscuros() > 50);
        QCOMPARE(rejilla.accessibleDescription(), QStringLiteral("Todavía no se ha buscado"));
        rejilla.AddItem(QStringLiteral("\t\t\t"));
        QCOMPARE(oscuros(), 0);
    }

    void the_marked_row_stays_marked_wherever_an_order_puts_it()
    {
        Rejilla rejilla;
        rejilla.set_ColOrden(3, Clase::numero);
        rejilla.AddItem("a\t\t\t3,00", 7);
        rejilla.AddItem("b\t\t\t2,00", 5);
        const auto marcadas = [&] {
            QString letras;
            for (int fila = 1; fila < rejilla.Rows(); ++fila) {
                const auto indice = rejilla.model()->index(fila - 1, 3);
                const bool negrita = indice.data(Qt::FontRole).value<QFont>().bold();
                if (negrita != indice.data(Qt::AccessibleDescriptionRole).isValid())
                    return QStringLiteral("seen and heard disagree");
                if (negrita)
                    letras += rejilla.TextMatrix(fila, 0);
            }
            return letras;
        };
        QCOMPARE(marcadas(), QString());
        QSignalSpy cambios(rejilla.model(), &QAbstractItemModel::dataChanged);
        rejilla.set_Marcada(7);
        QCOMPARE(cambios.count(), 1);
        QCOMPARE(marcadas(), QStringLiteral("a"));
        emit rejilla.horizontalHeader()->sectionClicked(3);
        QCOMPARE(rejilla.TextMatrix(2, 0), QStringLiteral("a"));
        QCOMPARE(marcadas(), QStringLiteral("a"));
        rejilla.set_Marcada(-1);
        QCOMPARE(marcadas(), QString());
    }

    void a_hundred_thousand_rows_make_no_widgets()
    {
        Rejilla rejilla;
        const auto hijos = rejilla.findChildren<QObject*>().size();
        rejilla.set_Redraw(false);
        rejilla.llena(100'000);
        rejilla.set_Redraw(true);
        rejilla.set_Row(100'000);
        QCOMPARE(rejilla.TextMatrix(rejilla.Row(), 3), QStringLiteral("100000,00"));
        QCOMPARE(rejilla.findChildren<QObject*>().size(), hijos);
    }
};

ATIPICOS_PRUEBA_VENTANAS(VSFlexGrid_Test)
#include "VSFlexGrid_test.moc"
