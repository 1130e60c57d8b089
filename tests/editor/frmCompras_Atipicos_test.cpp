#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Ventanas.hpp"

#include <QPlainTextEdit>
#include <QSignalSpy>

using namespace atipicos;
using namespace atipicos::pruebas;

namespace {

void pon_parametro(const Banco& banco, const std::string& clave, const std::string& valor)
{
    banco.bases().orvalin->Execute(
        "UPDATE Parametros SET Valor ='" + valor + "' WHERE Clave ='" + clave + "'");
    dynamic_cast<orvalin::Empresa&>(*modComun::EmpresaOrvalin()).Recargar();
}

}

class frmCompras_Atipicos_Test : public QObject {
    Q_OBJECT
private slots:
    // Opening

    void opened_for_a_new_charge()
    {
        EscenaEditor escena("");
        QCOMPARE(escena.form->windowTitle(), QStringLiteral("Reclamaciones a Proveedores"));
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("Güímar central"));
        QVERIFY(escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("21/11/2026"));
        QCOMPARE(escena.total(), QStringLiteral("0,00"));
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
        QVERIFY(escena.c<>("cmdSalir").isEnabled());
        QCOMPARE(foco(), QStringLiteral("txtAlmacen"));
        QVERIFY(escena.avisos().empty());
    }

    void the_columns_of_the_grid()
    {
        EscenaEditor escena("");
        QCOMPARE(escena.fila(0), QStringLiteral("Artículo|Artículo|Observaciones|Unidades|Costo|Importe|"));
        QVERIFY(escena.rejilla().isColumnHidden(6));
        const int derecha = Qt::AlignRight | Qt::AlignVCenter;
        const int izquierda = Qt::AlignLeft | Qt::AlignVCenter;
        const std::vector<int> alineaciones{ derecha, izquierda, izquierda, derecha, derecha, derecha };
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("1006", "=", "", "1", "1");
        for (int columna = 0; columna < 6; ++columna)
            QCOMPARE(escena.rejilla().model()->index(0, columna).data(Qt::TextAlignmentRole).toInt(),
                alineaciones[static_cast<std::size_t>(columna)]);
        const int mil = escena.rejilla().logicalDpiX() * 1000 / 1440;
        for (const int columna : { 0, 3, 4 })
            QVERIFY(std::abs(escena.rejilla().ColWidth(columna) - mil) <= 1);
    }

    void description_and_observations_share_what_the_window_gains()
    {
        EscenaEditor escena("");
        const int descripcion = escena.rejilla().ColWidth(1);
        const int observaciones = escena.rejilla().ColWidth(2);
        const int unidades = escena.rejilla().ColWidth(3);
        escena.form->resize(escena.form->width() + 200, escena.form->height());
        QTRY_COMPARE(escena.rejilla().ColWidth(1), descripcion + 100);
        QCOMPARE(escena.rejilla().ColWidth(2), observaciones + 100);
        QCOMPARE(escena.rejilla().ColWidth(3), unidades);
    }

    void outside_the_head_office_the_warehouse_is_fixed()
    {
        EscenaEditor escena;
        pon_parametro(escena.banco, "OficinaCentral", "0");
        escena.abre();
        QVERIFY(!escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("Güímar central"));
        QCOMPARE(foco(), QStringLiteral("txtProv"));
        teclea("104");
        intro(4);
        EscenaEditor::teclea_linea("", "Porte", "", "1", "10");
        QCOMPARE(escena.rejilla().Rows(), 2);
        escena.rejilla().set_Row(1);
        escena.banco.avisos->respuestas = { Respuesta::Si, Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        QCOMPARE(escena.rejilla().Rows(), 1);
        QVERIFY2(!escena.c<>("txtAlmacen").isEnabled(), "the last line is gone");
        escena.c<>("txtArticulo").setFocus();
        EscenaEditor::teclea_linea("", "Porte", "", "1", "10");
        pulsa(Qt::Key_Escape);
        QVERIFY(!escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(foco(), QStringLiteral("txtProv"));
    }

    void closing_unloads_it_and_showing_loads_it_anew()
    {
        EscenaEditor escena("");
        QSignalSpy descargado(escena.form.get(), &frmCompras_Atipicos::Descargado);
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Porte", "", "1", "10");
        QVERIFY(escena.form->hay_lineas());
        clic(*escena.form, "cmdSalir");
        QCOMPARE(descargado.count(), 1);
        QVERIFY(!escena.form->isVisible());
        QVERIFY2(escena.avisos().empty(), "an unsaved charge is dropped without a question");
        escena.abre();
        QCOMPARE(escena.rejilla().Rows(), 1);
        QVERIFY(!escena.form->hay_lineas());
        QCOMPARE(escena.total(), QStringLiteral("0,00"));
        QVERIFY(escena.c<Selector>("txtProv").vacio());
        escena.form->close();
        QCOMPARE(descargado.count(), 2);
    }

    void without_a_context_it_says_so()
    {
        EscenaEditor escena;
        vacia_contexto();
        modComun::set_MsgBox(escena.banco.avisos);
        escena.form->Show();
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QCOMPARE(escena.avisos().front().titulo, std::string("frmCompras_Atipicos:Form_Load"));
        QVERIFY(escena.avisos().front().texto.ends_with("La variable de objeto no está establecida"));
    }

    // A charge opened for change

    void a_stored_charge_is_loaded_in_line_order()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda({}, 2).Codigo;
        auto& gestion = *escena.banco.bases().orvalin;
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos SET Fecha ='03/05/2026'");
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos_Lineas SET Num_Linea = 9 - Num_Linea");
        gestion.Execute(
            "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Cod_Articulo =9999 WHERE Num_Linea =6");
        escena.abre(codigo, 2);
        QCOMPARE(escena.form->windowTitle(), QStringLiteral("Reclamaciones a Proveedores - AT260001"));
        QCOMPARE(escena.c<Selector>("txtAlmacen").Nombre(), QStringLiteral("La Orotava"));
        QVERIFY(!escena.c<>("txtAlmacen").isEnabled());
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("03/05/2026"));
        QCOMPARE(escena.c<Selector>("txtProv").Nombre(), QStringLiteral("Conservas La Graciosa, S.A."));
        QCOMPARE(escena.c<QPlainTextEdit>("txtObservaciones").toPlainText(), QStringLiteral("Palé dañado"));
        QCOMPARE(escena.fila(1), QStringLiteral("9999|Lata abollada||12,00|12,5000|150,00|"));
        QCOMPARE(escena.fila(2), QStringLiteral("1006|Lata abollada||12,00|1,1975|14,37|"));
        QCOMPARE(escena.fila(3), QStringLiteral("1006|Lata abollada||12,00|5,6325|67,59|"));
        QCOMPARE(escena.total(), QStringLiteral("231,96"));
        QCOMPARE(escena.rejilla().Row(), 0);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("enabled"));
        QVERIFY(escena.avisos().empty());
    }

    void a_changed_charge_keeps_its_code_and_the_next_one_gets_its_own()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda().Codigo;
        escena.abre(codigo);
        escena.rejilla().set_Row(1);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdEliminar");
        escena.acepta();
        QCOMPARE(escena.avisos().back().texto,
            std::string("Atípico AT260001 generado correctamente.\r\nAsiento: 2"));
        auto estado = escena.banco.estado();
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos"), 1);
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos_Lineas"), 2);
        QCOMPARE(escena.form->windowTitle(), QStringLiteral("Reclamaciones a Proveedores"));
        QVERIFY(escena.c<>("txtAlmacen").isEnabled());
        EscenaEditor::teclea_cabecera("101");
        EscenaEditor::teclea_linea("", "Nuevo", "", "1", "10");
        escena.acepta();
        QCOMPARE(escena.avisos().back().texto,
            std::string("Atípico AT260002 generado correctamente.\r\nAsiento: 3"));
        estado = escena.banco.estado();
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos"), 2);
        QCOMPARE(estado.at("Proveedores_Cargos_Atipicos_Lineas"), 3);
    }

    void a_cancelled_change_leaves_the_stored_charge_alone()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda().Codigo;
        const auto antes = escena.banco.estado();
        escena.abre(codigo);
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdCancelar");
        QVERIFY(escena.form->Codigo.empty());
        QVERIFY(escena.banco.estado() == antes);
    }

    void a_charge_without_header_leaves_the_fields_as_they_were()
    {
        EscenaEditor escena("AT269999");
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("21/11/2026"));
        QVERIFY(escena.c<Selector>("txtProv").vacio());
        QCOMPARE(escena.rejilla().Rows(), 1);
        QCOMPARE(escena.cinco_botones(), QStringLiteral("disabled"));
        QVERIFY(escena.avisos().empty());
    }

    void a_failure_while_loading_leaves_what_was_filled()
    {
        EscenaEditor escena;
        const auto codigo = escena.banco.guarda().Codigo;
        escena.banco.parte->dichas.clear();
        escena.banco.parte->falla_en = 5; // after the name of both pickers and the header: the lines
        escena.abre(codigo);
        QCOMPARE(escena.avisos().size(), std::size_t{ 1 });
        QCOMPARE(escena.avisos().front().titulo, std::string("frmCompras_Atipicos:Cargar_Atipico"));
        QVERIFY(escena.avisos().front().icono == Icono::critico);
        QVERIFY(escena.avisos().front().texto.ends_with(std::string("] ") + Parte::descripcion));
        QVERIFY(!escena.c<Selector>("txtProv").vacio());
        QCOMPARE(escena.rejilla().Rows(), 1);
        QVERIFY(escena.form->isVisible());
    }

    // Hands and eyes

    void every_field_has_a_name_and_the_focus_goes_round_as_one_reads()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("104");
        EscenaEditor::teclea_linea("", "Uno", "", "1", "10");
        escena.c<>("txtAlmacen").setFocus();
        QStringList recorrido;
        for (int i = 0; i < 18; ++i) {
            const auto* boton = qobject_cast<QAbstractButton*>(&enfocado());
            QVERIFY2(boton != nullptr ? !boton->text().isEmpty() : !enfocado().accessibleName().isEmpty(),
                qPrintable(foco()));
            recorrido << foco();
            pulsa(Qt::Key_Tab);
        }
        QCOMPARE(recorrido.join(u' '),
            QStringLiteral(
                "txtAlmacen txtProv txtFecha txtObservaciones chkFranquiciado txtArticulo "
                "txtArticuloDescripcion txtObserv txtUnidades txtCosto txtImporte vsCargos cmdComent "
                "cmdModificar cmdEliminar cmdAceptar cmdCancelar cmdSalir"));
    }

    void every_label_leads_to_its_field()
    {
        EscenaEditor escena("");
        for (const auto& [etiqueta, campo, texto] : { std::tuple{ "lblAlmacen", "txtAlmacen", "Almacén:" },
                 { "lblProveedor", "txtProv", "Proveedor:" }, { "lblFecha", "txtFecha", "Fecha:" },
                 { "lblObservacionesCab", "txtObservaciones", "Observaciones:" },
                 { "lblArticulo", "txtArticulo", "Artículo:" },
                 { "lblObservacionesLin", "txtObserv", "Observaciones:" },
                 { "lblUnidades", "txtUnidades", "Unidades:" }, { "lblCosto", "txtCosto", "Costo:" },
                 { "lblImporte", "txtImporte", "Importe:" } }) {
            auto& hallada = escena.c<QLabel>(etiqueta);
            QCOMPARE(hallada.text(), QString::fromUtf8(texto));
            QCOMPARE(hallada.buddy(), &escena.c<>(campo));
        }
        QCOMPARE(escena.c<QLabel>("lblTxtTotal").text(), QStringLiteral("Total:"));
        for (const auto& [boton, texto] :
            { std::pair{ "cmdComent", "+ Observaciones" }, { "cmdModificar", "&Modificar" },
                { "cmdEliminar", "&Eliminar" }, { "cmdAceptar", "&Aceptar" }, { "cmdCancelar", "&Cancelar" },
                { "cmdSalir", "&Salir" }, { "chkFranquiciado", "Franquiciado" } })
            QCOMPARE(escena.c<QAbstractButton>(boton).text(), QLatin1String(texto));
    }
};

ATIPICOS_PRUEBA_VENTANAS(frmCompras_Atipicos_Test)
#include "frmCompras_Atipicos_test.moc"
