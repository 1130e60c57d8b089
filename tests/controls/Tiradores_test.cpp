#include "controls/Tiradores.hpp"

#include "tests/support/Ventanas.hpp"

#include <QAccessible>
#include <QLabel>
#include <QSizeGrip>
#include <QSplitter>
#include <QTest>

using namespace atipicos;

class Tiradores_Test : public QObject {
    Q_OBJECT
private slots:
    void what_is_dragged_is_read_as_a_separator_and_nothing_else_is()
    {
        lee_tiradores();
        QSplitter partes;
        auto* una = new QLabel(QStringLiteral("Pendiente"), &partes);
        new QLabel(QStringLiteral("Borradores"), &partes);
        QSizeGrip esquina(nullptr);
        const auto leido = [](QObject& objeto) { return QAccessible::queryAccessibleInterface(&objeto); };
        QCOMPARE(leido(*partes.handle(1))->role(), QAccessible::Separator);
        QCOMPARE(leido(*partes.handle(1))->text(QAccessible::Name), QStringLiteral("Reparto del sitio"));
        QCOMPARE(leido(esquina)->role(), QAccessible::Separator);
        QCOMPARE(leido(esquina)->text(QAccessible::Name), QStringLiteral("Tamaño de la ventana"));
        QCOMPARE(leido(partes)->role(), QAccessible::Splitter);
        QCOMPARE(leido(*una)->role(), QAccessible::StaticText);
    }
};

ATIPICOS_PRUEBA_VENTANAS(Tiradores_Test)
#include "Tiradores_test.moc"
