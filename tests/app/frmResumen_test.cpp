#include "host/ventanas/frmResumen.hpp"

#include "context/modComun.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/graficos/PanelGraficos.hpp"
#include "host/ordenes/Ordenes.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/ventanas/Apariencia.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <filesystem>
#include <iostream>
#include <map>
#include <sstream>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// The sample company with its claims, and the window of summaries on its years.
struct EscenaResumen {
    CarpetaTemporal carpeta;
    app::OpcionesComunes opciones;
    std::shared_ptr<MsgBoxDePrueba> avisos = std::make_shared<MsgBoxDePrueba>();
    std::unique_ptr<app::Sesion> sesion;
    std::unique_ptr<app::frmResumen> ventana;

    EscenaResumen()
    {
        opciones.datos = carpeta / "datos";
        bases::crea_bases(opciones.lugar(), false);
        std::ostringstream tabla;
        auto* const pantalla = std::cout.rdbuf(tabla.rdbuf());
        const int estado = app::registrar(opciones, { ATIPICOS_FUENTES "/host/datos/reclamaciones.csv" });
        std::cout.rdbuf(pantalla);
        if (estado != app::hecho)
            qFatal("the claims of the sample are not recorded");
        sesion = std::make_unique<app::Sesion>(opciones);
        modComun::set_MsgBox(avisos);
        auto reloj = std::make_shared<RelojDePrueba>();
        reloj->valor = dia_y_hora("31/12/2026", 9, 5, 3);
        modComun::set_Reloj(reloj);
        ventana = std::make_unique<app::frmResumen>(*sesion, opciones.lugar());
        ventana->show();
        if (!QTest::qWaitForWindowActive(ventana.get(), atipicos::pruebas::paciencia))
            qFatal("the window of summaries is not active");
    }
    ~EscenaResumen() { vacia_contexto(); }

    [[nodiscard]] VSFlexGrid& tabla() const { return control<VSFlexGrid>(*ventana, "vsResumen"); }
    [[nodiscard]] QString dice(const char* etiqueta) const
    {
        return control<QLabel>(*ventana, etiqueta).text().replace(QChar(0x00A0), u' ');
    }
    [[nodiscard]] QStringList columna(int cual) const
    {
        QStringList todas;
        for (int fila = 1; fila < tabla().Rows(); ++fila)
            todas << tabla().TextMatrix(fila, cual);
        return todas;
    }
    void elige(const char* por) const
    {
        control<QComboBox>(*ventana, "cboPor").setCurrentText(QString::fromUtf8(por));
    }
};

}

class frmResumen_Test : public QObject {
    Q_OBJECT
private slots:
    void every_view_is_shown_as_the_command_tells_it()
    {
        const EscenaResumen escena;
        QTRY_COMPARE(escena.tabla().Rows(), 15);
        QCOMPARE(
            escena.dice("lblEstado"), QStringLiteral("Cargos por proveedor del 01/01/2026 al 31/12/2026"));
        QCOMPARE(escena.tabla().Row(), 1);
        QCOMPARE(escena.tabla().TextMatrix(0, 1), QStringLiteral("Proveedor"));
        QCOMPARE(escena.tabla().TextMatrix(1, 1), QStringLiteral("Distribuidora Peninsular Ibáñez, S.A."));
        QCOMPARE(escena.tabla().TextMatrix(1, 5), QStringLiteral("4.253,90"));
        QCOMPARE(escena.tabla().TextMatrix(1, 6), QStringLiteral("15,5 %"));
        QVERIFY2(escena.dice("lblTotal")
                     .contains(QStringLiteral(
                         "Cargos: 63   Base: 25.722,64   Impuesto: 1.800,61   Total: 27.523,25")),
            qPrintable(escena.dice("lblTotal")));
        // A line of it may end between two figures, not inside one.
        QVERIFY(control<QLabel>(*escena.ventana, "lblTotal")
                    .text()
                    .contains(QStringLiteral("   Un\u00A0año\u00A0antes:\u00A06.658,08   ")));
        escena.elige("mes");
        QTRY_COMPARE(escena.tabla().Rows(), 13);
        QCOMPARE(escena.tabla().TextMatrix(12, 1), QStringLiteral("diciembre de 2026"));
        QCOMPARE(escena.tabla().TextMatrix(0, 0), QStringLiteral("Mes"));
        escena.elige("artículo");
        QTRY_COMPARE(escena.tabla().TextMatrix(0, 2), QStringLiteral("Líneas"));
        QTRY_COMPARE(escena.tabla().TextMatrix(1, 1), QStringLiteral("(sin artículo)"));
        QVERIFY(escena.dice("lblTotal").contains(QStringLiteral("unos céntimos")));
        QVERIFY(escena.avisos->dichos.empty());
    }

    void filters_are_keyed_in_and_enter_reads()
    {
        const EscenaResumen escena;
        QTRY_COMPARE(escena.tabla().Rows(), 15);
        control(*escena.ventana, "txtFechaI").setFocus();
        pulsa(Qt::Key_Home);
        teclea("11112025");
        intro();
        QTRY_COMPARE(
            escena.dice("lblEstado"), QStringLiteral("Cargos por proveedor del 11/11/2025 al 31/12/2026"));
        QVERIFY(escena.dice("lblTotal").startsWith(QStringLiteral("Cargos: 74 ")));
        control(*escena.ventana, "txtAlmacen").setFocus();
        teclea("4");
        intro();
        QTRY_VERIFY(escena.dice("lblEstado").endsWith(QStringLiteral(", sólo del almacén 4")));
        QVERIFY(!escena.dice("lblTotal").startsWith(QStringLiteral("Cargos: 74 ")));
        control(*escena.ventana, "txtFechaF").setFocus();
        pulsa(Qt::Key_Home);
        teclea("10102024");
        intro();
        QCOMPARE(escena.dice("lblEstado"),
            QStringLiteral("El primer día es posterior al último: cambie uno de los dos."));
        pulsa(Qt::Key_Home);
        teclea("31022026");
        pulsa(Qt::Key_F5);
        QVERIFY2(escena.dice("lblEstado").contains(QStringLiteral("31/02/2026")),
            qPrintable(escena.dice("lblEstado")));
    }

    void what_cannot_be_read_is_told_and_tried_again()
    {
        const EscenaResumen escena;
        QTRY_COMPARE(escena.tabla().Rows(), 15);
        const auto fichero = escena.carpeta / "datos/empresa.db";
        const auto aparte = escena.carpeta / "empresa.db";
        std::filesystem::rename(fichero, aparte);
        pulsa(Qt::Key_F5);
        QTRY_VERIFY(escena.dice("lblEstado").startsWith(QStringLiteral("No se ha podido leer: ")));
        QCOMPARE(escena.tabla().Rows(), 1);
        QVERIFY(!control<QPushButton>(*escena.ventana, "cmdExportar").isEnabled());
        QCOMPARE(escena.dice("lblTotal"), QString());
        std::filesystem::rename(aparte, fichero);
        pulsa(Qt::Key_F5);
        QTRY_COMPARE(escena.tabla().Rows(), 15);
        QVERIFY(control<QPushButton>(*escena.ventana, "cmdExportar").isEnabled());
    }

    void of_many_questions_the_last_is_answered()
    {
        const EscenaResumen escena;
        for (const auto* por : { "mes", "artículo", "proveedor", "almacén" })
            escena.elige(por);
        QTRY_COMPARE(escena.tabla().TextMatrix(0, 1), QStringLiteral("Almacén"));
        QTRY_COMPARE(escena.columna(0).join(u' '), QStringLiteral("3 1 2 4"));
        QTest::qWait(50);
        QCOMPARE(escena.tabla().TextMatrix(0, 1), QStringLiteral("Almacén"));
    }

    void it_is_written_as_the_name_of_the_file_says()
    {
        const EscenaResumen escena;
        QTRY_COMPARE(escena.tabla().Rows(), 15);
        const auto fichero = QString::fromStdString((escena.carpeta / "x.csv").string());
        QVERIFY(con_dialogo<QFileDialog>([&] { clic(*escena.ventana, "cmdExportar"); },
            [&](QFileDialog& dialogo) {
                QVERIFY(dialogo.selectedFiles().value(0).endsWith(
                    QStringLiteral("Resumen por proveedor 2026-01-01 a 2026-12-31.xlsx")));
                dialogo.selectNameFilter(dialogo.nameFilters().at(1));
                control<QLineEdit>(dialogo, "fileNameEdit").setText(fichero);
                intro();
            }));
        QCOMPARE(escena.dice("lblEstado"), QStringLiteral("Guardado en ") + fichero + u'.');
        QVERIFY(lee_fichero(escena.carpeta / "x.csv").starts_with("Código;Proveedor;Cargos;"));
        for (const auto& [nombre, principio] : { std::pair{ "x.json", "{\n  \"por\"" }, { "x.xlsx", "PK" },
                 { "x.png", "\x89PNG" }, { "x.svg", "<?xml" }, { "x.PDF", "%PDF" } }) {
            escena.ventana->Guarda(QString::fromStdString((escena.carpeta / nombre).string()));
            QVERIFY2(lee_fichero(escena.carpeta / nombre).starts_with(principio), nombre);
        }
        QVERIFY_THROWS_EXCEPTION(Error, escena.ventana->Guarda(QStringLiteral("/tmp/x.doc")));
    }

    void the_charts_are_told_and_follow_the_theme()
    {
        const EscenaResumen escena;
        QTRY_COMPARE(escena.tabla().Rows(), 15);
        auto& barras = control<QGraphicsView>(*escena.ventana, "grfBarras");
        QCOMPARE(barras.accessibleName(), QStringLiteral("Gráfico: Total por proveedor"));
        QCOMPARE(barras.accessibleDescription(), QStringLiteral("Sus números están en la tabla."));
        QCOMPARE(control<QGraphicsView>(*escena.ventana, "grfMeses").accessibleName(),
            QStringLiteral("Gráfico: Total mes a mes"));
        for (const char* grafico : { "grfBarras", "grfMeses" }) // no key goes to what cannot be changed
            QCOMPARE(control<QGraphicsView>(*escena.ventana, grafico).viewport()->focusPolicy(), Qt::NoFocus);
        const auto esquina = [&] { return barras.grab().toImage().pixelColor(12, 12).lightness(); };
        app::aplica_tema(app::Tema::oscuro);
        QTRY_VERIFY(esquina() < 80);
        app::aplica_tema(app::Tema::claro);
        QTRY_VERIFY(esquina() > 200);
    }

    void numbers_and_colours_on_the_charts_are_read_as_in_the_table()
    {
        const EscenaResumen escena;
        QTRY_COMPARE(escena.tabla().Rows(), 15);
        const auto rotulos = [&](const char* grafico) {
            std::map<QString, double> sitios; // from the left
            for (const auto* uno : control<QGraphicsView>(*escena.ventana, grafico).scene()->items())
                if (const auto* texto = qgraphicsitem_cast<const QGraphicsTextItem*>(uno); texto != nullptr)
                    sitios[texto->toPlainText()] = texto->scenePos().x();
            return sitios;
        };
        auto barras = rotulos("grfBarras");
        QVERIFY(barras.contains(QStringLiteral("5.000"))); // and not 5000
        QVERIFY(rotulos("grfMeses").contains(QStringLiteral("2.000")));
        const auto ahora = QStringLiteral("Este periodo");
        const auto antes = QStringLiteral("Un año antes");
        QVERIFY(barras.contains(ahora) && barras.contains(antes));
        QVERIFY(barras[ahora] < barras[antes]); // lying bars: the one above is told first
        escena.elige("mes");
        QTRY_VERIFY(rotulos("grfBarras")[antes] < rotulos("grfBarras")[ahora]); // standing: from the left
    }

    void the_main_window_opens_it_once_and_escape_closes_it()
    {
        EscenaResumen escena;
        escena.ventana.reset();
        app::frmPrincipal principal(*escena.sesion, escena.opciones);
        principal.show();
        QVERIFY(QTest::qWaitForWindowActive(&principal, atipicos::pruebas::paciencia));
        const auto abiertas = [&] { return principal.findChildren<app::frmResumen*>().size(); };
        control<QAction>(principal, "mnuResumen").trigger();
        control<QAction>(principal, "mnuResumen").trigger();
        QCOMPARE(abiertas(), 1);
        auto& ventana = control<app::frmResumen>(principal, "frmResumen");
        QTRY_COMPARE(control<VSFlexGrid>(ventana, "vsResumen").Rows(), 15);
        QTest::keyClick(&ventana, Qt::Key_Escape);
        QTRY_COMPARE(abiertas(), 0);
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmResumen_Test)
#include "frmResumen_test.moc"
