#include "printing/frmImpresora.hpp"

#include "controls/qvDispositivo.hpp"
#include "controls/qvImpresoras.hpp"
#include "printing/frmclsCopiasImpresion.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLabel>
#include <QPrinterInfo>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTest>
#include <QTimer>

#include <algorithm>

using atipicos::DestinoImpresion;
using atipicos::frmclsCopiasImpresion;
using atipicos::frmImpresora;
using atipicos::qvDispositivo;
using atipicos::qvImpresoras;
using atipicos::Variant;

namespace {

template <class T> T& hijo(QWidget& ventana, const char* nombre)
{
    auto* encontrado = ventana.findChild<T*>(QString::fromUtf8(nombre));
    if (encontrado == nullptr)
        qFatal("no widget called %s", nombre);
    return *encontrado;
}

/// The component's context, with the two keys of the dialog set.
struct ConClaves : atipicos::pruebas::Contexto {
    ConClaves(const char* primero, const char* segundo)
    {
        empresa->parametros["Proveedores_AtipicosDispImpresoDefault"] = Variant(primero);
        empresa->parametros["Proveedores_AtipicosDisp2ImpresoDefault"] = Variant(segundo);
    }
};

/// Runs `hace` on the dialog that is modal when it is shown.
template <class Accion> void cuando_se_muestre(Accion hace)
{
    QTimer::singleShot(0, qApp, [hace] {
        auto* dialogo = qobject_cast<frmImpresora*>(QApplication::activeModalWidget());
        if (dialogo == nullptr)
            qFatal("the dialog is not modal");
        hace(*dialogo);
    });
}

void pulsa(frmImpresora& dialogo, const char* boton)
{
    QTest::mouseClick(&hijo<QPushButton>(dialogo, boton), Qt::LeftButton);
}

}

class frmImpresora_Test : public QObject {
    Q_OBJECT
private slots:
    void it_opens_with_the_two_devices_of_the_company_and_returns_both()
    {
        const ConClaves contexto("2", "3"); // the tests' machine has no printer
        frmImpresora form;
        form.set_EmpresaOrvalin(contexto.empresa);
        cuando_se_muestre([](frmImpresora& dialogo) {
            QCOMPARE(dialogo.windowTitle(), QStringLiteral("Seleccione Destino e Impresora."));
            QCOMPARE(hijo<QLabel>(dialogo, "Label7").text(), QStringLiteral("Impresora:"));
            QCOMPARE(hijo<QLabel>(dialogo, "Label6").text(), QStringLiteral("Dispositivo:"));
            QCOMPARE(hijo<QPushButton>(dialogo, "cmdAceptar").text(), QStringLiteral("&Aceptar"));
            QCOMPARE(hijo<QPushButton>(dialogo, "cmdCancelar").text(), QStringLiteral("&Cancelar"));
            QCOMPARE(
                hijo<qvDispositivo>(dialogo, "cboDispositivo_0").currentText(), QStringLiteral("Pantalla"));
            QCOMPARE(hijo<qvDispositivo>(dialogo, "cboDispositivo_1").currentText(),
                QStringLiteral("Fichero PDF"));
            pulsa(dialogo, "cmdAceptar");
        });
        form.Show(1);
        QVERIFY(form.Aceptado());
        QVERIFY(!form.isVisible());
        QCOMPARE(form.Destino().Dispositivo, 2);
        QCOMPARE(form.Destino().Dispositivo2, 3);
        QCOMPARE(contexto.empresa->preguntas,
            (std::vector<std::string>{
                "Proveedores_AtipicosDispImpresoDefault", "Proveedores_AtipicosDisp2ImpresoDefault" }));
    }

    void keys_choose_another_device_and_printer()
    {
        const ConClaves contexto("2", "2");
        frmImpresora form;
        form.set_EmpresaOrvalin(contexto.empresa);
        cuando_se_muestre([](frmImpresora& dialogo) {
            hijo<qvImpresoras>(dialogo, "cboImpresoras")
                .Prepara({ QStringLiteral("Laser"), QStringLiteral("Tinta") }, QStringLiteral("Tinta"));
            auto& segundo = hijo<qvDispositivo>(dialogo, "cboDispositivo_1");
            segundo.setFocus();
            QTest::keyClick(&segundo, Qt::Key_Down);
            auto& aceptar = hijo<QPushButton>(dialogo, "cmdAceptar");
            aceptar.setFocus();
            QTest::keyClick(&aceptar, Qt::Key_Return);
        });
        form.Show(1);
        QCOMPARE(form.Destino(), (DestinoImpresion{ "Tinta", 2, 3, 2 }));
    }

    void cancelled_by_button_or_escape_it_says_so()
    {
        const ConClaves contexto("1", "2");
        frmImpresora form;
        form.set_EmpresaOrvalin(contexto.empresa);
        cuando_se_muestre([](frmImpresora& dialogo) { pulsa(dialogo, "cmdAceptar"); });
        form.Show(1);
        QVERIFY(form.Aceptado());
        cuando_se_muestre([](frmImpresora& dialogo) {
            QVERIFY(!dialogo.Aceptado()); // that was the time before
            pulsa(dialogo, "cmdCancelar");
        });
        form.Show(1);
        QVERIFY(!form.Aceptado());
        cuando_se_muestre([](frmImpresora& dialogo) { QTest::keyClick(&dialogo, Qt::Key_Escape); });
        form.Show(1);
        QVERIFY(!form.Aceptado());
        cuando_se_muestre([](frmImpresora& dialogo) { pulsa(dialogo, "cmdCancelar"); });
        QVERIFY(!frmImpresora::pregunta(contexto.empresa, nullptr));
    }

    void shown_already_it_becomes_modal_when_that_is_asked_for_and_stands_where_it_is_when_not()
    {
        const ConClaves contexto("2", "3");
        QWidget duena;
        frmImpresora form;
        form.set_EmpresaOrvalin(contexto.empresa);
        form.Show();
        QVERIFY(form.isVisible() && !form.isModal());
        cuando_se_muestre([&](frmImpresora& dialogo) {
            const auto etiquetas = dialogo.findChildren<QLabel*>();
            const auto* segundo = &hijo<qvDispositivo>(dialogo, "cboDispositivo_1");
            QVERIFY(std::any_of(etiquetas.begin(), etiquetas.end(), [&](const QLabel* una) {
                return una->buddy() == segundo && una->text() == segundo->accessibleName();
            }));
            dialogo.Show(1, &duena); // somebody waits for it: at once, and over the owner that it has
            QVERIFY(dialogo.isVisible() && dialogo.parentWidget() == nullptr);
            pulsa(dialogo, "cmdAceptar");
        });
        form.Show(1);
        QVERIFY(!form.isVisible());
        QVERIFY(form.Aceptado());
    }

    void a_missing_key_leaves_its_combo_without_a_choice()
    {
        const ConClaves contexto("", "9");
        contexto.empresa->parametros.erase("Proveedores_AtipicosDispImpresoDefault");
        cuando_se_muestre([](frmImpresora& dialogo) {
            QCOMPARE(hijo<qvDispositivo>(dialogo, "cboDispositivo_0").currentIndex(), -1);
            QCOMPARE(hijo<qvDispositivo>(dialogo, "cboDispositivo_1").currentIndex(), -1);
            pulsa(dialogo, "cmdAceptar");
        });
        const auto destino = frmImpresora::pregunta(contexto.empresa, nullptr);
        QVERIFY(destino.has_value());
        QCOMPARE(destino->Dispositivo, 0);
        QCOMPARE(destino->Dispositivo2, 0);
        QVERIFY(contexto.avisos->dichos.empty());
    }

    void a_key_that_is_no_number_is_told_and_the_dialog_opens_all_the_same()
    {
        const ConClaves contexto("láser", "2");
        cuando_se_muestre([](frmImpresora& dialogo) { pulsa(dialogo, "cmdCancelar"); });
        QVERIFY(!frmImpresora::pregunta(contexto.empresa, nullptr));
        QCOMPARE(contexto.avisos->dichos.size(), 1U);
        QCOMPARE(contexto.avisos->dichos[0].titulo, std::string("frmImpresora:Form_Load"));
        QVERIFY(contexto.avisos->dichos[0].texto.ends_with("] No coinciden los tipos"));
    }

    void without_printers_it_opens_on_the_screen_once_and_enter_accepts()
    {
        if (!QPrinterInfo::availablePrinterNames().isEmpty())
            QSKIP("this machine has printers");
        struct Caso {
            const char* primero;
            const char* segundo;
            DestinoImpresion debido;
        };
        for (const auto& [primero, segundo, debido] :
            { Caso{ "1", "3", { "", 2, 3, 0 } }, { "1", "2", { "", 0, 2, 0 } }, { "2", "1", { "", 2, 0, 0 } },
                { "1", "1", { "", 2, 0, 0 } }, { "3", "1", { "", 3, 2, 0 } } }) {
            const ConClaves contexto(primero, segundo);
            cuando_se_muestre([](frmImpresora& dialogo) {
                auto& combo = hijo<qvDispositivo>(dialogo, "cboDispositivo_0");
                const auto impresoras = hijo<qvImpresoras>(dialogo, "cboImpresoras").currentText();
                const auto* impresora = qobject_cast<QStandardItemModel*>(combo.model())->item(0);
                auto* foco = dialogo.focusWidget();
                const QString dice = impresora->text();
                const bool se_puede = impresora->isEnabled();
                QTest::keyClick(foco, Qt::Key_Return);
                if (dialogo.isVisible())
                    dialogo.reject();
                QCOMPARE(dice, QStringLiteral("Impresora (no hay ninguna)"));
                QCOMPARE(impresoras, QStringLiteral("No hay impresoras en este sistema"));
                QVERIFY(!se_puede);
                QCOMPARE(foco->objectName(), QStringLiteral("cmdAceptar"));
            });
            const auto destino = frmImpresora::pregunta(contexto.empresa, nullptr);
            QVERIFY2(destino.has_value(), "Enter does not accept");
            QCOMPARE(*destino, debido);
        }
    }

    void with_printers_that_device_can_be_chosen()
    {
        qvDispositivo combo;
        combo.Prepara();
        combo.set_HayImpresoras(false);
        combo.set_HayImpresoras(true);
        combo.set_Codigo(1);
        QCOMPARE(combo.currentText(), QStringLiteral("Impresora"));
        QVERIFY(qobject_cast<QStandardItemModel*>(combo.model())->item(0)->isEnabled());
    }

    void without_printers_the_combo_says_so()
    {
        qvImpresoras combo;
        combo.Prepara({}, {});
        QCOMPARE(combo.currentText(), QStringLiteral("No hay impresoras en este sistema"));
        QVERIFY(!combo.isEnabled());
        QCOMPARE(combo.Nombre(), std::string());
        QCOMPARE(combo.Ajuste(), 0);
        combo.Prepara({ QStringLiteral("A"), QStringLiteral("B") }, {});
        QVERIFY(combo.isEnabled());
        QCOMPARE(combo.Nombre(), std::string("A"));
        combo.set_Nombre("B");
        combo.set_Nombre("C");
        QCOMPARE(combo.Nombre(), std::string("B"));
        QCOMPARE(combo.Ajuste(), 2);
    }

    void the_class_keeps_its_dialog_and_brings_the_choice_back()
    {
        const ConClaves contexto("3", "2");
        frmclsCopiasImpresion copias;
        copias.Destino = { "de antes", 7, 8, 9 };
        cuando_se_muestre([](frmImpresora& dialogo) { pulsa(dialogo, "cmdCancelar"); });
        copias.Show(1);
        QCOMPARE(copias.Destino, (DestinoImpresion{ "de antes", 7, 8, 9 }));
        cuando_se_muestre([](frmImpresora& dialogo) { pulsa(dialogo, "cmdAceptar"); });
        copias.Show(1);
        QCOMPARE(copias.Destino.Dispositivo, 3);
        QCOMPARE(copias.Destino.Dispositivo2, 2);
        QCOMPARE(contexto.empresa->preguntas.size(), 2U); // it was loaded once
    }

    void the_dialog_has_the_owner_of_each_time()
    {
        const ConClaves contexto("3", "2");
        QWidget una;
        QWidget otra;
        frmclsCopiasImpresion copias;
        QList<QWidget*> duenas;
        for (QWidget* duena : { &una, &otra, static_cast<QWidget*>(nullptr) }) {
            cuando_se_muestre([&](frmImpresora& dialogo) {
                duenas << dialogo.parentWidget();
                pulsa(dialogo, "cmdCancelar");
            });
            copias.Show(1, duena);
        }
        QCOMPARE(duenas, (QList<QWidget*>{ &una, &otra, nullptr }));
    }

    void the_class_sets_the_context_and_takes_its_dialog_along()
    {
        const ConClaves contexto("1", "2");
        const auto otra = std::make_shared<atipicos::pruebas::EmpresaDePrueba>();
        {
            frmclsCopiasImpresion copias;
            copias.set_EmpresaOrvalin(otra);
            QCOMPARE(atipicos::modComun::EmpresaOrvalin().get(), otra.get());
            copias.set_ConexionOrvalin(contexto.contabilidad);
            QCOMPARE(atipicos::modComun::ConexionOrvalin().get(), contexto.contabilidad.get());
            copias.Show();
            QCOMPARE(QApplication::topLevelWidgets().size(), 1);
        }
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmImpresora_Test)
#include "frmImpresora_test.moc"
