#include "context/frmclsComprasAtipVisor.hpp"

#include "browser/frmCompras_Atipicos_Visor.hpp"
#include "context/frmclsCompras_Atipicos.hpp"
#include "editor/frmCompras_Atipicos.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLineEdit>
#include <QTemporaryDir>

using namespace atipicos;
using pruebas::Banco;
using pruebas::dia;

namespace {

/// The browsers that exist, shown or not.
QList<frmCompras_Atipicos_Visor*> visores()
{
    QList<frmCompras_Atipicos_Visor*> hallados;
    for (QWidget* ventana : QApplication::allWidgets())
        if (auto* visor = qobject_cast<frmCompras_Atipicos_Visor*>(ventana))
            hallados << visor;
    return hallados;
}

QString texto(const char* nombre) { return pruebas::control<QLineEdit>(*visores().front(), nombre).text(); }

}

class frmclsComprasAtipVisor_Test : public QObject {
    Q_OBJECT
private slots:
    void makes_no_form_before_it_is_shown()
    {
        const Banco banco;
        {
            const frmclsComprasAtipVisor lanzador;
            QVERIFY(visores().isEmpty());
        }
        QVERIFY(visores().isEmpty());
    }

    void shows_its_form_modeless_and_without_owner()
    {
        const Banco banco;
        frmclsComprasAtipVisor lanzador;
        lanzador.Show();
        QCOMPARE(visores().size(), 1);
        QVERIFY(visores().front()->isVisible());
        QVERIFY(!visores().front()->isModal());
        QVERIFY(visores().front()->parentWidget() == nullptr);
    }

    void hands_its_filters_over_at_each_opening_and_keeps_its_form()
    {
        const Banco banco;
        frmclsComprasAtipVisor lanzador;
        lanzador.Almacen_Inicial = 3;
        lanzador.Proveedor_Inicial = 104;
        lanzador.Fecha_Inicial = dia("01/02/2026");
        lanzador.Fecha_Final = dia("28/02/2026");
        lanzador.Show();
        auto* const form = visores().front();
        QCOMPARE(texto("txtFechaI"), QStringLiteral("01/02/2026"));
        QCOMPARE(texto("txtFechaF"), QStringLiteral("28/02/2026"));
        QCOMPARE(form->Almacen_Inicial, std::int16_t{ 3 });
        QCOMPARE(form->Proveedor_Inicial, 104);
        form->close();
        lanzador.Fecha_Final = dia("01/03/2026");
        lanzador.Show();
        QCOMPARE(visores(), QList{ form });
        QCOMPARE(texto("txtFechaF"), QStringLiteral("01/03/2026"));
    }

    void without_filters_no_range_is_given()
    {
        const Banco banco;
        frmclsComprasAtipVisor lanzador;
        lanzador.Show();
        QCOMPARE(texto("txtFechaI"), QStringLiteral("01/01/2026"));
        visores().front()->close();
        lanzador.Fecha_Inicial = lanzador.Fecha_Final = dia("01/01/1900");
        lanzador.Show();
        QCOMPARE(texto("txtFechaI"), QStringLiteral("01/01/2026"));
    }

    void destroying_it_closes_its_form()
    {
        const Banco banco;
        int descargas = 0;
        {
            frmclsComprasAtipVisor lanzador;
            lanzador.Show();
            connect(visores().front(), &frmCompras_Atipicos_Visor::Descargado, this, [&] { ++descargas; });
        }
        QVERIFY(visores().isEmpty());
        QCOMPARE(descargas, 1);
    }

    void an_owner_that_is_destroyed_takes_the_form_with_it()
    {
        const Banco banco;
        frmclsComprasAtipVisor lanzador;
        {
            QWidget duena;
            lanzador.Show(0, &duena);
            QCOMPARE(visores().front()->parentWidget(), &duena);
        }
        QVERIFY(visores().isEmpty());
        lanzador.Show();
        QCOMPARE(visores().size(), 1);
    }

    void modal_it_returns_when_the_form_is_closed()
    {
        const Banco banco;
        frmclsComprasAtipVisor lanzador;
        QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos_Visor>(
            [&] { lanzador.Show(1); }, [](frmCompras_Atipicos_Visor& form) { form.close(); }));
    }

    void context_set_while_the_form_is_open_holds_from_the_next_search_on()
    {
        const Banco banco;
        frmclsComprasAtipVisor lanzador;
        lanzador.Fecha_Inicial = dia("01/01/2026");
        lanzador.Fecha_Final = dia("31/12/2026");
        lanzador.Show();
        lanzador.set_EmpresaOrvalin(
            std::make_shared<orvalin::Empresa>(banco.bases().orvalin, std::int16_t{ 2 }, std::int32_t{ 1 }));
        QVERIFY(QTest::qWaitForWindowActive(visores().front(), atipicos::pruebas::paciencia));
        pruebas::control(*visores().front(), "txtFechaF").setFocus();
        pruebas::intro();
        QVERIFY(banco.parte->dichas.back().find(" WHERE pc.Cod_Empresa =2 AND") != std::string::npos);
    }

    void the_editor_of_the_browser_is_not_that_of_the_other_launcher()
    {
        const Banco banco;
        frmclsCompras_Atipicos editor;
        editor.Show();
        auto& compartido = frmCompras_Atipicos::compartido();
        QVERIFY(!compartido.isVisible());
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmclsComprasAtipVisor_Test)
#include "frmclsComprasAtipVisor_test.moc"
