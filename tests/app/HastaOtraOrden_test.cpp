#include "host/ventanas/HastaOtraOrden.hpp"

#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QEventLoop>
#include <QKeyEvent>
#include <QShortcut>
#include <QTimer>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// As what a box does that is opened in the middle of something.
void dentro_de_otra_espera(const std::function<void()>& que)
{
    QEventLoop espera;
    QTimer::singleShot(0, &espera, [&] {
        que();
        espera.quit();
    });
    espera.exec();
}

}

class HastaOtraOrden_Test : public QObject {
    Q_OBJECT
private slots:
    void it_lasts_from_its_beginning_to_the_next_key_or_click()
    {
        QWidget ventana;
        app::HastaOtraOrden hasta;
        QVERIFY(!hasta.dura());
        hasta.empieza();
        QTest::mouseMove(&ventana);
        QTest::keyRelease(&ventana, Qt::Key_A);
        QVERIFY(hasta.dura());
        QTest::keyPress(&ventana, Qt::Key_A);
        QVERIFY(!hasta.dura());
        hasta.empieza();
        QTest::mouseRelease(&ventana, Qt::LeftButton);
        QVERIFY(hasta.dura());
        QTest::mousePress(&ventana, Qt::LeftButton);
        QVERIFY(!hasta.dura());
        hasta.empieza();
        QTest::mouseDClick(&ventana, Qt::LeftButton);
        QVERIFY(!hasta.dura());
        hasta.empieza();
        hasta.termina();
        QVERIFY(!hasta.dura());
    }

    void a_key_that_is_a_shortcut_is_one()
    {
        QWidget ventana;
        int veces = 0;
        const QShortcut atajo(QKeySequence(Qt::CTRL | Qt::Key_B), &ventana, [&] { ++veces; });
        ventana.show();
        QVERIFY(QTest::qWaitForWindowActive(&ventana, atipicos::pruebas::paciencia));
        app::HastaOtraOrden hasta;
        hasta.empieza();
        QTest::keyClick(ventana.windowHandle(), Qt::Key_B, Qt::ControlModifier);
        QCOMPARE(veces, 1);
        QVERIFY(!hasta.dura());
    }

    void a_key_of_which_nothing_comes_but_the_question_whether_it_is_a_shortcut_is_one_too()
    {
        QWidget ventana;
        QKeyEvent pregunta(QEvent::ShortcutOverride, Qt::Key_B, Qt::ControlModifier);
        QSpontaneKeyEvent::setSpontaneous(&pregunta);
        app::HastaOtraOrden hasta;
        hasta.empieza();
        QCoreApplication::instance()->notify(&ventana, &pregunta);
        QVERIFY(!hasta.dura());
    }

    void what_the_program_sends_itself_is_none()
    {
        QWidget ventana;
        app::HastaOtraOrden hasta;
        hasta.empieza();
        QKeyEvent intro(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&ventana, &intro);
        QVERIFY(hasta.dura());
    }

    void the_answer_to_a_box_is_none_but_what_comes_where_it_began_is()
    {
        QWidget ventana;
        const auto pulsa_intro = [&] { QTest::keyClick(&ventana, Qt::Key_Return); };
        app::HastaOtraOrden hasta;
        dentro_de_otra_espera([&] {
            hasta.empieza(); // in a dialog
            dentro_de_otra_espera(pulsa_intro); // a box over it
            QVERIFY(hasta.dura());
            pulsa_intro();
            QVERIFY(!hasta.dura());
            hasta.empieza();
        });
        QVERIFY(hasta.dura());
        pulsa_intro(); // the dialog has gone
        QVERIFY(!hasta.dura());
    }
};

ATIPICOS_PRUEBA_VENTANAS(HastaOtraOrden_Test)
#include "HastaOtraOrden_test.moc"
