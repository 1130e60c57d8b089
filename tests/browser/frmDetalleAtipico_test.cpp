#include "browser/frmDetalleAtipico.hpp"

#include "host/orvalin/PrevisionesCargo.hpp"
#include "tests/browser/EscenaVisor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QPlainTextEdit>

using namespace atipicos;
using pruebas::EscenaVisor;

namespace {

/// A charge of warehouse 2, posted with its forecasts, and one that has neither entry nor lines.
struct ConDosCargos : EscenaVisor {
    ConDosCargos()
    {
        banco.guarda({}, 2, "Palé mojado\r\nen el muelle");
        graba("SUELTO", "15/11/2026", "Importe = 12.5, Impuesto = 3, Impuesto_Importe = 0.38");
        banco.avisos->dichos.clear();
    }
    void sirve_previsiones()
    {
        modComun::set_PrevisionesCargo(
            std::make_shared<orvalin::PrevisionesCargo>(banco.bases().orvalin, modComun::EmpresaOrvalin()));
    }
    void abre_detalles()
    {
        abre_y_busca();
        pulsa(Qt::Key_Return);
    }
    VSFlexGrid& previsiones() { return c<VSFlexGrid>("vsPrevisiones"); }
    QString etiqueta(const char* nombre) { return c<QLabel>(nombre).text(); }
};

}

class frmDetalleAtipico_Test : public QObject {
    Q_OBJECT
private slots:
    void shows_remarks_entry_base_tax_and_total()
    {
        ConDosCargos visor;
        visor.abre_detalles();
        QCOMPARE(visor.c<QPlainTextEdit>("txtObservDet").toPlainText(),
            QStringLiteral("Palé mojado\nen el muelle"));
        QVERIFY(visor.c<QPlainTextEdit>("txtObservDet").isReadOnly());
        QCOMPARE(visor.etiqueta("lblAsientoDet"), QStringLiteral("Asiento: 1"));
        QCOMPARE(visor.etiqueta("lblImportesDet"),
            QStringLiteral("Base: 231,96     Impuesto (7,00 %): 16,24     Total: 248,20"));
        QCOMPARE(visor.lineas().Rows(), 4);
        visor.clic("cmdSiguiente");
        QCOMPARE(visor.lineas().Rows(), 1); // those of the charge before do not stay
        QVERIFY(visor.c<QPlainTextEdit>("txtObservDet").toPlainText().isEmpty());
        QCOMPARE(visor.etiqueta("lblAsientoDet"), QStringLiteral("Sin asiento"));
        QCOMPARE(visor.etiqueta("lblImportesDet"),
            QStringLiteral("Base: 12,50     Impuesto (3,00 %): 0,38     Total: 12,88"));
    }

    void a_total_that_does_not_fit_does_not_keep_the_charge_from_being_shown()
    {
        ConDosCargos visor;
        visor.graba("ENORME", "30/11/2026", "Importe = 922337203685477, Impuesto_Importe = 1");
        visor.abre_detalles();
        QVERIFY(visor.etiqueta("lblImportesDet").endsWith(QStringLiteral("Total: …")));
        QVERIFY(visor.banco.titulos().empty());
    }

    void shows_the_forecasts_that_the_host_tells()
    {
        ConDosCargos visor;
        visor.sirve_previsiones();
        visor.abre_detalles();
        QVERIFY(visor.previsiones().isVisible());
        QCOMPARE(visor.previsiones().Rows(), 4);
        QCOMPARE(EscenaVisor::fila(visor.previsiones(), 0),
            QStringLiteral("Previsión|Vencimiento|Importe|Documento"));
        QStringList primera = EscenaVisor::fila(visor.previsiones(), 1).split(u'|');
        QCOMPARE(primera.at(0), QStringLiteral("1"));
        const auto vence
            = CDate(visor.banco.consulta("SELECT Vencimiento FROM Bexmor.dbo.Previsiones WHERE Numero =1"))
                  .texto();
        QCOMPARE(primera.at(1).toStdString(), vence);
        QCOMPARE(primera.at(2), QStringLiteral("82,73"));
        QVERIFY(!primera.at(3).isEmpty());
        visor.clic("cmdSiguiente"); // those of the charge before do not stay
        QCOMPARE(visor.previsiones().Rows(), 1);
        QCOMPARE(visor.previsiones().accessibleDescription(), QStringLiteral("Sin previsiones de pago"));
    }

    void without_a_host_that_tells_them_there_is_no_list_of_forecasts()
    {
        ConDosCargos visor;
        visor.abre_detalles();
        QVERIFY(!visor.previsiones().isVisible());
        QCOMPARE(visor.banco.parte->dichas.size(), std::size_t{ 3 }); // nor is anything asked for
    }

    void forecasts_that_cannot_be_read_are_told_in_their_place()
    {
        struct Averiadas final : qvoremp::PrevisionesCargo {
            std::vector<qvoremp::PrevisionCargo> lee(
                std::int16_t, std::int16_t, const std::string&, Donde donde) const override
            {
                throw Error(1, "Prueba", "Contabilidad está cerrada", donde);
            }
        };
        ConDosCargos visor;
        modComun::set_PrevisionesCargo(std::make_shared<Averiadas>());
        visor.abre_detalles();
        QVERIFY(visor.previsiones().accessibleDescription().endsWith(
            QStringLiteral("Contabilidad está cerrada")));
        QVERIFY(visor.banco.titulos().empty());
        QCOMPARE(visor.lineas().Rows(), 4); // and the charge is there
    }

    void the_button_of_collections_is_on_the_tab_and_does_nothing()
    {
        ConDosCargos visor;
        visor.abre_detalles();
        auto& boton = visor.c<QPushButton>("cmdCobrosAdd");
        QVERIFY(boton.isVisible());
        QVERIFY(!boton.text().isEmpty());
        const auto antes = visor.banco.estado();
        QTest::mouseClick(&boton, Qt::LeftButton);
        QVERIFY(visor.banco.estado() == antes);
        QVERIFY(visor.banco.titulos().empty());
        QCOMPARE(visor.pestanas().currentIndex(), 1);
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmDetalleAtipico_Test)
#include "frmDetalleAtipico_test.moc"
