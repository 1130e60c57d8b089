#include "controls/qvMaskEdBox.hpp"

#include "tests/controls/Ventana.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QApplication>
#include <QCalendarWidget>
#include <QSignalSpy>
#include <QTableView>

using atipicos::Date;
using atipicos::qvMaskEdBox;
using atipicos::pruebas::dia;

namespace {

struct CajaDeFecha : atipicos::pruebas::Ventana<qvMaskEdBox> {
    [[nodiscard]] QString texto() const { return control->text(); }
    [[nodiscard]] QString fecha() const
    {
        const auto dia_elegido = control->Fecha();
        return dia_elegido ? QString::fromStdString(dia_elegido->texto()) : QStringLiteral("ninguna");
    }
    QWidget* abre_calendario()
    {
        pulsa(Qt::Key_Down, Qt::AltModifier);
        return QApplication::activePopupWidget();
    }
};

QString hoy() { return QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")); }

}

class qvMaskEdBox_Test : public QObject {
    Q_OBJECT
private slots:
    void a_day_is_typed_data()
    {
        QTest::addColumn<QString>("teclas");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("fecha");
        const auto fila = [](const char* teclas, const char* texto, const char* fecha) {
            QTest::newRow(teclas) << QString::fromUtf8(teclas) << QString::fromUtf8(texto)
                                  << QString::fromUtf8(fecha);
        };
        fila("21112026", "21/11/2026", "21/11/2026");
        fila("21/11/2026", "21/11/2026", "21/11/2026");
        fila("1/2/2026", "01/02/2026", "01/02/2026");
        fila("1-2-2026", "01/02/2026", "01/02/2026");
        fila("1.2.2026", "01/02/2026", "01/02/2026");
        fila("29022028", "29/02/2028", "29/02/2028");
        fila("31022026", "31/02/2026", "ninguna");
        fila("29022026", "29/02/2026", "ninguna");
        fila("00012026", "00/01/2026", "ninguna");
        fila("01132026", "01/13/2026", "ninguna");
        fila("010226", "01/02/26", "ninguna");
        fila("01020000", "01/02/0000", "ninguna");
        fila("uno", "//", "ninguna");
        fila("211120267", "21/11/2026", "21/11/2026");
    }

    void a_day_is_typed()
    {
        QFETCH(const QString, teclas);
        QFETCH(const QString, texto);
        QFETCH(const QString, fecha);
        CajaDeFecha caja;
        caja.teclea(teclas);
        QCOMPARE(caja.texto(), texto);
        QCOMPARE(caja.fecha(), fecha);
    }

    void an_empty_box_holds_no_day()
    {
        CajaDeFecha caja;
        QCOMPARE(caja.fecha(), QStringLiteral("ninguna"));
        caja.control->set_Fecha(dia("21/11/2026"));
        caja.control->Limpiar();
        QCOMPARE(caja.fecha(), QStringLiteral("ninguna"));
        QCOMPARE(caja.texto(), QStringLiteral("//"));
    }

    void an_emptied_box_takes_digits_at_once_and_no_date_empties_it()
    {
        CajaDeFecha caja;
        caja.teclea(QStringLiteral("31022027"));
        caja.control->Limpiar();
        QCOMPARE(caja.control->cursorPosition(), 0); // where the first digit will stand
        caja.teclea(QStringLiteral("1/2/2027"));
        QCOMPARE(caja.texto(), QStringLiteral("01/02/2027"));
        caja.control->set_Fecha(Date());
        QCOMPARE(caja.texto(), QStringLiteral("//"));
        caja.teclea(QStringLiteral("15032027"));
        QCOMPARE(caja.fecha(), QStringLiteral("15/03/2027"));
    }

    void what_is_wrong_is_said_in_a_sentence()
    {
        CajaDeFecha caja;
        QCOMPARE(caja.control->Falta(), QStringLiteral("Falta la fecha."));
        caja.teclea(QStringLiteral("310220"));
        QCOMPARE(caja.control->Falta(),
            QStringLiteral("La fecha está a medias: se teclean el día, el mes y las cuatro cifras del año."));
        caja.teclea(QStringLiteral("27"));
        QCOMPARE(caja.control->Falta(), QStringLiteral("No existe el día 31/02/2027."));
        caja.control->set_Fecha(dia("28/02/2027"));
        QCOMPARE(caja.control->Falta(), QString());
    }

    void a_day_is_typed_over_the_one_that_was_there()
    {
        CajaDeFecha caja;
        caja.control->set_Fecha(dia("31/12/2025"));
        caja.sale();
        caja.entra();
        QVERIFY(caja.control->hasSelectedText());
        caja.teclea(QStringLiteral("1/2/2026"));
        QCOMPARE(caja.texto(), QStringLiteral("01/02/2026"));
    }

    void one_digit_can_be_corrected()
    {
        CajaDeFecha caja;
        caja.control->set_Fecha(dia("21/11/2026"));
        for (const auto tecla : { Qt::Key_Home, Qt::Key_Right, Qt::Key_Right, Qt::Key_Backspace })
            caja.pulsa(tecla);
        QCOMPARE(caja.fecha(), QStringLiteral("ninguna"));
        caja.teclea(QStringLiteral("5"));
        QCOMPARE(caja.texto(), QStringLiteral("25/11/2026"));
        caja.pulsa(Qt::Key_Home);
        caja.teclea(QStringLiteral("1"));
        QCOMPARE(caja.texto(), QStringLiteral("15/11/2026"));
    }

    void a_day_is_pasted_data()
    {
        QTest::addColumn<QString>("pegado");
        QTest::addColumn<QString>("texto");
        QTest::newRow("whole") << QStringLiteral("21/11/2026") << QStringLiteral("21/11/2026");
        QTest::newRow("digits") << QStringLiteral("21112026") << QStringLiteral("21/11/2026");
        QTest::newRow("one digit for day and month")
            << QStringLiteral("1/2/2026") << QStringLiteral("01/02/2026");
        QTest::newRow("one digit for the month")
            << QStringLiteral("21/2/2026") << QStringLiteral("21/02/2026");
        QTest::newRow("a cell of a spreadsheet")
            << QStringLiteral("21/11/2026\n") << QStringLiteral("21/11/2026");
        QTest::newRow("two digits for the year") << QStringLiteral("1/2/26") << QStringLiteral("1/2/26");
    }

    void a_day_is_pasted()
    {
        QFETCH(const QString, pegado);
        QFETCH(const QString, texto);
        CajaDeFecha caja;
        caja.control->set_Fecha(dia("31/12/2025"));
        caja.sale();
        caja.entra();
        caja.pega(pegado);
        QCOMPARE(caja.texto(), texto);
    }

    void up_and_down_move_by_a_day_data()
    {
        QTest::addColumn<QString>("desde");
        QTest::addColumn<int>("tecla");
        QTest::addColumn<QString>("hasta");
        const auto fila = [](const char* desde, Qt::Key tecla, const char* hasta) {
            QTest::addRow("%s %s", desde, tecla == Qt::Key_Up ? "up" : "down")
                << QString::fromUtf8(desde) << static_cast<int>(tecla) << QString::fromUtf8(hasta);
        };
        fila("21/11/2026", Qt::Key_Up, "22/11/2026");
        fila("30/11/2026", Qt::Key_Up, "01/12/2026");
        fila("31/12/2026", Qt::Key_Up, "01/01/2027");
        fila("28/02/2026", Qt::Key_Up, "01/03/2026");
        fila("28/02/2028", Qt::Key_Up, "29/02/2028");
        fila("01/03/2026", Qt::Key_Down, "28/02/2026");
        fila("01/01/2026", Qt::Key_Down, "31/12/2025");
        fila("31/12/9999", Qt::Key_Up, "31/12/9999");
        fila("01/01/0100", Qt::Key_Down, "01/01/0100");
    }

    void up_and_down_move_by_a_day()
    {
        QFETCH(const QString, desde);
        QFETCH(const int, tecla);
        QFETCH(const QString, hasta);
        CajaDeFecha caja;
        caja.control->set_Fecha(dia(desde.toUtf8().constData()));
        caja.pulsa(static_cast<Qt::Key>(tecla));
        QCOMPARE(caja.texto(), hasta);
    }

    void from_what_is_no_day_they_begin_today()
    {
        for (const auto tecla : { Qt::Key_Up, Qt::Key_Down }) {
            CajaDeFecha caja;
            caja.teclea(QStringLiteral("3102"));
            caja.pulsa(tecla);
            QCOMPARE(caja.texto(), hoy());
        }
    }

    void what_is_typed_in_part_is_completed_before_enter_is_told_data()
    {
        QTest::addColumn<QString>("teclas");
        QTest::addColumn<QString>("texto");
        const auto fila = [](const char* teclas, const char* texto) {
            QTest::newRow(teclas) << QString::fromUtf8(teclas) << QString::fromUtf8(texto);
        };
        // Today is 09/04/2027, and the box holds 28/02/2025.
        fila("15", "15/04/2027");
        fila("5/", "05/04/2027");
        fila("1511", "15/11/2027");
        fila("151126", "15/11/2026");
        fila("1/2/26", "01/02/2026");
        fila("15112026", "15/11/2026");
        fila("h", "09/04/2027");
        fila("H", "09/04/2027");
        fila("12h", "09/04/2027");
        fila("+3", "03/03/2025");
        fila("-3", "25/02/2025");
        fila("+3651", "27/02/2035");
        fila("+36514", "27/02/2035"); // four digits are enough
        fila("15+3", "18/04/2027");
        fila("+3+2", "05/03/2025");
        fila("+x7", "28/02/2025");
        fila("+", "28/02/2025");
        fila("31", "31//");
        fila("310227", "31/02/27");
        fila("1511202", "15/11/202");
        fila("", "28/02/2025");
    }

    void what_is_typed_in_part_is_completed_before_enter_is_told()
    {
        QFETCH(const QString, teclas);
        QFETCH(const QString, texto);
        const atipicos::pruebas::Contexto contexto;
        contexto.reloj->valor = dia("09/04/2027");
        for (const bool con_intro : { true, false }) {
            CajaDeFecha caja;
            caja.control->set_Fecha(dia("28/02/2025"));
            caja.sale();
            caja.entra();
            QString al_intro;
            connect(caja.control, &qvMaskEdBox::Intro, this, [&] { al_intro = caja.texto(); });
            caja.teclea(teclas);
            if (con_intro)
                caja.pulsa(Qt::Key_Return);
            else
                caja.sale();
            QCOMPARE(caja.texto(), texto);
            if (con_intro)
                QCOMPARE(al_intro, texto);
        }
    }

    void an_empty_box_counts_and_completes_from_the_day_that_it_was_given()
    {
        const atipicos::pruebas::Contexto contexto;
        contexto.reloj->valor = dia("09/04/2027");
        CajaDeFecha caja;
        caja.control->set_Partida(dia("05/03/2026"));
        caja.teclea(QStringLiteral("+30"));
        caja.control->Completa();
        QCOMPARE(caja.texto(), QStringLiteral("04/04/2026"));
        caja.control->Limpiar();
        caja.teclea(QStringLiteral("12"));
        caja.control->Completa();
        QCOMPARE(caja.texto(), QStringLiteral("12/03/2026"));
        caja.control->Limpiar();
        caja.teclea(QStringLiteral("h"));
        QCOMPARE(caja.texto(), QStringLiteral("09/04/2027"));
        caja.control->set_Partida(Date());
        caja.control->Limpiar();
        caja.teclea(QStringLiteral("+1"));
        caja.control->Completa();
        QCOMPARE(caja.texto(), QStringLiteral("10/04/2027"));
    }

    void a_count_can_be_given_up_and_corrected()
    {
        CajaDeFecha caja;
        caja.control->set_Fecha(dia("28/02/2025"));
        caja.teclea(QStringLiteral("+3"));
        QCOMPARE(caja.texto(), QStringLiteral("+3"));
        caja.pulsa(Qt::Key_Escape);
        QCOMPARE(caja.texto(), QStringLiteral("28/02/2025"));
        caja.teclea(QStringLiteral("+35"));
        caja.pulsa(Qt::Key_Backspace);
        QCOMPARE(caja.texto(), QStringLiteral("+3"));
        caja.pulsa(Qt::Key_Shift);
        caja.pulsa(Qt::Key_Up); // ends the count, and moves on by a day
        QCOMPARE(caja.texto(), QStringLiteral("04/03/2025"));
        caja.teclea(QStringLiteral("+"));
        caja.pulsa(Qt::Key_Backspace);
        QCOMPARE(caja.texto(), QStringLiteral("04/03/2025"));
        caja.control->selectAll();
        caja.teclea(QStringLiteral("1/5/2025")); // the mask is there again
        QCOMPARE(caja.texto(), QStringLiteral("01/05/2025"));
    }

    void wherever_the_mouse_has_put_the_cursor_an_empty_box_takes_digits()
    {
        CajaDeFecha caja;
        caja.control->setCursorPosition(10);
        caja.teclea(QStringLiteral("21112026"));
        QCOMPARE(caja.texto(), QStringLiteral("21/11/2026"));
    }

    void what_is_no_day_is_marked_when_it_is_left_and_no_sooner()
    {
        CajaDeFecha caja;
        const QColor propio = caja.control->palette().color(QPalette::Text);
        QStringList dicho;
        connect(caja.control, &qvMaskEdBox::Comprobada, this, [&](const QString& falta) { dicho << falta; });
        caja.teclea(QStringLiteral("31022027"));
        QVERIFY(dicho.isEmpty());
        caja.pulsa(Qt::Key_Return);
        QCOMPARE(dicho, QStringList{ QStringLiteral("No existe el día 31/02/2027.") });
        QCOMPARE(caja.texto(), QStringLiteral("31/02/2027"));
        QVERIFY(caja.control->palette().color(QPalette::Text) != propio);
        QCOMPARE(caja.control->accessibleDescription(), dicho.last());
        const QPalette claro = QApplication::palette();
        QPalette oscuro(Qt::black);
        oscuro.setColor(QPalette::Base, Qt::black);
        QApplication::setPalette(oscuro);
        QCoreApplication::processEvents();
        QVERIFY(caja.control->palette().color(QPalette::Text).lightness() > 128);
        QApplication::setPalette(claro);
        QCoreApplication::processEvents();
        caja.sale(); // it has been said
        QCOMPARE(dicho.size(), 1);
        caja.entra();
        caja.teclea(QStringLiteral("28022027"));
        QCOMPARE(dicho.last(), QString());
        QCOMPARE(caja.control->palette().color(QPalette::Text), propio);
        QCOMPARE(caja.control->accessibleDescription(), QString());
        caja.control->Limpiar();
        caja.sale();
        QCOMPARE(dicho.size(), 2); // an empty box is not wrong by itself
    }

    void a_window_over_the_box_does_not_leave_it()
    {
        CajaDeFecha caja;
        caja.teclea(QStringLiteral("31"));
        QFocusEvent tapada(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(caja.control, &tapada);
        QCOMPARE(caja.texto(), QStringLiteral("31//"));
        QCOMPARE(caja.control->accessibleDescription(), QString());
    }

    void enter_is_told_whatever_the_box_holds()
    {
        CajaDeFecha caja;
        QSignalSpy intros(caja.control, &qvMaskEdBox::Intro);
        caja.pulsa(Qt::Key_Return);
        caja.teclea(QStringLiteral("21112026"));
        caja.pulsa(Qt::Key_Enter);
        QCOMPARE(intros.count(), 2);
    }

    void a_day_is_chosen_in_the_calendar_by_keys()
    {
        CajaDeFecha caja;
        caja.control->set_Fecha(dia("30/11/2026"));
        auto* marco = caja.abre_calendario();
        QVERIFY(marco != nullptr);
        const auto* calendario = marco->findChild<QCalendarWidget*>(QStringLiteral("calendario"));
        QCOMPARE(calendario->selectedDate(), QDate(2026, 11, 30));
        QTest::keyClick(marco->focusWidget(), Qt::Key_Right);
        QTest::keyClick(marco->focusWidget(), Qt::Key_Down);
        QTest::keyClick(marco->focusWidget(), Qt::Key_Return);
        QCOMPARE(caja.texto(), QStringLiteral("08/12/2026"));
        QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
        QVERIFY(caja.control->hasFocus());
    }

    void escape_closes_the_calendar_and_chooses_nothing()
    {
        CajaDeFecha caja;
        caja.control->set_Fecha(dia("30/11/2026"));
        auto* marco = caja.abre_calendario();
        QTest::keyClick(marco->focusWidget(), Qt::Key_Right);
        QTest::keyClick(marco->focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
        QCOMPARE(caja.texto(), QStringLiteral("30/11/2026"));
    }

    void the_calendar_begins_today_when_there_is_no_day()
    {
        CajaDeFecha caja;
        auto* marco = caja.abre_calendario();
        QTest::keyClick(marco->focusWidget(), Qt::Key_Return);
        QCOMPARE(caja.texto(), hoy());
    }

    void a_box_to_be_read_only_does_not_change()
    {
        CajaDeFecha caja;
        caja.control->set_Fecha(dia("30/11/2026"));
        caja.control->setReadOnly(true);
        caja.teclea(QStringLiteral("1/2/2026"));
        for (const auto tecla : { Qt::Key_Up, Qt::Key_Down })
            caja.pulsa(tecla);
        QVERIFY(caja.abre_calendario() == nullptr);
        QCOMPARE(caja.texto(), QStringLiteral("30/11/2026"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(qvMaskEdBox_Test)
#include "qvMaskEdBox_test.moc"
