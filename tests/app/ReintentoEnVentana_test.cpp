#include "host/ventanas/ReintentoEnVentana.hpp"

#include "context/modComun.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/MsgBoxDePrueba.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLabel>
#include <QPushButton>
#include <QSettings>

using namespace atipicos;
using namespace atipicos::pruebas;
using namespace std::chrono_literals;

namespace {

QDialog* reintento_abierto()
{
    for (QWidget* una : QApplication::topLevelWidgets())
        if (una->objectName() == QLatin1String("frmReintento") && una->isVisible())
            return qobject_cast<QDialog*>(una);
    return nullptr;
}

QString dicho_en(const char* etiqueta) { return control<QLabel>(*reintento_abierto(), etiqueta).text(); }

sql::Reintento a_los(std::chrono::milliseconds desde) { return { desde, 45s, "nadie escucha" }; }

}

class ReintentoEnVentana_Test : public QObject {
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }

    void it_shows_how_it_stands_and_is_gone_when_the_line_is_open()
    {
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue(a_los(300ms)));
        QVERIFY(reintento_abierto() != nullptr);
        QVERIFY(reintento_abierto()->isModal());
        QVERIFY(dicho_en("lblPerdida").contains(QStringLiteral("durante 45 s como mucho")));
        QCOMPARE(dicho_en("lblMotivo"), QStringLiteral("nadie escucha"));
        QVERIFY(reintento.sigue(a_los(7'900ms)));
        QCOMPARE(dicho_en("lblDesde"), QStringLiteral("Se intenta desde hace 7 s."));
        reintento.reanudada();
        QVERIFY(reintento_abierto() == nullptr);
        QVERIFY(reintento.sigue(a_los(0ms))); // and shown again when it is lost again
        QVERIFY(reintento_abierto() != nullptr);
    }

    void its_button_or_escape_ends_it_and_what_is_being_keyed_in_does_not()
    {
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue(a_los(300ms)));
        for (const auto tecla : { Qt::Key_Return, Qt::Key_Space, Qt::Key_D })
            QTest::keyClick(reintento_abierto(), tecla);
        QVERIFY(reintento.sigue(a_los(600ms)));
        QTest::mouseClick(&control<QPushButton>(*reintento_abierto(), "cmdDejar"), Qt::LeftButton);
        QVERIFY(!reintento.sigue(a_los(900ms)));
        QVERIFY(reintento_abierto() == nullptr);
        QVERIFY(reintento.sigue(a_los(0ms))); // the next operation tries anew
        QTest::keyClick(reintento_abierto(), Qt::Key_Escape);
        QVERIFY(!reintento.sigue(a_los(300ms)));
    }

    void the_time_that_it_tells_ends_it()
    {
        app::ReintentoEnVentana reintento;
        QVERIFY(reintento.sigue(a_los(44'900ms)));
        QVERIFY(!reintento.sigue(a_los(45'000ms)));
        QVERIFY(reintento_abierto() == nullptr);
    }

    void an_editor_whose_server_is_gone_tells_the_error_keeps_what_was_keyed_in_and_saves_it_later()
    {
        if (const auto falta = ServidorPostgresql::falta(); !falta.empty())
            QSKIP(falta.c_str());
        ServidorPostgresql servidor;
        servidor.crea_base("empresa");
        app::OpcionesComunes opciones;
        opciones.conexion = servidor.direccion("empresa");
        opciones.usuario = 2;
        bases::crea_bases(opciones.lugar(), false);
        const auto avisos = std::make_shared<MsgBoxDePrueba>();
        {
            app::ReintentoEnVentana reintento;
            int veces = 0;
            app::Sesion sesion(opciones,
                { .avisa_linea =
                        [&](sql::Linea que) {
                            if (que == sql::Linea::reanudada)
                                reintento.reanudada();
                        },
                    .sigue_intentando =
                        [&](const sql::Reintento& como) {
                            if (++veces == 3)
                                control<QPushButton>(*reintento_abierto(), "cmdDejar").click();
                            if (veces == 6)
                                servidor.arranca();
                            return reintento.sigue(como);
                        } });
            modComun::set_MsgBox(avisos);
            app::frmPrincipal ventana(sesion, opciones);
            ventana.show();
            QVERIFY(QTest::qWaitForWindowActive(&ventana));
            clic(ventana, "cmdReclamaciones");
            auto& editor = control<QWidget>(ventana, "frmCompras_Atipicos");
            QVERIFY(QTest::qWaitForWindowActive(&editor));
            QTRY_COMPARE(foco(), QStringLiteral("txtAlmacen"));
            teclea("3");
            intro();
            teclea("104");
            intro(4);
            intro();
            teclea("Porte");
            intro(2);
            teclea("1");
            intro();
            teclea("10");
            intro(2);
            QCOMPARE(control<VSFlexGrid>(editor, "vsCargos").Rows(), 2);

            servidor.detiene();
            clic(editor, "cmdAceptar");
            QCOMPARE(veces, 3); // the person has ended it
            QCOMPARE(avisos->dichos.size(), std::size_t{ 1 });
            QVERIFY2(avisos->dichos.front().texto.find("No se puede conectar con el servidor")
                    != std::string::npos,
                avisos->dichos.front().texto.c_str());
            QCOMPARE(control<VSFlexGrid>(editor, "vsCargos").Rows(), 2);

            avisos->dichos.clear();
            {
                const AlAbrirse previsiones(
                    [](QWidget&) { pulsa(Qt::Key_F9); }, "frmCompras_Atipicos_Contabilizar");
                clic(editor, "cmdAceptar");
            }
            QVERIFY(reintento_abierto() == nullptr);
            QVERIFY2(!avisos->dichos.empty()
                    && avisos->dichos.front().texto.find("generado correctamente") != std::string::npos,
                avisos->dichos.empty() ? "nothing" : avisos->dichos.front().texto.c_str());
            QCOMPARE(servidor.psql("empresa", "SELECT COUNT(*) FROM orvalin.proveedores_cargos_atipicos"),
                std::string("1\n"));
        }
        vacia_contexto();
    }
};

ATIPICOS_PRUEBA_VENTANAS(ReintentoEnVentana_Test)
#include "ReintentoEnVentana_test.moc"
