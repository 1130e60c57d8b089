#include "controls/Anclaje.hpp"
#include "controls/Twips.hpp"
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QHeaderView>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// Left and right edge of something in the window.
std::pair<int, int> bordes(const QWidget& control, int desde, int ancho)
{
    const int izquierda = control.mapTo(control.window(), QPoint(desde, 0)).x();
    return { izquierda, izquierda + ancho };
}

struct EscenaAnchos : EscenaEditor {
    EscenaAnchos()
        : EscenaEditor("")
    {
    }

    const Anclaje& anclaje() { return *rejilla().findChild<Anclaje*>(); }

    /// Makes the form so wide that its grid has so many pixels more than at its design size.
    bool ensancha(int gana)
    {
        const int ancho = anclaje().AnchoDeDiseno() + gana;
        form->resize(form->width() + ancho - rejilla().viewport()->width(), form->height());
        return QTest::qWaitFor(
            [&] { return rejilla().viewport()->width() == ancho; }, atipicos::pruebas::paciencia);
    }

    [[nodiscard]] std::vector<int> anchos()
    {
        std::vector<int> todos;
        for (int columna = 0; columna < rejilla().Cols(); ++columna)
            todos.push_back(rejilla().ColWidth(columna));
        return todos;
    }

    /// Which boxes do not stand above their column; empty when all do.
    QString fuera_de_su_columna()
    {
        QString fuera;
        int columna = 0;
        for (const auto* nombre : { "txtArticulo", "txtArticuloDescripcion", "txtObserv", "txtUnidades",
                 "txtCosto", "txtImporte" }) {
            const auto& caja = c<>(nombre);
            const auto [izquierda, derecha] = bordes(caja, 0, caja.width());
            const auto [desde, hasta] = bordes(*rejilla().viewport(),
                rejilla().columnViewportPosition(columna), rejilla().ColWidth(columna));
            if (izquierda != desde || derecha > hasta || derecha < hasta - 4)
                fuera += QStringLiteral("%1 [%2, %3] column [%4, %5] ")
                             .arg(QLatin1String(nombre))
                             .arg(izquierda)
                             .arg(derecha)
                             .arg(desde)
                             .arg(hasta);
            ++columna;
        }
        return fuera;
    }
};

}

class Anchos_Test : public QObject {
    Q_OBJECT
private slots:
    void at_its_design_size_the_columns_have_the_widths_given_for_them()
    {
        EscenaAnchos escena;
        auto twips = [&](int cuantos) { return twips_a_pixeles(cuantos, escena.rejilla()); };
        QVERIFY2(escena.ensancha(0), "the form cannot be made as narrow as it was designed");
        const int importe = escena.rejilla().horizontalHeader()->defaultSectionSize();
        QCOMPARE(escena.anchos(),
            (std::vector<int>{
                twips(1000), twips(2000), twips(1000), twips(1000), twips(1000), importe, 0 }));
        QCOMPARE(escena.anclaje().AnchoDeDiseno(), twips(2000) + 4 * twips(1000) + importe);
    }

    void what_it_is_wider_is_shared_by_description_and_observations_and_given_back()
    {
        EscenaAnchos escena;
        QVERIFY(escena.ensancha(0));
        const auto de_diseno = escena.anchos();
        for (const int gana : { 180, 900, 40, 0 }) {
            QVERIFY(escena.ensancha(gana));
            auto debidos = de_diseno;
            debidos[1] += gana / 2;
            debidos[2] += gana / 2;
            QCOMPARE(escena.anchos(), debidos);
        }
        QVERIFY(escena.form->minimumSizeHint().width() <= escena.form->width());
    }

    void it_opens_wide_enough_for_a_description()
    {
        EscenaAnchos escena;
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1006", "=", "", "1", "1");
        const auto descripcion = escena.rejilla().TextMatrix(1, 1);
        QCOMPARE(descripcion, QStringLiteral("Atún en aceite, lata de 900 g"));
        QVERIFY(
            escena.rejilla().ColWidth(1) > escena.rejilla().fontMetrics().horizontalAdvance(descripcion) + 6);
        QVERIFY(escena.rejilla().ColWidth(1) > twips_a_pixeles(2000, escena.rejilla()));
    }

    void the_entry_boxes_stand_above_their_columns_at_any_width()
    {
        EscenaAnchos escena;
        for (const int gana : { 0, 267, 1300 }) {
            QVERIFY(escena.ensancha(gana));
            QTRY_COMPARE(escena.fuera_de_su_columna(), QString());
        }
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1006", "=", "", "1", "9876543210,5"); // column 5 grows with it
        QVERIFY(escena.rejilla().ColWidth(5) > 0);
        QTRY_COMPARE(escena.fuera_de_su_columna(), QString());
        escena.rejilla().setColumnWidth(3, 120); // by its heading
        QTRY_COMPARE(escena.fuera_de_su_columna(), QString());
    }

    void a_long_code_is_seen_whole_while_it_is_typed()
    {
        EscenaAnchos escena;
        QVERIFY(escena.ensancha(267));
        auto& codigo = control<QLineEdit>(escena.c<>("txtArticulo"), "txtCodigo");
        const auto cabe = [&] {
            return codigo.width() - codigo.textMargins().right()
                >= codigo.fontMetrics().horizontalAdvance(codigo.text()) + 6;
        };
        codigo.setFocus();
        teclea("1234567890");
        QTRY_VERIFY(cabe());
        const auto [izquierda, derecha] = bordes(codigo, 0, codigo.width());
        QTRY_VERIFY(bordes(escena.c<>("txtArticuloDescripcion"), 0, 0).first >= derecha);
        QVERIFY(izquierda >= 0);
        for (const auto* otra : { "txtObserv", "txtUnidades", "txtCosto", "txtImporte" })
            QTRY_VERIFY2(!escena.fuera_de_su_columna().contains(QLatin1String(otra)), otra);
        codigo.clear();
        QTRY_COMPARE(escena.fuera_de_su_columna(), QString());
    }
};

ATIPICOS_PRUEBA_VENTANAS(Anchos_Test)
#include "Anchos_test.moc"
