// The window that says who has done what to a charge.
#include "host/ventanas/frmHistorial.hpp"

#include "controls/VSFlexGrid.hpp"
#include "host/bases/Acceso.hpp"
#include "tests/app/EscenaPanel.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// The main window with a few charges, and the window of histories when it is open.
struct EscenaHistorial : EscenaPanel {
    [[nodiscard]] QWidget& historial() const { return control(*ventana, "frmHistorial"); }
    [[nodiscard]] VSFlexGrid& sucesos() const { return control<VSFlexGrid>(historial(), "vsSucesos"); }
    [[nodiscard]] VSFlexGrid& datos() const { return control<VSFlexGrid>(historial(), "vsDatos"); }
    [[nodiscard]] QString estado() const { return control<QLabel>(historial(), "lblEstado").text(); }
    [[nodiscard]] QString campo(const char* nombre) const
    {
        return control<QLineEdit>(historial(), nombre).text();
    }
    [[nodiscard]] QString fila(const VSFlexGrid& lista, int cual) const
    {
        QStringList celdas;
        for (int i = 0; i < lista.Cols(); ++i)
            celdas << lista.TextMatrix(cual, i);
        return celdas.join(u'|');
    }
    void di(const char* sql) const { sesion->bases.orvalin->Execute(sql); }
    void teclea_en(const char* nombre, const char* texto) const
    {
        auto& caja = control<QLineEdit>(historial(), nombre);
        caja.setFocus();
        caja.selectAll();
        teclea(texto);
        intro();
    }
};

}

class frmHistorial_Test : public QObject {
    Q_OBJECT
private slots:
    void init() { QSettings().clear(); }

    void the_chosen_charge_is_told_and_read_again_when_it_has_changed()
    {
        const EscenaHistorial escena;
        escena.abre();
        QTRY_COMPARE(escena.filas(), 4);
        pulsa(Qt::Key_H, Qt::ControlModifier);
        QTRY_COMPARE(escena.sucesos().Rows(), 2);
        QCOMPARE(escena.campo("txtCodigoCargo"), QStringLiteral("AT260003"));
        QCOMPARE(control<QSpinBox>(escena.historial(), "txtEjercicio").value(), 2026);
        QCOMPARE(control<QLineEdit>(control(escena.historial(), "txtAlmacen"), "txtCodigo").text(),
            QStringLiteral("2"));
        QCOMPARE(escena.estado(),
            QStringLiteral("Un suceso del cargo AT260003 del ejercicio 2026 en el almacén 2."));

        escena.di("UPDATE Proveedores_Cargos_Atipicos SET Importe =5.5, Observ ='Con albarán' WHERE Codigo "
                  "='AT260003'");
        pulsa(Qt::Key_F5);
        QTRY_COMPARE(escena.sucesos().Rows(), 3);
        QCOMPARE(escena.sucesos().Row(), 2); // the last thing that was done
        QCOMPARE(foco(), QStringLiteral("vsSucesos"));
        const auto cambio = escena.fila(escena.sucesos(), 2);
        QVERIFY2(cambio.contains(QStringLiteral("|cambio|cabecera|")), qPrintable(cambio));
        QVERIFY2(cambio.contains(QStringLiteral("|2 Íñigo Cabrera|")), qPrintable(cambio));
        QVERIFY2(
            cambio.endsWith(QStringLiteral(" atipicos|Importe 5 → 5,5; Observaciones Palé → Con albarán")),
            qPrintable(cambio));
        QCOMPARE(escena.datos().Rows(), 3);
        QCOMPARE(escena.fila(escena.datos(), 1), QStringLiteral("Importe|5|5,5"));
        QCOMPARE(escena.fila(escena.datos(), 2), QStringLiteral("Observaciones|Palé|Con albarán"));
        pulsa(Qt::Key_Up);
        QCOMPARE(escena.fila(escena.datos(), 1), QStringLiteral("Proveedor||104"));
        QCOMPARE(escena.estado(),
            QStringLiteral("2 sucesos del cargo AT260003 del ejercicio 2026 en el almacén 2."));

        control<QTableView>(*escena.ventana, "vsUltimos").selectRow(3); // another one, in the same window
        control<QAction>(*escena.ventana, "mnuHistorial").trigger();
        QTRY_COMPARE(escena.estado(),
            QStringLiteral("Un suceso del cargo AT250001 del ejercicio 2025 en el almacén 4."));
        QCOMPARE(control<QSpinBox>(escena.historial(), "txtEjercicio").value(), 2025);
        QCOMPARE(escena.ventana->findChildren<QWidget*>(QStringLiteral("frmHistorial")).size(), 1);
    }

    void another_one_can_be_keyed_in_also_one_that_is_gone()
    {
        const EscenaHistorial escena;
        escena.di("DELETE FROM Proveedores_Cargos_Atipicos WHERE Codigo ='AT250001'");
        escena.abre();
        QTRY_COMPARE(escena.filas(), 3);
        control<QAction>(*escena.ventana, "mnuHistorial").trigger();
        QTRY_COMPARE(escena.sucesos().Rows(), 2);
        control<QSpinBox>(escena.historial(), "txtEjercicio").setValue(2025);
        auto& almacen = control(escena.historial(), "txtAlmacen");
        control<QLineEdit>(almacen, "txtCodigo").setText(QStringLiteral("4"));
        escena.teclea_en("txtCodigoCargo", " at250001");
        QTRY_COMPARE(escena.estado(),
            QStringLiteral("2 sucesos del cargo AT250001 del ejercicio 2025 en el almacén 4. Ya no existe."));
        QVERIFY(escena.fila(escena.sucesos(), 2).contains(QStringLiteral("|baja|cabecera|")));
        QCOMPARE(escena.fila(escena.datos(), 2), QStringLiteral("Fecha|05/06/2025|"));

        escena.teclea_en("txtCodigoCargo", "AT250099");
        QTRY_COMPARE(escena.estado(),
            QStringLiteral("No consta el cargo AT250099 del ejercicio 2025 en el almacén 4."));
        QCOMPARE(escena.sucesos().Rows(), 1);
        QCOMPARE(escena.datos().Rows(), 1);

        escena.di("DROP TRIGGER Cargo_Alta");
        escena.pon("AT250002", 4, "06/06/2025", 106, "7", 40);
        escena.teclea_en("txtCodigoCargo", "AT250002");
        QTRY_COMPARE(escena.estado(),
            QStringLiteral("El cargo AT250002 del ejercicio 2025 en el almacén 4 está como estaba cuando se "
                           "empezó a llevar el historial."));
        atajo(Qt::Key_C);
        QTRY_VERIFY(escena.ventana->findChild<QWidget*>(QStringLiteral("frmHistorial")) == nullptr);
    }

    void what_is_missing_is_told_and_led_to()
    {
        EscenaHistorial escena;
        escena.di("DELETE FROM Proveedores_Cargos_Atipicos");
        escena.abre();
        pulsa(Qt::Key_H, Qt::ControlModifier);
        QTRY_COMPARE(foco(), QStringLiteral("txtCodigoCargo"));
        QCOMPARE(control<QSpinBox>(escena.historial(), "txtEjercicio").value(), 2026);
        intro();
        QCOMPARE(escena.estado(), QStringLiteral("Escriba el código del cargo, como AT260001."));
        teclea("AT260001");
        intro();
        QCOMPARE(escena.estado(), QStringLiteral("Escriba el almacén del cargo, o búsquelo con F2."));
        QCOMPARE(foco(), QStringLiteral("txtAlmacen"));
        std::filesystem::rename(escena.carpeta / "datos", escena.carpeta / "ya no"); // under its feet
        control<QLineEdit>(control(escena.historial(), "txtAlmacen"), "txtCodigo")
            .setText(QStringLiteral("2"));
        control<QPushButton>(escena.historial(), "cmdVer").click();
        QTRY_VERIFY2(escena.estado().startsWith(QStringLiteral("No se puede leer el historial: ")),
            qPrintable(escena.estado()));
        QVERIFY(!escena.estado().contains(QStringLiteral("atipicos_historial")));
        std::filesystem::rename(escena.carpeta / "ya no", escena.carpeta / "datos");
    }

    void on_a_server_it_is_for_those_who_may_read_it()
    {
        if (const auto falta = ServidorPostgresql::falta(); !falta.empty())
            QSKIP(falta.c_str());
        const ServidorPostgresql servidor;
        servidor.crea_base("empresa");
        const auto lugar = [&](const char* quien) {
            return bases::Lugar::de_conexion(servidor.direccion("empresa", quien));
        };
        bases::crea_bases(lugar("atipicos"), false);
        std::string dicho;
        QCOMPARE(servidor.guion(
                     "empresa", ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql", "atipicos", dicho),
            0);
        servidor.psql("empresa", "CREATE ROLE begona LOGIN IN ROLE atipicos_puesto");
        bases::asigna_acceso(bases::abre_bases(lugar("atipicos")), { "begona", 1 });
        app::OpcionesComunes opciones;
        opciones.conexion = servidor.direccion("empresa", "begona");
        app::Sesion sesion(opciones);
        {
            app::frmHistorial ventana(sesion, opciones.lugar());
            ventana.show();
            ventana.Muestra({ 2026, 2, "AT260001" });
            auto& estado = control<QLabel>(ventana, "lblEstado");
            QTRY_VERIFY2(estado.text().startsWith(
                             QStringLiteral("No se puede leer el historial: El usuario no tiene permiso")),
                qPrintable(estado.text()));
            QVERIFY(estado.text().endsWith(
                QStringLiteral(" En un servidor lo leen los que tienen el papel atipicos_historial.")));
        }
        vacia_contexto();
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmHistorial_Test)
#include "frmHistorial_test.moc"
