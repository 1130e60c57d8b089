#include "controls/Formulario.hpp"

#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTest>
#include <QVBoxLayout>

using atipicos::Formulario;

class Formulario_Test : public QObject {
    Q_OBJECT
private slots:
    void it_never_opens_larger_than_its_screen()
    {
        Formulario form;
        const QSize libre = form.screen()->availableGeometry().size();
        form.resize(libre * 2);
        form.show();
        const int barra = form.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &form);
        QVERIFY(form.width() <= libre.width());
        QVERIFY2(form.height() <= libre.height() - barra, "the title bar has no room");
        QVERIFY(form.width() > libre.width() * 9 / 10);
        form.hide();
        form.resize(317, 211);
        form.show();
        QCOMPARE(form.size(), QSize(317, 211));
    }

    void it_is_moved_to_where_all_of_it_is_seen_once_it_is_shown()
    {
        const QRect libre = QGuiApplication::primaryScreen()->availableGeometry();
        for (const QPoint& sitio : { QPoint(40, -25), QPoint(-31, 12), QPoint(libre.right() - 7, 60),
                 QPoint(17, libre.bottom() - 90) }) {
            Formulario form;
            form.resize(317, 211);
            form.move(sitio);
            form.show();
            QVERIFY(QTest::qWaitForWindowActive(&form, atipicos::pruebas::paciencia));
            QVERIFY(libre.contains(form.frameGeometry()));
            QVERIFY(form.x() == sitio.x() || form.y() == sitio.y()); // no further than it has to be
            form.move(sitio); // the person's wish
            QTest::qWait(1);
            QVERIFY(!libre.contains(form.frameGeometry()));
        }
    }

    void its_commands_have_icons_that_follow_the_theme()
    {
        Formulario form;
        QPushButton aceptar(&form);
        aceptar.setObjectName(QStringLiteral("cmdAceptar"));
        QPushButton otro(&form);
        otro.setObjectName(QStringLiteral("cmdCobrosAdd"));
        form.show();
        QVERIFY(!aceptar.icon().isNull());
        QVERIFY2(otro.icon().isNull(), "that is no command with a drawing");
        const QPalette de_antes = QApplication::palette();
        for (const QColor& tinta : { QColor(Qt::white), QColor(Qt::darkGreen) }) {
            QPalette paleta = de_antes;
            paleta.setColor(QPalette::ButtonText, tinta);
            QApplication::setPalette(paleta);
            const QImage dibujo = aceptar.icon().pixmap(64, 64).toImage();
            QCOMPARE(dibujo.size(), QSize(64, 64));
            int pintados = 0;
            for (int y = 0; y < 64; ++y)
                for (int x = 0; x < 64; ++x)
                    if (dibujo.pixelColor(x, y).alpha() == 255) {
                        QCOMPARE(dibujo.pixelColor(x, y).rgb(), tinta.rgb());
                        ++pintados;
                    }
            QVERIFY(pintados > 100);
            QCOMPARE(dibujo.pixelColor(1, 1).alpha(), 0);
        }
        QApplication::setPalette(de_antes);
    }

    void the_focus_is_shown_from_the_beginning()
    {
        const Formulario form;
        QVERIFY(form.testAttribute(Qt::WA_KeyboardFocusChange));
    }
};

ATIPICOS_PRUEBA_VENTANAS(Formulario_Test)
#include "Formulario_test.moc"
