#include "controls/qvDispositivo.hpp"
#include "tests/app/EscenaPanel.hpp"
#include "tests/support/CorreoFingido.hpp"
#include "tests/support/Ventanas.hpp"

#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QStatusBar>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// The first two of the list.
void elige_dos(const EscenaPanel& escena)
{
    escena.abre();
    if (!QTest::qWaitFor([&] { return escena.filas() == 4; }, atipicos::pruebas::paciencia))
        qFatal("the list is not filled");
    pulsa(Qt::Key_L, Qt::AltModifier);
    pulsa(Qt::Key_Down, Qt::ShiftModifier);
}

/// The chosen ones on two devices, both of which are the mail.
void por_correo(const EscenaPanel& escena)
{
    const AlAbrirse elegir(
        [](QWidget& dialogo) {
            control<qvDispositivo>(dialogo, "cboDispositivo_0").set_Codigo(4);
            control<qvDispositivo>(dialogo, "cboDispositivo_1").set_Codigo(4);
            clic(dialogo, "cmdAceptar");
        },
        "frmImpresora");
    QTest::keyClick(
        &control(*escena.ventana, "vsUltimos"), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
}

}

class CargosElegidos_Test : public QObject {
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }

    void the_chosen_charges_go_into_one_file_in_the_order_of_the_list()
    {
        const EscenaPanel escena;
        elige_dos(escena);
        const auto fichero = escena.carpeta / "dos.pdf";
        {
            const AlAbrirse guardar(
                [&](QWidget& dialogo) {
                    QCOMPARE(control<QLineEdit>(dialogo, "fileNameEdit").text(),
                        QStringLiteral("Reclamaciones, 2 cargos"));
                    control<QLineEdit>(dialogo, "fileNameEdit")
                        .setText(QString::fromStdString(fichero.string()));
                    intro();
                },
                "dlgImprimirElegidos");
            pulsa(Qt::Key_P, Qt::ControlModifier);
        }
        QVERIFY(escena.avisos->dichos.empty());
        const auto pdf = lee_fichero(fichero);
        QVERIFY(pdf.starts_with("%PDF-"));
        QVERIFY2(pdf.find("/Count 2") != std::string::npos, "not two pages");
    }

    void the_chosen_charges_go_to_the_mail_program_in_one_file()
    {
        const CorreoFingido correo;
        const EscenaPanel escena;
        elige_dos(escena);
        escena.avisos->respuestas = { Respuesta::Si };
        pulsa(Qt::Key_M, Qt::ControlModifier);
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 });
        escena.avisos->dichos.clear();
        QCOMPARE(
            correo.dado().at(2), std::string("Reclamaciones a proveedores (2) de Comercial Drago Sur, S.L."));
        QVERIFY(correo.dado().at(4).ends_with("/Reclamaciones, 2 cargos.pdf"));
        QVERIFY2(correo.adjunto().find("/Count 2") != std::string::npos, "not two pages");
        QCOMPARE(escena.ventana->statusBar()->currentMessage(),
            QStringLiteral(
                "Su programa de correo tiene el mensaje con 2 cargos: ponga a quién va y envíelo"));

        const CorreoFingido sin_programa(3);
        escena.avisos->respuestas = { Respuesta::Si };
        pulsa(Qt::Key_M, Qt::ControlModifier);
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 2 });
        QVERIFY(escena.avisos->dichos[1].texto.find("no hay ningún programa de correo elegido")
            != std::string::npos);
    }

    void charges_of_several_suppliers_go_into_one_message_only_after_a_yes()
    {
        const CorreoFingido correo;
        const EscenaPanel escena;
        elige_dos(escena);
        pulsa(Qt::Key_M, Qt::ControlModifier); // Enter says no
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 });
        const auto& pregunta = escena.avisos->dichos[0];
        QCOMPARE(pregunta.texto,
            std::string("Los cargos elegidos son de 2 proveedores y van juntos en un solo mensaje: quien lo "
                        "reciba los lee todos.\r\n\r\n¿Desea un solo mensaje con todos?"));
        QVERIFY(pregunta.botones == Botones::SiNo && pregunta.por_defecto == Respuesta::No);
        por_correo(escena);
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 2 });
        QVERIFY(correo.dado().empty());

        escena.avisos->dichos.clear();
        escena.sesion->bases.orvalin->Execute(
            "UPDATE Proveedores_Cargos_Atipicos SET Proveedor = 103 WHERE Codigo = 'AT260003'");
        pulsa(Qt::Key_F5);
        QTRY_COMPARE(escena.celda(0, 3), escena.celda(1, 3));
        pulsa(Qt::Key_Home);
        pulsa(Qt::Key_Down, Qt::ShiftModifier);
        pulsa(Qt::Key_M, Qt::ControlModifier);
        QVERIFY(escena.avisos->dichos.empty()); // of one supplier
        QCOMPARE(correo.dado().size(), std::size_t{ 5 });
    }

    void the_chosen_charges_are_exported_in_the_order_of_the_list()
    {
        const EscenaPanel escena;
        elige_dos(escena);
        const auto fichero = escena.carpeta / "dos.csv";
        const auto exporta = [&] {
            const AlAbrirse guardar(
                [&](QWidget& dialogo) {
                    QCOMPARE(control<QLineEdit>(dialogo, "fileNameEdit").text(),
                        QStringLiteral("Atípicos, 2 cargos"));
                    control<QLineEdit>(dialogo, "fileNameEdit")
                        .setText(QString::fromStdString(fichero.string()));
                    intro();
                },
                "dlgExportar");
            pulsa(Qt::Key_E, Qt::ControlModifier);
        };
        exporta();
        QVERIFY(escena.avisos->dichos.empty());
        const auto csv = lee_fichero(fichero);
        const auto primero = csv.find("AT260003");
        const auto segundo = csv.find("AT260001");
        QVERIFY2(
            primero != std::string::npos && segundo != std::string::npos && primero < segundo, csv.c_str());
        QCOMPARE(std::count(csv.begin(), csv.end(), '\n'), 3);

        escena.sesion->bases.orvalin->Execute(
            "UPDATE Proveedores_Cargos_Atipicos SET Fecha = '18/06/2026' WHERE Codigo = 'AT260001'");
        std::filesystem::remove(fichero);
        exporta();
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 });
        QCOMPARE(escena.avisos->dichos[0].texto,
            std::string("El cargo AT260001 del almacén 2 ya no es del 17/06/2026, o se ha eliminado. "
                        "Actualice la lista (F5) y vuelva a elegir."));
        QVERIFY(!std::filesystem::exists(fichero));
    }

    void the_chosen_charges_go_to_the_devices_that_are_chosen_for_all_of_them()
    {
        const CorreoFingido correo;
        const EscenaPanel escena;
        elige_dos(escena);
        escena.avisos->respuestas = { Respuesta::Si };
        por_correo(escena);
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 }); // whether in one message
        QCOMPARE(correo.dado().size(), std::size_t{ 10 }); // twice, as it was chosen twice
        QVERIFY2(correo.adjunto().find("/Count 2") != std::string::npos, "not two pages");
        {
            const AlAbrirse dejarlo([](QWidget& dialogo) { clic(dialogo, "cmdCancelar"); }, "frmImpresora");
            pulsa(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        }
        QCOMPARE(correo.dado().size(), std::size_t{ 10 });
    }
};

ATIPICOS_PRUEBA_VENTANAS(CargosElegidos_Test)
#include "CargosElegidos_test.moc"
