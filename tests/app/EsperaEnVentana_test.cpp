#include "host/ventanas/EsperaEnVentana.hpp"

#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLabel>
#include <QPushButton>

using namespace atipicos;
using namespace atipicos::pruebas;
using namespace std::chrono_literals;

namespace {

QWidget* espera_abierta()
{
    for (QWidget* una : QApplication::topLevelWidgets())
        if (una->objectName() == QLatin1String("frmEspera") && una->isVisible())
            return una;
    return nullptr;
}

}

class EsperaEnVentana_Test : public QObject {
    Q_OBJECT
private slots:
    void nothing_is_shown_while_a_lock_may_be_the_reason()
    {
        app::EsperaEnVentana espera(5s);
        QVERIFY(espera.sigue(250ms));
        QVERIFY(espera.sigue(5'900ms));
        QVERIFY(espera_abierta() == nullptr);
        QVERIFY(espera.sigue(6'100ms));
        QVERIFY(espera_abierta() != nullptr);
        QCOMPARE(control<QLabel>(*espera_abierta(), "lblDesde").text(),
            QStringLiteral("No contesta desde hace 6 s."));
        QVERIFY(espera.sigue(8'100ms));
        QCOMPARE(control<QLabel>(*espera_abierta(), "lblDesde").text(),
            QStringLiteral("No contesta desde hace 8 s."));
    }

    void it_stays_while_it_is_asked_and_goes_when_the_answer_is_there()
    {
        app::EsperaEnVentana espera(200ms);
        for (int vez = 1; vez <= 5; ++vez) {
            QVERIFY(espera.sigue(vez * 1'200ms));
            QVERIFY(espera_abierta() != nullptr);
        }
        QTRY_VERIFY_WITH_TIMEOUT(espera_abierta() == nullptr, atipicos::pruebas::paciencia);
    }

    void its_button_or_escape_ends_the_waiting_and_the_next_one_is_shown_again()
    {
        app::EsperaEnVentana espera(200ms);
        QVERIFY(espera.sigue(1'200ms));
        QTest::mouseClick(&control<QPushButton>(*espera_abierta(), "cmdDejar"), Qt::LeftButton);
        QVERIFY(!espera.sigue(1'500ms));
        QVERIFY(espera_abierta() == nullptr);
        QVERIFY(espera.sigue(1'200ms));
        QTest::keyClick(espera_abierta(), Qt::Key_Escape);
        QVERIFY(!espera.sigue(1'500ms));
    }

    void it_stays_while_something_that_was_let_through_takes_long()
    {
        app::EsperaEnVentana espera(200ms);
        QTimer::singleShot(20, this, [] { QTest::qWait(900); });
        QVERIFY(espera.sigue(1'200ms));
        QVERIFY(espera_abierta() != nullptr);
    }

    void who_asks_inside_of_it_waits()
    {
        app::EsperaEnVentana espera(200ms);
        bool dentro = false;
        QTimer::singleShot(20, this, [&] { dentro = espera.sigue(4'200ms); });
        QVERIFY(espera.sigue(1'200ms));
        QVERIFY(dentro);
        QCOMPARE(control<QLabel>(*espera_abierta(), "lblDesde").text(),
            QStringLiteral("No contesta desde hace 1 s."));
    }
};

ATIPICOS_PRUEBA_VENTANAS(EsperaEnVentana_Test)
#include "EsperaEnVentana_test.moc"
