#include "controls/FuenteFichas.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Ventanas.hpp"

#include <QTest>

#include <algorithm>

using atipicos::Error;
using atipicos::Ficha;
using atipicos::FuenteFichas;
using atipicos::pruebas::Banco;

namespace {

FuenteFichas de_proveedores(const Banco& banco)
{
    return { banco.bases().orvalin, { "Proveedores", "Codigo", "Cod_Empresa =1" } };
}

}

class FuenteFichas_Test : public QObject {
    Q_OBJECT
private slots:
    void gives_the_name_of_a_code()
    {
        const Banco banco;
        const auto fuente = de_proveedores(banco);
        QCOMPARE(fuente.nombre("103").value_or(""), std::string("Ñandú Exportaciones, S.L."));
        QCOMPARE(fuente.nombre("000103").value_or(""), std::string("Ñandú Exportaciones, S.L."));
        QVERIFY(!fuente.nombre("7"));
        QVERIFY(!fuente.nombre("999999999999"));
    }

    void gives_names_with_an_accent_for_a_quote()
    {
        const Banco banco;
        banco.bases().orvalin->Execute("UPDATE Proveedores SET Nombre ='D''Alcoi' WHERE Codigo =103");
        const auto fuente = de_proveedores(banco);
        QCOMPARE(fuente.nombre("103").value_or(""), std::string("D´Alcoi"));
        std::vector<std::string> nombres;
        for (const auto& ficha : fuente.todas())
            nombres.push_back(ficha.Nombre);
        QVERIFY(std::find(nombres.begin(), nombres.end(), "D´Alcoi") != nombres.end());
    }

    void compares_a_text_code_as_text()
    {
        const Banco banco;
        const FuenteFichas cuentas(
            banco.bases().bexmor, { "Cuentas", "Cuenta", "Cod_Empresa =1 AND Cod_Ejercicio =2026", true });
        QCOMPARE(cuentas.nombre("75900010").value_or(""), std::string("Ingresos atípicos, bebidas"));
        QVERIFY(!cuentas.nombre("075900010"));
    }

    void needs_no_condition()
    {
        const Banco banco;
        FuenteFichas::Tabla tabla;
        tabla.nombre = "Tipos_Doc";
        const FuenteFichas tipos(banco.bases().bexmor, tabla);
        const std::vector<Ficha> esperadas{ { "4", "Compensación" }, { "3", "Pagaré" },
            { "1", "Recibo domiciliado" }, { "2", "Transferencia" } };
        QVERIFY(tipos.todas() == esperadas);
        QCOMPARE(tipos.nombre("3").value_or(""), std::string("Pagaré"));
    }

    void lists_what_fulfils_its_condition_alone()
    {
        const Banco banco;
        QCOMPARE(de_proveedores(banco).todas().size(), std::size_t{ 14 });
        const FuenteFichas ajena(banco.bases().orvalin, { "Proveedores", "Codigo", "Cod_Empresa =9" });
        QVERIFY(ajena.todas().empty());
    }

    void tells_what_sets_two_of_one_name_apart_where_the_table_has_it()
    {
        const Banco banco;
        banco.bases().orvalin->Execute(
            "UPDATE Proveedores SET NIF = 'B38999111', Poblacion = NULL WHERE Codigo = 103");
        const auto de = [&](const char* columna) {
            const FuenteFichas fuente(banco.bases().orvalin,
                { "Proveedores", "Codigo", "Cod_Empresa =1", false,
                    { { columna, "NIF" }, { "Poblacion", "Población" } } });
            const auto todas = fuente.todas();
            const auto lugar = std::find_if(
                todas.begin(), todas.end(), [](const auto& ficha) { return ficha.Codigo == "103"; });
            return lugar == todas.end() ? Ficha{} : *lugar;
        };
        const Ficha esperada{ "103", "Ñandú Exportaciones, S.L.", { "B38999111", "" } };
        QVERIFY(de("NIF") == esperada);
        const Ficha sin_mas{ "103", "Ñandú Exportaciones, S.L." };
        QVERIFY(de("NoLaTiene") == sin_mas);
    }

    void asks_the_database_each_time()
    {
        const Banco banco;
        const auto fuente = de_proveedores(banco);
        QCOMPARE(fuente.todas().size(), std::size_t{ 14 });
        banco.bases().orvalin->Execute("UPDATE Proveedores SET Nombre = 'Otro' WHERE Codigo = 103");
        QCOMPARE(fuente.nombre("103").value_or(""), std::string("Otro"));
    }

    void raises_what_the_database_says()
    {
        const Banco banco;
        const FuenteFichas fuente(banco.bases().orvalin, { "NoExiste", "Codigo", "" });
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(fuente.todas()), Error);
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(fuente.nombre("1")), Error);
    }

    void without_a_connection_says_that_it_is_missing()
    {
        const FuenteFichas fuente(nullptr, { "Proveedores", "Codigo", "" });
        try {
            static_cast<void>(fuente.nombre("1"));
            QFAIL("no error");
        } catch (const Error& error) {
            QCOMPARE(error.numero(), atipicos::numero_error::objeto_no_establecido);
        }
    }
};

ATIPICOS_PRUEBA_VENTANAS(FuenteFichas_Test)
#include "FuenteFichas_test.moc"
