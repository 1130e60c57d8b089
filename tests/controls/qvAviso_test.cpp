#include "controls/qvAviso.hpp"

#include "tests/support/Contraste.hpp"
#include "tests/support/Ventanas.hpp"

#include <QApplication>
#include <QTest>

using atipicos::qvAviso;
using atipicos::pruebas::contraste;

class qvAviso_Test : public QObject {
    Q_OBJECT
private slots:
    void what_is_wrong_is_its_name()
    {
        qvAviso aviso;
        aviso.set_Aviso(QStringLiteral("No existe el día 31/02/2027."));
        QCOMPARE(aviso.text(), QStringLiteral("No existe el día 31/02/2027."));
        QCOMPARE(aviso.accessibleName(), aviso.text());
        aviso.set_Aviso({});
        QCOMPARE(aviso.text(), QString());
        QCOMPARE(aviso.accessibleName(), QString());
    }

    void it_can_be_read_in_every_theme_also_when_that_changes()
    {
        const QPalette propia = QApplication::palette();
        qvAviso aviso;
        aviso.set_Aviso(QStringLiteral("No existe el artículo"));
        aviso.show();
        for (const QColor& fondo : { QColor(0x1d, 0x1f, 0x23), QColor(Qt::white), QColor(0x31, 0x35, 0x3b),
                 QColor(0xf3, 0xf4, 0xf6) }) {
            QPalette tema(fondo);
            tema.setColor(QPalette::Base, fondo);
            QApplication::setPalette(tema);
            QCoreApplication::processEvents();
            const auto tinta = aviso.palette().color(QPalette::WindowText);
            QVERIFY2(contraste(tinta, fondo) >= 4.5, qPrintable(tinta.name() + u' ' + fondo.name()));
        }
        QApplication::setPalette(propia);
    }

    void it_does_not_widen_what_is_around_it()
    {
        qvAviso aviso;
        aviso.set_Aviso(QString(500, u'x'));
        QCOMPARE(aviso.sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
    }
};

ATIPICOS_PRUEBA_VENTANAS(qvAviso_Test)
#include "qvAviso_test.moc"
