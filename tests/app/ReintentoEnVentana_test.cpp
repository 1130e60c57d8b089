#include "host/ventanas/ReintentoEnVentana.hpp"

#include "host/terminal/Interrupcion.hpp"
#include "host/ventanas/EsperaEnVentana.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTimer>

#include <csignal>
#include <string>
#include <vector>

using namespace atipicos;
using namespace atipicos::pruebas;
using namespace std::chrono_literals;

namespace {

QDialog* reintento_abierto()
{
    for (QWidget* una : QApplication::topLevelWidgets())
        if (una->objectName() == QLatin1String("frmReintento") && una->isVisible())
            return qobject_cast<QDialog*>(una);
    return nullptr;
}

QString dicho_en(const char* etiqueta) { return control<QLabel>(*reintento_abierto(), etiqueta).text(); }

/// As a person does in a window of the program.
void da_una_orden()
{
    QWidget ventana;
    QTest::keyClick(&ventana, Qt::Key_F5);
}

sql::Reintento a_los(std::chrono::milliseconds desde) { return { desde, 45s, "nadie escucha" }; }

}

class ReintentoEnVentana_Test : public QObject {
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }

    void it_shows_how_it_stands_and_is_gone_when_the_line_is_open()
    {
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue(a_los(300ms)));
        QVERIFY(reintento_abierto() != nullptr);
        QVERIFY(reintento_abierto()->isModal());
        QVERIFY(dicho_en("lblPerdida").contains(QStringLiteral("durante 45 s como mucho")));
        QCOMPARE(dicho_en("lblMotivo"), QStringLiteral("Motivo: nadie escucha"));
        QVERIFY(reintento.sigue(a_los(7'900ms)));
        QCOMPARE(dicho_en("lblDesde"), QStringLiteral("Se intenta desde hace 7 s."));
        reintento.reanudada();
        QVERIFY(reintento_abierto() == nullptr);
        QVERIFY(reintento.sigue(a_los(0ms))); // and shown again when it is lost again
        QVERIFY(reintento_abierto() != nullptr);
    }

    void its_button_or_escape_ends_it_and_what_is_being_keyed_in_does_not()
    {
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue(a_los(300ms)));
        QVERIFY(QTest::qWaitForWindowActive(reintento_abierto(), atipicos::pruebas::paciencia));
        for (const auto tecla : { Qt::Key_Return, Qt::Key_Space, Qt::Key_D })
            QTest::keyClick(reintento_abierto()->windowHandle(), tecla);
        QVERIFY(reintento.sigue(a_los(600ms)));
        QTest::mouseClick(&control<QPushButton>(*reintento_abierto(), "cmdDejar"), Qt::LeftButton);
        QVERIFY(!reintento.sigue(a_los(900ms)));
        QVERIFY(reintento_abierto() == nullptr);
        QVERIFY(!reintento.sigue(a_los(0ms))); // nor does what the same order reads next show it again
        QVERIFY(reintento_abierto() == nullptr);
        da_una_orden();
        QVERIFY(reintento.sigue(a_los(0ms)));
        QTest::keyClick(reintento_abierto(), Qt::Key_Escape);
        QVERIFY(!reintento.sigue(a_los(300ms)));
        reintento.reanudada(); // it was open at the first try
        QVERIFY(reintento.sigue(a_los(0ms)));
        reintento_abierto()->close();
        QVERIFY(!reintento.sigue(a_los(300ms)));
    }

    void it_grows_with_the_reason_and_shows_all_of_it()
    {
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue({ 300ms, 45s, {} }));
        QVERIFY(control<QLabel>(*reintento_abierto(), "lblMotivo").isHidden());
        std::string largo;
        for (int i = 0; i < 60; ++i)
            largo += "no contesta; ";
        QVERIFY(reintento.sigue({ 900ms, 45s, largo }));
        const int alto = reintento_abierto()->height();
        for (const char* nombre : { "lblPerdida", "lblDesde", "lblMotivo" }) {
            const auto& dicho = control<QLabel>(*reintento_abierto(), nombre);
            QVERIFY(dicho.isVisible());
            QVERIFY(dicho.height() >= dicho.heightForWidth(dicho.width()));
            QVERIFY(reintento_abierto()->rect().contains(dicho.geometry()));
        }
        QVERIFY(reintento.sigue(a_los(1'200ms)));
        QVERIFY(reintento_abierto()->height() < alto);
        QCOMPARE(QAccessible::queryAccessibleInterface(&control<QLabel>(*reintento_abierto(), "lblPerdida"))
                     ->role(),
            QAccessible::Notification); // read aloud, which the seconds are not
    }

    void while_an_attempt_is_made_the_windows_answer_and_the_other_ones_take_nothing()
    {
        QPushButton otra;
        otra.show();
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue(a_los(300ms)));
        int veces = 0;
        QTimer reloj;
        reloj.setInterval(10);
        connect(&reloj, &QTimer::timeout, this, [&] { ++veces; });
        reloj.start();
        QVERIFY(reintento.sigue(a_los(600ms)));
        QVERIFY(veces >= 2); // a screen reader asks several times
        QVERIFY(QApplication::activeModalWidget() == reintento_abierto());
    }

    void a_session_of_the_windows_is_given_it_and_tells_others_as_before()
    {
        std::vector<sql::Linea> avisos;
        bases::OpcionesBases opciones{ .avisa_linea = [&](sql::Linea que) { avisos.push_back(que); } };
        app::espera_en_ventana(opciones);
        opciones.avisa_linea(sql::Linea::perdida);
        QVERIFY(opciones.sigue_intentando(a_los(300ms)));
        QVERIFY(reintento_abierto() != nullptr);
        opciones.avisa_linea(sql::Linea::reanudada);
        QVERIFY(reintento_abierto() == nullptr);
        QVERIFY((avisos == std::vector{ sql::Linea::perdida, sql::Linea::reanudada }));
        QVERIFY(!opciones.sigue_intentando({ 45s, 45s, {} }));
        opciones.avisa_linea(sql::Linea::perdida); // says nothing new to who has given up
        QVERIFY(!opciones.sigue_intentando(a_los(300ms)));
        bases::OpcionesBases de_nadie;
        app::espera_en_ventana(de_nadie);
        de_nadie.avisa_linea(sql::Linea::reanudada);
    }

    void the_time_that_it_tells_ends_it()
    {
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue(a_los(44'900ms)));
        QVERIFY(!reintento.sigue(a_los(45'000ms)));
        QVERIFY(reintento_abierto() == nullptr);
    }

    void a_signal_ends_it() // the last one: it stays noted
    {
        const app::Interrupcion interrupcion;
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue(a_los(300ms)));
        std::raise(SIGTERM);
        QVERIFY(!reintento.sigue(a_los(600ms)));
    }
};

ATIPICOS_PRUEBA_VENTANAS(ReintentoEnVentana_Test)
#include "ReintentoEnVentana_test.moc"
