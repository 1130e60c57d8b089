#include "controls/Atajos.hpp"

#include "tests/controls/Ventana.hpp"
#include "tests/support/Ventanas.hpp"

#include <QKeySequence>
#include <QTest>

using atipicos::pon_atajo;
using atipicos::pruebas::Ventana;

class Atajos_Test : public QObject {
    Q_OBJECT
private slots:
    void the_keys_lead_to_the_field_and_what_is_in_it_is_selected()
    {
        Ventana<QLineEdit> ventana;
        ventana.control->setText(QStringLiteral("104"));
        pon_atajo(*ventana.control, QKeySequence(Qt::ALT | Qt::Key_P));
        ventana.sale();
        ventana.pulsa(Qt::Key_P, Qt::AltModifier);
        QVERIFY(ventana.control->hasFocus());
        QCOMPARE(ventana.control->selectedText(), QStringLiteral("104"));
    }

    void a_field_that_is_disabled_does_not_take_them()
    {
        Ventana<QLineEdit> ventana;
        pon_atajo(*ventana.control, QKeySequence(Qt::ALT | Qt::Key_P));
        ventana.sale();
        ventana.control->setEnabled(false);
        ventana.pulsa(Qt::Key_P, Qt::AltModifier);
        QVERIFY(ventana.otro->hasFocus());
    }

    void the_tool_tip_says_so()
    {
        QLineEdit campo;
        pon_atajo(campo, QKeySequence(Qt::ALT | Qt::Key_P));
        QCOMPARE(campo.toolTip(), QStringLiteral("Alt+P"));
        campo.setToolTip(QStringLiteral("Código"));
        pon_atajo(campo, QKeySequence(Qt::Key_F8));
        QCOMPARE(campo.toolTip(), QStringLiteral("Código (F8)"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(Atajos_Test)
#include "Atajos_test.moc"
