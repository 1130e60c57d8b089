#include "controls/qvCheckBox.hpp"

#include "tests/controls/Ventana.hpp"
#include "tests/support/Ventanas.hpp"

using atipicos::qvCheckBox;
using Caja = atipicos::pruebas::Ventana<qvCheckBox>;

class qvCheckBox_Test : public QObject {
    Q_OBJECT
private slots:
    void space_changes_it()
    {
        Caja caja;
        caja.pulsa(Qt::Key_Space);
        QVERIFY(caja.control->isChecked());
        caja.pulsa(Qt::Key_Space);
        QVERIFY(!caja.control->isChecked());
        QVERIFY(caja.control->hasFocus());
    }

    void enter_leaves_it_as_it_is_and_moves_on()
    {
        for (const auto tecla : { Qt::Key_Return, Qt::Key_Enter }) {
            Caja caja;
            caja.pulsa(tecla);
            QVERIFY(!caja.control->isChecked());
            QVERIFY(caja.otro->hasFocus());
        }
    }

    void a_click_changes_it()
    {
        Caja caja;
        caja.control->setText(QStringLiteral("Franquiciado"));
        QTest::mouseClick(
            caja.control, Qt::LeftButton, {}, QPoint(caja.control->height() / 2, caja.control->height() / 2));
        QVERIFY(caja.control->isChecked());
    }
};

ATIPICOS_PRUEBA_VENTANAS(qvCheckBox_Test)
#include "qvCheckBox_test.moc"
