// The window in which the manual is read.
#include "host/ventanas/frmManual.hpp"

#include "host/ventanas/Apariencia.hpp"
#include "host/ventanas/Ayuda.hpp"
#include "tests/app/ManualAbierto.hpp"
#include "tests/support/Contraste.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTimer>
#include <QTreeWidget>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

QString renglon_elegido(const QTreeWidget& indice)
{
    const auto elegidos = indice.selectedItems();
    return elegidos.size() == 1 ? elegidos.front()->text(0) : QString();
}

}

class frmManual_Test : public QObject {
    Q_OBJECT
private slots:
    void it_keeps_the_program_open_for_nobody()
    {
        const app::Ayuda ayuda;
        QWidget ultima;
        ultima.show();
        app::Ayuda::abre();
        QTimer::singleShot(0, &ultima, &QWidget::close);
        QTimer se_queda;
        connect(&se_queda, &QTimer::timeout, &se_queda, [] { QCoreApplication::exit(1); });
        se_queda.start(5000);
        QVERIFY(abierto() != nullptr);
        QCOMPARE(QApplication::exec(), 0);
    }

    void the_contents_follow_the_page_and_its_links_and_one_can_go_back()
    {
        const app::Ayuda ayuda;
        app::Ayuda::abre();
        auto* manual = abierto();
        QVERIFY(manual != nullptr);
        QVERIFY(QTest::qWaitForWindowActive(manual, atipicos::pruebas::paciencia));
        auto& vista = control<app::VistaManual>(*manual, "vistaManual");
        auto& indice = control<QTreeWidget>(*manual, "lstManual");
        QCOMPARE(renglon_elegido(indice), QStringLiteral("Manual de atipicos"));
        vista.setSource(vista.source().resolved(QUrl(QStringLiteral("principal.md#cargos-sin-guardar"))));
        QCOMPARE(renglon_elegido(indice), QStringLiteral("Cargos sin guardar"));
        QVERIFY(vista.verticalScrollBar()->value() > 100); // at its place, not at the top
        QCOMPARE(vista.textCursor().block().text(), QStringLiteral("Cargos sin guardar"));
        pulsa(Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(se_lee(), QStringLiteral("indice.md"));
        QCOMPARE(renglon_elegido(indice), QStringLiteral("Manual de atipicos"));
        pulsa(Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(se_lee(), QStringLiteral("principal.md#cargos-sin-guardar"));
        pulsa(Qt::Key_Home, Qt::AltModifier);
        QCOMPARE(se_lee(), QStringLiteral("indice.md"));
        QVERIFY(!vista.document()->toPlainText().contains(QStringLiteral("|---"))); // tables are tables
        app::Ayuda::abre(QStringLiteral("visor.md"));
        app::Ayuda::abre(QStringLiteral("visor.md"));
        const auto ancho = [&] {
            const QUrl url(QStringLiteral("imagenes/visor-lista.png"));
            return vista.document()->resource(QTextDocument::ImageResource, url).value<QImage>().width();
        };
        QVERIFY(ancho() > 300);
        for (const int caben : { 500, 1300 }) { // they are never wider than the page
            manual->resize(caben, 600);
            QTRY_COMPARE(vista.horizontalScrollBar()->maximum(), 0);
            QVERIFY(ancho() <= vista.viewport()->width());
        }
        QCOMPARE(ancho(), 660);
        QVERIFY(vista.document()->size().height() > 1000); // and they are painted
    }

    void the_contents_have_a_line_of_the_keys_only_while_they_have_the_focus()
    {
        const app::Ayuda ayuda;
        app::Ayuda::abre(QStringLiteral("copias.md"));
        auto* manual = abierto();
        QVERIFY(manual != nullptr && QTest::qWaitForWindowActive(manual, atipicos::pruebas::paciencia));
        auto& indice = control<QTreeWidget>(*manual, "lstManual");
        QCOMPARE(foco(), QStringLiteral("vistaManual"));
        QCOMPARE(indice.currentItem(), nullptr);
        const auto copias = renglon_elegido(indice);
        QCOMPARE(copias, QStringLiteral("Copias y recuperación"));
        indice.setFocus();
        QCOMPARE(indice.currentItem()->text(0), copias);
        QCOMPARE(se_lee(), QStringLiteral("copias.md")); // coming there opens nothing
        pulsa(Qt::Key_Up);
        QVERIFY(se_lee() != QStringLiteral("copias.md"));
        QCOMPARE(indice.currentItem()->text(0), renglon_elegido(indice));
        pulsa(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(indice.currentItem(), nullptr);
        teclea("prevision");
        QVERIFY(indice.topLevelItemCount() > 3);
        pulsa(Qt::Key_Down);
        pulsa(Qt::Key_Down);
        const auto segundo = renglon_elegido(indice);
        QCOMPARE(segundo, indice.topLevelItem(1)->text(0));
        intro();
        QCOMPARE(indice.currentItem(), nullptr);
        QCOMPARE(renglon_elegido(indice), segundo);
        pulsa(Qt::Key_F, Qt::ControlModifier);
        pulsa(Qt::Key_Down); // on from where it was
        QCOMPARE(renglon_elegido(indice), indice.topLevelItem(2)->text(0));
    }

    void its_first_opening_is_at_the_place_too()
    {
        const app::Ayuda ayuda;
        app::Ayuda::abre(QStringLiteral("visor.md#exportar"));
        auto* manual = abierto();
        QVERIFY(manual != nullptr);
        auto& vista = control<app::VistaManual>(*manual, "vistaManual");
        QVERIFY(vista.verticalScrollBar()->maximum() > 200);
        QVERIFY(vista.cursorRect().top() >= 0 && vista.cursorRect().bottom() <= vista.viewport()->height());
        QCOMPARE(vista.textCursor().block().text(), QStringLiteral("Exportar"));
    }

    void a_search_is_walked_with_keys_alone_and_marks_what_it_found()
    {
        const app::Ayuda ayuda;
        app::Ayuda::abre();
        auto* manual = abierto();
        QVERIFY(manual != nullptr && QTest::qWaitForWindowActive(manual, atipicos::pruebas::paciencia));
        auto& vista = control<app::VistaManual>(*manual, "vistaManual");
        auto& indice = control<QTreeWidget>(*manual, "lstManual");
        pulsa(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(foco(), QStringLiteral("txtBuscarManual"));
        teclea("franquiciado marca");
        const auto& hallados = control<QLabel>(*manual, "lblHalladosManual");
        QVERIFY(hallados.isVisible());
        QCOMPARE(hallados.text(),
            indice.topLevelItemCount() == 1
                ? QStringLiteral("En 1 apartado")
                : QStringLiteral("En %1 apartados").arg(indice.topLevelItemCount()));
        QVERIFY(indice.topLevelItemCount() > 0 && indice.topLevelItemCount() < 8);
        intro();
        QCOMPARE(foco(), QStringLiteral("vistaManual"));
        QVERIFY(!vista.extraSelections().isEmpty());
        QVERIFY(!vista.textCursor().selectedText().isEmpty());
        const int primera = vista.textCursor().selectionStart();
        pulsa(Qt::Key_F3);
        QVERIFY(vista.textCursor().selectionStart() != primera);
        pulsa(Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(vista.textCursor().selectionStart(), primera);
        pulsa(Qt::Key_F, Qt::ControlModifier);
        teclea("telarana");
        QCOMPARE(hallados.text(), QStringLiteral("No se encuentra"));
        control<QLineEdit>(*manual, "txtBuscarManual").clear();
        QVERIFY(vista.extraSelections().isEmpty());
        QVERIFY(!hallados.isVisible());
        QVERIFY(indice.topLevelItemCount() > 10);
        const double antes = vista.font().pointSizeF();
        pulsa(Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(vista.font().pointSizeF() > antes);
        pulsa(Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(vista.font().pointSizeF(), antes);
    }

    void links_can_be_read_in_both_themes_also_after_a_change()
    {
        const app::Ayuda ayuda;
        app::aplica_tema(app::Tema::claro);
        app::Ayuda::abre();
        auto* manual = abierto();
        QVERIFY(manual != nullptr);
        auto& vista = control<app::VistaManual>(*manual, "vistaManual");
        for (const auto tema : { app::Tema::oscuro, app::Tema::claro, app::Tema::oscuro }) {
            app::aplica_tema(tema);
            QTest::qWait(1);
            int enlaces = 0;
            for (auto bloque = vista.document()->begin(); bloque.isValid(); bloque = bloque.next())
                for (auto trozo = bloque.begin(); !trozo.atEnd(); ++trozo)
                    if (const auto formato = trozo.fragment().charFormat(); formato.isAnchor()) {
                        ++enlaces;
                        QVERIFY(contraste(formato.foreground().color(), vista.palette().color(QPalette::Base))
                            >= 4.5);
                    }
            QVERIFY(enlaces > 10);
        }
        app::aplica_tema(app::Tema::claro);
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmManual_Test)
#include "frmManual_test.moc"
