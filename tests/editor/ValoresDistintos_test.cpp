// One charge of which nothing has the value that it would have by itself: what is read from the wrong place
// shows.
#include "controls/CabeceraUnida.hpp"
#include "editor/frmEditor_Comentarios.hpp"
#include "platform/qvoremp/ImpresionCargo.hpp"
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QScreen>

#include <algorithm>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

class AlmacenCallado final : public qvoremp::Almacen {
public:
    bool Cargar(Donde /*donde*/) override { return true; }
};

class ProveedorCallado final : public qvoremp::Proveedor {
public:
    bool Cargar(Donde /*donde*/) override { return true; }
};

class ImpresionAnotada final : public qvoremp::ImpresionCargo {
public:
    explicit ImpresionAnotada(QStringList& impresas)
        : m_impresas(impresas)
    {
    }
    void Imprimir(Donde /*donde*/) override
    {
        m_impresas << QStringLiteral("%1 de %2, almacén %3, proveedor %4, en %5")
                          .arg(QString::fromStdString(Codigo))
                          .arg(Ejercicio)
                          .arg(almacen->Codigo)
                          .arg(proveedor->Codigo)
                          .arg(Dispositivo);
    }

private:
    QStringList& m_impresas;
};

/// A management library that notes what is to be printed.
class ImprentaAnotada final : public qvoremp::Biblioteca {
public:
    mutable QStringList impresas;

    std::unique_ptr<qvoremp::Almacen> NuevoAlmacen(const qvoremp::Empresa& /*de*/, Donde) const override
    {
        return std::make_unique<AlmacenCallado>();
    }
    std::unique_ptr<qvoremp::Proveedor> NuevoProveedor(const qvoremp::Empresa& /*de*/, Donde) const override
    {
        return std::make_unique<ProveedorCallado>();
    }
    std::unique_ptr<qvoremp::ImpresionCargo> NuevaImpresionCargo(
        const qvoremp::Empresa& /*de*/, Donde) const override
    {
        return std::make_unique<ImpresionAnotada>(impresas);
    }
};

/// The sample company, and what the form takes from it: default warehouse 4, tax type 2, user 12, cost of
/// three decimals.
struct EscenaDistinta : EscenaEditor {
    std::shared_ptr<ImprentaAnotada> imprenta = std::make_shared<ImprentaAnotada>();

    EscenaDistinta()
    {
        ejecuta("UPDATE Empresas SET AlmacenDefecto =4, DecimalesCosto =3 WHERE Codigo =1");
        pon("Proveedores_AtipcosImpuesto", "2");
        pon("Proveedores_AtipicosDispImpresoDefault", "2");
        pon("Proveedores_AtipicosDisp2ImpresoDefault", "3");
        modComun::set_EmpresaOrvalin(
            std::make_shared<orvalin::Empresa>(banco.bases().orvalin, std::int16_t{ 1 }, std::int32_t{ 12 }));
        modComun::set_BibliotecaOrvalin(imprenta);
    }

    void ejecuta(const std::string& sql) const { banco.bases().orvalin->Execute(sql); }
    void pon(const std::string& clave, const std::string& valor) const
    {
        ejecuta("UPDATE Parametros SET Valor ='" + valor + "' WHERE Clave ='" + clave + "'");
    }

    /// The rows of a query, cells between "|".
    [[nodiscard]] QStringList filas(const std::string& sql) const
    {
        auto rs = banco.bases().orvalin->CreateRecordset();
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

    static void teclea_cabecera_distinta()
    {
        for (const auto* campo : { "3", "105", "14052025", "Tercer palé, albarán 77" }) {
            teclea(campo);
            intro();
        }
        pulsa(Qt::Key_Space); // franchise
        intro();
    }

    static void teclea_dos_lineas()
    {
        teclea_linea("1003", "Vino picado", "caja 7", "2,5", "3,141");
        teclea_linea("1012", "=", "saco roto", "13", "0,876");
    }

    /// What is in each box of the entry row, the article first.
    QString linea_tecleada()
    {
        QStringList campos{ control<QLineEdit>(c<>("txtArticulo"), "txtCodigo").text() };
        for (const auto* nombre :
            { "txtArticuloDescripcion", "txtObserv", "txtUnidades", "txtCosto", "txtImporte" })
            campos << texto(nombre);
        return campos.join(u'|');
    }

    QString observaciones() { return c<QPlainTextEdit>("txtObservaciones").toPlainText(); }
    std::int32_t codigo_en(const char* selector)
    {
        return control<QLineEdit>(c<>(selector), "txtCodigo").text().toInt();
    }
};

/// Three instalments of 6,61 · 6,61 · 6,60 are proposed. The second goes; two others, each of another type,
/// bank and day, come behind.
void cambia_previsiones(QWidget& dialogo)
{
    auto& previsiones = control<VSFlexGrid>(dialogo, "vsPrev");
    QCOMPARE(previsiones.Rows(), 4);
    previsiones.set_Row(2);
    clic(dialogo, "cmdPrevEliminar");
    QCOMPARE(control<QLabel>(dialogo, "lblResto").text(), QStringLiteral("6,61"));
    for (const auto& [importe, tipo, banco, dia] :
        { std::tuple{ "2", "2", "572000002", "15072025" }, { "4,61", "4", "", "20092025" } }) {
        for (const auto* campo : { importe, tipo, banco, dia }) {
            pulsa(Qt::Key_A, Qt::ControlModifier);
            pulsa(Qt::Key_Delete);
            teclea(campo);
            intro();
        }
    }
    QCOMPARE(control<QLabel>(dialogo, "lblResto").text(), QStringLiteral("0,00"));
    pulsa(Qt::Key_F9);
}

}

class ValoresDistintos_Test : public QObject {
    Q_OBJECT

    static void el_cargo_se_guarda_con_sus_valores(const EscenaDistinta& escena)
    {
        QCOMPARE(escena.filas(
                     "SELECT Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha, Importe, "
                     "Asiento, EmpContable, EjContable, Usuario, Observ, Cod_Compra, Documento, Impuesto, "
                     "Impuesto_Importe, Tipo, Hora FROM Proveedores_Cargos_Atipicos"),
            QStringList{
                QStringLiteral("1|2025|3|AT250001|105|14/05/2025|19,24|1|2|2026|12|Tercer palé, albarán "
                               "77|0|0|3|0,58|0|21/11/2026 9:05:03") });
        QCOMPARE(
            escena.filas("SELECT Cod_Ejercicio, Cod_Almacen, Num_Linea, Cod_Articulo, Descripcion, Unidades, "
                         "Precio, Observ FROM Proveedores_Cargos_Atipicos_Lineas ORDER BY Num_Linea"),
            (QStringList{ QStringLiteral("2025|3|1|1003|Vino picado|2,5|3,141|caja 7"),
                QStringLiteral("2025|3|2|1012|Gofio de millo 1 kg|13|0,876|saco roto") }));
        QCOMPARE(escena.filas("SELECT Cod_Ejercicio, Cod_Almacen, Numero FROM "
                              "Contador_Proveedores_Cargos_Atipicos WHERE Numero > 0"),
            QStringList{ QStringLiteral("2025|3|250001") });
    }

    static void el_asiento_lleva_sus_valores(const EscenaDistinta& escena)
    {
        QCOMPARE(escena.filas(
                     "SELECT Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario FROM Bexmor.dbo.Asientos"),
            QStringList{ QStringLiteral("2|2025|1|14/05/2025|12") });
        QCOMPARE(escena.filas(
                     "SELECT Linea, Cuenta, ConceptoAutomatico, Concepto, Documento, Departamento, Debe, "
                     "Haber, TipoImpuesto, PorcentajeImpuesto, BaseImpuesto FROM Bexmor.dbo.Apuntes ORDER "
                     "BY Linea"),
            (QStringList{ QStringLiteral("1|440000105|47|Reclamación AT250001|AT250001|90|19,82|0|0|0|0"),
                QStringLiteral("2|75900010|47|Ingreso atípico Lácteos Tinerfeños Añaza, "
                               "S.A.|AT250001|90|0|7,85|2|3|7,85"),
                QStringLiteral("3|759000003|47|Ingreso atípico Lácteos Tinerfeños Añaza, "
                               "S.A.|AT250001|90|0|11,39|2|3|11,39"),
                QStringLiteral(
                    "4|477000003|47|IGIC atípico Lácteos Tinerfeños Añaza, S.A.|AT250001|90|0|0,58|0|0|0"),
                QStringLiteral("5|521000105||N/Cargo AT250001|AT250001|90|19,82|0|0|0|0"),
                QStringLiteral("6|440000105||Reclamación AT250001|AT250001|90|0|19,82|0|0|0") }));
        QCOMPARE(escena.filas("SELECT Cod_Empresa, Cod_Ejercicio, Asiento, Linea, Clase, Indicador, Fecha, "
                              "Documento, Base, TipoImpuesto, Cuota, TotalImpuesto FROM "
                              "Bexmor.dbo.Registro_Impuestos"),
            QStringList{ QStringLiteral("2|2025|1|4|2|1|14/05/2025|AT250001|19,24|2|0,58|0,58") });
        QCOMPARE(
            escena.filas("SELECT Cod_Empresa, Cod_Ejercicio, Asiento, Numero, Cuenta, Departamento, Importe, "
                         "TipoDoc, Vencimiento, Banco FROM Bexmor.dbo.Previsiones ORDER BY Numero"),
            (QStringList{ QStringLiteral("2|2025|1|1|521000105|90|6,61|3|30/06/2025|572000001"),
                QStringLiteral("2|2025|1|2|521000105|90|6,6|3|31/08/2025|572000001"),
                QStringLiteral("2|2025|1|3|521000105|90|2|2|15/07/2025|572000002"),
                QStringLiteral("2|2025|1|4|521000105|90|4,61|4|20/09/2025|") }));
    }

    static void la_ventana_esta_como_nueva(EscenaDistinta& escena)
    {
        QCOMPARE(escena.codigo_en("txtAlmacen"), 4);
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("Puerto del Rosario"));
        QVERIFY(escena.c<>("txtAlmacen").isEnabled());
        QVERIFY(escena.c<Selector>("txtProv").vacio());
        QCOMPARE(escena.c<Selector>("txtProv").Nombre(), QString());
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("21/11/2026"));
        QCOMPARE(escena.observaciones(), QString());
        QVERIFY(!escena.c<QCheckBox>("chkFranquiciado").isChecked());
        QCOMPARE(escena.linea_tecleada(), QStringLiteral("|||||"));
        QCOMPARE(escena.total(), QStringLiteral("0,00"));
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.rejilla().Row(), 0);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
        QCOMPARE(escena.form->windowTitle(), QStringLiteral("Reclamaciones a Proveedores"));
        QVERIFY(escena.form->Codigo.empty());
        QCOMPARE(foco(), QStringLiteral("txtAlmacen"));
    }

    /// The same code stands in another year, in another warehouse and in another company, each time of other
    /// values.
    static void guarda_cuatro_del_mismo_codigo(const EscenaDistinta& escena)
    {
        for (const auto& [clave, proveedor, fecha, texto, costo] :
            { std::tuple{ "1, 2025, 3", "105", "09/03/2025", "El que se busca", "2.125" },
                { "1, 2026, 3", "101", "01/02/2026", "De otro año", "7" },
                { "1, 2025, 2", "102", "02/02/2026", "De otro almacén", "8" },
                { "2, 2025, 3", "103", "03/02/2026", "De otra empresa", "9" } }) {
            escena.ejecuta(
                std::string("INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, "
                            "Cod_Almacen, Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, "
                            "EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, Impuesto, "
                            "Impuesto_Importe, Tipo) VALUES (")
                + clave + ", 'AT260001', " + proveedor + ", '" + fecha + "', 1, 0, 1, 2026, 1, '" + fecha
                + "', '" + texto + "', 0, 0, 7, 0, 0)");
            for (const auto* linea : { "1", "2" })
                escena.ejecuta(std::string("INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, "
                                           "Cod_Ejercicio, Cod_Almacen, Codigo, Num_Linea, Cod_Articulo, "
                                           "Descripcion, Unidades, Precio, Observ) VALUES (")
                    + clave + ", 'AT260001', " + linea + ", 1030, 'Línea " + linea + "', 3, " + costo + ", '"
                    + texto + "')");
        }
    }

private slots:
    void a_charge_of_other_values_is_stored_posted_and_printed_with_them_and_then_the_form_is_as_new()
    {
        EscenaDistinta escena;
        escena.abre();
        QCOMPARE(escena.codigo_en("txtAlmacen"), 4);
        EscenaDistinta::teclea_cabecera_distinta();
        EscenaDistinta::teclea_dos_lineas();
        QCOMPARE(escena.fila(1), QStringLiteral("1003|Vino picado|caja 7|2,50|3,141|7,85|75900010"));
        QCOMPARE(escena.fila(2), QStringLiteral("1012|Gofio de millo 1 kg|saco roto|13,00|0,876|11,39|"));
        QCOMPARE(escena.total(), QStringLiteral("19,24"));
        for (const auto* campo : { "1030", "Ron que nadie acepta", "suelto", "8" }) {
            pulsa(Qt::Key_A, Qt::ControlModifier);
            teclea(campo);
            intro();
        }
        teclea("9,125");
        QCOMPARE(
            escena.linea_tecleada(), QStringLiteral("1030|Ron que nadie acepta|suelto|8,00|9,125|73,00"));
        escena.banco.avisos->respuestas = { Respuesta::Si }; // goes on without that line

        const AlAbrirse contabilizar(&cambia_previsiones, "frmCompras_Atipicos_Contabilizar");
        const AlAbrirse impresora([](QWidget& dialogo) { clic(dialogo, "cmdAceptar"); }, "frmImpresora");
        atajo(Qt::Key_A);

        QCOMPARE(escena.banco.titulos().size(), std::size_t{ 2 });
        QCOMPARE(escena.avisos().back().texto,
            std::string("Atípico AT250001 generado correctamente.\r\nAsiento: 1"));
        el_cargo_se_guarda_con_sus_valores(escena);
        el_asiento_lleva_sus_valores(escena);
        QCOMPARE(escena.imprenta->impresas,
            (QStringList{ QStringLiteral("AT250001 de 2025, almacén 3, proveedor 105, en 2"),
                QStringLiteral("AT250001 de 2025, almacén 3, proveedor 105, en 3") }));
        la_ventana_esta_como_nueva(escena);
    }

    void a_warehouse_whose_box_was_not_left_is_looked_up_before_the_save_begins()
    {
        EscenaDistinta escena;
        escena.abre();
        EscenaDistinta::teclea_cabecera_distinta();
        EscenaDistinta::teclea_dos_lineas();
        escena.c<>("txtAlmacen").setFocus();
        teclea("2");
        auto& dichas = escena.banco.parte->dichas;
        dichas.clear();
        escena.acepta();
        const auto lugar = [&](const char* que) {
            return std::find_if(dichas.begin(), dichas.end(),
                [que](const std::string& dicha) { return dicha.find(que) != std::string::npos; });
        };
        const auto nombre = lugar("SELECT Nombre FROM Almacenes");
        const auto contable = lugar("SELECT EmpContable FROM Almacenes");
        QVERIFY(nombre != dichas.end());
        QVERIFY(contable != dichas.end());
        QVERIFY(nombre < contable);
        QCOMPARE(escena.filas("SELECT Cod_Almacen, EmpContable FROM Proveedores_Cargos_Atipicos"),
            QStringList{ QStringLiteral("2|1") });
    }

    void cancelling_leaves_the_form_as_new_too()
    {
        EscenaDistinta escena;
        escena.abre();
        EscenaDistinta::teclea_cabecera_distinta();
        EscenaDistinta::teclea_dos_lineas();
        for (const auto* nombre : { "txtArticuloDescripcion", "txtObserv", "txtUnidades", "txtCosto" })
            escena.c<QLineEdit>(nombre).setText(QStringLiteral("7"));
        escena.c<Selector>("txtArticulo").setFocus();
        teclea("1030");
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdCancelar");
        la_ventana_esta_como_nueva(escena);
        QCOMPARE(escena.filas("SELECT Codigo FROM Proveedores_Cargos_Atipicos"), QStringList());
    }

    void a_charge_of_other_values_is_loaded_with_them()
    {
        EscenaDistinta escena;
        guarda_cuatro_del_mismo_codigo(escena);
        escena.abre("AT260001", 3, 2025);
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("09/03/2025"));
        QCOMPARE(escena.codigo_en("txtAlmacen"), 3);
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("Arrecife"));
        QVERIFY(!escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(escena.codigo_en("txtProv"), 105);
        QCOMPARE(escena.c<Selector>("txtProv").Nombre(), QStringLiteral("Lácteos Tinerfeños Añaza, S.A."));
        QCOMPARE(escena.observaciones(), QStringLiteral("El que se busca"));
        QCOMPARE(escena.rejilla().Rows(), 3);
        QCOMPARE(escena.fila(1), QStringLiteral("1030|Línea 1|El que se busca|3,00|2,125|6,38|75900010"));
        QCOMPARE(escena.fila(2), QStringLiteral("1030|Línea 2|El que se busca|3,00|2,125|6,38|75900010"));
        QCOMPARE(escena.total(), QStringLiteral("12,76"));
        QCOMPARE(escena.form->windowTitle(), QStringLiteral("Reclamaciones a Proveedores - AT260001"));
    }

    void outside_the_head_office_the_warehouse_stays_fixed_when_the_last_line_goes()
    {
        EscenaDistinta escena;
        escena.pon("OficinaCentral", "0");
        dynamic_cast<orvalin::Empresa&>(*modComun::EmpresaOrvalin()).Recargar();
        escena.abre();
        QCOMPARE(escena.codigo_en("txtAlmacen"), 4);
        teclea("105");
        intro(4);
        EscenaEditor::teclea_linea("1012", "=", "saco", "2", "3");
        escena.rejilla().set_Row(1);
        escena.c<QLineEdit>("txtObserv").setText(QStringLiteral("a medias"));
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QVERIFY(!escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(escena.texto("txtObserv"), QString());
    }

    void a_line_that_was_changed_is_no_longer_the_chosen_one()
    {
        EscenaDistinta escena;
        escena.abre();
        EscenaDistinta::teclea_cabecera_distinta();
        EscenaDistinta::teclea_dos_lineas();
        escena.rejilla().set_Row(2);
        clic(*escena.form, "cmdModificar");
        QCOMPARE(
            escena.linea_tecleada(), QStringLiteral("1012|Gofio de millo 1 kg|saco roto|13,00|0,876|11,39"));
        EscenaEditor::teclea_linea("=", "Gofio mojado", "=", "=", "1,5");
        QCOMPARE(escena.fila(2), QStringLiteral("1012|Gofio mojado|saco roto|13,00|1,500|19,50|"));
        QCOMPARE(escena.total(), QStringLiteral("27,35"));
        QCOMPARE(escena.rejilla().Row(), 0);
        clic(*escena.form, "cmdModificar"); // nothing is chosen
        QCOMPARE(escena.texto("txtObserv"), QString());
    }

    void the_two_headings_of_the_article_are_one_and_all_are_centred()
    {
        EscenaDistinta escena;
        escena.abre();
        auto& rejilla = escena.rejilla();
        const auto* cabecera = rejilla.findChild<CabeceraUnida*>();
        QVERIFY(cabecera != nullptr);
        QCOMPARE(cabecera->celda(0), cabecera->celda(1));
        QCOMPARE(cabecera->celda(0).width(), rejilla.ColWidth(0) + rejilla.ColWidth(1));
        QCOMPARE(cabecera->celda(2).width(), rejilla.ColWidth(2));
        for (int columna = 0; columna < rejilla.Cols(); ++columna)
            QCOMPARE(rejilla.model()->headerData(columna, Qt::Horizontal, Qt::TextAlignmentRole).toInt(),
                int(Qt::AlignHCenter | Qt::AlignVCenter));
    }

    void the_comment_editor_opens_in_the_middle_of_the_screen_wherever_its_owner_stands()
    {
        QWidget duena;
        duena.setGeometry(0, 0, 120, 90);
        duena.show();
        frmEditor_Comentarios editor(&duena);
        {
            const AlAbrirse abierto([](QWidget& dialogo) {
                const QPoint centro = dialogo.geometry().center();
                const QPoint pantalla = dialogo.screen()->geometry().center();
                QVERIFY2(std::abs(centro.x() - pantalla.x()) <= 2, qPrintable(QString::number(centro.x())));
                QVERIFY2(std::abs(centro.y() - pantalla.y()) <= 2, qPrintable(QString::number(centro.y())));
                pulsa(Qt::Key_F9);
            });
            editor.exec();
        }
    }

    void closing_lets_the_article_look_up_go()
    {
        EscenaDistinta escena;
        const auto conexion = modComun::ConexionOrvalin();
        escena.abre();
        const auto abierta = conexion.use_count();
        escena.form->close();
        QVERIFY2(conexion.use_count() < abierta, "the look-up is still there");
    }
};

ATIPICOS_PRUEBA_VENTANAS(ValoresDistintos_Test)
#include "ValoresDistintos_test.moc"
