#include "controls/Anclaje.hpp"
#include "controls/VSFlexGrid.hpp"
#include "posting/frmCompras_Atipicos_Contabilizar.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QHeaderView>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// The dialog for 80,00 of a supplier of three instalments.
struct EscenaSobreColumnas {
    Banco banco;
    frmCompras_Atipicos_Contabilizar dialogo{ { moneda("80"), 104, dia("09/10/2026"), 1, true } };

    EscenaSobreColumnas()
    {
        dialogo.show();
        if (!QTest::qWaitForWindowActive(&dialogo, atipicos::pruebas::paciencia))
            qFatal("the dialog is not active");
    }

    VSFlexGrid& rejilla() { return control<VSFlexGrid>(dialogo, "vsPrev"); }

    int en_ventana(const QWidget& de, int x) { return de.mapTo(&dialogo, QPoint(x, 0)).x(); }

    /// Which boxes do not stand above their columns, from the first to the last; empty when all do.
    QString fuera_de_sus_columnas()
    {
        QString fuera;
        for (const auto& [nombre, primera, ultima] : { std::tuple{ "txtPrevImp", 0, 0 },
                 { "txtPrevTipoDoc", 1, 1 }, { "txtPrevVto", 2, 2 }, { "txtBanco", 4, 5 } }) {
            const auto& caja = control<>(dialogo, nombre);
            const int izquierda = en_ventana(caja, 0);
            const int derecha = en_ventana(caja, caja.width());
            const auto& vista = *rejilla().viewport();
            const int desde = en_ventana(vista, rejilla().columnViewportPosition(primera));
            const int hasta
                = en_ventana(vista, rejilla().columnViewportPosition(ultima) + rejilla().ColWidth(ultima));
            if (izquierda != desde || derecha > hasta || derecha < hasta - 4)
                fuera += QStringLiteral("%1 [%2, %3] columns [%4, %5] ")
                             .arg(QLatin1String(nombre))
                             .arg(izquierda)
                             .arg(derecha)
                             .arg(desde)
                             .arg(hasta);
        }
        return fuera;
    }
};

}

class EntradaSobreColumnas_Test : public QObject {
    Q_OBJECT
private slots:
    void the_entry_boxes_stand_above_their_columns_at_any_width()
    {
        EscenaSobreColumnas escena;
        QTRY_COMPARE(escena.fuera_de_sus_columnas(), QString());
        for (const int gana : { 0, 133, 900 }) { // 0: at its design size
            const int ancho = escena.rejilla().findChild<Anclaje*>()->AnchoDeDiseno() + gana;
            escena.dialogo.resize(escena.dialogo.width() + ancho - escena.rejilla().viewport()->width(),
                escena.dialogo.height());
            QTRY_COMPARE(escena.rejilla().viewport()->width(), ancho);
            QTRY_COMPARE(escena.fuera_de_sus_columnas(), QString());
        }
        escena.rejilla().setColumnWidth(2, 171); // by its heading
        QTRY_COMPARE(escena.fuera_de_sus_columnas(), QString());
    }

    void a_due_date_is_read_whole_above_the_narrowest_column()
    {
        EscenaSobreColumnas escena;
        escena.dialogo.resize(escena.dialogo.minimumSizeHint().width(), escena.dialogo.height());
        auto& vencimiento = control<QLineEdit>(escena.dialogo, "txtPrevVto");
        vencimiento.setFocus();
        teclea("30112026");
        QTRY_VERIFY(
            vencimiento.width() > vencimiento.fontMetrics().horizontalAdvance(vencimiento.text()) + 6);
        QCOMPARE(vencimiento.text(), QStringLiteral("30/11/2026"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(EntradaSobreColumnas_Test)
#include "EntradaSobreColumnas_test.moc"
