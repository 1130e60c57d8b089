// A clerk's morning without a mouse: one charge from the first key to the entry, then the next.
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QCheckBox>
#include <QPlainTextEdit>

using namespace atipicos;
using namespace atipicos::pruebas;

class Ciclo_Test : public QObject {
    Q_OBJECT

    EscenaEditor* escena = nullptr;

    /// The rows of a query, cells between "|".
    QStringList filas(const std::string& sql)
    {
        auto rs = escena->banco.bases().orvalin->CreateRecordset();
        rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
        QStringList leidas;
        for (; !rs->Eof(); rs->MoveNext()) {
            QStringList celdas;
            for (std::size_t i = 0; i < rs->Count(); ++i)
                celdas << QString::fromStdString(CStr(rs->Fields(i).Value()));
            leidas << celdas.join(u'|');
        }
        return leidas;
    }

    /// Of another day than today's, and with remarks.
    static void teclea_cabecera_con_fecha()
    {
        intro();
        for (const auto* campo : { "104", "16102026", "Palé del muelle" }) {
            teclea(campo);
            intro();
        }
        intro(); // franchise
    }

    void teclea_tres_lineas()
    {
        EscenaEditor::teclea_linea("1006", "=", "abollada", "12", "5,6325");
        EscenaEditor::teclea_linea("1003", "Vino picado", "", "6", "3,5");
        EscenaEditor::teclea_linea("", "Porte de vuelta", "", "1", "18,75");
    }

    void cambia_la_segunda()
    {
        escena->rejilla().setFocus(); // Tab, four times
        pulsa(Qt::Key_Home);
        pulsa(Qt::Key_Down);
        intro();
        EscenaEditor::teclea_linea("=", "Vino picado", "=", "5", "=");
    }

    void elimina_la_tercera()
    {
        escena->rejilla().setFocus();
        pulsa(Qt::Key_End);
        escena->banco.avisos->respuestas = { Respuesta::Si };
        pulsa(Qt::Key_Delete);
    }

    void comenta_la_primera()
    {
        escena->rejilla().setFocus();
        pulsa(Qt::Key_Home);
        const AlAbrirse editor([](QWidget&) {
            pulsa(Qt::Key_A, Qt::ControlModifier);
            teclea("palé golpeado en el muelle, d'origen");
            pulsa(Qt::Key_F9);
        });
        pulsa(Qt::Key_F4);
    }

    /// Three instalments of 30,34 are proposed; the last one becomes two.
    static void ajusta_previsiones(QWidget& dialogo)
    {
        auto& previsiones = control<VSFlexGrid>(dialogo, "vsPrev");
        QCOMPARE(previsiones.Rows(), 4);
        const QString ultimo = previsiones.TextMatrix(3, 0);
        previsiones.setFocus();
        pulsa(Qt::Key_End);
        pulsa(Qt::Key_Delete);
        QCOMPARE(foco(), QStringLiteral("txtPrevImp"));
        QCOMPARE(control<QLabel>(dialogo, "lblResto").text(), ultimo);
        for (const auto& [importe, dia] : { std::pair{ "20", "15012027" }, { "10,35", "15022027" } }) {
            teclea(importe);
            intro();
            teclea("3");
            intro(2);
            teclea(dia);
            intro();
        }
        QCOMPARE(control<QLabel>(dialogo, "lblResto").text(), QStringLiteral("0,00"));
        atajo(Qt::Key_A);
    }

private slots:
    void one_charge_by_keys_alone_and_then_the_form_is_as_new()
    {
        EscenaEditor sala("");
        escena = &sala;
        teclea_cabecera_con_fecha();
        teclea_tres_lineas();
        cambia_la_segunda();
        elimina_la_tercera();
        comenta_la_primera();
        QCOMPARE(sala.fila(1),
            QStringLiteral("1006|Atún en aceite, lata de 900 g|PALÉ GOLPEADO EN EL MUELLE, "
                           "D´ORIGEN|12,00|5,6325|67,59|"));
        QCOMPARE(sala.fila(2), QStringLiteral("1003|Vino picado||5,00|3,5000|17,50|75900010"));
        QCOMPARE(sala.total(), QStringLiteral("85,09"));
        sala.banco.avisos->dichos.clear();

        sala.acepta(&Ciclo_Test::ajusta_previsiones);

        QCOMPARE(sala.avisos().size(), std::size_t{ 1 });
        QVERIFY(sala.avisos().front()
            == (Mensaje{ "Atípico AT260001 generado correctamente.\r\nAsiento: 1", "¡ Atención !",
                Icono::informacion }));
        el_cargo_esta_guardado();
        el_asiento_cuadra();
        la_ventana_esta_como_nueva();
        y_el_siguiente_lleva_su_codigo();
    }

private:
    void el_cargo_esta_guardado()
    {
        QCOMPARE(filas("SELECT Codigo, Proveedor, Importe, Impuesto, Impuesto_Importe, Asiento, EmpContable, "
                       "EjContable, Fecha, Observ FROM Proveedores_Cargos_Atipicos"),
            QStringList{ QStringLiteral("AT260001|104|85,09|7|5,96|1|1|2026|16/10/2026|Palé del muelle") });
        QCOMPARE(filas("SELECT Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ FROM "
                       "Proveedores_Cargos_Atipicos_Lineas ORDER BY Num_Linea"),
            (QStringList{ QStringLiteral("1|1006|Atún en aceite, lata de 900 g|12|5,6325|PALÉ GOLPEADO EN EL "
                                         "MUELLE, D´ORIGEN"),
                QStringLiteral("2|1003|Vino picado|5|3,5|") }));
    }

    void el_asiento_cuadra()
    {
        QCOMPARE(filas("SELECT Linea, Cuenta, Debe, Haber FROM Bexmor.dbo.Apuntes ORDER BY Linea"),
            (QStringList{ QStringLiteral("1|44000104|91,05|0"), QStringLiteral("2|75900001|0|67,59"),
                QStringLiteral("3|75900010|0|17,5"), QStringLiteral("4|47700007|0|5,96"),
                QStringLiteral("5|40000104|91,05|0"), QStringLiteral("6|44000104|0|91,05") }));
        QCOMPARE(filas("SELECT Numero, Importe, TipoDoc, Vencimiento FROM Bexmor.dbo.Previsiones ORDER BY "
                       "Numero")
                     .mid(2),
            (QStringList{ QStringLiteral("3|20|3|15/01/2027"), QStringLiteral("4|10,35|3|15/02/2027") }));
        QCOMPARE(
            filas("SELECT SUM(Importe) FROM Bexmor.dbo.Previsiones").front().replace(u',', u'.').toDouble(),
            91.05);
    }

    void la_ventana_esta_como_nueva()
    {
        QCOMPARE(escena->rejilla().Rows(), 1);
        QCOMPARE(escena->total(), QStringLiteral("0,00"));
        QCOMPARE(escena->cinco_botones(), QStringLiteral("disabled"));
        QVERIFY(escena->c<Selector>("txtProv").vacio());
        QVERIFY(escena->c<QPlainTextEdit>("txtObservaciones").toPlainText().isEmpty());
        QCOMPARE(escena->texto("txtFecha"), QStringLiteral("21/11/2026"));
        QVERIFY(escena->c<Selector>("txtArticulo").vacio());
        for (const auto* caja :
            { "txtArticuloDescripcion", "txtObserv", "txtUnidades", "txtCosto", "txtImporte" })
            QCOMPARE(escena->texto(caja), QString());
        QCOMPARE(foco(), QStringLiteral("txtAlmacen"));
        QVERIFY(escena->form->isVisible());
    }

    void y_el_siguiente_lleva_su_codigo()
    {
        EscenaEditor::teclea_cabecera("101");
        EscenaEditor::teclea_linea("", "Otro", "", "1", "10");
        escena->acepta();
        QCOMPARE(escena->avisos().back().texto,
            std::string("Atípico AT260002 generado correctamente.\r\nAsiento: 2"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(Ciclo_Test)
#include "Ciclo_test.moc"
