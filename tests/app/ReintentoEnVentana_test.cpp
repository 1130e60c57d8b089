#include "host/ventanas/ReintentoEnVentana.hpp"

#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLabel>
#include <QPushButton>
#include <QSettings>

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
        QCOMPARE(dicho_en("lblMotivo"), QStringLiteral("nadie escucha"));
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
        for (const auto tecla : { Qt::Key_Return, Qt::Key_Space, Qt::Key_D })
            QTest::keyClick(reintento_abierto(), tecla);
        QVERIFY(reintento.sigue(a_los(600ms)));
        QTest::mouseClick(&control<QPushButton>(*reintento_abierto(), "cmdDejar"), Qt::LeftButton);
        QVERIFY(!reintento.sigue(a_los(900ms)));
        QVERIFY(reintento_abierto() == nullptr);
        QVERIFY(reintento.sigue(a_los(0ms))); // the next operation tries anew
        QTest::keyClick(reintento_abierto(), Qt::Key_Escape);
        QVERIFY(!reintento.sigue(a_los(300ms)));
    }

    void the_time_that_it_tells_ends_it()
    {
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue(a_los(44'900ms)));
        QVERIFY(!reintento.sigue(a_los(45'000ms)));
        QVERIFY(reintento_abierto() == nullptr);
    }
};

ATIPICOS_PRUEBA_VENTANAS(ReintentoEnVentana_Test)
#include "ReintentoEnVentana_test.moc"
