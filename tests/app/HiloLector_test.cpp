#include "host/ventanas/HiloLector.hpp"

#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QTest>

using namespace atipicos;

namespace {

/// Rows of rows of rows: nobody waits for its end.
constexpr auto interminable = "SELECT COUNT(*) AS n FROM Articulos a, Articulos b, Articulos c, Articulos d,"
                              " Articulos e, Articulos f, Articulos g, Articulos h";

}

class HiloLector_Test : public QObject {
    Q_OBJECT
private slots:
    /// Without it this test would never end.
    void whoever_leaves_does_not_wait_for_the_statement_that_is_running()
    {
        const pruebas::CarpetaTemporal carpeta;
        bases::crea_bases(carpeta.ruta(), false);
        std::atomic<bool> empezada = false;
        std::atomic<bool> acabada = false;
        QString fallo;
        {
            app::HiloLector lector(bases::Lugar(carpeta.ruta()), 1, 1);
            connect(&lector, &app::HiloLector::Fallo, this, [&](const QString& motivo) { fallo = motivo; });
            lector.Haz([&](const app::Ambito& ambito, const app::Sigue& /*sigue*/) {
                empezada = true;
                auto rs = ambito.bases.orvalin->CreateRecordset();
                rs->Open(interminable, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
                acabada = true;
            });
            QTRY_VERIFY(empezada.load());
            QTest::qWait(20);
        }
        QVERIFY(!acabada);
        QTest::qWait(1);
        QCOMPARE(fallo, QString()); // nobody is told of what nobody wants
    }
};

ATIPICOS_PRUEBA_VENTANAS(HiloLector_Test)
#include "HiloLector_test.moc"
