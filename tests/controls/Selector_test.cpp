#include "tests/controls/CajaDeFicha.hpp"
#include "tests/support/Contraste.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using namespace atipicos::pruebas;

class Selector_Test : public QObject {
    Q_OBJECT
private slots:
    void enter_shows_the_name_of_the_code()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.teclea_e_intro("103");
        QCOMPARE(caja.rotulo(), QStringLiteral("Ñandú Exportaciones, S.L."));
        QCOMPARE(caja.control->Nombre(), caja.rotulo());
        QCOMPARE(caja.control->Codigo(), 103);
        QVERIFY(caja.control->Elegido());
        QCOMPARE(caja.intros.count(), 1);
    }

    void leading_zeros_do_not_matter()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.teclea_e_intro("00104");
        QCOMPARE(caja.control->Codigo(), 104);
        QCOMPARE(caja.control->Nombre(), QStringLiteral("Conservas La Graciosa, S.A."));
    }

    void that_a_code_does_not_exist_is_said_in_two_words_where_there_is_no_room()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.resize(caja.minimumSizeHint().width(), caja.height());
        caja.teclea_e_intro("7");
        QCOMPARE(caja.rotulo(), QStringLiteral("No existe"));
        QCOMPARE(caja.codigo().toolTip(), QStringLiteral("No existe el proveedor"));
        const auto& etiqueta = *caja.control->findChild<QLineEdit*>(QStringLiteral("lblNombre"));
        QVERIFY(etiqueta.fontMetrics().horizontalAdvance(etiqueta.text()) + 4 <= etiqueta.width());
        caja.resize(420, caja.height());
        QTRY_COMPARE(caja.rotulo(), QStringLiteral("No existe el proveedor"));
    }

    void what_it_says_can_be_read_before_and_after_a_change_of_theme()
    {
        const Banco banco;
        CajaDeProveedor caja;
        const auto lee = [](const QLineEdit& texto, QPalette::ColorRole fondo) {
            return contraste(texto.palette().color(QPalette::Text), qApp->palette().color(fondo));
        };
        const auto& etiqueta = *caja.control->findChild<QLineEdit*>(QStringLiteral("lblNombre"));
        const QPalette de_antes = QApplication::palette();
        QPalette oscura(QColor(0x43, 0x48, 0x50), QColor(0x31, 0x35, 0x3b));
        oscura.setColor(QPalette::Base, QColor(0x1d, 0x1f, 0x23));
        oscura.setColor(QPalette::Text, Qt::white);
        QPalette clara(QColor(0xe8, 0xea, 0xee), QColor(0xf3, 0xf4, 0xf6));
        for (const auto& [escrito, mal] : { std::pair{ "104", false }, { "7", true } }) {
            caja.codigo().selectAll();
            caja.teclea_e_intro(escrito);
            for (const auto* tema : { &oscura, &clara, &oscura }) {
                QApplication::setPalette(*tema);
                QTRY_VERIFY(lee(caja.codigo(), QPalette::Base) >= 4.5);
                QTRY_VERIFY(lee(etiqueta, QPalette::Window) >= 4.5);

                const auto rojo = [&] {
                    const auto color = caja.codigo().palette().color(QPalette::Text);
                    return color.red() > color.blue() + 50;
                };
                QTRY_COMPARE(rojo(), mal);
            }
        }
        QApplication::setPalette(de_antes);
    }

    void a_code_that_does_not_exist_is_shown_as_such()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.resize(420, caja.height()); // where there is no room it is said in two words
        caja.teclea_e_intro("7");
        QCOMPARE(caja.rotulo(), QStringLiteral("No existe el proveedor"));
        QCOMPARE(caja.codigo().accessibleDescription(), caja.rotulo());
        QCOMPARE(caja.control->Nombre(), QString());
        QCOMPARE(caja.control->Codigo(), 7);
        QVERIFY(!caja.control->Elegido());
        QCOMPARE(caja.intros.count(), 1);
        QCOMPARE(caja.codigo().selectedText(), QStringLiteral("7")); // another one takes its place
        const auto vuelve = [&] { // as from behind a box that said it
            caja.codigo().deselect();
            QFocusEvent entrada(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
            QCoreApplication::sendEvent(&caja.codigo(), &entrada);
            return caja.codigo().selectedText();
        };
        QCOMPARE(vuelve(), QStringLiteral("7"));
        caja.codigo().selectAll();
        caja.teclea_e_intro("104");
        QCOMPARE(vuelve(), QString()); // a person's own is not
        QCOMPARE(caja.rotulo(), QStringLiteral("Conservas La Graciosa, S.A."));
        QCOMPARE(caja.codigo().accessibleDescription(), QString());
    }

    void enter_in_an_empty_box_asks_nothing()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.pulsa(Qt::Key_Enter);
        QCOMPARE(caja.intros.count(), 1);
        QCOMPARE(caja.rotulo(), QString());
        QVERIFY(caja.control->vacio());
        QVERIFY(!caja.control->Elegido());
        QVERIFY(banco.parte->dichas.empty());
    }

    void leaving_the_box_looks_up_what_was_typed_and_nothing_else()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.teclea(QStringLiteral("103"));
        QCOMPARE(caja.rotulo(), QString());
        caja.sale();
        QCOMPARE(caja.rotulo(), QStringLiteral("Ñandú Exportaciones, S.L."));
        QCOMPARE(caja.intros.count(), 0);
        QCOMPARE(banco.parte->dichas.size(), std::size_t{ 1 });
        caja.entra();
        caja.sale();
        QCOMPARE(banco.parte->dichas.size(), std::size_t{ 1 });
    }

    void typing_again_takes_the_name_away()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.teclea_e_intro("10");
        caja.teclea(QStringLiteral("3"));
        QCOMPARE(caja.rotulo(), QString());
        caja.pulsa(Qt::Key_Return);
        caja.pulsa(Qt::Key_Backspace);
        QCOMPARE(caja.control->Nombre(), QString());
        QVERIFY(!caja.control->Elegido());
    }

    void no_more_can_be_typed_than_fits()
    {
        const Banco banco;
        CajaDeAlmacen corto;
        corto.teclea(QStringLiteral("3x-2768"));
        QCOMPARE(corto.codigo().text(), QStringLiteral("3276"));
        corto.codigo().selectAll();
        corto.teclea(QStringLiteral("32767"));
        QCOMPARE(corto.control->Codigo(), std::int16_t{ 32767 });
        corto.codigo().selectAll();
        corto.pega(QStringLiteral("65537"));
        QCOMPARE(corto.control->Codigo(), std::int16_t{ 32767 });
        CajaDeProveedor largo;
        largo.teclea(QStringLiteral("2147483648"));
        QCOMPARE(largo.codigo().text(), QStringLiteral("214748364"));
        largo.teclea(QStringLiteral("7"));
        QCOMPARE(largo.control->Codigo(), std::numeric_limits<std::int32_t>::max());
    }

    void a_code_is_pasted_as_it_stands_elsewhere()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.pega(QStringLiteral(" 104\n"));
        caja.pulsa(Qt::Key_Return);
        QCOMPARE(caja.control->Codigo(), 104);
        caja.codigo().selectAll();
        caja.pega(QStringLiteral("Conservas"));
        QCOMPARE(caja.control->Codigo(), 104);
    }

    void a_code_set_by_the_program_counts_as_chosen_and_is_named_when_asked()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.control->set_Codigo(104);
        QVERIFY(caja.control->Elegido());
        QCOMPARE(caja.rotulo(), QString());
        QVERIFY(caja.control->Buscar());
        QCOMPARE(caja.rotulo(), QStringLiteral("Conservas La Graciosa, S.A."));
        caja.control->set_Codigo(0);
        QVERIFY(caja.control->vacio());
        QVERIFY(!caja.control->Elegido());
        QCOMPARE(caja.rotulo(), QString());
        QVERIFY(!caja.control->Buscar());
    }

    void f2_picks_by_name_with_keys_alone()
    {
        const Banco banco;
        CajaDeProveedor caja;
        QVERIFY(caja.con_lista([](ListaSeleccion& lista) {
            QCOMPARE(lista.windowTitle(), QStringLiteral("Buscar el proveedor"));
            QTest::keyClicks(lista.focusWidget(), QStringLiteral("quesEria"));
            QTest::keyClick(lista.focusWidget(), Qt::Key_Return);
        }));
        QCOMPARE(caja.control->Codigo(), 106);
        QCOMPARE(caja.rotulo(), QStringLiteral("Quesería Majorera Tiscamanita"));
        QCOMPARE(caja.intros.count(), 1);
        QVERIFY(caja.control->Elegido());
        QCOMPARE(caja.focusWidget(), &caja.codigo());
    }

    void a_letter_in_place_of_a_code_is_the_beginning_of_a_name()
    {
        const Banco banco;
        CajaDeProveedor caja;
        const auto escribe = [&](Qt::Key letra, Qt::KeyboardModifiers con) {
            return [&caja, letra, con] { QTest::keyClick(&caja.codigo(), letra, con); };
        };
        QVERIFY(pruebas::con_dialogo<ListaSeleccion>(
            escribe(Qt::Key_Q, Qt::ShiftModifier), tecleando("uesería", Qt::Key_Return)));
        QCOMPARE(caja.control->Codigo(), 106);
        QCOMPARE(caja.intros.count(), 1);
        caja.codigo().selectAll(); // as a new code would be typed over it
        QVERIFY(pruebas::con_dialogo<ListaSeleccion>(
            escribe(Qt::Key_T, Qt::NoModifier), [](ListaSeleccion& lista) {
                QCOMPARE(
                    lista.findChild<QLineEdit*>(QStringLiteral("txtFiltro"))->text(), QStringLiteral("t"));
                tecleando("imple", Qt::Key_Return)(lista);
            }));
        QCOMPARE(caja.control->Codigo(), 113);
    }

    void a_letter_behind_digits_or_with_another_key_is_nothing()
    {
        const Banco banco;
        CajaDeProveedor caja;
        const auto letra = [&](Qt::KeyboardModifiers con = Qt::NoModifier) {
            return sin_dialogo([&] { QTest::keyClick(&caja.codigo(), Qt::Key_T, con); });
        };
        QVERIFY(letra(Qt::ControlModifier));
        QVERIFY(letra(Qt::AltModifier));
        caja.teclea(QStringLiteral("10"));
        QVERIFY(letra());
        caja.teclea(QStringLiteral("4"));
        caja.pulsa(Qt::Key_Return);
        QCOMPARE(caja.rotulo(), QStringLiteral("Conservas La Graciosa, S.A."));
        caja.codigo().selectAll();
        caja.control->set_SoloLectura(true);
        QVERIFY(letra());
        QCOMPARE(caja.control->Codigo(), 104);
    }

    void giving_the_list_up_leaves_the_box_as_it_was()
    {
        const Banco banco;
        CajaDeProveedor caja;
        caja.teclea(QStringLiteral("103"));
        QVERIFY(caja.con_lista(tecleando("quesería", Qt::Key_Escape)));
        QVERIFY(caja.con_lista(tecleando("no hay tal cosa", Qt::Key_Return)));
        QCOMPARE(caja.control->Codigo(), 103);
        QCOMPARE(caja.intros.count(), 0);
        caja.sale(); // and what was typed is still looked up
        QCOMPARE(caja.rotulo(), QStringLiteral("Ñandú Exportaciones, S.L."));
    }

    void the_button_opens_the_list_too()
    {
        const Banco banco;
        CajaDeProveedor caja;
        QVERIFY(pruebas::con_dialogo<ListaSeleccion>(
            [&] { QTest::mouseClick(&caja.boton(), Qt::LeftButton); }, tecleando("timple", Qt::Key_Return)));
        QCOMPARE(caja.control->Codigo(), 113);
    }

    void a_code_put_in_behind_another_window_is_replaced_by_the_next_that_is_typed()
    {
        const Banco banco;
        CajaDeAlmacen caja;
        caja.sale();
        QWidget delante;
        const auto pon_delante = [&delante] {
            delante.show();
            delante.activateWindow();
            return QTest::qWaitForWindowActive(&delante, atipicos::pruebas::paciencia);
        };
        const auto quita_de_delante = [&] {
            delante.hide();
            caja.activateWindow();
            return QTest::qWaitForWindowActive(&caja, atipicos::pruebas::paciencia);
        };
        QVERIFY(pon_delante());
        caja.control->set_Codigo(1);
        caja.entra();
        QVERIFY(quita_de_delante());
        caja.teclea(QStringLiteral("3"));
        QCOMPARE(caja.codigo().text(), QStringLiteral("3"));
        QVERIFY(pon_delante()); // what the person has typed is not the program's
        QVERIFY(quita_de_delante());
        caja.teclea(QStringLiteral("2"));
        QCOMPARE(caja.codigo().text(), QStringLiteral("32"));
    }

    void a_disabled_picker_shows_its_name_and_takes_nothing()
    {
        const Banco banco;
        CajaDeAlmacen caja;
        caja.control->set_Codigo(3);
        caja.control->Buscar();
        caja.control->setEnabled(false);
        QCOMPARE(caja.rotulo(), QStringLiteral("Arrecife"));
        QTest::keyClicks(&caja.codigo(), QStringLiteral("1"));
        QTest::keyClick(&caja.codigo(), Qt::Key_F2);
        QTest::mouseClick(&caja.boton(), Qt::LeftButton);
        QCOMPARE(caja.control->Codigo(), std::int16_t{ 3 });
        QCOMPARE(banco.parte->dichas.size(), std::size_t{ 1 });
    }

    void a_picker_to_be_read_only_takes_nothing()
    {
        const Banco banco;
        CajaDeAlmacen caja;
        caja.control->set_Codigo(3);
        caja.control->Buscar();
        caja.control->set_SoloLectura(true);
        caja.teclea(QStringLiteral("1"));
        caja.pulsa(Qt::Key_F2);
        caja.pulsa(Qt::Key_Return);
        QVERIFY(!caja.boton().isVisible());
        QCOMPARE(caja.codigo().text(), QStringLiteral("3"));
        QCOMPARE(caja.rotulo(), QStringLiteral("Arrecife"));
        QCOMPARE(caja.intros.count(), 0);
        QCOMPARE(banco.parte->dichas.size(), std::size_t{ 1 });
    }

    void a_picker_that_was_given_nothing_is_quiet()
    {
        const Banco banco;
        CajaDeFicha<qvAlmacen> caja;
        caja.teclea_e_intro("1");
        caja.pulsa(Qt::Key_F2);
        QCOMPARE(caja.rotulo(), QString());
        QVERIFY(!caja.control->Elegido());
        QVERIFY(banco.titulos().empty());
    }
};

ATIPICOS_PRUEBA_VENTANAS(Selector_Test)
#include "Selector_test.moc"
