#include "printing/frmView.hpp"

#include "controls/EscritorPdf.hpp"
#include "controls/ImpresoraQt.hpp"
#include "controls/VistaReport.hpp"
#include "printing/clsView.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <cmath>

using atipicos::clsView;
using atipicos::Error;
using atipicos::frmView;
using atipicos::Hallazgo;
using atipicos::Report;
using atipicos::VistaReport;

namespace {

/// Five pages of A4 with their number on each; "dos" stands on pages 2 and 4.
class ReportDePrueba final : public Report {
public:
    bool buscable = true;

    std::string titulo() const override { return "Prueba/1"; }
    std::size_t paginas() const override { return 5; }
    atipicos::Tamano tamano() const override { return atipicos::A4; }
    void pinta(std::size_t pagina, atipicos::Lienzo& lienzo) const override
    {
        lienzo.texto(2000, 3000, "Página " + std::to_string(pagina + 1), { "DejaVu Sans", 500, false }, 0);
        lienzo.relleno({ 2000, 4000, 3000, 1000 }, 0x204060);
    }
    bool permite_buscar() const override { return buscable; }
    std::vector<Hallazgo> busca(std::string_view texto) const override
    {
        if (texto != "dos")
            return {};
        return { { 1, { 2000, 3000, 1000, 500 } }, { 3, { 2000, 3000, 1000, 500 } } };
    }
};

template <class T> T& hijo(const char* nombre)
{
    auto* encontrado = frmView::compartido().findChild<T*>(QString::fromUtf8(nombre));
    if (encontrado == nullptr)
        qFatal("nothing called %s", nombre);
    return *encontrado;
}

/// Counts how often a window is taken from the screen.
class Ocultada : public QObject {
public:
    int veces = 0;

    explicit Ocultada(QWidget& ventana) { ventana.installEventFilter(this); }

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override
    {
        veces += evento->type() == QEvent::Hide ? 1 : 0;
        return QObject::eventFilter(objeto, evento);
    }
};

clsView con_report(std::shared_ptr<Report> report)
{
    clsView vista;
    vista.set_Report(std::move(report));
    return vista;
}

}

class frmView_Test : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { frmView::compartido().close(); }

    void modeless_it_returns_at_once_and_stays_open()
    {
        const atipicos::pruebas::Contexto contexto;
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false);
        auto& form = frmView::compartido();
        QVERIFY(form.isVisible());
        QVERIFY(!form.isModal());
        QCOMPARE(form.windowTitle(), QStringLiteral("Empresa de prueba - Visor de Reportes"));
        QCOMPARE(hijo<VistaReport>("vista").Paginas(), 5);
        QCOMPARE(hijo<QLabel>("lblPaginas").text(), QStringLiteral(" de 5 "));
        QVERIFY(hijo<QAction>("cmdImprimir").isVisible());
        QVERIFY(hijo<QAction>("cmdGuardar").isVisible());
        QVERIFY(!hijo<QAction>("cmdCerrar").isVisible());
    }

    void modeless_again_it_takes_the_new_report_where_it_stands()
    {
        const atipicos::pruebas::Contexto contexto;
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false);
        const Ocultada ocultada(frmView::compartido());
        clsView().Cargar(false);
        QCOMPARE(hijo<VistaReport>("vista").Paginas(), 0);
        QCOMPARE(ocultada.veces, 0);
    }

    void modal_it_returns_when_it_is_closed_by_the_viewers_own_request()
    {
        const atipicos::pruebas::Contexto contexto;
        bool modal = false;
        QTimer::singleShot(0, qApp, [&] {
            modal = frmView::compartido().isModal() && hijo<QAction>("cmdCerrar").isVisible();
            hijo<QAction>("cmdCerrar").trigger();
        });
        con_report(std::make_shared<ReportDePrueba>()).Cargar(true);
        QVERIFY(modal);
        QVERIFY(!frmView::compartido().isVisible());
    }

    void asked_for_modal_an_open_viewer_becomes_modal_and_waits()
    {
        const atipicos::pruebas::Contexto contexto;
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false);
        auto& form = frmView::compartido();
        bool modal = false;
        QTimer::singleShot(0, qApp, [&] {
            modal = form.isVisible() && form.isModal() && QApplication::activeModalWidget() == &form
                && QGuiApplication::modalWindow() == form.windowHandle();
            hijo<QAction>("cmdCerrar").trigger();
        });
        con_report(std::make_shared<ReportDePrueba>()).Cargar(true);
        QVERIFY(modal);
        QVERIFY(!form.isVisible());
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false);
        QVERIFY(form.isVisible() && !form.isModal());
    }

    void asked_for_again_while_it_is_modal_it_shows_the_new_report_and_all_wait_until_it_is_closed()
    {
        const atipicos::pruebas::Contexto contexto;
        auto& form = frmView::compartido();
        QStringList sucesos;
        const auto segundo = std::make_shared<ReportDePrueba>();
        segundo->buscable = false;
        QTimer::singleShot(0, qApp, [&] {
            con_report(std::make_shared<ReportDePrueba>()).Cargar(false); // modeless: at once
            sucesos << (form.isModal() ? QStringLiteral("modal") : QStringLiteral("modeless"));
            QTimer::singleShot(0, qApp, [&] {
                sucesos << (!form.isVisible()                      ? QStringLiteral("gone")
                        : hijo<QLineEdit>("txtBuscar").isVisible() ? QStringLiteral("first")
                                                                   : QStringLiteral("second"));
                form.close();
            });
            con_report(segundo).Cargar(true);
            sucesos << (form.isVisible() ? QStringLiteral("did not wait") : QStringLiteral("waited"));
        });
        con_report(std::make_shared<ReportDePrueba>()).Cargar(true);
        QCOMPARE(sucesos.join(u' '), QStringLiteral("modal second waited"));
        QVERIFY(!form.isVisible());
    }

    void without_a_company_it_is_shown_without_a_box()
    {
        const atipicos::pruebas::Contexto contexto;
        atipicos::modComun::set_EmpresaOrvalin(nullptr);
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false);
        QCOMPARE(frmView::compartido().windowTitle(), QStringLiteral("Visor de Reportes"));
        QCOMPARE(hijo<VistaReport>("vista").Paginas(), 5);
        QVERIFY(contexto.avisos->dichos.empty());
    }

    void closing_releases_the_report()
    {
        const atipicos::pruebas::Contexto contexto;
        auto report = std::make_shared<ReportDePrueba>();
        const std::weak_ptr<Report> vista = report;
        con_report(std::move(report)).Cargar(false);
        QVERIFY(!vista.expired());
        QTest::keyClick(&frmView::compartido(), Qt::Key_Escape);
        QVERIFY(!frmView::compartido().isVisible());
        QVERIFY(vista.expired());
    }

    void without_a_report_it_is_empty()
    {
        const atipicos::pruebas::Contexto contexto;
        clsView().Cargar(false, 150);
        QVERIFY(frmView::compartido().isVisible());
        QCOMPARE(hijo<VistaReport>("vista").Paginas(), 0);
        QCOMPARE(hijo<VistaReport>("vista").Pagina(), 0);
        QVERIFY(!hijo<QAction>("cmdImprimir").isEnabled());
        QVERIFY(!hijo<QLineEdit>("txtBuscar").isVisible());
        QVERIFY(contexto.avisos->dichos.empty());
    }

    void the_viewer_fills_the_form()
    {
        const atipicos::pruebas::Contexto contexto;
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false);
        auto& form = frmView::compartido();
        for (const QSize tamano : { QSize(700, 500), QSize(1100, 800) }) {
            form.resize(tamano);
            QCoreApplication::processEvents();
            QCOMPARE(hijo<QWidget>("crvRep").geometry(), form.rect());
        }
    }

    void the_mouse_pointer_is_the_default_one_again()
    {
        const atipicos::pruebas::Contexto contexto;
        QApplication::setOverrideCursor(Qt::WaitCursor);
        QApplication::setOverrideCursor(Qt::BusyCursor);
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false);
        frmView::compartido().activateWindow();
        QTRY_VERIFY(QApplication::overrideCursor() == nullptr);
        QTRY_VERIFY(frmView::compartido().isActiveWindow());
        QApplication::setOverrideCursor(Qt::WaitCursor); // of a host that is at work meanwhile
        frmView::compartido().setWindowTitle(QStringLiteral("Otro"));
        QVERIFY(QApplication::overrideCursor() != nullptr);
        QApplication::restoreOverrideCursor();
    }

    void the_zoom_is_that_of_the_caller_and_then_of_the_person()
    {
        const atipicos::pruebas::Contexto contexto;
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false, 125);
        auto& vista = hijo<VistaReport>("vista");
        auto& combo = hijo<QComboBox>("cboZoom");
        QCOMPARE(vista.Zoom(), 125);
        QCOMPARE(combo.currentText(), QStringLiteral("125 %"));
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false);
        QCOMPARE(combo.currentText(), QStringLiteral("Ancho de página"));
        const int ancho = vista.Zoom();
        frmView::compartido().resize(600, 500);
        QTRY_VERIFY(vista.Zoom() < ancho);
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false, 2);
        QVERIFY(vista.Zoom() < 50); // a whole A4 page in less than 500 pixels
        vista.set_Zoom(1000);
        QCOMPARE(vista.Zoom(), 400);
        vista.set_Zoom(1);
        QCOMPARE(vista.Zoom(), 25);
    }

    void pages_are_reached_by_number_and_keys()
    {
        const atipicos::pruebas::Contexto contexto;
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false, 100);
        auto& vista = hijo<VistaReport>("vista");
        auto& numero = hijo<QSpinBox>("txtPagina");
        QCOMPARE(vista.Pagina(), 1);
        numero.setValue(3);
        QCOMPARE(vista.Pagina(), 3);
        QTest::keyClick(&vista, Qt::Key_End);
        QCOMPARE(vista.Pagina(), 5);
        QCOMPARE(numero.value(), 5);
        QTest::keyClick(&vista, Qt::Key_Home);
        QCOMPARE(numero.value(), 1);
        QCOMPARE(numero.maximum(), 5);
    }

    void a_search_goes_from_place_to_place()
    {
        const atipicos::pruebas::Contexto contexto;
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false, 100);
        auto& vista = hijo<VistaReport>("vista");
        auto& buscar = hijo<QLineEdit>("txtBuscar");
        auto& hallados = hijo<QLabel>("lblHallados");
        QVERIFY(buscar.isVisible());
        QTest::keyClicks(&buscar, QStringLiteral("dos"));
        QCOMPARE(hallados.text(), QStringLiteral(" 1 de 2 "));
        QCOMPARE(vista.Pagina(), 2);
        QTest::keyClick(&buscar, Qt::Key_Return);
        QCOMPARE(hallados.text(), QStringLiteral(" 2 de 2 "));
        QCOMPARE(vista.Pagina(), 4);
        QTest::keyClick(&buscar, Qt::Key_F3);
        QCOMPARE(hallados.text(), QStringLiteral(" 1 de 2 "));
        QTest::keyClick(&buscar, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(hallados.text(), QStringLiteral(" 2 de 2 "));
        QTest::keyClicks(&buscar, QStringLiteral("x"));
        QCOMPARE(hallados.text(), QStringLiteral(" No se encuentra "));
    }

    void a_report_that_cannot_be_searched_offers_no_search()
    {
        const atipicos::pruebas::Contexto contexto;
        auto report = std::make_shared<ReportDePrueba>();
        report->buscable = false;
        con_report(std::move(report)).Cargar(false);
        QVERIFY(!hijo<QLineEdit>("txtBuscar").isVisible());
    }

    void the_page_is_painted_where_it_is()
    {
        const atipicos::pruebas::Contexto contexto;
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false, 50);
        auto& vista = hijo<VistaReport>("vista");
        const auto imagen = vista.viewport()->grab().toImage();
        const auto marco_de = [&](const QColor& color) {
            QRect marco;
            for (int y = 0; y < imagen.height(); ++y)
                for (int x = 0; x < imagen.width(); ++x)
                    if (imagen.pixelColor(x, y) == color)
                        marco |= QRect(x, y, 1, 1);
            return marco;
        };
        const auto cerca = [](int hay, double debido) { return std::abs(hay - debido) <= 1.5; };
        const double milimetro = vista.logicalDpiX() * 0.5 / 25.4; // at half size
        const auto hoja = marco_de(Qt::white);
        QVERIFY(cerca(hoja.width(), 210 * milimetro));
        QVERIFY(cerca(hoja.left(), (vista.viewport()->width() - 210 * milimetro) / 2)); // in the middle
        const auto caja
            = marco_de(QColor(0x20, 0x40, 0x60)); // of the first page, and of the second where it fits
        QVERIFY(cerca(caja.left() - hoja.left(), 20 * milimetro));
        QVERIFY(cerca(caja.width(), 30 * milimetro));
        QVERIFY(cerca(caja.top() - hoja.top(), 40 * milimetro));
        QVERIFY(vista.viewport()->height() > 60 * milimetro);
    }

    void it_is_saved_as_pdf_where_the_person_says()
    {
        const atipicos::pruebas::Contexto contexto;
        const atipicos::pruebas::CarpetaTemporal carpeta;
        const auto destino = carpeta / "guardado.pdf";
        con_report(std::make_shared<ReportDePrueba>()).Cargar(false);
        QTimer::singleShot(0, qApp, [&] {
            auto* pregunta = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY(pregunta != nullptr);
            QCOMPARE(pregunta->windowTitle(), QStringLiteral("Guardar como PDF"));
            QVERIFY(pregunta->selectedFiles().constFirst().endsWith(QStringLiteral("/Prueba-1.pdf")));
            pregunta->selectFile(QString::fromStdString(destino.string()));
            QMetaObject::invokeMethod(pregunta, "accept");
        });
        hijo<QAction>("cmdGuardar").trigger();
        QVERIFY(std::filesystem::file_size(destino) > 1000);
        QVERIFY(contexto.avisos->dichos.empty());
    }

    void a_file_that_cannot_be_written_is_told_and_nothing_is_left()
    {
        const atipicos::pruebas::CarpetaTemporal carpeta;
        const auto fichero = QString::fromStdString((carpeta / "no").string()) + QStringLiteral("/hay.pdf");
        try {
            atipicos::guarda_pdf(ReportDePrueba(), fichero);
            QFAIL("no error was raised");
        } catch (const Error& error) {
            QCOMPARE(QString::fromStdString(error.descripcion()),
                QStringLiteral("No se puede escribir «%1»: no se puede abrir.").arg(fichero));
        }
        QVERIFY(std::filesystem::is_empty(carpeta.ruta()));
    }

    void a_printer_that_is_gone_is_told()
    {
        try {
            static_cast<void>(atipicos::busca_impresora("Impresora retirada"));
            QFAIL("no error was raised");
        } catch (const Error& error) {
            QCOMPARE(error.descripcion(),
                std::string("La impresora «Impresora retirada» no está en este sistema."));
        }
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmView_Test)
#include "frmView_test.moc"
