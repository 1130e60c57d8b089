#include "host/ventanas/frmPrincipal.hpp"

#include "controls/VSFlexGrid.hpp"
#include "host/ventanas/frmSesion.hpp"
#include "tests/app/EscenaPrograma.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QSettings>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// The program with its main window open, on a sample company of the test's own.
struct EscenaPrincipal : EscenaPrograma {
    EscenaPrincipal()
        : EscenaPrograma(2)
    {
        abre();
    }

    /// A charge of that warehouse and day, straight into its table.
    void registra(const char* codigo, int almacen, const QString& fecha) const
    {
        const auto dia = fecha.toStdString();
        sesion->bases.orvalin->Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, "
            "Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra, "
            "Documento, Impuesto, Impuesto_Importe, Tipo) VALUES (1, "
            + dia.substr(6) + ", " + std::to_string(almacen) + ", '" + codigo + "', 104, '" + dia
            + "', 10, 0, 0, 0, 2, '" + dia + "', 'Palé', 0, 0, 0, 0, 0)");
    }

    static QWidget* editor()
    {
        for (QWidget* una : QApplication::topLevelWidgets())
            if (una->objectName() == QLatin1String("frmCompras_Atipicos") && una->isVisible())
                return una;
        return nullptr;
    }
};

void teclea_una_linea()
{
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
}

}

class frmPrincipal_Test : public QObject {
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }

    void the_status_line_tells_who_works_where()
    {
        const EscenaPrincipal escena;
        const auto texto
            = [&](const char* nombre) { return control<QLabel>(*escena.ventana, nombre).text(); };
        QCOMPARE(texto("lblEmpresa"), QStringLiteral("Empresa: 1 Comercial Drago Sur, S.L."));
        QCOMPARE(texto("lblUsuario"), QStringLiteral("Usuario: 2 Íñigo Cabrera"));
        QCOMPARE(texto("lblMotor"), QStringLiteral("Motor: SQLite"));
        QCOMPARE(texto("lblCarpeta"),
            QStringLiteral("Carpeta: ") + QString::fromStdString((escena.carpeta / "datos").string()));
    }

    void on_a_server_it_tells_when_the_line_is_lost_and_when_it_is_open_again()
    {
        if (const auto falta = ServidorPostgresql::falta(); !falta.empty())
            QSKIP(falta.c_str());
        const ServidorPostgresql servidor;
        servidor.crea_base("empresa");
        app::OpcionesComunes opciones;
        opciones.conexion = servidor.direccion("empresa");
        bases::crea_bases(opciones.lugar(), false);
        QPointer<app::frmPrincipal> ventana;
        {
            app::Sesion sesion(
                opciones, { .avisa_linea = [&](sql::Linea que) { ventana->muestra_linea(que); } });
            const auto propia = std::make_unique<app::frmPrincipal>(sesion, opciones);
            ventana = propia.get();
            const auto dice = [&] { return control<QLabel>(*ventana, "lblConexion").text(); };
            const auto corta = [&] {
                servidor.psql("postgres",
                    "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE datname = 'empresa'");
            };
            QCOMPARE(control<QLabel>(*ventana, "lblMotor").text(), QStringLiteral("Motor: PostgreSQL"));
            QCOMPARE(dice(), QStringLiteral("Conectado"));
            corta();
            QCOMPARE(sesion.catalogos.usuarios().size(), std::size_t{ 4 }); // a query opens it again
            QVERIFY2(dice().startsWith(QStringLiteral("Conexión reanudada a las ")), qPrintable(dice()));

            sesion.bases.orvalin->BeginTrans();
            sesion.bases.orvalin->Execute("DELETE FROM Importaciones"); // until then nothing could be lost
            corta();
            QVERIFY_THROWS_EXCEPTION(Error, sesion.bases.orvalin->Execute("DELETE FROM Articulos"));
            QVERIFY(dice().startsWith(QStringLiteral("Conexión perdida a las ")));
            QVERIFY_THROWS_EXCEPTION(Error, static_cast<void>(sesion.catalogos.usuarios()));
            QVERIFY(dice().startsWith(QStringLiteral("Conexión perdida"))); // not inside the unit of work
            sesion.bases.orvalin->RollbackTrans();
            QCOMPARE(sesion.catalogos.usuarios().size(), std::size_t{ 4 });
            QVERIFY(dice().startsWith(QStringLiteral("Conexión reanudada")));
        }
        vacia_contexto();
    }

    void enter_opens_the_editor_and_opens_it_once()
    {
        const EscenaPrincipal escena;
        QVERIFY(EscenaPrincipal::editor() == nullptr);
        intro();
        QWidget* editor = EscenaPrincipal::editor();
        QVERIFY(editor != nullptr);
        control<QAction>(*escena.ventana, "mnuReclamaciones").trigger();
        QCOMPARE(EscenaPrincipal::editor(), editor);
        editor->close();
        control<QAction>(*escena.ventana, "mnuReclamaciones").trigger();
        QCOMPARE(EscenaPrincipal::editor(), editor);
    }

    void it_asks_before_a_charge_that_is_keyed_in_is_lost()
    {
        const EscenaPrincipal escena;
        intro();
        QTRY_COMPARE(foco(), QStringLiteral("txtAlmacen"));
        teclea_una_linea();
        QCOMPARE(control<VSFlexGrid>(*EscenaPrincipal::editor(), "vsCargos").Rows(), 2);
        QVERIFY(!escena.ventana->close());
        QCOMPARE(escena.avisos->dichos.size(), std::size_t{ 1 });
        QVERIFY(escena.avisos->dichos.front()
            == (Mensaje{ "Hay un cargo sin guardar. Si sale ahora se pierde.\r\n\r\n¿Desea salir?",
                "¡ Atención !", Icono::pregunta, Botones::SiNo, Respuesta::No }));
        QVERIFY(EscenaPrincipal::editor() != nullptr);
        escena.avisos->respuestas = { Respuesta::Si };
        QVERIFY(escena.ventana->close());
    }

    void the_browser_opens_with_its_list_and_on_what_the_user_last_searched_for()
    {
        const auto visor = [](const EscenaPrincipal& escena) -> QWidget& {
            control<QAction>(*escena.ventana, "mnuVisor").trigger();
            return control(*escena.ventana, "frmCompras_Atipicos_Visor");
        };
        const auto texto
            = [](QWidget& form, const char* nombre) { return control<QLineEdit>(form, nombre).text(); };
        const auto codigo = [](QWidget& form, const char* nombre) {
            return control<QLineEdit>(control(form, nombre), "txtCodigo").text();
        };
        const auto hoy = QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
        {
            EscenaPrincipal escena;
            escena.registra("AT000001", 2, hoy);
            escena.registra("AT000002", 3, hoy);
            QWidget& form = visor(escena);
            QCOMPARE(texto(form, "txtFechaI"), QStringLiteral("01/01/") + hoy.right(4));
            QCOMPARE(texto(form, "txtFechaF"), hoy);
            QCOMPARE(control<VSFlexGrid>(form, "vsCab").Rows(), 3); // there at once
            control<QLineEdit>(form, "txtFechaI").setText(QStringLiteral("02/02/2020"));
            control<QLineEdit>(control(form, "txtAlmacen"), "txtCodigo").setText(QStringLiteral("3"));
            visor(escena); // open already: left as it is
            QCOMPARE(texto(form, "txtFechaI"), QStringLiteral("02/02/2020"));
            QCOMPARE(control<VSFlexGrid>(form, "vsCab").Rows(), 3);
            QTest::keyClick(&control(form, "txtFechaF"), Qt::Key_Return);
            form.close();
            QCOMPARE(codigo(visor(escena), "txtAlmacen"), QStringLiteral("3"));
            QCOMPARE(control<VSFlexGrid>(form, "vsCab").TextMatrix(1, 0), QStringLiteral("AT000002"));
        }
        const EscenaPrincipal otra; // another day
        QWidget& form = visor(otra);
        QCOMPARE(texto(form, "txtFechaI"), QStringLiteral("02/02/2020"));
        QCOMPARE(texto(form, "txtFechaF"), hoy);
        QCOMPARE(codigo(form, "txtAlmacen"), QStringLiteral("3"));
        QCOMPARE(codigo(form, "txtProveedor"), QString());
    }

    void a_search_is_remembered_for_each_user_and_until_today_stays_until_today()
    {
        using app::UltimaBusqueda;
        const auto lunes = dia("23/11/2026");
        const auto martes = dia("24/11/2026");
        UltimaBusqueda(2, 31).guarda({ dia("15/03/2025"), lunes, 4, 106 }, lunes);
        const auto leida = UltimaBusqueda(2, 31).lee(martes);
        QCOMPARE(leida.Fecha_Inicial, dia("15/03/2025"));
        QCOMPARE(leida.Fecha_Final, martes);
        QCOMPARE(leida.Almacen, std::int16_t{ 4 });
        QCOMPARE(leida.Proveedor, 106);
        for (const auto& [empresa, usuario] : { std::pair{ 2, 3 }, { 1, 31 } }) {
            const auto de_otro = UltimaBusqueda(static_cast<std::int16_t>(empresa), usuario).lee(martes);
            QCOMPARE(de_otro.Fecha_Inicial, dia("01/01/2026"));
            QCOMPARE(de_otro.Fecha_Final, martes);
            QCOMPARE(de_otro.Almacen, std::int16_t{ 0 });
            QCOMPARE(de_otro.Proveedor, 0);
        }
        UltimaBusqueda(2, 31).guarda({ lunes, dia("20/11/2026"), 0, 0 }, lunes);
        QCOMPARE(UltimaBusqueda(2, 31).lee(martes).Fecha_Final, dia("20/11/2026"));
        QSettings().setValue(QStringLiteral("visor/2/31/Almacen"), 99'999); // no warehouse has such a code
        QCOMPARE(UltimaBusqueda(2, 31).lee(martes).Almacen, std::int16_t{ 0 });
    }

    void without_a_charge_it_closes_and_remembers_its_size()
    {
        {
            const EscenaPrincipal escena;
            escena.ventana->resize(801, 503);
            intro();
            QVERIFY(EscenaPrincipal::editor() != nullptr);
            QVERIFY(escena.ventana->close());
            QVERIFY(escena.avisos->dichos.empty());
        }
        const EscenaPrincipal otra;
        QCOMPARE(otra.ventana->size(), QSize(801, 503));
    }

    void company_and_user_are_asked_for_only_where_there_is_a_choice()
    {
        const EscenaPrincipal escena;
        app::OpcionesVentana opciones{ escena.opciones, true, true };
        QVERIFY(app::elige_sesion(opciones).has_value()); // both given: no dialog
        opciones.empresa_dada = opciones.usuario_dado = false;
        std::optional<app::OpcionesComunes> elegida;
        QVERIFY(con_dialogo<app::frmSesion>([&] { elegida = app::elige_sesion(opciones); },
            [](app::frmSesion& dialogo) {
                QCOMPARE(control<QComboBox>(dialogo, "cboEmpresa").count(), 2);
                control<QComboBox>(dialogo, "cboUsuario").setFocus();
                pulsa(Qt::Key_Down);
                intro();
            }));
        QCOMPARE(elegida.value().empresa, std::int16_t{ 1 });
        QCOMPARE(elegida.value().usuario, 2);
        QVERIFY(con_dialogo<app::frmSesion>([&] { elegida = app::elige_sesion(opciones); },
            [](app::frmSesion& dialogo) {
                QCOMPARE(dialogo.usuario(), 2); // the choice of the last time is proposed
                pulsa(Qt::Key_Escape);
            }));
        QVERIFY(!elegida.has_value());
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmPrincipal_Test)
#include "frmPrincipal_test.moc"
