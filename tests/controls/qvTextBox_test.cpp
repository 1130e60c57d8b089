#include "controls/qvTextBox.hpp"

#include "tests/controls/Ventana.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QClipboard>
#include <QSignalSpy>
#include <QToolTip>

using atipicos::Currency;
using atipicos::qvTextBox;
using atipicos::pruebas::moneda;

namespace {

struct CajaDeTexto : atipicos::pruebas::Ventana<qvTextBox> {
    [[nodiscard]] QString texto() const { return control->text(); }
};

void teclas_punto_del_teclado_numerico(QWidget* donde)
{
    QTest::keyClick(donde, Qt::Key_Period, Qt::KeypadModifier);
}

}

class qvTextBox_Test : public QObject {
    Q_OBJECT
private slots:
    void what_is_typed_is_a_number_and_is_shown_as_one_when_left_data()
    {
        QTest::addColumn<QString>("teclas");
        QTest::addColumn<QString>("escrito");
        QTest::addColumn<QString>("mostrado");
        const auto fila
            = [](const char* nombre, const char* teclas, const char* escrito, const char* mostrado) {
                  QTest::newRow(nombre) << QString::fromUtf8(teclas) << QString::fromUtf8(escrito)
                                        << QString::fromUtf8(mostrado);
              };
        fila("one decimal", "1,5", "1,5", "1,50");
        fila("a comma first", ",5", ",5", "0,50");
        fila("a comma last", "7,", "7,", "7,00");
        fila("one comma only", "1,,5", "1,5", "1,50");
        fila("too many decimals", "12,345", "12,34", "12,34");
        fila("thousands", "1234567,8", "1234567,8", "1.234.567,80");
        fila("letters and signs", "a1b2+ €", "12", "12,00");
        fila("zeros in front", "0012", "0012", "12,00");
        fila("zero", "0", "0", "0,00");
        fila("minus first", "-5", "-5", "-5,00");
        fila("minus last", "5-", "-5", "-5,00");
        fila("minus twice", "5--", "5", "5,00");
        fila("minus in the middle", "1-5", "-15", "-15,00");
        fila("minus alone", "-", "-", "0,00");
        fila("minus and comma", "-,", "-,", "0,00");
        fila("minus and zero", "-0", "-0", "0,00");
        fila("nothing", "", "", "");
        fila("more than an amount holds", "9999999999999999", "99999999999999", "99.999.999.999.999,00");
    }

    void what_is_typed_is_a_number_and_is_shown_as_one_when_left()
    {
        QFETCH(const QString, teclas);
        QFETCH(const QString, escrito);
        QFETCH(const QString, mostrado);
        CajaDeTexto caja;
        caja.teclea(teclas);
        QCOMPARE(caja.texto(), escrito);
        caja.sale();
        QCOMPARE(caja.texto(), mostrado);
    }

    void the_highest_amount_can_be_typed_and_no_cent_more()
    {
        CajaDeTexto caja;
        caja.control->set_Decimales(2, 4);
        caja.teclea(QStringLiteral("922337203685477,5808"));
        QCOMPARE(caja.texto(), QStringLiteral("922337203685477,580"));
        caja.teclea(QStringLiteral("7-"));
        QCOMPARE(caja.control->Valor(), moneda("-922337203685477.5807"));
    }

    void the_point_of_either_keyboard_is_the_comma_and_a_second_one_is_refused_with_a_word()
    {
        for (const bool teclado_numerico : { true, false }) {
            CajaDeTexto caja;
            caja.teclea(QStringLiteral("14"));
            if (teclado_numerico)
                teclas_punto_del_teclado_numerico(caja.control);
            else
                caja.teclea(QStringLiteral("."));
            caja.teclea(QStringLiteral("5"));
            QVERIFY(QToolTip::text().isEmpty());
            QCOMPARE(caja.texto(), QStringLiteral("14,5"));
            caja.teclea(QStringLiteral(".7"));
            QCOMPARE(
                QToolTip::text(), QStringLiteral("Aquí se teclea un número con coma y hasta 2 decimales."));
            QCOMPARE(caja.control->Valor(), moneda("14.57"));
            QToolTip::hideText();
            QTRY_VERIFY(QToolTip::text().isEmpty());
        }
    }

    void a_number_is_pasted_as_people_write_it_or_refused_as_a_whole_data()
    {
        QTest::addColumn<QString>("pegado");
        QTest::addColumn<QString>("queda");
        const auto fila = [](const char* pegado, const char* queda) {
            QTest::newRow(pegado) << QString::fromUtf8(pegado) << QString::fromUtf8(queda);
        };
        fila("1234.56", "1234,56");
        fila("1.234,56", "1234,56");
        fila("12,50 €", "12,50");
        fila(" -3.5 ", "-3,5");
        fila("1.234", "1234");
        fila("1,234.56", "7");
        fila("12,345", "7");
        fila("12 euros", "7");
    }

    void a_number_is_pasted_as_people_write_it_or_refused_as_a_whole()
    {
        QFETCH(const QString, pegado);
        QFETCH(const QString, queda);
        CajaDeTexto caja;
        caja.teclea(QStringLiteral("7"));
        caja.control->selectAll();
        QApplication::clipboard()->setText(pegado);
        QTest::keyClick(caja.control, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(caja.texto(), queda);
        QCOMPARE(QToolTip::text().isEmpty(), queda != QStringLiteral("7"));
        QToolTip::hideText();
        QTRY_VERIFY(QToolTip::text().isEmpty());
    }

    void without_decimals_there_is_no_comma()
    {
        CajaDeTexto caja;
        caja.control->set_Decimales(0, 0);
        caja.teclea(QStringLiteral("1"));
        teclas_punto_del_teclado_numerico(caja.control);
        caja.teclea(QStringLiteral(",500"));
        QCOMPARE(caja.texto(), QStringLiteral("1500"));
        caja.sale();
        QCOMPARE(caja.texto(), QStringLiteral("1.500"));
    }

    void more_decimals_than_shown_are_kept()
    {
        CajaDeTexto caja;
        caja.control->set_Decimales(2, 4);
        caja.teclea(QStringLiteral("5,6325"));
        caja.sale();
        QCOMPARE(caja.texto(), QStringLiteral("5,6325"));
        caja.control->set_Valor(moneda("5.6300"));
        QCOMPARE(caja.texto(), QStringLiteral("5,63"));
        caja.control->set_Valor(moneda("5"));
        QCOMPARE(caja.texto(), QStringLiteral("5,00"));
    }

    void points_stand_between_thousands_only_while_the_box_is_left()
    {
        CajaDeTexto caja;
        caja.control->set_Valor(moneda("-1234567.8"));
        caja.sale();
        QCOMPARE(caja.texto(), QStringLiteral("-1.234.567,80"));
        caja.entra();
        QCOMPARE(caja.texto(), QStringLiteral("-1234567,80"));
        QCOMPARE(caja.control->selectedText(), caja.texto());
        caja.sale();
        QCOMPARE(caja.texto(), QStringLiteral("-1.234.567,80"));
    }

    void going_through_a_box_changes_nothing()
    {
        CajaDeTexto caja;
        caja.control->set_Decimales(2, 4);
        QSignalSpy cambios(caja.control, &qvTextBox::Change);
        for (const auto* valor : { "0", "0.5", "999.9999", "1000", "-1000.25", "123456789.0001" }) {
            caja.sale();
            caja.control->set_Valor(moneda(valor));
            const QString antes = caja.texto();
            caja.entra();
            caja.sale();
            QCOMPARE(caja.texto(), antes);
        }
        caja.control->clear();
        caja.entra();
        caja.sale();
        QCOMPARE(caja.texto(), QString());
        QCOMPARE(cambios.count(), 0);
    }

    void typing_replaces_what_was_there()
    {
        CajaDeTexto caja;
        caja.control->set_Valor(moneda("1234.5"));
        caja.sale();
        caja.entra();
        caja.teclea(QStringLiteral("-7"));
        QCOMPARE(caja.texto(), QStringLiteral("-7"));
        QCOMPARE(caja.control->Valor(), moneda("-7"));
    }

    void minus_over_a_part_keeps_the_number()
    {
        CajaDeTexto caja;
        caja.teclea(QStringLiteral("1234"));
        caja.control->setSelection(1, 2);
        caja.teclea(QStringLiteral("-"));
        QCOMPARE(caja.texto(), QStringLiteral("-1234"));
    }

    void a_number_is_pasted_as_it_stands_elsewhere_data()
    {
        QTest::addColumn<QString>("pegado");
        QTest::addColumn<QString>("escrito");
        QTest::newRow("with points") << QStringLiteral("1.234,56") << QStringLiteral("1234,56");
        QTest::newRow("a cell of a spreadsheet")
            << QStringLiteral("-1.234.567,5\n") << QStringLiteral("-1234567,5");
        QTest::newRow("blanks around") << QStringLiteral("  12,5 ") << QStringLiteral("12,5");
        QTest::newRow("points out of place") << QStringLiteral("1.23,4") << QString();
        QTest::newRow("words") << QStringLiteral("12 euros") << QString();
        QTest::newRow("too many decimals") << QStringLiteral("1,234") << QString();
        QTest::newRow("too large") << QStringLiteral("1.000.000.000.000.000") << QString();
    }

    void a_number_is_pasted_as_it_stands_elsewhere()
    {
        QFETCH(const QString, pegado);
        QFETCH(const QString, escrito);
        CajaDeTexto caja;
        caja.pega(pegado);
        QCOMPARE(caja.texto(), escrito);
    }

    void a_pasted_number_can_be_corrected_digit_by_digit()
    {
        CajaDeTexto caja;
        caja.pega(QStringLiteral("1.234,56"));
        for (int i = 0; i < 4; ++i)
            caja.pulsa(Qt::Key_Backspace);
        QCOMPARE(caja.texto(), QStringLiteral("123"));
        caja.teclea(QStringLiteral("9"));
        caja.sale();
        QCOMPARE(caja.texto(), QStringLiteral("1.239,00"));
    }

    void change_is_told_when_the_value_changes()
    {
        CajaDeTexto caja;
        QSignalSpy cambios(caja.control, &qvTextBox::Change);
        caja.teclea(QStringLiteral("5"));
        QCOMPARE(cambios.count(), 1);
        caja.teclea(QStringLiteral(",0")); // still five
        QCOMPARE(cambios.count(), 1);
        caja.teclea(QStringLiteral("1-"));
        QCOMPARE(cambios.count(), 3);
        caja.control->set_Valor(moneda("8"));
        QCOMPARE(cambios.count(), 3);
    }

    void enter_is_told_once_with_the_number_in_its_form()
    {
        CajaDeTexto caja;
        QSignalSpy intros(caja.control, &qvTextBox::Intro);
        caja.pulsa(Qt::Key_Return);
        QCOMPARE(intros.count(), 1); // also when the box is empty
        caja.teclea(QStringLiteral("2,5"));
        caja.pulsa(Qt::Key_Enter);
        QCOMPARE(intros.count(), 2);
        QCOMPARE(caja.texto(), QStringLiteral("2,50"));
        caja.control->selectAll();
        caja.teclea(QStringLiteral("12345"));
        caja.pulsa(Qt::Key_Enter);
        QCOMPARE(caja.texto(), QStringLiteral("12345,00")); // points come when the box is left
        caja.sale();
        QCOMPARE(caja.texto(), QStringLiteral("12.345,00"));
        caja.entra();
        QKeyEvent repetida(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
        QCoreApplication::sendEvent(caja.control, &repetida);
        QCOMPARE(intros.count(), 3);
    }

    void a_box_to_be_read_only_does_not_change()
    {
        CajaDeTexto caja;
        caja.control->set_Valor(moneda("1234.5"));
        caja.control->setReadOnly(true);
        caja.sale();
        caja.entra();
        caja.teclea(QStringLiteral("-9,"));
        QCOMPARE(caja.texto(), QStringLiteral("1.234,50"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(qvTextBox_Test)
#include "qvTextBox_test.moc"
