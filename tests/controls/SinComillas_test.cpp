#include "controls/SinComillas.hpp"

#include "tests/controls/Ventana.hpp"
#include "tests/support/Ventanas.hpp"

#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace atipicos;

namespace {

const auto con_comillas = QStringLiteral("'L'Orotava' d'ahir'");
const auto acentuado = QStringLiteral("´L´Orotava´ d´ahir´");

}

class SinComillas_Test : public QObject {
    Q_OBJECT
private slots:
    void a_line_takes_them_as_accents_typed_pasted_and_set()
    {
        pruebas::Ventana<QLineEdit> caja;
        pon_sin_comillas(*caja.control);
        caja.teclea(con_comillas);
        QCOMPARE(caja.control->text(), acentuado);
        caja.control->setText(con_comillas);
        QCOMPARE(caja.control->text(), acentuado);
        caja.control->setText(QStringLiteral("antes "));
        QApplication::clipboard()->setText(con_comillas);
        caja.control->paste();
        QCOMPARE(caja.control->text(), QStringLiteral("antes ") + acentuado);
    }

    void so_does_a_text_of_several_lines_and_takes_them_back_in_one_step()
    {
        pruebas::Ventana<QPlainTextEdit> caja;
        pon_sin_comillas(*caja.control);
        caja.teclea(con_comillas);
        QCOMPARE(caja.control->toPlainText(), acentuado);
        caja.control->setPlainText(con_comillas + u'\n' + con_comillas);
        QCOMPARE(caja.control->toPlainText(), acentuado + u'\n' + acentuado);
        caja.control->setPlainText(QStringLiteral("antes "));
        caja.control->moveCursor(QTextCursor::End);
        QApplication::clipboard()->setText(con_comillas);
        caja.control->paste();
        QCOMPARE(caja.control->toPlainText(), QStringLiteral("antes ") + acentuado);
        caja.teclea(QStringLiteral("'."));
        QCOMPARE(caja.control->toPlainText(), QStringLiteral("antes ") + acentuado + QStringLiteral("´."));
        caja.control->undo();
        caja.control->undo();
        caja.control->undo();
        QCOMPARE(caja.control->toPlainText(), QStringLiteral("antes "));
    }
};

ATIPICOS_PRUEBA_VENTANAS(SinComillas_Test)
#include "SinComillas_test.moc"
