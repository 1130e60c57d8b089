#include "editor/frmEditor_Comentarios.hpp"

#include "controls/qvTextoLargo.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QClipboard>
#include <QInputMethodEvent>
#include <QScreen>

using atipicos::frmEditor_Comentarios;
using atipicos::qvTextoLargo;
using namespace atipicos::pruebas;

class frmEditor_Comentarios_Test : public QObject {
    Q_OBJECT

    /// Opens the dialog on `comentario`, lets a person act, and returns it closed.
    static std::unique_ptr<frmEditor_Comentarios> abre(
        const char* comentario, const std::function<void(QWidget&)>& persona)
    {
        auto editor = std::make_unique<frmEditor_Comentarios>();
        editor->set_Comentario(comentario);
        const AlAbrirse al_abrirse(persona);
        editor->exec();
        return editor;
    }

private slots:
    void what_is_typed_becomes_upper_case()
    {
        const auto editor = abre("", [](QWidget&) {
            QCOMPARE(foco(), QStringLiteral("txtComent"));
            teclea("palé ñoño con ß y 3 €");
            pulsa(Qt::Key_F9);
        });
        QVERIFY(editor->Aceptado());
        QCOMPARE(editor->Comentario(), std::string("PALÉ ÑOÑO CON ß Y 3 €"));
    }

    void what_is_composed_becomes_upper_case_too()
    {
        const auto editor = abre("", [](QWidget&) {
            QInputMethodEvent compuesto;
            compuesto.setCommitString(QStringLiteral("é"));
            QApplication::sendEvent(&enfocado(), &compuesto);
            pulsa(Qt::Key_F9);
        });
        QCOMPARE(editor->Comentario(), std::string("É"));
    }

    void what_is_pasted_stays()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("pegado"));
        const auto editor = abre("", [](QWidget&) {
            pulsa(Qt::Key_V, Qt::ControlModifier);
            pulsa(Qt::Key_F9);
        });
        QCOMPARE(editor->Comentario(), std::string("pegado"));
    }

    void quotes_become_accents_on_accept()
    {
        const auto editor = abre("", [](QWidget& dialogo) {
            teclea("d'or y l'aigua");
            clic(dialogo, "cmdAceptar");
        });
        QCOMPARE(editor->Comentario(), std::string("D´OR Y L´AIGUA"));
    }

    void cancelled_it_gives_back_what_it_was_given()
    {
        for (const bool con_escape : { false, true }) {
            const auto editor = abre("con ' comilla", [&](QWidget& dialogo) {
                teclea("otra cosa");
                if (con_escape)
                    pulsa(Qt::Key_Escape);
                else
                    clic(dialogo, "cmdCancelar");
            });
            QVERIFY(!editor->Aceptado());
            QCOMPARE(editor->Comentario(), std::string("con ' comilla"));
        }
    }

    void f9_accepts_an_empty_comment()
    {
        const auto editor = abre("", [](QWidget&) { pulsa(Qt::Key_F9); });
        QVERIFY(editor->Aceptado());
        QCOMPARE(editor->Comentario(), std::string());
    }

    void f9_accepts_from_a_button_too()
    {
        const auto editor = abre("A", [](QWidget& dialogo) {
            pulsa(Qt::Key_Tab);
            pulsa(Qt::Key_Tab);
            QCOMPARE(foco(), QStringLiteral("cmdCancelar"));
            QTest::keyClick(&dialogo, Qt::Key_F9);
        });
        QVERIFY(editor->Aceptado());
    }

    void enter_breaks_the_line_and_tab_leaves_the_box()
    {
        const auto editor = abre("", [](QWidget&) {
            teclea("a");
            intro();
            teclea("b");
            pulsa(Qt::Key_Tab);
            QCOMPARE(foco(), QStringLiteral("cmdAceptar"));
            intro();
        });
        QVERIFY(editor->Aceptado());
        QCOMPARE(editor->Comentario(), std::string("A\nB"));
    }

    void the_comment_is_in_the_box_at_once()
    {
        frmEditor_Comentarios editor;
        editor.set_Comentario("LÍNEA 1\nLÍNEA 2");
        QCOMPARE(
            control<qvTextoLargo>(editor, "txtComent").toPlainText(), QStringLiteral("LÍNEA 1\nLÍNEA 2"));
        QCOMPARE(editor.windowTitle(), QStringLiteral("Editor de Comentarios"));
    }

    void line_breaks_stay_those_of_the_host()
    {
        const auto igual = abre("UNO\r\nDOS", [](QWidget&) { pulsa(Qt::Key_F9); });
        QCOMPARE(igual->Comentario(), std::string("UNO\r\nDOS"));
        const auto otro = abre("UNO\r\nDOS", [](QWidget&) {
            teclea("'");
            intro();
            pulsa(Qt::Key_F9);
        });
        QCOMPARE(otro->Comentario(), std::string("UNO\r\nDOS´\r\n"));
    }

    void shown_again_and_left_it_was_not_accepted()
    {
        for (const bool con_escape : { false, true }) {
            const auto editor = abre("A", [](QWidget&) { pulsa(Qt::Key_F9); });
            QVERIFY(editor->Aceptado());
            {
                const AlAbrirse otra_vez([&](QWidget& dialogo) {
                    QVERIFY(!editor->Aceptado());
                    if (con_escape)
                        pulsa(Qt::Key_Escape);
                    else
                        dialogo.close();
                });
                editor->exec();
            }
            QVERIFY(!editor->Aceptado());
            QCOMPARE(editor->Comentario(), std::string("A"));
        }
    }

    void it_stands_in_the_middle_of_the_screen_when_it_is_loaded_and_stays_where_it_is_put()
    {
        QWidget duena; // in a corner: over it Qt would put the dialog by itself
        duena.setGeometry(0, 0, 200, 150);
        duena.show();
        QVERIFY(QTest::qWaitForWindowActive(&duena, atipicos::pruebas::paciencia));
        frmEditor_Comentarios editor(&duena);
        const auto en_el_centro = [&] {
            const QRect pantalla = editor.screen()->geometry();
            const QRect propio = editor.frameGeometry();
            return std::abs(propio.left() - pantalla.left() - (pantalla.width() - propio.width()) / 2) <= 1
                && std::abs(propio.top() - pantalla.top() - (pantalla.height() - propio.height()) / 2) <= 1;
        };
        editor.show();
        QVERIFY(QTest::qWaitForWindowActive(&editor, atipicos::pruebas::paciencia));
        QVERIFY(en_el_centro());
        editor.move(30, 40);
        editor.hide();
        editor.show();
        QCOMPARE(editor.pos(), QPoint(30, 40));
        editor.close();
        editor.show();
        QVERIFY2(en_el_centro(), "loaded anew");
    }

    void it_can_be_sized()
    {
        abre("", [](QWidget& dialogo) {
            const int alto = control<qvTextoLargo>(dialogo, "txtComent").height();
            dialogo.resize(dialogo.width() + 100, dialogo.height() + 100);
            QCOMPARE(control<qvTextoLargo>(dialogo, "txtComent").height(), alto + 100);
            pulsa(Qt::Key_F9);
        });
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmEditor_Comentarios_Test)
#include "frmEditor_Comentarios_test.moc"
