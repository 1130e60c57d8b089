#include "context/frmMsg.hpp"

#include "context/modMsgOp.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

using atipicos::frmMsg;
namespace modMsgOp = atipicos::modMsgOp;

namespace {

QLabel& etiqueta(QWidget& form) { return *form.findChild<QLabel*>(QStringLiteral("lblMsg")); }

/// As wide as the text in bold 8 point, and 2500 twips.
int ancho_para(const frmMsg& form, const char* texto)
{
    const QFont negrita(QStringLiteral("MS Sans Serif"), 8, QFont::Bold);
    return QFontMetrics(negrita, &form).horizontalAdvance(QString::fromUtf8(texto))
        + qRound(2500.0 / 1440.0 * form.logicalDpiX());
}

/// Counts how often a widget is painted, or any of the program.
class Pintadas : public QObject {
public:
    int cuantas = 0;

    explicit Pintadas(QObject& de) { de.installEventFilter(this); }

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override
    {
        cuantas += evento->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(objeto, evento);
    }
};

/// The wait message on screen, if there is one.
QWidget* en_pantalla()
{
    for (QWidget* ventana : QApplication::topLevelWidgets())
        if (ventana->objectName() == QLatin1String("frmMsg") && ventana->isVisible())
            return ventana;
    return nullptr;
}

}

class frmMsg_Test : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { modMsgOp::Ocultar(); }

    void without_a_message_it_asks_to_wait_and_is_as_wide_as_its_margins()
    {
        frmMsg form;
        form.Show();
        QCOMPARE(etiqueta(form).text(), QStringLiteral("Realizando operación, espere por favor..."));
        QCOMPARE(form.width(), ancho_para(form, ""));
        QVERIFY(!form.findChild<QLabel*>(QStringLiteral("Image1"))->pixmap(Qt::ReturnByValue).isNull());
        QVERIFY(form.testAttribute(Qt::WA_ShowWithoutActivating)); // keys go where they went
    }

    void emptied_it_asks_to_wait_again()
    {
        frmMsg form;
        form.Mensaje = "Leyendo";
        form.Show();
        form.Vacia();
        QCOMPARE(form.Mensaje, std::string());
        QCOMPARE(etiqueta(form).text(), QStringLiteral("Realizando operación, espere por favor..."));
        QCOMPARE(form.width(), ancho_para(form, ""));
    }

    void it_is_as_wide_as_its_message()
    {
        frmMsg form;
        form.Mensaje = "Leyendo";
        form.Show();
        const int alto = form.height();
        QCOMPARE(form.width(), ancho_para(form, "Leyendo"));
        const char* largo = "Leyendo los cargos atípicos de todos los almacenes de la empresa: 1.000.000";
        form.Mensaje = largo;
        form.RefreshMsg();
        QCOMPARE(etiqueta(form).text(), QString::fromUtf8(largo));
        QCOMPARE(form.width(), ancho_para(form, largo));
        QVERIFY(etiqueta(form).width()
            > etiqueta(form).fontMetrics().horizontalAdvance(QString::fromUtf8(largo)));
        form.Mensaje = "Fin";
        form.RefreshMsg();
        QCOMPARE(form.width(), ancho_para(form, "Fin"));
        QCOMPARE(form.height(), alto);
    }

    void the_text_that_asks_to_wait_can_be_read_in_full()
    {
        frmMsg form;
        form.Show();
        const auto& texto = etiqueta(form);
        QVERIFY(texto.heightForWidth(texto.width()) <= texto.height());
    }

    void an_empty_message_leaves_the_text_that_is_there()
    {
        frmMsg form;
        form.Mensaje = "Leyendo";
        form.Show();
        form.Mensaje.clear();
        form.RefreshMsg();
        QCOMPARE(etiqueta(form).text(), QStringLiteral("Leyendo"));
        QCOMPARE(form.width(), ancho_para(form, ""));
    }

    void a_new_text_is_painted_before_the_event_loop_turns()
    {
        frmMsg form;
        form.Show();
        QVERIFY(QTest::qWaitForWindowExposed(&form, atipicos::pruebas::paciencia));
        bool bucle = false;
        QTimer::singleShot(0, &form, [&] { bucle = true; });
        const Pintadas pintadas(etiqueta(form));
        form.Mensaje = "Leyendo 10.000";
        form.RefreshMsg();
        QVERIFY(pintadas.cuantas >= 1);
        QVERIFY(!bucle);
    }

    void the_operation_shows_changes_and_hides_it()
    {
        QVERIFY(en_pantalla() == nullptr);
        {
            const Pintadas de_todo(*qApp);
            modMsgOp::Mostrar("Leyendo");
            QVERIFY2(de_todo.cuantas > 0, "it is painted before the operation begins");
        }
        auto* form = en_pantalla();
        QVERIFY(form != nullptr);
        QCOMPARE(etiqueta(*form).text(), QStringLiteral("Leyendo"));
        modMsgOp::Mostrar("Imprimiendo");
        QCOMPARE(en_pantalla(), form);
        QCOMPARE(etiqueta(*form).text(), QStringLiteral("Imprimiendo"));
        modMsgOp::Mostrar();
        QCOMPARE(en_pantalla(), form);
        const auto& texto = etiqueta(*form);
        QCOMPARE(texto.text(), QStringLiteral("Realizando operación, espere por favor..."));
        QCOMPARE(form->width(), ancho_para(static_cast<frmMsg&>(*form), ""));
        QVERIFY2(texto.heightForWidth(texto.width()) <= texto.height(), "it can be read in full");
        modMsgOp::Mostrar("Leyendo");
        QCOMPARE(texto.text(), QStringLiteral("Leyendo"));
        modMsgOp::Ocultar();
        QVERIFY(en_pantalla() == nullptr);
        modMsgOp::Ocultar();
        modMsgOp::Mostrar();
        QCOMPARE(
            etiqueta(*en_pantalla()).text(), QStringLiteral("Realizando operación, espere por favor..."));
    }

    void it_goes_with_the_window_that_it_was_shown_over()
    {
        {
            QLineEdit ventana;
            ventana.show();
            QVERIFY(QTest::qWaitForWindowActive(&ventana, atipicos::pruebas::paciencia));
            modMsgOp::Mostrar("Leyendo");
            QCOMPARE(en_pantalla()->parentWidget(), &ventana);
        }
        QVERIFY(en_pantalla() == nullptr);
        modMsgOp::Mostrar("Otra vez");
        QVERIFY(en_pantalla() != nullptr);
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmMsg_Test)
#include "frmMsg_test.moc"
