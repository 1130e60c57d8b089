#include "controls/qvTextoLargo.hpp"

#include "tests/controls/Ventana.hpp"
#include "tests/support/Ventanas.hpp"

#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

using atipicos::qvTextoLargo;
using atipicos::pruebas::Ventana;

namespace {

/// Where the first line of the text ends.
int primera_linea(const qvTextoLargo& caja)
{
    return caja.document()->begin().layout()->lineAt(0).textLength();
}

}

class qvTextoLargo_Test : public QObject {
    Q_OBJECT
private slots:
    void words_stay_whole()
    {
        const Ventana<qvTextoLargo> ventana;
        const auto texto = QStringLiteral("Palé dañado ").repeated(100);
        ventana.control->setPlainText(texto);
        QVERIFY(ventana.control->document()->begin().layout()->lineCount() > 1);
        QVERIFY(texto.at(primera_linea(*ventana.control) - 1).isSpace());
    }

    /// Laid out word by word it would take minutes, more than a test has.
    void a_megabyte_without_a_break_is_taken_as_it_is_and_edited()
    {
        Ventana<qvTextoLargo> ventana;
        auto& caja = *ventana.control;
        const auto megabyte = QString(1'000'000, u'M');
        ventana.pega(megabyte);
        QCOMPARE(caja.toPlainText(), megabyte);
        ventana.teclea(QStringLiteral("x"));
        QCOMPARE(caja.toPlainText(), megabyte + u'x');
        ventana.resize(500, 300);
        QCoreApplication::processEvents();
        caja.undo();
        QCOMPARE(caja.toPlainText(), QString());
        caja.redo();
        QCOMPARE(caja.toPlainText(), megabyte + u'x');
    }

    void when_the_long_word_is_gone_words_stay_whole_again()
    {
        Ventana<qvTextoLargo> ventana;
        auto& caja = *ventana.control;
        const auto frase = QStringLiteral("Palé dañado ").repeated(100);
        caja.setPlainText(frase);
        const int antes = primera_linea(caja);
        caja.moveCursor(QTextCursor::End);
        ventana.pega(QString(2000, u'M'));
        QVERIFY(primera_linea(caja) > antes);
        caja.undo();
        QCOMPARE(caja.toPlainText(), frase);
        QCOMPARE(primera_linea(caja), antes);
        ventana.teclea(QStringLiteral("y caja"));
        QCOMPARE(caja.toPlainText(), frase + QStringLiteral("y caja"));
        QCOMPARE(primera_linea(caja), antes);
    }

    void it_is_set_in_the_font_of_its_window()
    {
        Ventana<qvTextoLargo> ventana;
        QFont grande = ventana.font();
        grande.setPointSize(30);
        ventana.setFont(grande);
        QCOMPARE(ventana.control->document()->defaultFont().pointSize(), 30);
    }
};

ATIPICOS_PRUEBA_VENTANAS(qvTextoLargo_Test)
#include "qvTextoLargo_test.moc"
