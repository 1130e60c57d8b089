// What stands in the editor is handed to a host that keeps it, and nothing of what the editor does is
// otherwise than without such a host.
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/BorradoresDePrueba.hpp"
#include "tests/support/Ventanas.hpp"

#include <QPlainTextEdit>

#include <algorithm>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

struct EscenaConBorrador : EscenaEditor {
    std::shared_ptr<BorradoresDePrueba> host = std::make_shared<BorradoresDePrueba>();

    explicit EscenaConBorrador(const std::string& codigo = {})
    {
        if (!codigo.empty())
            static_cast<void>(banco.guarda());
        modComun::set_Borradores(host);
        abre(codigo);
    }
    ~EscenaConBorrador()
    {
        form.reset(); // it tells the host that it goes
        modComun::set_Borradores(nullptr);
    }

    std::vector<std::string> sucesos() { return std::exchange(host->sucesos, {}); }
};

using Sucesos = std::vector<std::string>;

void teclea_dos_lineas()
{
    EscenaEditor::teclea_cabecera("106");
    EscenaEditor::teclea_linea("1003", "Vino", "l", "12,485", "9,75");
    EscenaEditor::teclea_linea("", "Porte", "", "-1", "4,5");
}

/// All that an editor does: lines taken, changed, removed; one charge cancelled, one saved.
std::vector<std::string> una_jornada(EscenaEditor& escena)
{
    teclea_dos_lineas();
    escena.rejilla().set_Row(1);
    clic(*escena.form, "cmdModificar");
    EscenaEditor::teclea_linea("1004", "=", "=", "=", "=");
    escena.banco.avisos->respuestas = { Respuesta::Si, Respuesta::Si };
    escena.rejilla().set_Row(2);
    clic(*escena.form, "cmdEliminar");
    clic(*escena.form, "cmdCancelar");
    teclea_dos_lineas();
    escena.acepta();
    clic(*escena.form, "cmdSalir");
    auto dichas = escena.banco.parte->dichas;
    // The time of day at which a row was written.
    std::erase_if(dichas, [](const auto& dicha) { return dicha.find("Hora") != std::string::npos; });
    return dichas;
}

}

class BorradorEnVentana_Test : public QObject {
    Q_OBJECT
private slots:
    void every_line_and_the_header_reach_the_host()
    {
        EscenaConBorrador escena;
        QVERIFY(escena.sucesos() == Sucesos{ "abre" });
        escena.c<qvMaskEdBox>("txtFecha").set_Fecha(dia("09/10/2026"));
        escena.c<QAbstractButton>("chkFranquiciado").setChecked(true);
        teclea("3");
        teclea_dos_lineas();
        QVERIFY(escena.sucesos() == (Sucesos{ "guarda", "guarda" }));
        Borrador debido;
        debido.Almacen = 3;
        debido.Proveedor = 106;
        debido.NombreProveedor = "Quesería Majorera Tiscamanita";
        debido.Fecha = "09/10/2026";
        debido.Franquiciado = true;
        debido.Total = moneda("117.23");
        debido.Lineas = { { 1003, "Vino", "l", moneda("12.485"), moneda("9.75"), 1003, 0, false },
            { 0, "Porte", "", moneda("-1"), moneda("4.5"), 0, 0, false } };
        QVERIFY(escena.host->ultimo == debido);

        auto& observaciones = escena.c<QPlainTextEdit>("txtObservaciones");
        observaciones.setFocus();
        teclea("Roto");
        QVERIFY(escena.host->ultimo == debido);
        intro(); // leaves the box
        debido.Observaciones = "Roto";
        QVERIFY(escena.host->ultimo == debido);
        QVERIFY(escena.sucesos() == Sucesos{ "guarda" });

        escena.rejilla().set_Row(2);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        QCOMPARE(escena.host->ultimo.value().Lineas.size(), std::size_t{ 1 });
        escena.rejilla().set_Row(1);
        {
            const AlAbrirse comentario(
                [](QWidget&) {
                    teclea("caja");
                    pulsa(Qt::Key_F9);
                },
                "frmEditor_Comentarios");
            clic(*escena.form, "cmdComent");
        }
        QVERIFY(escena.host->ultimo.value().Lineas.front().Observaciones.find("CAJA") != std::string::npos);
        QVERIFY(escena.sucesos() == (Sucesos{ "guarda", "guarda" }));
    }

    void saving_and_cancelling_take_it_away_and_closing_leaves_it()
    {
        EscenaConBorrador escena;
        teclea_dos_lineas();
        escena.sucesos();
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdCancelar");
        QVERIFY(escena.sucesos() == Sucesos{ "quita" });
        QVERIFY(!escena.host->ultimo);

        teclea_dos_lineas();
        escena.sucesos();
        std::vector<std::string> al_avisar;
        escena.banco.parte->antes = [&](const std::string& dicha) {
            if (dicha.find("COMMIT") != std::string::npos)
                al_avisar.push_back(escena.host->sucesos.empty() ? "" : escena.host->sucesos.back());
        };
        escena.acepta();
        escena.banco.parte->antes = nullptr;
        QVERIFY(al_avisar
            == (std::vector<std::string>(2, "guarda antes de grabar"))); // gone only when it is stored
        QVERIFY(escena.sucesos() == (Sucesos{ "guarda antes de grabar", "quita" }));

        teclea_dos_lineas();
        teclea("1012"); // a line that is not accepted
        clic(*escena.form, "cmdSalir");
        QVERIFY(escena.sucesos() == (Sucesos{ "guarda", "guarda", "guarda", "deja" }));
        QCOMPARE(escena.host->ultimo.value().EnCurso.Cod_Articulo, 1012);
        QVERIFY(!escena.host->ultimo.value().Guardandose);
    }

    void a_save_that_fails_keeps_it_and_one_whose_charge_was_not_written_leaves_it_marked()
    {
        EscenaConBorrador escena;
        teclea_dos_lineas();
        escena.sucesos();
        escena.banco.parte->antes = [](const std::string& dicha) {
            if (dicha.find("Contador_") != std::string::npos)
                throw Error(1, "pruebas", "sin contador");
        };
        {
            const AlAbrirse contabilizar(
                [](QWidget&) { pulsa(Qt::Key_F9); }, "frmCompras_Atipicos_Contabilizar");
            atajo(Qt::Key_A);
        }
        QVERIFY(escena.sucesos() == (Sucesos{ "guarda antes de grabar", "guarda" }));
        QCOMPARE(escena.rejilla().Rows(), 3);

        escena.banco.parte->antes = [](const std::string& dicha) {
            if (dicha.find("INSERT INTO Proveedores_Cargos_Atipicos_Lineas") != std::string::npos)
                throw Error(1, "pruebas", "sin líneas");
        };
        escena.acepta();
        QCOMPARE(escena.rejilla().Rows(), 1); // the form has let go of the charge
        QVERIFY(escena.sucesos() == (Sucesos{ "guarda antes de grabar", "deja" }));
        QVERIFY(escena.host->ultimo.value().Guardandose);
    }

    void a_stored_charge_is_handed_over_with_its_key_once_it_is_changed()
    {
        EscenaConBorrador escena("AT260001");
        QVERIFY(escena.rejilla().Rows() > 2);
        QVERIFY(escena.sucesos() == Sucesos{ "abre" });
        const auto primera = escena.fila(1);
        clic(*escena.form, "cmdSalir");
        QVERIFY(escena.sucesos() == Sucesos{ "deja" });
        escena.abre("AT260001");
        escena.sucesos();
        escena.rejilla().set_Row(2);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        const auto borrador = escena.host->ultimo.value();
        QCOMPARE(borrador.Codigo, std::string("AT260001"));
        QCOMPARE(borrador.Ejercicio, std::int16_t{ 2026 });
        QCOMPARE(borrador.AlmacenDelCargo, std::int16_t{ 1 });
        QVERIFY(QString::fromStdString(borrador.Cargado)
                    .startsWith(QString(primera).replace(u'|', u'\t') + u'\n'));
        QCOMPARE(std::count(borrador.Cargado.begin(), borrador.Cargado.end(), '\n'), 3); // a line each
        QCOMPARE(borrador.Lineas.back().FilaCargada, 3);
    }

    void what_cannot_be_kept_is_told_in_the_window_and_stops_nothing()
    {
        EscenaConBorrador escena;
        auto& estado = escena.c<QLabel>("lblBorrador");
        QVERIFY(estado.isHidden());
        escena.host->falla = "No queda sitio.";
        teclea_dos_lineas();
        QCOMPARE(escena.rejilla().Rows(), 3);
        QVERIFY(escena.avisos().empty());
        QVERIFY(estado.isVisible());
        QCOMPARE(estado.text(),
            QStringLiteral("Lo tecleado no queda a salvo hasta que guarde el cargo: No queda sitio."));
        escena.host->falla.clear();
        EscenaEditor::teclea_linea("1012", "=", "", "1", "1");
        QVERIFY(estado.isHidden());
        QCOMPARE(escena.host->ultimo.value().Lineas.size(), std::size_t{ 3 });
    }

    void the_statements_and_boxes_are_those_of_an_editor_whose_host_keeps_nothing()
    {
        std::vector<std::string> debidas;
        std::vector<Mensaje> avisos;
        QString ayuda;
        {
            EscenaEditor sin_host("");
            debidas = una_jornada(sin_host);
            avisos = sin_host.avisos();
            ayuda = sin_host.c<>("cmdSalir").toolTip();
        }
        EscenaConBorrador escena;
        QVERIFY(una_jornada(escena) == debidas);
        QVERIFY(debidas.size() > 20);
        QVERIFY(escena.avisos() == avisos);
        QCOMPARE(ayuda, QStringLiteral("Cierra la ventana; lo que no se haya guardado se pierde (Alt+S)"));
        QCOMPARE(escena.c<>("cmdSalir").toolTip(),
            QStringLiteral("Cierra la ventana; lo que no se haya guardado queda como borrador (Alt+S)"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(BorradorEnVentana_Test)
#include "BorradorEnVentana_test.moc"
