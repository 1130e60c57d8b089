#include "controls/OrdenFilas.hpp"
#include "tests/support/Ventanas.hpp"

#include <QStringList>
#include <QTest>

using atipicos::Clase;
using atipicos::orden_de;

Q_DECLARE_METATYPE(atipicos::Clase)

class OrdenFilas_Test : public QObject {
    Q_OBJECT
private slots:
    void orders_cells_by_what_they_are_data()
    {
        QTest::addColumn<Clase>("clase");
        QTest::addColumn<QString>("celdas");
        QTest::addColumn<QString>("subiendo");
        QTest::addColumn<QString>("bajando");
        QTest::newRow("texts") << Clase::texto << QStringLiteral("Zumo|ñora|Nuez||Águila|nata")
                               << QStringLiteral("|Águila|nata|Nuez|ñora|Zumo")
                               << QStringLiteral("Zumo|ñora|Nuez|nata|Águila|");
        QTest::newRow("amounts") << Clase::numero << QStringLiteral("1.234,50|-2,00|9,75||100,00")
                                 << QStringLiteral("|-2,00|9,75|100,00|1.234,50")
                                 << QStringLiteral("1.234,50|100,00|9,75|-2,00|");
        QTest::newRow("rates") << Clase::numero << QStringLiteral("13,50 %|7,00 %|0,00 %")
                               << QStringLiteral("0,00 %|7,00 %|13,50 %")
                               << QStringLiteral("13,50 %|7,00 %|0,00 %");
        QTest::newRow("codes") << Clase::numero << QStringLiteral("10|9|101") << QStringLiteral("9|10|101")
                               << QStringLiteral("101|10|9");
        QTest::newRow("days") << Clase::fecha << QStringLiteral("02/01/2026|31/12/2025|01/02/2026|30/12/1899")
                              << QStringLiteral("30/12/1899|31/12/2025|02/01/2026|01/02/2026")
                              << QStringLiteral("01/02/2026|02/01/2026|31/12/2025|30/12/1899");
    }

    void orders_cells_by_what_they_are()
    {
        QFETCH(const Clase, clase);
        QFETCH(const QString, celdas);
        QFETCH(const QString, subiendo);
        QFETCH(const QString, bajando);
        QCOMPARE(ordenadas(celdas, clase, false), subiendo);
        QCOMPARE(ordenadas(celdas, clase, true), bajando);
    }

    void equal_cells_stay_as_they_were_either_way()
    {
        const std::vector<QString> celdas{ QStringLiteral("7"), QStringLiteral("7,0"),
            QStringLiteral("7,00") };
        const std::vector<std::size_t> igual{ 0, 1, 2 };
        QCOMPARE(orden_de(celdas, Clase::numero, false), igual);
        QCOMPARE(orden_de(celdas, Clase::numero, true), igual);
    }

    void nothing_has_no_order() { QVERIFY(orden_de({}, Clase::texto, false).empty()); }

private:
    static QString ordenadas(const QString& celdas, Clase clase, bool descendente)
    {
        const auto lista = celdas.split(u'|');
        QStringList resultado;
        for (const auto lugar : orden_de({ lista.begin(), lista.end() }, clase, descendente))
            resultado << lista.at(static_cast<qsizetype>(lugar));
        return resultado.join(u'|');
    }
};

ATIPICOS_PRUEBA_VENTANAS(OrdenFilas_Test)
#include "OrdenFilas_test.moc"
