#include "host/ventanas/Apariencia.hpp"

#include "context/modComun.hpp"
#include "controls/MsgBoxQt.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "host/ventanas/frmSesion.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Contraste.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QStyle>

#include <array>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

constexpr double legible = 4.5;
constexpr double distinguible = 3; // for what is no text

/// What a text is written on: of a control without a background of its own, that of what it stands in.
QColor fondo(const QWidget& control, QPalette::ColorRole papel)
{
    const QColor propio = control.palette().color(papel);
    return propio.alpha() == 255 || control.parentWidget() == nullptr
        ? propio
        : fondo(*control.parentWidget(), control.parentWidget()->backgroundRole());
}

struct Pareja {
    QPalette::ColorRole texto;
    QPalette::ColorRole fondo;
};

/// The pairs of colours that somebody has to read in a control.
std::vector<Pareja> parejas(const QWidget& control)
{
    if (qobject_cast<const VSFlexGrid*>(&control) != nullptr)
        return { { QPalette::Text, QPalette::Base }, { QPalette::Text, QPalette::AlternateBase },
            { QPalette::HighlightedText, QPalette::Highlight }, { QPalette::ButtonText, QPalette::Button } };
    if (qobject_cast<const QLineEdit*>(&control) != nullptr
        || qobject_cast<const QAbstractScrollArea*>(&control) != nullptr)
        return { { QPalette::Text, QPalette::Base }, { QPalette::PlaceholderText, QPalette::Base },
            { QPalette::HighlightedText, QPalette::Highlight } };
    if (qobject_cast<const QPushButton*>(&control) != nullptr
        || qobject_cast<const QComboBox*>(&control) != nullptr)
        return { { QPalette::ButtonText, QPalette::Button } };
    if (qobject_cast<const QLabel*>(&control) != nullptr
        || qobject_cast<const QAbstractButton*>(&control) != nullptr
        || qobject_cast<const QMenuBar*>(&control) != nullptr)
        return { { control.foregroundRole(), QPalette::Window } };
    return {};
}

/// What cannot be read in the windows that are open; each control once.
QStringList ilegible(int& vistos)
{
    QStringList malos;
    for (QWidget* control : QApplication::allWidgets()) {
        if (!control->isVisible())
            continue;
        for (const auto& [texto, sobre] : parejas(*control)) {
            ++vistos;
            const QColor letra = control->palette().color(texto);
            const QColor papel = fondo(*control, sobre);
            if (contraste(letra, papel) < legible)
                malos << QStringLiteral("%1.%2 %3 on %4")
                             .arg(control->window()->objectName(), control->objectName(), letra.name(),
                                 papel.name());
        }
    }
    return malos;
}

}

class Apariencia_Test : public QObject {
    Q_OBJECT
private slots:

    void margins_gaps_and_drawings_grow_with_the_letter()
    {
        const QFont antes = QApplication::font();
        app::aplica_tema(app::Tema::claro);
        const auto medida = [](QStyle::PixelMetric cual) {
            const QWidget ventana;
            return ventana.style()->pixelMetric(cual, nullptr, &ventana);
        };
        const std::array crecen{ QStyle::PM_LayoutLeftMargin, QStyle::PM_LayoutTopMargin,
            QStyle::PM_LayoutRightMargin, QStyle::PM_LayoutBottomMargin, QStyle::PM_LayoutHorizontalSpacing,
            QStyle::PM_LayoutVerticalSpacing, QStyle::PM_SmallIconSize, QStyle::PM_ButtonIconSize,
            QStyle::PM_TabBarIconSize };
        std::vector<int> pequenas;
        for (const auto cual : crecen)
            pequenas.push_back(medida(cual));
        const int borde = medida(QStyle::PM_DefaultFrameWidth);
        QFont grande = antes;
        grande.setPointSize(40);
        QApplication::setFont(grande);
        for (std::size_t i = 0; i < crecen.size(); ++i)
            QVERIFY2(medida(crecen[i]) >= pequenas[i] * 2, qPrintable(QString::number(i)));
        QCOMPARE(medida(QStyle::PM_DefaultFrameWidth), borde);
        QApplication::setFont(antes);
    }

    void everything_can_be_read_in_both_themes_also_after_a_change()
    {
        const CarpetaTemporal carpeta;
        app::OpcionesComunes opciones;
        opciones.datos = carpeta / "datos";
        opciones.usuario = 2;
        bases::crea_bases(opciones.lugar(), false);
        {
            app::Sesion sesion(opciones);
            modComun::set_MsgBox(std::make_shared<MsgBoxQt>());
            app::aplica_tema(app::Tema::claro);
            app::frmPrincipal principal(sesion, opciones);
            principal.show();
            QVERIFY(QTest::qWaitForWindowActive(&principal, atipicos::pruebas::paciencia));
            app::frmSesion elige(sesion.catalogos.empresas(), sesion.catalogos.usuarios());
            elige.show();
            principal.activateWindow();
            intro();
            QTRY_COMPARE(foco(), QStringLiteral("txtAlmacen"));
            intro();
            teclea("7"); // no such supplier
            intro();
            pulsa(Qt::Key_Tab);
            control<QAction>(principal, "mnuVisor").trigger();
            for (const auto tema :
                { app::Tema::claro, app::Tema::oscuro, app::Tema::claro, app::Tema::oscuro }) {
                app::aplica_tema(tema);
                QTest::qWait(1);
                int vistos = 0;
                const auto malos = ilegible(vistos);
                QVERIFY2(malos.isEmpty(), qPrintable(malos.join(u'\n')));
                QVERIFY2(vistos > 60, "the windows are not open");
            }
            for (QWidget* ventana : QApplication::topLevelWidgets())
                ventana->close();
        }
        vacia_contexto();
    }

    void what_cannot_be_used_and_what_has_the_focus_can_be_told_in_both_themes()
    {
        for (const auto tema : { app::Tema::claro, app::Tema::oscuro }) {
            app::aplica_tema(tema);
            const QPalette paleta = QApplication::palette();
            const auto apagado = [&](QPalette::ColorRole papel, QPalette::ColorRole sobre) {
                return contraste(
                    paleta.color(QPalette::Disabled, papel), paleta.color(QPalette::Disabled, sobre));
            };
            QVERIFY(apagado(QPalette::WindowText, QPalette::Window) >= legible);
            QVERIFY(apagado(QPalette::ButtonText, QPalette::Button) >= legible);
            QVERIFY(apagado(QPalette::Text, QPalette::Base) >= legible);
            QVERIFY(contraste(paleta.color(QPalette::ToolTipText), paleta.color(QPalette::ToolTipBase))
                >= legible);
            for (const auto sobre : { QPalette::Window, QPalette::Base, QPalette::Button })
                QVERIFY(contraste(paleta.color(QPalette::Link), paleta.color(sobre)) >= distinguible);
        }
    }

    void the_button_that_has_the_focus_looks_different()
    {
        for (const auto tema : { app::Tema::claro, app::Tema::oscuro }) {
            app::aplica_tema(tema);
            QWidget ventana;
            QPushButton uno(QStringLiteral("Uno"), &ventana);
            QPushButton otro(QStringLiteral("Otro"), &ventana);
            otro.move(0, 60);
            ventana.show();
            QVERIFY(QTest::qWaitForWindowActive(&ventana, atipicos::pruebas::paciencia));
            uno.setFocus();
            const QColor marco = QApplication::palette().color(QPalette::Link);
            const auto con_marco = [&](QPushButton& boton) {
                const QImage foto = boton.grab().toImage();
                int puntos = 0;
                for (int x = 0; x < foto.width(); ++x)
                    puntos += static_cast<int>(contraste(foto.pixelColor(x, 1), marco) < 1.2);
                return puntos > foto.width() / 2;
            };
            QVERIFY(con_marco(uno));
            QVERIFY(!con_marco(otro));
        }
    }
};

ATIPICOS_PRUEBA_VENTANAS(Apariencia_Test)
#include "Apariencia_test.moc"
