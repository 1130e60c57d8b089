// The date of a charge: what is stored, typed in part or impossible.
#include "tests/editor/EscenaEditor.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Ventanas.hpp"

using namespace atipicos;
using namespace atipicos::pruebas;

class FechaDelCargo_Test : public QObject {
    Q_OBJECT
private slots:
    void a_stored_charge_without_a_date_has_an_empty_box_and_saving_it_asks_for_one()
    {
        const Contexto contexto; // no database of ours stores it, a host's may
        const Variant nulo = Nulo{};
        contexto.gestion->responde("SELECT Proveedor, Fecha",
            { { "Proveedor", "Fecha", "Observ", "Impuesto" },
                { { Variant(104), nulo, Variant("Palé"), Variant(3) } } });
        contexto.gestion->responde("SELECT Nombre FROM", { { "Nombre" }, { { Variant("Hay") } } });
        contexto.gestion->responde("SELECT lin.*",
            { { "Num_Linea", "Cod_Articulo", "Descripcion", "Observ", "Unidades", "Precio", "CtaAtipicos" },
                { { Variant(1), Variant(1006), Variant("Lata"), nulo, Variant(2), Variant(5),
                    Variant("") } } });
        frmCompras_Atipicos form;
        form.Codigo = "AT250007";
        form.Ejercicio = 2025;
        form.Almacen = 3;
        form.Show();
        QVERIFY(QTest::qWaitForWindowActive(&form, atipicos::pruebas::paciencia));
        auto& fecha = control<qvMaskEdBox>(form, "txtFecha");
        QCOMPARE(fecha.text(), QStringLiteral("//"));
        QCOMPARE(control<VSFlexGrid>(form, "vsCargos").Rows(), 2);
        clic(form, "cmdAceptar");
        QCOMPARE(contexto.avisos->dichos.size(), std::size_t{ 1 });
        const auto& dicho = contexto.avisos->dichos.front();
        QCOMPARE(dicho.titulo, std::string("frmCompras_Atipicos:cmdAceptar_Click"));
        QVERIFY(dicho.texto.ends_with("] Falta la fecha. Corrija la fecha del cargo y acéptelo de nuevo."));
        fecha.setFocus();
        teclea("05032025"); // it takes digits at once
        QCOMPARE(fecha.text(), QStringLiteral("05/03/2025"));
    }

    void an_impossible_date_stays_as_it_was_typed_with_a_word_beside_it()
    {
        EscenaEditor escena("");
        auto& aviso = escena.c<QLabel>("lblAvisoFecha");
        escena.c<>("txtFecha").setFocus();
        teclea("31022026");
        QCOMPARE(aviso.text(), QString());
        intro();
        QCOMPARE(foco(), QStringLiteral("txtObservaciones")); // Enter moves on
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("31/02/2026"));
        QCOMPARE(aviso.text(), QStringLiteral("No existe el día 31/02/2026."));
        QVERIFY(aviso.isVisible());
        QCOMPARE(escena.c<>("txtFecha").palette().color(QPalette::Text),
            aviso.palette().color(QPalette::WindowText));
        escena.c<>("txtFecha").setFocus();
        teclea("5/");
        QCOMPARE(aviso.text(), QString());
        intro();
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("05/11/2026")); // of the month of today
        QCOMPARE(aviso.text(), QString());
    }

    void what_is_typed_in_part_is_completed_before_the_charge_is_accepted()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("103");
        EscenaEditor::teclea_linea("1003", "=", "rota", "2", "4,5");
        escena.c<>("txtFecha").setFocus();
        teclea("5");
        escena.acepta();
        QCOMPARE(CStr(escena.banco.consulta("SELECT Fecha FROM Proveedores_Cargos_Atipicos")),
            std::string("05/11/2026"));
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("21/11/2026"));
    }

    void a_new_charge_takes_what_was_wrong_with_the_date_away()
    {
        EscenaEditor escena("");
        EscenaEditor::teclea_cabecera("103");
        EscenaEditor::teclea_linea("1003", "=", "rota", "2", "4,5");
        escena.c<>("txtFecha").setFocus();
        teclea("31022026");
        intro();
        QVERIFY(!escena.c<QLabel>("lblAvisoFecha").text().isEmpty());
        escena.banco.avisos->respuestas = { Respuesta::Si };
        clic(*escena.form, "cmdCancelar");
        QCOMPARE(escena.c<QLabel>("lblAvisoFecha").text(), QString());
        QCOMPARE(escena.texto("txtFecha"), QStringLiteral("21/11/2026"));
    }
};

ATIPICOS_PRUEBA_VENTANAS(FechaDelCargo_Test)
#include "FechaDelCargo_test.moc"
