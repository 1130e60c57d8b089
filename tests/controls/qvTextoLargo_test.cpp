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
    void line_breaks_are_handed_back_as_they_were_set()
    {
        Ventana<qvTextoLargo> ventana;
        auto& caja = *ventana.control;
        for (const auto* texto : { "uno\r\ndos", "uno\ndos", "uno\rdos\r\ntres\n", "", "sin saltos" }) {
            caja.set_Texto(QString::fromUtf8(texto));
            QCOMPARE(caja.Texto(), QString::fromUtf8(texto));
        }
        const QString fijo = QStringLiteral("12,50") + QChar(0xa0) + u'€'; // a blank that does not break
        caja.set_Texto(fijo);
        QCOMPARE(caja.Texto(), fijo);
    }

    void a_changed_text_has_the_breaks_that_it_had()
    {
        Ventana<qvTextoLargo> ventana;
        auto& caja = *ventana.control;
        caja.set_Texto(QStringLiteral("uno\r\ndos"));
        caja.moveCursor(QTextCursor::End);
        ventana.pulsa(Qt::Key_Return);
        ventana.teclea(QStringLiteral("tres"));
        QCOMPARE(caja.Texto(), QStringLiteral("uno\r\ndos\r\ntres"));
        caja.set_Texto(QStringLiteral("uno"));
        caja.moveCursor(QTextCursor::End);
        ventana.pulsa(Qt::Key_Return);
        QCOMPARE(caja.Texto(), QStringLiteral("uno\n"));
    }

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
