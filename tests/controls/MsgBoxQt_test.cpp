#include "controls/MsgBoxQt.hpp"

#include "tests/support/Dialogo.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAbstractButton>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using atipicos::Botones;
using atipicos::Icono;
using atipicos::Mensaje;
using atipicos::MsgBoxQt;
using atipicos::Respuesta;

namespace {

/// Shows the true box, does `mientras` with it, and gives the answer; none when `mientras` did not end it.
std::optional<Respuesta> muestra(const Mensaje& mensaje, const std::function<void(QMessageBox&)>& mientras)
{
    std::optional<Respuesta> respuesta;
    const bool terminada = atipicos::pruebas::con_dialogo<QMessageBox>(
        [&] { respuesta = MsgBoxQt().mostrar(mensaje); }, mientras);
    return terminada ? respuesta : std::nullopt;
}

std::function<void(QMessageBox&)> pulsando(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
{
    return [tecla, con](QMessageBox& caja) { QTest::keyClick(caja.focusWidget(), tecla, con); };
}

QStringList captions(const QMessageBox& caja)
{
    QStringList textos;
    for (const auto* boton : caja.buttons())
        textos << boton->text();
    textos.sort();
    return textos;
}

Mensaje pregunta(Respuesta por_defecto)
{
    return { "¿Desea Continuar?", "¡ Atención !", Icono::pregunta, Botones::SiNo, por_defecto };
}

struct CasoIcono {
    Icono icono;
    QMessageBox::Icon esperado;
};

}

class MsgBoxQt_Test : public QObject {
    Q_OBJECT
private slots:
    void a_notice_says_its_text_under_its_title_with_its_icon()
    {
        for (const auto& [icono, esperado] : { CasoIcono{ Icono::critico, QMessageBox::Critical },
                 { Icono::exclamacion, QMessageBox::Warning },
                 { Icono::informacion, QMessageBox::Information } }) {
            const auto respuesta = muestra({ "[12] Desbordamiento", "clsAtipico:Insertar", icono },
                [esperado = esperado](QMessageBox& caja) {
                    QCOMPARE(caja.icon(), esperado);
                    QCOMPARE(caja.windowTitle(), QStringLiteral("clsAtipico:Insertar"));
                    QCOMPARE(caja.text(), QStringLiteral("[12] Desbordamiento"));
                    QCOMPARE(captions(caja), QStringList{ QStringLiteral("&Aceptar") });
                    QTest::keyClick(caja.focusWidget(), Qt::Key_Return);
                });
            QVERIFY(respuesta == Respuesta::Aceptar);
        }
    }

    void a_notice_is_ended_by_escape_and_space_and_click()
    {
        const Mensaje aviso{ "Hecho", "¡ Atención !" };
        QVERIFY(muestra(aviso, pulsando(Qt::Key_Escape)) == Respuesta::Aceptar);
        QVERIFY(muestra(aviso, pulsando(Qt::Key_Space)) == Respuesta::Aceptar);
        QVERIFY(muestra(aviso, [](QMessageBox& caja) {
            QTest::mouseClick(caja.buttons().first(), Qt::LeftButton);
        }) == Respuesta::Aceptar);
    }

    void a_question_offers_si_and_no_with_the_default_under_the_focus()
    {
        for (const auto por_defecto : { Respuesta::Si, Respuesta::No }) {
            const auto respuesta = muestra(pregunta(por_defecto), [por_defecto](QMessageBox& caja) {
                const QString caption
                    = por_defecto == Respuesta::Si ? QStringLiteral("&Sí") : QStringLiteral("&No");
                QCOMPARE(caja.icon(), QMessageBox::Question);
                QCOMPARE(captions(caja), QStringList({ QStringLiteral("&No"), QStringLiteral("&Sí") }));
                QCOMPARE(caja.defaultButton()->text(), caption);
                QVERIFY(caja.defaultButton()->hasFocus());
                QTest::keyClick(caja.focusWidget(), Qt::Key_Return);
            });
            QVERIFY(respuesta == por_defecto);
        }
    }

    void a_question_is_answered_by_its_mnemonics()
    {
        QVERIFY(muestra(pregunta(Respuesta::No), pulsando(Qt::Key_S, Qt::AltModifier)) == Respuesta::Si);
        QVERIFY(muestra(pregunta(Respuesta::Si), pulsando(Qt::Key_N, Qt::AltModifier)) == Respuesta::No);
    }

    void escape_and_the_close_box_answer_no()
    {
        QVERIFY(muestra(pregunta(Respuesta::Si), pulsando(Qt::Key_Escape)) == Respuesta::No);
        QVERIFY(muestra(pregunta(Respuesta::Si), [](QMessageBox& caja) { caja.close(); }) == Respuesta::No);
    }

    void under_an_error_of_the_language_stands_what_it_means()
    {
        for (const auto& [texto, debido] :
            { std::pair{
                  "[104] Desbordamiento", "Un número es demasiado grande. Revise los que acaba de teclear." },
                { "[9] Otra cosa", "" } }) {
            const auto respuesta = muestra(
                { texto, "frmX:y", Icono::critico }, [&, texto = texto, debido = debido](QMessageBox& caja) {
                    QCOMPARE(caja.text(), QString::fromUtf8(texto));
                    QCOMPARE(caja.informativeText(), QString::fromUtf8(debido));
                    QTest::keyClick(caja.focusWidget(), Qt::Key_Return);
                });
            QVERIFY(respuesta == Respuesta::Aceptar);
        }
    }

    void its_title_is_not_cut()
    {
        const Mensaje mensaje{ "[104] Error", "frmCompras_Atipicos_Visor:txtFechaF_KeyPress",
            Icono::critico };
        const auto respuesta = muestra(mensaje, [](QMessageBox& caja) {
            QFont negrita = caja.font();
            negrita.setBold(true);
            QVERIFY(caja.width() > QFontMetrics(negrita).horizontalAdvance(caja.windowTitle()) + 100);
            QTest::keyClick(caja.focusWidget(), Qt::Key_Return);
        });
        QVERIFY(respuesta == Respuesta::Aceptar);
    }

    void lines_break_and_markup_is_text()
    {
        const Mensaje mensaje{ "uno\r\n\r\ndos\rtres <b>4</b> & 5", "título <i>" };
        const auto respuesta = muestra(mensaje, [](QMessageBox& caja) {
            QCOMPARE(caja.text(), QStringLiteral("uno\n\ndos\ntres <b>4</b> & 5"));
            QCOMPARE(caja.textFormat(), Qt::PlainText);
            QCOMPARE(caja.windowTitle(), QStringLiteral("título <i>"));
            QTest::keyClick(caja.focusWidget(), Qt::Key_Return);
        });
        QVERIFY(respuesta == Respuesta::Aceptar);
    }

    void the_text_can_be_selected()
    {
        const auto respuesta = muestra({ "Asiento: 12", "¡ Atención !" }, [](QMessageBox& caja) {
            auto* etiqueta = caja.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
            QVERIFY(etiqueta != nullptr);
            QTest::mouseDClick(etiqueta, Qt::LeftButton, {}, QPoint(5, etiqueta->height() / 2));
            QCOMPARE(etiqueta->selectedText(), QStringLiteral("Asiento"));
            QTest::keyClick(&caja, Qt::Key_Return);
        });
        QVERIFY(respuesta == Respuesta::Aceptar);
    }

    void it_stands_over_the_window_the_person_is_in()
    {
        QWidget ventana;
        ventana.show();
        QVERIFY(QTest::qWaitForWindowActive(&ventana, atipicos::pruebas::paciencia));
        QWidget* encima = nullptr;
        const auto respuesta = muestra({ "Hecho", "¡ Atención !" }, [&](QMessageBox& caja) {
            encima = caja.parentWidget();
            QTest::keyClick(caja.focusWidget(), Qt::Key_Return);
        });
        QVERIFY(respuesta.has_value());
        QCOMPARE(encima, &ventana);
    }
};

ATIPICOS_PRUEBA_VENTANAS(MsgBoxQt_Test)
#include "MsgBoxQt_test.moc"
