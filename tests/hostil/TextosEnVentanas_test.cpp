// Hostile texts pasted into every field of every form, and Enter after each: nothing is written, nothing
// breaks, and the form works afterwards. What a saved charge holds of them is what its fields showed, or a
// box said why not.
#include "browser/frmCompras_Atipicos_Visor.hpp"
#include "controls/qvTextoLargo.hpp"
#include "controls/SalidaQt.hpp"
#include "controls/VistaReport.hpp"
#include "editor/frmEditor_Comentarios.hpp"
#include "host/orvalin/Biblioteca.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "host/ventanas/frmSesion.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"
#include "posting/frmCompras_Atipicos_Contabilizar.hpp"
#include "printing/clsView.hpp"
#include "printing/frmImpresora.hpp"
#include "printing/frmView.hpp"
#include "printing/ImprimirAtipico.hpp"
#include "tests/editor/EscenaEditor.hpp"
#include "tests/hostil/Textos.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QClipboard>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QStatusBar>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

QString a_pegar(const TextoHostil& hostil)
{
    return QString::fromUtf8(hostil.texto.data(), static_cast<qsizetype>(hostil.texto.size()));
}

/// As a person does: the field, all of it, paste.
void pega(QWidget& campo, const QString& texto)
{
    QGuiApplication::clipboard()->setText(texto);
    campo.setFocus();
    QTest::keyClick(&campo, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&campo, Qt::Key_V, Qt::ControlModifier);
}

template <class Caja> void agrega_cajas(QWidget& form, QList<QWidget*>& todos)
{
    for (auto* caja : form.findChildren<Caja*>())
        if (!caja->isReadOnly() && caja->isVisible() && caja->isEnabled())
            todos << caja;
}

/// The fields of a form that can be written into.
QList<QWidget*> campos(QWidget& form)
{
    QList<QWidget*> todos;
    agrega_cajas<QLineEdit>(form, todos);
    agrega_cajas<QPlainTextEdit>(form, todos);
    agrega_cajas<QSpinBox>(form, todos);
    return todos;
}

/// Everything that takes keys but cannot be written into, with what is chosen or shown there.
QMap<QString, QString> elegido(QWidget& form)
{
    QMap<QString, QString> todo{ { QStringLiteral("title"), form.windowTitle() } };
    for (const auto* lista : form.findChildren<QComboBox*>())
        todo[lista->objectName()] = lista->currentText();
    for (const auto* etiqueta : form.findChildren<QLabel*>())
        todo[etiqueta->objectName()] += etiqueta->text();
    return todo;
}

/// Pastes every text where there is nothing to write; returns into how many controls.
int castiga_lo_demas(QWidget& form)
{
    int cuantos = 0;
    for (auto* uno : form.findChildren<QWidget*>()) {
        if (uno->focusPolicy() == Qt::NoFocus || !uno->isVisible() || !uno->isEnabled()
            || campos(form).contains(uno))
            continue;
        for (const auto& hostil : textos_hostiles())
            pega(*uno, a_pegar(hostil));
        ++cuantos;
    }
    return cuantos;
}

/// Pastes every text into every field and presses Enter there; returns how many fields there were.
int castiga(QWidget& form)
{
    const auto todos = campos(form);
    for (QWidget* campo : todos)
        for (const auto& hostil : textos_hostiles()) {
            pega(*campo, a_pegar(hostil));
            QTest::keyClick(campo, Qt::Key_Return);
            if (!form.isVisible())
                qFatal("%s in %s closes %s", hostil.nombre, qPrintable(campo->objectName()),
                    qPrintable(form.objectName()));
            pega(*campo, QString());
        }
    return static_cast<int>(todos.size());
}

}

class TextosEnVentanas_Test : public QObject {
    Q_OBJECT
private slots:

    void in_the_main_window_and_its_session_dialog_nothing_changes()
    {
        const auto muestra = en_carpeta().muestra();
        app::OpcionesComunes opciones;
        opciones.datos = muestra->lugar().carpeta();
        {
            app::Sesion sesion(opciones);
            app::frmPrincipal ventana(sesion, opciones);
            ventana.show();
            QVERIFY(QTest::qWaitForWindowActive(&ventana, atipicos::pruebas::paciencia));
            // It fills itself after it is shown.
            QTRY_VERIFY(
                control<QLabel>(ventana, "lblSinAsiento").text() != QStringLiteral("Se está mirando…"));
            QTRY_VERIFY(!control<QLabel>(ventana, "lblCargos").text().isEmpty());
            const auto antes = elegido(ventana);
            QCOMPARE(castiga(ventana), 1); // the search box
            QTRY_COMPARE(elegido(ventana), antes);
            QVERIFY(castiga_lo_demas(ventana) >= 1);
            QTRY_COMPARE(elegido(ventana), antes);
            QVERIFY(QApplication::activeModalWidget() == nullptr);

            app::frmSesion dialogo(sesion.catalogos.empresas(), sesion.catalogos.usuarios(), &ventana);
            dialogo.elige(2, 3);
            dialogo.show();
            QVERIFY(QTest::qWaitForWindowActive(&dialogo, atipicos::pruebas::paciencia));
            QVERIFY(campos(dialogo).isEmpty());
            QVERIFY(castiga_lo_demas(dialogo) >= 2);
            QCOMPARE(dialogo.empresa(), std::int16_t{ 2 });
            QCOMPARE(dialogo.usuario(), 3);
        }
        vacia_contexto();
    }

    void in_the_dialog_of_devices_nothing_changes()
    {
        const Banco banco;
        const auto antes = banco.estado();
        std::optional<DestinoImpresion> primero;
        std::optional<DestinoImpresion> segundo;
        for (auto* destino : { &primero, &segundo }) {
            const AlAbrirse impresora(
                [&](QWidget& dialogo) {
                    QVERIFY(campos(dialogo).isEmpty());
                    if (destino == &segundo)
                        QVERIFY(castiga_lo_demas(dialogo) >= 4);
                    clic(dialogo, "cmdAceptar");
                },
                "frmImpresora");
            *destino = frmImpresora::pregunta(modComun::EmpresaOrvalin(), nullptr);
        }
        QVERIFY(primero.has_value());
        QVERIFY(segundo == primero);
        QVERIFY(banco.estado() == antes);
        QVERIFY(banco.avisos->dichos.empty());
    }

    void in_every_field_of_the_viewer()
    {
        Banco banco;
        const auto codigo = banco.guarda().Codigo;
        banco.avisos->dichos.clear();
        const auto antes = banco.estado();
        auto visor = [](std::shared_ptr<const Report> report) {
            clsView vista;
            vista.set_Report(std::move(report));
            vista.Cargar(false);
        };
        modComun::set_BibliotecaOrvalin(std::make_shared<orvalin::Biblioteca>(
            banco.bases().orvalin, std::make_shared<SalidaQt>(visor), orvalin::Plantilla::de_serie()));
        QVERIFY(ImprimirAtipico({ 2026, 1, codigo, 104 }, [] {
            return DestinoImpresion{ "", qvoremp::dispositivo::pantalla, qvoremp::dispositivo::ninguno, 0 };
        }));
        auto& form = frmView::compartido();
        QVERIFY(QTest::qWaitForWindowActive(&form, atipicos::pruebas::paciencia));
        const auto mostrado = elegido(form);
        QVERIFY(castiga(form) >= 2);
        QVERIFY(castiga_lo_demas(form) >= 2);
        auto& buscar = control<QLineEdit>(form, "txtBuscar");
        buscar.clear();
        QCOMPARE(elegido(form), mostrado);
        QCOMPARE(control<VistaReport>(form, "vista").Pagina(), 1);
        teclea(&buscar, QString::fromStdString(codigo));
        QVERIFY(control<QLabel>(form, "lblHallados").text().startsWith(QStringLiteral(" 1 de ")));
        form.close();
        QVERIFY(banco.estado() == antes);
        QVERIFY(banco.avisos->dichos.empty());
    }

    void in_every_field_of_the_editor()
    {
        EscenaEditor escena("");
        const auto antes = escena.banco.estado();
        QVERIFY(castiga(*escena.form) >= 9);
        QVERIFY(escena.banco.estado() == antes);
        escena.form->done(0);
        escena.banco.avisos->dichos.clear();
        escena.abre();
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1006", "=", "", "12", "5,6325");
        escena.acepta();
        QCOMPARE(escena.avisos().back().texto,
            std::string("Atípico AT260001 generado correctamente.\r\nAsiento: 1"));
    }

    void in_every_field_of_the_forecasts()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1006", "=", "", "12", "5,6325");
        const auto antes = escena.banco.estado();
        const AlAbrirse contabilizar(
            [](QWidget& dialogo) {
                QVERIFY(castiga(dialogo) >= 4);
                QVERIFY(dialogo.isVisible());
                clic(dialogo, "cmdCancelar");
            },
            "frmCompras_Atipicos_Contabilizar");
        atajo(Qt::Key_A);
        QVERIFY(escena.banco.estado() == antes);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("enabled"));
    }

    void in_every_field_of_the_browser()
    {
        Banco banco;
        banco.guarda();
        const auto antes = banco.estado();
        frmCompras_Atipicos_Visor visor;
        visor.Fecha_Inicial = dia("01/11/2026");
        visor.Fecha_Final = dia("30/11/2026");
        visor.Show();
        QVERIFY(QTest::qWaitForWindowActive(&visor, atipicos::pruebas::paciencia));
        QVERIFY(castiga(visor) >= 4);
        QVERIFY(banco.estado() == antes);
        for (const auto* caja : { "txtFechaI", "txtFechaF" })
            control<qvMaskEdBox>(visor, caja).set_Fecha(dia("21/11/2026"));
        banco.avisos->dichos.clear();
        QTest::keyClick(&control(visor, "txtFechaF"), Qt::Key_Return);
        QCOMPARE(control<VSFlexGrid>(visor, "vsCab").Rows(), 2);
        QVERIFY(banco.avisos->dichos.empty());
    }

    void in_the_comment_editor_it_is_taken_with_quotes_turned_into_accents()
    {
        for (const auto& hostil : textos_hostiles()) {
            EscenaEditor escena("");
            EscenaEditor::teclea_cabecera("104");
            EscenaEditor::teclea_linea("", "Agua", "", "1", "10");
            QString mostrado;
            escena.rejilla().setFocus();
            pulsa(Qt::Key_Home);
            const AlAbrirse editor([&](QWidget& dialogo) {
                auto& campo = control<QPlainTextEdit>(dialogo, "txtComent");
                pega(campo, a_pegar(hostil));
                mostrado = campo.toPlainText().replace(u'\'', u'´');
                pulsa(Qt::Key_F9);
            });
            pulsa(Qt::Key_F4);
            QVERIFY2(!mostrado.contains(u'\''), hostil.nombre);
            QString en_celda = mostrado;
            QCOMPARE(escena.rejilla().TextMatrix(1, 2), en_celda.replace(u'\t', u' '));
        }
    }

    void a_charge_that_holds_them_is_saved_as_shown_or_its_box_says_why_not_data()
    {
        QTest::addColumn<int>("cual");
        const auto todos = textos_hostiles();
        for (std::size_t i = 0; i < todos.size(); ++i)
            QTest::newRow(todos[i].nombre) << static_cast<int>(i);
    }

    void a_charge_that_holds_them_is_saved_as_shown_or_its_box_says_why_not()
    {
        QFETCH(const int, cual);
        const auto hostil = textos_hostiles().at(static_cast<std::size_t>(cual));
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        auto& observaciones = escena.c<QPlainTextEdit>("txtObservaciones");
        pega(observaciones, a_pegar(hostil));
        escena.c<>("txtArticulo").setFocus();
        EscenaEditor::teclea_linea("1006", "=", "", "1", "10"); // the description of the article stays
        escena.c<>("txtArticulo").setFocus();
        intro();
        pega(escena.c<>("txtArticuloDescripcion"), a_pegar(hostil));
        pega(escena.c<>("txtObserv"), a_pegar(hostil));
        escena.c<>("txtUnidades").setFocus();
        for (const auto* numero : { "1", "20" }) {
            teclea(numero);
            intro();
        }
        intro();
        QCOMPARE(escena.total(), QStringLiteral("30,00"));
        const auto cabecera = observaciones.toPlainText().toStdString();
        const auto linea = escena.form->findChild<QLineEdit*>(QStringLiteral("txtObserv"))->text();

        escena.acepta();

        const bool rechazado
            = cabecera.find('\'') != std::string::npos || cabecera.find('\0') != std::string::npos;
        const auto titulos = escena.banco.titulos();
        QCOMPARE(titulos.front(), std::string(rechazado ? "clsAtipico:Insertar" : "¡ Atención !"));
        QCOMPARE(titulos.back(), std::string("¡ Atención !"));
        const auto estado = escena.banco.estado();
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos"), rechazado ? 0 : 1);
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos_Lineas"), rechazado ? 0 : 2);
        QCOMPARE(estado.at("Bexmor.dbo.Asientos"), 1); // as is required, the entry is kept
        if (!rechazado) {
            QCOMPARE(CStr(escena.banco.consulta("SELECT Observ FROM Proveedores_Cargos_Atipicos")), cabecera);
            for (const auto* columna : { "Descripcion", "Observ" }) {
                const auto guardado = CStr(escena.banco.consulta(std::string("SELECT ") + columna
                    + " FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea = 2"));
                QVERIFY2(!guardado.empty(), columna);
            }
        }
    }
};

ATIPICOS_PRUEBA_VENTANAS(TextosEnVentanas_Test)
#include "TextosEnVentanas_test.moc"
