#include "controls/ListaSeleccion.hpp"

#include "controls/VSFlexGrid.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Teclas.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using atipicos::Ficha;
using atipicos::ListaSeleccion;
using atipicos::VSFlexGrid;

namespace {

const std::vector<Ficha> proveedores{ { "12", "Zumos Añaza" }, { "3", "Ñandú Exportaciones" },
    { "204", "Nata y Quesos" }, { "75", "Águilas del Teide" }, { "8", "Ostras Ibáñez" } };

std::vector<Ficha> cinco_mil()
{
    std::vector<Ficha> fichas;
    for (int i = 1; i <= 5000; ++i)
        fichas.push_back({ std::to_string(i), "Proveedor número " + std::to_string(i) });
    return fichas;
}

struct Lista {
    ListaSeleccion ventana;

    explicit Lista(const std::vector<Ficha>& fichas)
        : ventana(QStringLiteral("Buscar el proveedor"), fichas)
    {
        ventana.show();
        if (!QTest::qWaitForWindowActive(&ventana, atipicos::pruebas::paciencia))
            qFatal("the window does not become active");
    }

    void teclea(const char* texto)
    {
        atipicos::pruebas::teclea(ventana.focusWidget(), QString::fromUtf8(texto));
    }
    void pulsa(Qt::Key tecla) { QTest::keyClick(ventana.focusWidget(), tecla); }
    [[nodiscard]] VSFlexGrid& rejilla() const
    {
        return *ventana.findChild<VSFlexGrid*>(QStringLiteral("vsLista"));
    }
    [[nodiscard]] QLineEdit& filtro() const
    {
        return *ventana.findChild<QLineEdit*>(QStringLiteral("txtFiltro"));
    }

    [[nodiscard]] QString elegida() const { return ventana.elegida(); }
    [[nodiscard]] QString codigos() const
    {
        QStringList codigos;
        for (int fila = 1; fila < rejilla().Rows(); ++fila)
            codigos << rejilla().TextMatrix(fila, 0);
        return codigos.join(u' ');
    }
    [[nodiscard]] bool dice(const QString& texto) const
    {
        const auto etiquetas = ventana.findChildren<QLabel*>();
        return std::any_of(etiquetas.begin(), etiquetas.end(),
            [&](const QLabel* etiqueta) { return etiqueta->text() == texto; });
    }
};

}

class ListaSeleccion_Test : public QObject {
    Q_OBJECT
private slots:
    void shows_all_in_spanish_order_with_the_first_chosen()
    {
        const Lista lista(proveedores);
        QCOMPARE(lista.codigos(), QStringLiteral("75 204 3 8 12"));
        QCOMPARE(lista.elegida(), QStringLiteral("75"));
        QVERIFY(lista.dice(QStringLiteral("5 de 5")));
        QVERIFY(lista.filtro().hasFocus());
    }

    void narrows_as_one_types_whatever_the_case_and_the_accents_data()
    {
        QTest::addColumn<QString>("teclas");
        QTest::addColumn<QString>("codigos");
        QTest::newRow("no accents") << QStringLiteral("nandu") << QStringLiteral("3");
        QTest::newRow("upper case") << QStringLiteral("ÑANDÚ") << QStringLiteral("3");
        QTest::newRow("inside a word") << QStringLiteral("BÁÑ") << QStringLiteral("8");
        QTest::newRow("two words in any order") << QStringLiteral(" teide  aguil ") << QStringLiteral("75");
        QTest::newRow("code") << QStringLiteral("20") << QStringLiteral("204");
        QTest::newRow("code and name") << QStringLiteral("2 na") << QStringLiteral("204 12");
        QTest::newRow("none") << QStringLiteral("xyz") << QString();
        QTest::newRow("a character of patterns") << QStringLiteral("*") << QString();
    }

    void narrows_as_one_types_whatever_the_case_and_the_accents()
    {
        QFETCH(const QString, teclas);
        QFETCH(const QString, codigos);
        Lista lista(proveedores);
        lista.teclea(teclas.toUtf8().constData());
        QCOMPARE(lista.codigos(), codigos);
        QCOMPARE(lista.elegida(), codigos.section(u' ', 0, 0));
    }

    void arrows_move_in_the_list_while_one_types()
    {
        Lista lista(proveedores);
        lista.pulsa(Qt::Key_Down);
        lista.pulsa(Qt::Key_Down);
        QCOMPARE(lista.elegida(), QStringLiteral("3"));
        lista.pulsa(Qt::Key_Up);
        QCOMPARE(lista.elegida(), QStringLiteral("204"));
        QVERIFY(lista.filtro().hasFocus());
        lista.teclea("ex");
        QCOMPARE(lista.elegida(), QStringLiteral("3"));
    }

    void shows_and_finds_what_a_ficha_tells_beside_its_name()
    {
        const std::vector<Ficha> dos{ { "7", "Quesos Teno", { "B38111222", "Buenavista" } },
            { "5", "Quesos Teno", { "A35000777", "Agüimes" } }, { "9", "Sal" } };
        ListaSeleccion ventana(QStringLiteral("Buscar el proveedor"), dos,
            { QStringLiteral("NIF"), QStringLiteral("Población") });
        auto& rejilla = *ventana.findChild<VSFlexGrid*>(QStringLiteral("vsLista"));
        QCOMPARE(rejilla.Cols(), 4);
        QCOMPARE(rejilla.TextMatrix(0, 2) + rejilla.TextMatrix(0, 3), QStringLiteral("NIFPoblación"));
        QCOMPARE(rejilla.TextMatrix(1, 2), QStringLiteral("B38111222"));
        QCOMPARE(rejilla.TextMatrix(3, 3), QString());
        auto& filtro = *ventana.findChild<QLineEdit*>(QStringLiteral("txtFiltro"));
        filtro.setText(QStringLiteral("teno aguim"));
        QCOMPARE(ventana.elegida(), QStringLiteral("5"));
        filtro.setText(QStringLiteral("b381"));
        QCOMPARE(ventana.elegida(), QStringLiteral("7"));
    }

    void enter_chooses_and_escape_gives_up()
    {
        for (const auto& [tecla, resultado] :
            { std::pair{ Qt::Key_Return, int{ QDialog::Accepted } },
                { Qt::Key_Enter, int{ QDialog::Accepted } }, { Qt::Key_Escape, int{ QDialog::Rejected } } }) {
            Lista lista(proveedores);
            lista.pulsa(Qt::Key_Down);
            lista.pulsa(tecla);
            QVERIFY(!lista.ventana.isVisible());
            QCOMPARE(lista.ventana.result(), resultado);
        }
    }

    void a_double_click_chooses_its_row()
    {
        Lista lista(proveedores);
        const auto celda = lista.rejilla().visualRect(lista.rejilla().model()->index(3, 1)).center();
        QTest::mouseClick(lista.rejilla().viewport(), Qt::LeftButton, {}, celda);
        QTest::mouseDClick(lista.rejilla().viewport(), Qt::LeftButton, {}, celda);
        QCOMPARE(lista.ventana.result(), int{ QDialog::Accepted });
        QCOMPARE(lista.elegida(), QStringLiteral("8"));
    }

    void an_empty_list_offers_nothing()
    {
        Lista lista(std::vector<Ficha>{});
        QCOMPARE(lista.elegida(), QString());
        lista.pulsa(Qt::Key_Down);
        lista.pulsa(Qt::Key_Return);
        QCOMPARE(lista.elegida(), QString());
    }

    void five_thousand_rows_narrow_at_each_key()
    {
        Lista lista(cinco_mil());
        QVERIFY(lista.dice(QStringLiteral("5.000 de 5.000")));
        lista.teclea("4");
        QVERIFY(lista.dice(QStringLiteral("2.084 de 5.000")));
        lista.teclea("999");
        QCOMPARE(lista.codigos(), QStringLiteral("4999"));
        for (int i = 0; i < 4; ++i)
            lista.pulsa(Qt::Key_Backspace);
        QCOMPARE(lista.rejilla().Rows(), 5001);
        lista.pulsa(Qt::Key_PageDown);
        QVERIFY(lista.rejilla().Row() > 5);
    }

    void a_tab_in_a_name_stays_inside_its_cell()
    {
        const Lista lista(std::vector<Ficha>{ { "1", "Uno\tdos" } });
        QCOMPARE(lista.rejilla().TextMatrix(1, 1), QStringLiteral("Uno dos"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(ListaSeleccion_Test)
#include "ListaSeleccion_test.moc"
