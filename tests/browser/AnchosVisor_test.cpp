#include "controls/qvProveedor.hpp"
#include "controls/Twips.hpp"
#include "tests/browser/EscenaVisor.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QHeaderView>
#include <set>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// A host that tells the forecasts of charges, of which there are none.
struct SinPrevisiones final : qvoremp::PrevisionesCargo {
    std::vector<qvoremp::PrevisionCargo> lee(
        std::int16_t, std::int16_t, const std::string&, Donde) const override
    {
        return {};
    }
};

struct EscenaAnchosVisor : EscenaVisor {
    EscenaAnchosVisor() { abre("02/10/2026", "28/11/2026"); }

    bool ensancha(int ancho)
    {
        form.resize(ancho, form.height());
        return QTest::qWaitFor([&] { return form.width() == ancho; }, atipicos::pruebas::paciencia);
    }

    [[nodiscard]] std::pair<int, int> selectores()
    {
        return { c<>("txtAlmacen").width(), c<>("txtProveedor").width() };
    }
};

}

class AnchosVisor_Test : public QObject {
    Q_OBJECT
private slots:
    void at_its_design_size_both_pickers_are_3000_twips_wide()
    {
        EscenaAnchosVisor escena;
        const int debido = twips_a_pixeles(3000, escena.form);
        const int de_diseno = escena.form.minimumSizeHint().width();
        QVERIFY(escena.ensancha(de_diseno));
        QTRY_COMPARE(escena.selectores(), (std::pair{ debido, debido }));
        for (const int gana : { 240, 700, 0 }) {
            QVERIFY(escena.ensancha(de_diseno + gana));
            QTRY_COMPARE(escena.selectores(), (std::pair{ debido + gana / 2, debido + gana / 2 }));
        }
    }

    void no_heading_is_cut_on_a_small_screen()
    {
        EscenaAnchosVisor escena;
        QVERIFY(escena.ensancha(952)); // 1920 by 1080, everything twice as large
        const auto& lista = escena.c<VSFlexGrid>("vsCab");
        const auto& cabecera = *lista.horizontalHeader();
        const int necesita = cabecera.fontMetrics().horizontalAdvance(lista.TextMatrix(0, 12)) + 4;
        QTRY_VERIFY(lista.columnWidth(12) >= necesita);
        QCOMPARE(cabecera.textElideMode(), Qt::ElideRight); // narrower it says that it goes on
        QFont marcada = lista.font();
        marcada.setBold(true); // as the charge that was changed last is
        QVERIFY(lista.columnWidth(5)
            >= QFontMetrics(marcada).horizontalAdvance(QStringLiteral("28/08/2028")) + 4);
    }

    void in_the_details_only_what_has_words_grows_with_the_window()
    {
        EscenaAnchosVisor escena;
        modComun::set_PrevisionesCargo(std::make_shared<SinPrevisiones>());
        escena.form.close();
        escena.abre("02/10/2026", "28/11/2026");
        escena.pestanas().setCurrentIndex(1);
        QVERIFY(escena.ensancha(1000));
        for (const auto& [nombre, crecen] :
            { std::pair{ "vsDetalles", std::set{ 2, 6 } }, { "vsPrevisiones", std::set{ 3 } } }) {
            const auto& rejilla = escena.c<VSFlexGrid>(nombre);
            const auto anchos = [&] {
                std::vector<int> todos;
                for (int columna = 0; columna < rejilla.Cols(); ++columna)
                    todos.push_back(rejilla.ColWidth(columna));
                return todos;
            };
            QVERIFY(escena.ensancha(1000));
            const auto antes = anchos();
            QVERIFY(escena.ensancha(1600));
            QTRY_VERIFY(anchos() != antes);
            const auto despues = anchos();
            for (int columna = 0; columna < rejilla.Cols(); ++columna) {
                const auto lugar = static_cast<std::size_t>(columna);
                QCOMPARE(despues[lugar] > antes[lugar], crecen.contains(columna));
            }
        }
    }

    void it_opens_wide_enough_for_the_name_of_a_supplier()
    {
        EscenaAnchosVisor escena;
        QVERIFY(escena.ensancha(1100)); // where the screen has room for it
        escena.c<qvProveedor>("txtProveedor").set_Codigo(110);
        QVERIFY(escena.c<qvProveedor>("txtProveedor").Buscar());
        const auto& nombre = control<QLineEdit>(escena.c<>("txtProveedor"), "lblNombre");
        QCOMPARE(nombre.text(), QStringLiteral("Distribuidora Peninsular Ibáñez, S.A."));
        QTRY_VERIFY(nombre.width() > nombre.fontMetrics().horizontalAdvance(nombre.text()));
    }
};

ATIPICOS_PRUEBA_VENTANAS(AnchosVisor_Test)
#include "AnchosVisor_test.moc"
