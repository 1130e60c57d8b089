#include "host/bases/EmpresaPropia.hpp"
#include "host/ventanas/EmpresasRecientes.hpp"
#include "host/ventanas/frmDatosEmpresa.hpp"
#include "host/ventanas/frmEmpresa.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QSettings>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

void en_pantalla(QDialog& dialogo)
{
    dialogo.show();
    if (!QTest::qWaitForWindowActive(&dialogo, atipicos::pruebas::paciencia))
        qFatal("the dialog is not active");
}

QString en_qt(const std::filesystem::path& ruta) { return QString::fromStdString(ruta.string()); }

bool sin_empresa(const std::filesystem::path& carpeta)
{
    return bases::sin_empresas(*bases::abre_bases(carpeta, { .solo_lectura = true }).orvalin);
}

/// Writes over what the box holds, and moves on.
void rellena(const char* texto)
{
    pulsa(Qt::Key_A, Qt::ControlModifier);
    if (*texto != '\0')
        teclea(texto);
    intro();
}

}

class ElegirEmpresa_Test : public QObject {
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }

    void keys_alone_make_a_sample_company_or_an_own_one_in_a_folder()
    {
        const CarpetaTemporal carpeta;
        for (const bool propia : { false, true }) {
            app::frmEmpresa dialogo;
            const auto donde = carpeta / (propia ? "mía" : "muestra");
            dialogo.Propon(en_qt(donde));
            en_pantalla(dialogo);
            QCOMPARE(foco(), QStringLiteral("txtLugar"));
            if (propia)
                atajo(Qt::Key_P);
            atajo(Qt::Key_C);
            QCOMPARE(dialogo.result(), int{ QDialog::Accepted });
            QCOMPARE(dialogo.Elegido().value().carpeta(), donde);
            QCOMPARE(sin_empresa(donde), propia);
        }
    }

    void what_cannot_be_opened_or_made_is_told_and_the_dialog_stays()
    {
        const CarpetaTemporal carpeta;
        app::frmEmpresa dialogo;
        dialogo.Propon(en_qt(carpeta / "nada"), QStringLiteral("Ahí no está."));
        en_pantalla(dialogo);
        const auto& motivo = control<QLabel>(dialogo, "lblMotivo");
        QCOMPARE(motivo.text(), QStringLiteral("Ahí no está."));
        intro(); // opens
        QCOMPARE(motivo.text(),
            QStringLiteral("En esa carpeta no hay ninguna empresa. Para hacer una en ella pulse «Crear»."));
        rellena("odbc");
        QVERIFY(motivo.isVisible());
        bases::crea_bases(carpeta / "otra", false);
        control<QLineEdit>(dialogo, "txtLugar").setText(en_qt(carpeta / "otra"));
        atajo(Qt::Key_C);
        QVERIFY2(motivo.text().contains(QStringLiteral("ya existe")), qPrintable(motivo.text()));
        control<QLineEdit>(dialogo, "txtLugar").setText(QStringLiteral("  "));
        atajo(Qt::Key_A);
        QCOMPARE(motivo.text(), QStringLiteral("Escriba una carpeta o la dirección de un servidor."));
        QVERIFY(dialogo.isVisible());
        QVERIFY(!dialogo.Elegido());
        pulsa(Qt::Key_Escape);
        QVERIFY(!dialogo.isVisible());
    }

    void one_that_was_opened_before_is_chosen_with_enter_and_forgotten_with_delete()
    {
        const CarpetaTemporal carpeta;
        const app::EmpresasRecientes recientes;
        for (const char* cual : { "a", "b", "c" }) {
            bases::crea_bases(carpeta / cual, false);
            recientes.apunta(bases::Lugar(carpeta / cual));
        }
        app::frmEmpresa dialogo;
        dialogo.Propon(recientes.lista().value(0));
        en_pantalla(dialogo);
        QCOMPARE(foco(), QStringLiteral("lstRecientes"));
        pulsa(Qt::Key_Delete); // c, which stays on the disk
        QCOMPARE(control<QListWidget>(dialogo, "lstRecientes").count(), 2);
        QCOMPARE(recientes.lista(), QStringList({ en_qt(carpeta / "b"), en_qt(carpeta / "a") }));
        QVERIFY(bases::hay_bases(carpeta / "c"));
        pulsa(Qt::Key_Down);
        intro();
        QCOMPARE(dialogo.Elegido().value().carpeta(), carpeta / "a");
    }

    void the_data_of_an_own_company_are_asked_for_until_nothing_is_missing()
    {
        app::frmDatosEmpresa dialogo;
        en_pantalla(dialogo);
        const auto& falta = control<QLabel>(dialogo, "lblFalta");
        QCOMPARE(foco(), QStringLiteral("txtNombre"));
        QVERIFY(dialogo.height() < dialogo.fontMetrics().height() * 32); // also on the smallest screens
        atajo(Qt::Key_A);
        QCOMPARE(falta.text(), QStringLiteral("Falta el nombre de la empresa."));
        for (const char* texto : { "Talleres Tegueste", "B38999991", "Calle Ñ, 3", "38280", "Tegueste",
                 "Tenerife", "Nave sur", "Añaterve", "IVA", "veintiuno", "Aceros Órzola", "A35999992" })
            rellena(texto);
        QCOMPARE(foco(), QStringLiteral("txtDomicilioProveedor"));
        atajo(Qt::Key_A);
        QCOMPARE(falta.text(), QStringLiteral("El tanto por ciento del impuesto es un número de 0 a 100."));
        QCOMPARE(foco(), QStringLiteral("txtPorcentaje"));
        rellena("100,01");
        atajo(Qt::Key_A);
        QVERIFY(dialogo.isVisible());
        rellena("21,5");
        atajo(Qt::Key_A);
        QCOMPARE(dialogo.result(), int{ QDialog::Accepted });
        const auto datos = dialogo.Datos();
        QCOMPARE(datos.nombre, std::string("Talleres Tegueste"));
        QCOMPARE(datos.provincia, std::string("Tenerife"));
        QCOMPARE(datos.almacen, std::string("Nave sur"));
        QCOMPARE(datos.usuario, std::string("Añaterve"));
        QVERIFY(datos.porcentaje == Currency::de_crudo(215'000));
        QCOMPARE(datos.proveedor.nombre, std::string("Aceros Órzola"));
        QCOMPARE(datos.proveedor.nif, std::string("A35999992"));
        QCOMPARE(datos.proveedor.poblacion, std::string());
    }
};

ATIPICOS_PRUEBA_VENTANAS(ElegirEmpresa_Test)
#include "ElegirEmpresa_test.moc"
