// The commands of the charge browser: delete, change, print, close.
#include "browser/ExportarVisorQt.hpp"
#include "editor/frmCompras_Atipicos.hpp"
#include "printing/frmImpresora.hpp"
#include "tests/browser/EscenaVisor.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace atipicos;
using pruebas::EscenaVisor;

namespace {

/// Three charges of 21/11/2026: two of warehouse 1 and one of warehouse 2, all of them listed.
struct ConTresListados : EscenaVisor {
    ConTresListados()
    {
        for (const int almacen : { 1, 2, 1 })
            banco.guarda({}, static_cast<std::int16_t>(almacen));
        banco.avisos->dichos.clear();
        abre_y_busca();
    }
    void responde(Respuesta respuesta) { banco.avisos->respuestas = { respuesta }; }
};

Mensaje pregunta_eliminar(const std::string& asiento)
{
    return { "Deberá ir a contabilidad y eliminar manualmente el asiento asociado " + asiento
            + ".\r\n\r\n¿Está seguro que desea eliminar el atípico seleccionado?",
        "¡ Atención !", Icono::pregunta, Botones::SiNo, Respuesta::No };
}

Mensaje pregunta_modificar()
{
    return {
        "Se va a generar un nuevo asiento, asegúrese de eliminar el ya existente en Contabilidad junto a sus "
        "previsiones de pago.\r\n\r\n¿Desea Continuar?",
        "¡ Atención !", Icono::pregunta, Botones::SiNo, Respuesta::No
    };
}

/// A management library that writes down what it is asked to print.
class Imprenta final : public qvoremp::Biblioteca {
public:
    std::shared_ptr<QStringList> impresos = std::make_shared<QStringList>();

    std::unique_ptr<qvoremp::Almacen> NuevoAlmacen(const qvoremp::Empresa&, Donde) const override
    {
        struct Almacen final : qvoremp::Almacen {
            bool Cargar(Donde) override { return true; }
        };
        return std::make_unique<Almacen>();
    }
    std::unique_ptr<qvoremp::Proveedor> NuevoProveedor(const qvoremp::Empresa&, Donde) const override
    {
        struct Proveedor final : qvoremp::Proveedor {
            bool Cargar(Donde) override { return true; }
        };
        return std::make_unique<Proveedor>();
    }
    std::unique_ptr<qvoremp::ImpresionCargo> NuevaImpresionCargo(
        const qvoremp::Empresa&, Donde) const override
    {
        struct Impresion final : qvoremp::ImpresionCargo {
            std::shared_ptr<QStringList> impresos;
            void Imprimir(Donde donde) override
            {
                if (Codigo == "ATASCO")
                    throw Error(1, "Prueba", "Sin papel", donde);
                *impresos << QStringLiteral("%1 %2 %3 %4")
                                 .arg(QString::fromStdString(Codigo))
                                 .arg(Ejercicio)
                                 .arg(almacen->Codigo)
                                 .arg(proveedor->Codigo);
            }
        };
        auto impresion = std::make_unique<Impresion>();
        impresion->impresos = impresos;
        return impresion;
    }
};

/// Presses a button of the dialog of devices that `accion` opens.
bool con_dispositivos(const std::function<void()>& accion, const char* boton)
{
    return pruebas::con_dialogo<frmImpresora>(
        accion, [boton](frmImpresora& dialogo) { pruebas::clic(dialogo, boton); });
}

}

class frmCompras_Atipicos_Visor_Comandos_Test : public QObject {
    Q_OBJECT
private slots:
    // Delete

    void delete_asks_first_and_no_leaves_everything()
    {
        ConTresListados visor;
        const auto antes = visor.banco.estado();
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_eliminar("3") });
        QVERIFY(visor.banco.estado() == antes);
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/1 AT260001/2"));
        QVERIFY(visor.banco.parte->dichas.empty());
    }

    void delete_takes_the_chosen_charge_in_one_transaction_and_searches_again()
    {
        ConTresListados visor;
        visor.lista().set_Row(3);
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_eliminar("2") });
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/1"));
        QCOMPARE(visor.lista().Row(), 1);
        QCOMPARE(visor.form.focusWidget(), &visor.lista());
        const auto& dichas = visor.banco.parte->dichas;
        QCOMPARE(dichas.size(), std::size_t{ 5 });
        QCOMPARE(dichas[0], std::string("gestion BEGIN"));
        QVERIFY(dichas[1].starts_with("gestion EXEC DELETE FROM Proveedores_Cargos_Atipicos_Lineas "));
        QVERIFY(dichas[2].starts_with("gestion EXEC DELETE FROM Proveedores_Cargos_Atipicos "));
        QCOMPARE(dichas[3], std::string("gestion COMMIT"));
        QVERIFY(dichas[4].starts_with("gestion OPEN SELECT pc.* ,"));
        QCOMPARE(visor.banco.estado()["Proveedores_Cargos_Atipicos_Lineas"], 6);
        QCOMPARE(visor.banco.estado()["Bexmor.dbo.Asientos"], 3); // left to be deleted by hand
    }

    void a_charge_that_was_not_posted_has_no_entry_number_in_the_question()
    {
        EscenaVisor visor;
        visor.graba("SINASIENTO", "21/11/2026");
        visor.abre_y_busca();
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_eliminar("") });
    }

    void deleting_the_last_charge_leaves_the_heading_and_disables_the_commands()
    {
        EscenaVisor visor;
        visor.graba("UNICO", "21/11/2026");
        visor.abre_y_busca();
        visor.banco.avisos->respuestas = { Respuesta::Si };
        visor.clic("cmdEliminar");
        QCOMPARE(visor.lista().Rows(), 1);
        QCOMPARE(visor.comandos(), QStringLiteral("disabled"));
        QCOMPARE(visor.banco.estado()["Proveedores_Cargos_Atipicos"], 0);
    }

    void from_the_details_delete_goes_back_to_the_list()
    {
        ConTresListados visor;
        visor.pulsa(Qt::Key_Return);
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QCOMPARE(visor.listados(), QStringLiteral("AT260001/1 AT260001/2"));
    }

    void the_key_of_the_deletion_comes_from_the_row_and_not_from_the_form()
    {
        ConTresListados visor;
        visor.form.Ejercicio = 1999;
        visor.form.Almacen_Inicial = 77;
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.listados(), QStringLiteral("AT260001/1 AT260001/2"));
    }

    void what_the_cells_show_decides_nothing()
    {
        ConTresListados visor;
        auto& lista = visor.lista();
        lista.set_Row(3);
        for (const int columna : { 0, 1, 3, 5, 9 })
            lista.set_TextMatrix(3, columna, QStringLiteral("otra cosa"));
        visor.pulsa(Qt::Key_Return);
        QCOMPARE(visor.c<QLabel>("lblCodigo").text(), QStringLiteral("Código: AT260001"));
        QCOMPARE(visor.texto("txtFechaDet"), QStringLiteral("21/11/2026"));
        QCOMPARE(visor.codigo("txtAlmacenDet").text(), QStringLiteral("2"));
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_eliminar("2") });
        QCOMPARE(visor.listados(), QStringLiteral("AT260002/1 AT260001/1"));
    }

    void a_failing_deletion_shows_one_box_and_changes_nothing_data()
    {
        QTest::addColumn<int>("operacion");
        QTest::addColumn<QString>("titulo");
        QTest::newRow("begin") << 1 << QStringLiteral("frmCompras_Atipicos_Visor:cmdEliminar_Click");
        QTest::newRow("lines") << 2 << QStringLiteral("clsAtipico:Eliminar_Atipico");
        QTest::newRow("header") << 3 << QStringLiteral("clsAtipico:Eliminar_Atipico");
        QTest::newRow("commit") << 4 << QStringLiteral("frmCompras_Atipicos_Visor:cmdEliminar_Click");
    }

    void a_failing_deletion_shows_one_box_and_changes_nothing()
    {
        QFETCH(const int, operacion);
        QFETCH(const QString, titulo);
        ConTresListados visor;
        const auto antes = visor.banco.estado();
        visor.lista().set_Row(2);
        visor.banco.parte->falla_en = static_cast<std::size_t>(operacion);
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.titulos(), (std::vector<std::string>{ "¡ Atención !", titulo.toStdString() }));
        QVERIFY(visor.banco.avisos->dichos[1].texto.ends_with("] fallo provocado"));
        QVERIFY(visor.banco.estado() == antes);
        QCOMPARE(visor.lista().Rows(), 4);
        QCOMPARE(visor.lista().Row(), 2); // the list has not been read again
        QCOMPARE(visor.comandos(), QStringLiteral("enabled"));
    }

    void a_search_that_fails_after_the_deletion_is_told_by_the_command()
    {
        ConTresListados visor;
        visor.banco.parte->falla_en = 5;
        visor.responde(Respuesta::Si);
        visor.clic("cmdEliminar");
        QCOMPARE(visor.banco.titulos(),
            (std::vector<std::string>{ "¡ Atención !", "frmCompras_Atipicos_Visor:cmdEliminar_Click" }));
        QCOMPARE(visor.listados(), QStringLiteral("AT260001/1 AT260001/2")); // the charge is gone
        QCOMPARE(visor.banco.estado()["Proveedores_Cargos_Atipicos"], 2);
    }

    // Change

    void change_asks_first_and_no_opens_nothing()
    {
        ConTresListados visor;
        visor.clic("cmdModificar");
        QCOMPARE(visor.banco.avisos->dichos, std::vector{ pregunta_modificar() });
        QVERIFY(!frmCompras_Atipicos::compartido().isVisible());
        QVERIFY(visor.banco.parte->dichas.empty());
    }

    void change_opens_the_editor_for_the_chosen_charge_and_shows_what_has_changed()
    {
        ConTresListados visor;
        visor.lista().set_Row(3);
        visor.pulsa(Qt::Key_Return); // from the details
        visor.form.Ejercicio = 1999; // the year is that of the charge's date
        visor.responde(Respuesta::Si);
        QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos>([&] { visor.clic("cmdModificar"); },
            [&](frmCompras_Atipicos& editor) {
                QCOMPARE(&editor, &frmCompras_Atipicos::compartido());
                QCOMPARE(editor.windowTitle(), QStringLiteral("Reclamaciones a Proveedores - AT260001"));
                QCOMPARE(editor.Ejercicio, std::int16_t{ 2026 });
                QCOMPARE(editor.Almacen, std::int16_t{ 2 });
                QCOMPARE(editor.findChild<VSFlexGrid*>(QStringLiteral("vsCargos"))->Rows(), 4);
                visor.banco.bases().orvalin->Execute(
                    "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 77 WHERE Cod_Almacen = 2");
                editor.close();
            }));
        QCOMPARE(visor.pestanas().currentIndex(), 0);
        QCOMPARE(visor.lista().TextMatrix(3, 9), QStringLiteral("77"));
        QCOMPARE(visor.lista().Row(), 1);
        QCOMPARE(visor.banco.avisos->dichos.size(), std::size_t{ 1 });
    }

    void a_second_change_opens_the_other_charge()
    {
        ConTresListados visor;
        QStringList titulos;
        for (const int fila : { 1, 2 }) {
            visor.activa();
            visor.lista().set_Row(fila);
            visor.responde(Respuesta::Si);
            QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos>([&] { visor.clic("cmdModificar"); },
                [&](frmCompras_Atipicos& editor) {
                    titulos << editor.windowTitle();
                    editor.close();
                }));
        }
        QCOMPARE(titulos.join(u' '),
            QStringLiteral("Reclamaciones a Proveedores - AT260002 Reclamaciones a Proveedores - AT260001"));
    }

    void a_search_that_fails_after_the_change_is_told_by_the_command()
    {
        ConTresListados visor;
        visor.responde(Respuesta::Si);
        QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos>([&] { visor.clic("cmdModificar"); },
            [&](frmCompras_Atipicos& editor) {
                visor.banco.parte->falla_en = visor.banco.parte->dichas.size() + 1;
                editor.close();
            }));
        QCOMPARE(visor.banco.titulos(),
            (std::vector<std::string>{ "¡ Atención !", "frmCompras_Atipicos_Visor:cmdModificar_Click" }));
        QCOMPARE(visor.lista().Rows(), 4);
    }

    // Print

    void the_button_and_f9_print_the_chosen_charge_on_both_devices()
    {
        ConTresListados visor;
        const auto imprenta = std::make_shared<Imprenta>();
        modComun::set_BibliotecaOrvalin(imprenta);
        visor.lista().set_Row(3);
        QVERIFY(con_dispositivos([&] { visor.clic("cmdImprimir"); }, "cmdAceptar"));
        visor.activa();
        visor.lista().set_Row(1);
        QVERIFY(con_dispositivos([&] { visor.pulsa(Qt::Key_F9); }, "cmdAceptar"));
        QCOMPARE(imprenta->impresos->join(u'|'),
            QStringLiteral(
                "AT260001 2026 2 104|AT260001 2026 2 104|AT260002 2026 1 104|AT260002 2026 1 104"));
        QVERIFY(visor.banco.titulos().empty());
    }

    void cancelling_the_devices_prints_nothing()
    {
        ConTresListados visor;
        const auto imprenta = std::make_shared<Imprenta>();
        modComun::set_BibliotecaOrvalin(imprenta);
        QVERIFY(con_dispositivos([&] { visor.clic("cmdImprimir"); }, "cmdCancelar"));
        QVERIFY(imprenta->impresos->isEmpty());
    }

    void f9_in_an_empty_list_does_nothing()
    {
        EscenaVisor visor;
        visor.abre();
        visor.pulsa(Qt::Key_F9);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QVERIFY(visor.banco.titulos().empty());
    }

    void what_the_printing_raises_is_told()
    {
        EscenaVisor visor;
        modComun::set_BibliotecaOrvalin(std::make_shared<Imprenta>());
        visor.graba("ATASCO", "21/11/2026");
        visor.abre_y_busca();
        QVERIFY(con_dispositivos([&] { visor.clic("cmdImprimir"); }, "cmdAceptar"));
        QCOMPARE(
            visor.banco.titulos(), std::vector<std::string>{ "frmCompras_Atipicos_Visor:cmdImprimir_Click" });
        QVERIFY(visor.banco.avisos->dichos[0].texto.ends_with("] Sin papel"));
    }

    // Export

    void the_list_is_exported_as_it_is_shown_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QByteArray>("comienzo");
        QTest::newRow("csv") << QStringLiteral("lista.csv")
                             << QByteArray(
                                    "Código;Almacén;Nombre del almacén;Proveedor;Nombre del proveedor;Fecha;"
                                    "Importe;Impuesto;% impuesto;Asiento;Usuario;Nombre del "
                                    "usuario;Observaciones\r\nAT260002;1;Güímar central;104;Conservas La "
                                    "Graciosa, S.A.;21/11/2026;231,96;16,24;7,00 %;3;1;Begoña Hernández;Palé "
                                    "dañado\r\nAT260001;1;");
        QTest::newRow("workbook") << QStringLiteral("lista.xlsx") << QByteArray("PK");
        QTest::newRow("no ending") << QStringLiteral("lista") << QByteArray("PK");
    }

    void the_list_is_exported_as_it_is_shown()
    {
        QFETCH(const QString, nombre);
        QFETCH(const QByteArray, comienzo);
        ConTresListados visor;
        const QTemporaryDir carpeta;
        QVERIFY(exporta(visor, carpeta.filePath(nombre)));
        QFile fichero(carpeta.filePath(nombre.contains(u'.') ? nombre : nombre + QStringLiteral(".xlsx")));
        QVERIFY(fichero.open(QIODevice::ReadOnly));
        QCOMPARE(fichero.readAll().left(comienzo.size()), comienzo);
        QCOMPARE(visor.estado(), QStringLiteral("Exportado a ") + fichero.fileName());
        QVERIFY(visor.banco.titulos().empty());
    }

    void the_export_has_the_order_of_the_rows_and_the_values_that_were_read()
    {
        ConTresListados visor;
        auto& lista = visor.lista();
        emit lista.horizontalHeader()->sectionClicked(9); // by entry: the last one read comes first
        QCOMPARE(visor.listados(), QStringLiteral("AT260001/1 AT260001/2 AT260002/1"));
        lista.set_TextMatrix(1, 12, QStringLiteral("otra cosa"));
        const QTemporaryDir carpeta;
        QVERIFY(exporta(visor, carpeta.filePath(QStringLiteral("l.csv"))));
        QFile fichero(carpeta.filePath(QStringLiteral("l.csv")));
        QVERIFY(fichero.open(QIODevice::ReadOnly));
        const auto lineas = fichero.readAll().split('\n');
        QVERIFY(lineas.at(1).startsWith("AT260001;1;"));
        QVERIFY(lineas.at(1).endsWith(";Palé dañado\r"));
        QVERIFY(lineas.at(2).startsWith("AT260001;2;"));
        QVERIFY(lineas.at(3).startsWith("AT260002;1;"));
    }

    void the_export_is_named_after_what_has_been_searched_for()
    {
        ConTresListados visor;
        const auto propuesto = [&] {
            QString nombre;
            const auto mira = [&](QFileDialog& dialogo) {
                nombre = pruebas::control<QLineEdit>(dialogo, "fileNameEdit").text();
                dialogo.reject();
            };
            if (!pruebas::con_dialogo<QFileDialog>([&] { visor.clic("cmdExportar"); }, mira))
                return QStringLiteral("no dialog");
            visor.activa();
            return nombre;
        };
        QCOMPARE(propuesto(), QStringLiteral("Atípicos 2026-11-01 a 2026-11-30"));
        visor.codigo("txtAlmacen").setText(QStringLiteral("2")); // not searched for yet
        QCOMPARE(propuesto(), QStringLiteral("Atípicos 2026-11-01 a 2026-11-30"));
        visor.codigo("txtProveedor").setText(QStringLiteral("104"));
        visor.pulsa(Qt::Key_F5);
        QCOMPARE(propuesto(), QStringLiteral("Atípicos 2026-11-01 a 2026-11-30, almacén 2, proveedor 104"));
        QCOMPARE(nombre_de_fichero({ "31/02/2026", "01/03/2026", 1, 1 }),
            QStringLiteral("Atípicos 31-02-2026 a 2026-03-01, almacén 1, proveedor 1"));
    }

    void the_dialog_of_the_export_speaks_spanish_and_its_kind_of_file_is_the_ending()
    {
        ConTresListados visor;
        const QTemporaryDir carpeta;
        for (const bool texto : { true, false })
            QVERIFY(pruebas::con_dialogo<QFileDialog>([&] { visor.clic("cmdExportar"); },
                [&](QFileDialog& dialogo) {
                    QCOMPARE(dialogo.objectName(), QStringLiteral("dlgExportar")); // its page of the manual
                    QCOMPARE(dialogo.locale().language(), QLocale::Spanish);
                    auto& clases = pruebas::control<QComboBox>(dialogo, "fileTypeCombo");
                    QCOMPARE(clases.itemText(0), QStringLiteral("Libro de cálculo (*.xlsx)"));
                    QCOMPARE(clases.itemText(1), QStringLiteral("Texto separado por punto y coma (*.csv)"));
                    QTest::keyClick(&clases, Qt::Key_Down);
                    if (!texto)
                        QTest::keyClick(&clases, Qt::Key_Up);
                    auto& nombre = pruebas::control<QLineEdit>(dialogo, "fileNameEdit");
                    nombre.setText(carpeta.filePath(QStringLiteral("lista")));
                    QTest::keyClick(&nombre, Qt::Key_Return);
                }));
        const QDir escritos(carpeta.path());
        QCOMPARE(escritos.entryList(QDir::Files).join(u' '), QStringLiteral("lista.csv lista.xlsx"));
    }

    void giving_the_export_up_writes_nothing()
    {
        ConTresListados visor;
        QVERIFY(pruebas::con_dialogo<QFileDialog>(
            [&] { visor.clic("cmdExportar"); }, [](QFileDialog& dialogo) { dialogo.reject(); }));
        QVERIFY(visor.estado().startsWith(QStringLiteral("3 atípicos")));
    }

    void what_cannot_be_written_is_told()
    {
        ConTresListados visor;
        QVERIFY(exporta(visor, QStringLiteral("/proc/lista.csv")));
        QCOMPARE(
            visor.banco.titulos(), std::vector<std::string>{ "frmCompras_Atipicos_Visor:cmdExportar_Click" });
        QVERIFY(visor.banco.avisos->dichos[0].texto.find("No se puede escribir «/proc/lista.csv»")
            != std::string::npos);
    }

    // Without a chosen row, and closing

    void without_a_chosen_row_the_commands_do_nothing()
    {
        ConTresListados visor;
        visor.lista().set_Row(0);
        for (const auto* boton : { "cmdImprimir", "cmdModificar", "cmdEliminar" })
            visor.clic(boton);
        QVERIFY(visor.banco.titulos().empty());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void the_commands_have_their_letters()
    {
        ConTresListados visor;
        visor.pulsa(Qt::Key_E, Qt::AltModifier);
        QTRY_COMPARE(visor.banco.avisos->dichos.size(), std::size_t{ 1 });
        QCOMPARE(visor.banco.avisos->dichos.back(), pregunta_eliminar("3"));
        visor.pulsa(Qt::Key_M, Qt::AltModifier);
        QTRY_COMPARE(visor.banco.avisos->dichos.size(), std::size_t{ 2 });
        QCOMPARE(visor.banco.avisos->dichos.back(), pregunta_modificar());
    }

    void it_closes_by_button_and_escape_and_its_frame_and_says_so_once()
    {
        const auto cierra = std::vector<std::function<void(EscenaVisor&)>>{
            [](EscenaVisor& visor) { visor.clic("cmdSalir"); },
            [](EscenaVisor& visor) { visor.pulsa(Qt::Key_Escape); },
            [](EscenaVisor& visor) { visor.form.close(); },
        };
        for (const auto& accion : cierra) {
            ConTresListados visor;
            QSignalSpy descargas(&visor.form, &frmCompras_Atipicos_Visor::Descargado);
            accion(visor);
            QVERIFY(!visor.form.isVisible());
            QCOMPARE(descargas.count(), 1);
        }
    }

    void modal_it_returns_when_it_is_closed()
    {
        EscenaVisor visor;
        QVERIFY(pruebas::con_dialogo<frmCompras_Atipicos_Visor>(
            [&] { visor.form.Show(1); }, [](frmCompras_Atipicos_Visor& form) { form.close(); }));
        QVERIFY(!visor.form.isVisible());
    }

private:
    /// Presses the button and types the name of the file.
    static bool exporta(EscenaVisor& visor, const QString& fichero)
    {
        return pruebas::con_dialogo<QFileDialog>([&] { visor.clic("cmdExportar"); },
            [&](QFileDialog& dialogo) {
                auto& nombre = pruebas::control<QLineEdit>(dialogo, "fileNameEdit");
                nombre.setFocus();
                nombre.selectAll();
                pruebas::teclea(&nombre, fichero);
                QTest::keyClick(&nombre, Qt::Key_Return);
            });
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Visor_Comandos_Test)
#include "frmCompras_Atipicos_Visor_Comandos_test.moc"
