#include "context/frmclsCompras_Atipicos.hpp"

#include "editor/frmCompras_Atipicos.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLineEdit>
#include <QWindow>

using namespace atipicos;
using pruebas::Banco;

namespace {

/// The editors that exist, shown or not.
QList<frmCompras_Atipicos*> editores()
{
    QList<frmCompras_Atipicos*> hallados;
    for (QWidget* ventana : QApplication::allWidgets())
        if (auto* editor = qobject_cast<frmCompras_Atipicos*>(ventana))
            hallados << editor;
    return hallados;
}

}

class frmclsCompras_Atipicos_Test : public QObject {
    Q_OBJECT
private slots:
    void makes_no_form_before_it_is_shown()
    {
        const Banco banco;
        const frmclsCompras_Atipicos lanzador;
        QVERIFY(editores().isEmpty());
        QVERIFY(!lanzador.sin_guardar());
    }

    void shows_one_form_modeless_and_without_owner()
    {
        const Banco banco;
        frmclsCompras_Atipicos lanzador;
        lanzador.Show();
        const auto primera = editores();
        QCOMPARE(primera.size(), 1);
        QVERIFY(primera.front()->isVisible());
        QVERIFY(!primera.front()->isModal());
        QVERIFY(primera.front()->parentWidget() == nullptr);
        QVERIFY2(primera.front()->Codigo.empty(), "it opens for a new charge");
        lanzador.Show();
        QCOMPARE(editores(), primera);
        primera.front()->close();
        lanzador.Show();
        QCOMPARE(editores(), primera);
    }

    void modal_it_returns_when_the_form_is_closed()
    {
        const Banco banco;
        frmclsCompras_Atipicos lanzador;
        QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos>(
            [&] { lanzador.Show(1); }, [](frmCompras_Atipicos& form) { form.close(); }));
    }

    void destroying_it_closes_its_form()
    {
        const Banco banco;
        int descargas = 0;
        {
            frmclsCompras_Atipicos lanzador;
            lanzador.Show();
            connect(editores().front(), &frmCompras_Atipicos::Descargado, this, [&] { ++descargas; });
        }
        QVERIFY(editores().isEmpty());
        QCOMPARE(descargas, 1);
    }

    void an_owner_that_is_destroyed_takes_the_form_with_it()
    {
        const Banco banco;
        frmclsCompras_Atipicos lanzador;
        {
            QWidget duena;
            lanzador.Show(0, &duena);
            QCOMPARE(editores().front()->parentWidget(), &duena);
        }
        QVERIFY(editores().isEmpty());
        lanzador.Show();
        QCOMPARE(editores().size(), 1);
    }

    void shown_it_takes_another_owner_and_becomes_modal_where_it_was()
    {
        const Banco banco;
        QWidget una;
        QWidget otra;
        frmclsCompras_Atipicos lanzador;
        lanzador.Show(0, &una);
        auto* const form = editores().front();
        form->move(77, 55);
        lanzador.Show(0, &otra);
        QVERIFY(form->isVisible());
        QCOMPARE(form->parentWidget(), &otra);
        QCOMPARE(form->windowType(), Qt::Window);
        QCOMPARE(form->pos(), QPoint(77, 55));
        bool modal = false;
        QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos>([&] { lanzador.Show(1, &otra); },
            [&](frmCompras_Atipicos& abierta) {
                modal = &abierta == form && abierta.windowHandle()->modality() != Qt::NonModal;
                lanzador.Show(1, &una); // returns: somebody waits for it already
                abierta.close();
            }));
        QVERIFY(modal);
        QCOMPARE(form->parentWidget(), &otra);
        lanzador.Show();
        QVERIFY(form->parentWidget() == nullptr);
    }

    void without_windows_of_other_toolkits_it_is_shown_without_an_owner()
    {
        const Banco banco;
        frmclsCompras_Atipicos lanzador;
        lanzador.Show(0, atipicos::Duena::de_hWnd(987654321));
        QVERIFY(editores().front()->isVisible());
        QVERIFY(editores().front()->parentWidget() == nullptr);
        QVERIFY(banco.avisos->dichos.empty());
    }

    void context_set_through_it_is_the_component_s()
    {
        const Banco banco;
        const frmclsCompras_Atipicos lanzador;
        const auto otra
            = std::make_shared<orvalin::Empresa>(banco.bases().orvalin, std::int16_t{ 2 }, std::int32_t{ 1 });
        lanzador.set_EmpresaOrvalin(otra);
        lanzador.set_ConexionOrvalin(banco.bases().orvalin);
        lanzador.set_ConexionBexmor(banco.bases().bexmor);
        QCOMPARE(modComun::EmpresaOrvalin().get(), otra.get());
        QCOMPARE(modComun::ConexionOrvalin().get(), banco.bases().orvalin.get());
        QCOMPARE(modComun::ConexionBexmor().get(), banco.bases().bexmor.get());
    }

    void context_set_while_the_form_is_open_holds_for_the_next_charge()
    {
        const Banco banco;
        frmclsCompras_Atipicos lanzador;
        lanzador.Show();
        lanzador.set_EmpresaOrvalin(
            std::make_shared<orvalin::Empresa>(banco.bases().orvalin, std::int16_t{ 2 }, std::int32_t{ 1 }));
        editores().front()->close();
        banco.parte->dichas.clear();
        lanzador.Show();
        QVERIFY(
            banco.parte->dichas.front().find("FROM Almacenes WHERE Cod_Empresa =2 AND") != std::string::npos);
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmclsCompras_Atipicos_Test)
#include "frmclsCompras_Atipicos_test.moc"
