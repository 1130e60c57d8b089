#include "controls/VSFlexGrid.hpp"
#include "tests/app/EscenaPrograma.hpp"
#include "tests/support/Ventanas.hpp"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

/// The main window of a sample company, driven by keys.
struct EscenaFichas : EscenaPrograma {
    EscenaFichas()
        : EscenaPrograma(3, "17/06/2026")
    {
    }

    [[nodiscard]] std::string dato(const std::string& sql) const
    {
        const auto rs = sesion->bases.orvalin->CreateRecordset();
        rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
        return rs->Eof() ? std::string("none") : CStr(rs->Fields(std::size_t{ 0 }).Value());
    }
};

QString texto_de(QWidget& ventana, const char* nombre) { return control<QLineEdit>(ventana, nombre).text(); }

}

class frmFichas_Test : public QObject {
    Q_OBJECT
private slots:
    void a_supplier_is_added_found_changed_and_removed_by_keys()
    {
        const EscenaFichas escena;
        escena.abre();
        const AlAbrirse proveedores(
            [&](QWidget& lista) {
                auto& rejilla = control<VSFlexGrid>(lista, "vsFichas");
                const int antes = rejilla.Rows();
                QVERIFY(antes > 2);
                QCOMPARE(foco(), QStringLiteral("vsFichas"));
                {
                    const AlAbrirse nuevo(
                        [&](QWidget& ficha) {
                            QCOMPARE(foco(), QStringLiteral("txtNombre"));
                            QVERIFY(texto_de(ficha, "txtCodigoFicha").toInt() > 100);
                            atajo(Qt::Key_A);
                            QCOMPARE(control<QLabel>(ficha, "lblFalta").text(),
                                QStringLiteral("Falta el nombre."));
                            teclea("Mallas Ñoñas");
                            intro();
                            QCOMPARE(foco(), QStringLiteral("txtNIF"));
                            teclea("B35999345");
                            intro();
                            teclea("Muelle, 9");
                            intro();
                            teclea("35501");
                            intro();
                            teclea("Arrecife");
                            intro();
                            QCOMPARE(foco(), QStringLiteral("cboFormaPago"));
                            pulsa(Qt::Key_End);
                            intro();
                            teclea("10");
                            intro();
                            teclea("25");
                            pulsa(Qt::Key_O, Qt::AltModifier);
                            QCOMPARE(foco(), QStringLiteral("txtCodigoFicha"));
                            teclea("101");
                            atajo(Qt::Key_A);
                            QCOMPARE(control<QLabel>(ficha, "lblFalta").text(),
                                QStringLiteral("Ya hay un proveedor con el código 101."));
                            control<QLineEdit>(ficha, "txtCodigoFicha").selectAll();
                            teclea("345");
                            atajo(Qt::Key_A);
                        },
                        "frmFicha");
                    pulsa(Qt::Key_Insert);
                }
                QCOMPARE(rejilla.Rows(), antes + 1);
                QCOMPARE(rejilla.TextMatrix(rejilla.Row(), 0), QStringLiteral("345"));
                QCOMPARE(rejilla.TextMatrix(rejilla.Row(), 3), QStringLiteral("Arrecife"));
                pulsa(Qt::Key_B, Qt::AltModifier);
                teclea("nonas mall");
                QCOMPARE(rejilla.Rows(), 2);
                intro();
                {
                    const AlAbrirse cambiar(
                        [&](QWidget& ficha) {
                            QVERIFY(!control<QLineEdit>(ficha, "txtCodigoFicha").isEnabled());
                            QCOMPARE(texto_de(ficha, "txtDomicilio"), QStringLiteral("Muelle, 9"));
                            QCOMPARE(texto_de(ficha, "txtCodigoPostal"), QStringLiteral("35501"));
                            QCOMPARE(texto_de(ficha, "txtDiaPago_1"), QStringLiteral("10"));
                            QCOMPARE(texto_de(ficha, "txtDiaPago_2"), QStringLiteral("25"));
                            QCOMPARE(control<QComboBox>(ficha, "cboFormaPago").currentText(),
                                QStringLiteral("6  A 60 días"));
                            control<QLineEdit>(ficha, "txtNombre").selectAll();
                            teclea("Redes ñoñas, mallas");
                            atajo(Qt::Key_A);
                        },
                        "frmFicha");
                    intro();
                }
                QCOMPARE(rejilla.TextMatrix(1, 1), QStringLiteral("Redes ñoñas, mallas"));
                escena.avisos->respuestas = { Respuesta::No, Respuesta::Si };
                pulsa(Qt::Key_Delete);
                QCOMPARE(rejilla.Rows(), 2);
                pulsa(Qt::Key_Delete);
                QCOMPARE(rejilla.Rows(), 1);
                QCOMPARE(escena.avisos->dichos.back().texto,
                    std::string("¿Eliminar el proveedor 345, Redes ñoñas, mallas?"));
                pulsa(Qt::Key_Escape);
            },
            "frmFichas");
        control<QAction>(*escena.ventana, "mnuProveedores").trigger();
        QCOMPARE(escena.dato("SELECT Nombre FROM Proveedores WHERE Codigo =345"), std::string("none"));
    }

    void an_article_is_added_by_keys()
    {
        const EscenaFichas escena;
        escena.abre();
        const AlAbrirse articulos(
            [&](QWidget& lista) {
                {
                    const AlAbrirse nuevo(
                        [&](QWidget& ficha) {
                            const auto& cuenta = control<QLineEdit>(ficha, "txtCuentaIngresos");
                            QCOMPARE(cuenta.placeholderText(), QStringLiteral("La del almacén"));
                            teclea("Red rota");
                            intro();
                            teclea("75900010");
                            pulsa(Qt::Key_O, Qt::AltModifier);
                            control<QLineEdit>(ficha, "txtCodigoFicha").selectAll();
                            teclea("7001");
                            atajo(Qt::Key_A);
                        },
                        "frmFicha");
                    atajo(Qt::Key_N);
                }
                auto& rejilla = control<VSFlexGrid>(lista, "vsFichas");
                const auto& cabecera = *rejilla.horizontalHeader();
                for (int i = 0; i < rejilla.Cols(); ++i)
                    QVERIFY2(rejilla.columnWidth(i)
                            > cabecera.fontMetrics().horizontalAdvance(rejilla.TextMatrix(0, i)),
                        qPrintable(rejilla.TextMatrix(0, i)));
                const int todas = rejilla.columnViewportPosition(2) + rejilla.columnWidth(2);
                QCOMPARE(todas, rejilla.viewport()->width()); // nothing is left over beside the last one
                QCOMPARE(rejilla.TextMatrix(rejilla.Row(), 1), QStringLiteral("Red rota"));
                QCOMPARE(rejilla.TextMatrix(rejilla.Row(), 2), QStringLiteral("75900010"));
                pulsa(Qt::Key_Escape);
            },
            "frmFichas");
        control<QAction>(*escena.ventana, "mnuArticulos").trigger();
        QCOMPARE(escena.dato("SELECT Nombre FROM Articulos WHERE Codigo =7001"), std::string("Red rota"));
    }

    void entries_without_charge_are_reversed_from_the_main_window()
    {
        const EscenaFichas escena;
        auto& bexmor = *escena.sesion->bases.bexmor;
        pon_asiento_sin_cargo(bexmor);
        escena.sesion->bases.orvalin->Execute(
            "INSERT INTO Contador_Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, "
            "Numero) VALUES (1, 2026, 1, 260009)");
        escena.abre();
        auto& boton = control<QPushButton>(*escena.ventana, "cmdSueltos");
        QTRY_VERIFY(boton.isEnabled());
        {
            const AlAbrirse anular(
                [&](QWidget& dialogo) {
                    auto& sobran = control<QPushButton>(dialogo, "cmdAnular");
                    QTRY_VERIFY(sobran.isEnabled());
                    QCOMPARE(control<QLabel>(dialogo, "lblEstado").text(),
                        QStringLiteral("Sobra 1 asiento, por 107,00. Anular uno hace otro con los mismos "
                                       "apuntes al contrario."));
                    QCOMPARE(control<VSFlexGrid>(dialogo, "vsAsientos").TextMatrix(1, 2),
                        QStringLiteral("AT260004"));
                    QCOMPARE(control<QDateEdit>(dialogo, "txtFechaAnular").date(), QDate(2026, 6, 17));
                    control<QDateEdit>(dialogo, "txtFechaAnular").setDate(QDate(2031, 5, 4));
                    intro();
                    QVERIFY(
                        escena.avisos->dichos.back().texto.find(" No se ha anulado nada; ponga otra fecha.")
                        != std::string::npos);
                    control<QDateEdit>(dialogo, "txtFechaAnular").setDate(QDate(2026, 5, 4));
                    escena.avisos->respuestas = { Respuesta::No, Respuesta::Si };
                    atajo(Qt::Key_A);
                    QVERIFY(dialogo.isVisible());
                    atajo(Qt::Key_A);
                },
                "frmAnular");
            const AlAbrirse pendiente([](QWidget&) { atajo(Qt::Key_A); }, "frmPendiente");
            boton.click();
        }
        QVERIFY(escena.avisos->dichos.back().texto.starts_with(
            "El asiento 1/2026/5 queda anulado con el 1/2026/"));
        const auto rs = bexmor.CreateRecordset();
        rs->Open("SELECT a.Fecha, a.Usuario FROM Regularizaciones r INNER JOIN Asientos a ON a.Cod_Empresa ="
                 " r.Cod_Empresa AND a.Cod_Ejercicio = r.Por_Ejercicio AND a.Numero = r.Por_Asiento",
            adodb::CursorType::Static, adodb::LockType::ReadOnly);
        QVERIFY(!rs->Eof());
        QCOMPARE(CStr(rs->Fields("Fecha").Value()), std::string("04/05/2026"));
        QCOMPARE(CStr(rs->Fields("Usuario").Value()), std::string("3"));
        QTRY_VERIFY(!boton.isEnabled());
    }

private:
    /// The entry of a charge that was deleted: debtor, income, tax, and supplier to debtor.
    static void pon_asiento_sin_cargo(adodb::Connection& bexmor)
    {
        bexmor.Execute("INSERT INTO Contador_Asientos VALUES (1, 2026, 5)");
        bexmor.Execute("INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario) VALUES (1, "
                       "2026, 5, '10/02/2026', '1')");
        int linea = 0;
        for (const auto* apunte :
            { "'44000101', '', 'Reclamación AT260004', 'AT260004', '90', 107, 0, 0, 0, 0",
                "'75900001', '', 'Ingreso', 'AT260004', '90', 0, 100, 0, 0, 0",
                "'47700007', '47', 'IGIC', 'AT260004', '90', 0, 7, 1, 7, 100",
                "'40000101', '', 'N/Cargo AT260004', 'AT260004', '90', 107, 0, 0, 0, 0",
                "'44000101', '', 'Reclamación AT260004', 'AT260004', '90', 0, 107, 0, 0, 0" })
            bexmor.Execute(
                "INSERT INTO Apuntes VALUES (1, 2026, 5, " + std::to_string(++linea) + ", " + apunte + ")");
        bexmor.Execute(
            "INSERT INTO Registro_Impuestos VALUES (1, 2026, 5, 3, 2, 1, '10/02/2026', 'AT260004', "
            "100, 1, 7, 7)");
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmFichas_Test)
#include "frmFichas_test.moc"
