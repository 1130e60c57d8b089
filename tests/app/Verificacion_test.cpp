// Each promise broken on purpose, and how `verificar` names it.
#include "host/comprobacion/Verificacion.hpp"

#include "browser/EliminarAtipico.hpp"
#include "host/comprobacion/Contrario.hpp"
#include "host/comprobacion/Propuesta.hpp"

#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

namespace atipicos::app {
namespace {

    using testing::Contains;
    using testing::ElementsAre;
    using testing::HasSubstr;
    using testing::IsEmpty;

    struct Rota {
        const char* nombre;
        const char*
            estropea; ///< run on the management database, or on the other one when it begins with "B:"
        const char* diferencia;
    };
    void PrintTo(const Rota& rota, std::ostream* salida) { *salida << rota.nombre; }

    struct Promesa : testing::TestWithParam<Rota> { };

    TEST_P(Promesa, broken_is_named_with_its_charge_or_entry)
    {
        pruebas::Banco banco;
        banco.guarda();
        banco.guarda();
        EXPECT_THAT(verifica(banco.bases()).diferencias, IsEmpty());
        std::string sql = GetParam().estropea;
        auto& conexion = sql.starts_with("B:") ? *banco.bases().bexmor : *banco.bases().orvalin;
        conexion.Execute("PRAGMA foreign_keys=OFF");
        conexion.Execute(sql.starts_with("B:") ? sql.substr(2) : sql);
        EXPECT_THAT(verifica(banco.bases()).diferencias, Contains(HasSubstr(GetParam().diferencia)));
    }

    INSTANTIATE_TEST_SUITE_P(promesas, Promesa,
        testing::Values(
            Rota{ "total", "UPDATE Proveedores_Cargos_Atipicos SET Importe = 1 WHERE Codigo = 'AT260001'",
                "cargo AT260001 (empresa 1, ejercicio 2026, almacén 1): importe 1,00 y líneas por 231,96." },
            Rota{ "tax",
                "UPDATE Proveedores_Cargos_Atipicos SET Impuesto_Importe = 1 WHERE Codigo = 'AT260001'",
                "impuesto 1,00 y debería ser 16,24." },
            Rota{ "gap_in_lines", "DELETE FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea = 2",
                "no tiene líneas o no están numeradas de corrido." },
            Rota{ "no_entry", "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 0 WHERE Codigo = 'AT260002'",
                "cargo AT260002 (empresa 1, ejercicio 2026, almacén 1): no tiene asiento" },
            Rota{ "missing_entry",
                "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 77 WHERE Codigo = 'AT260002'",
                "su asiento 77 (empresa contable 1, ejercicio 2026) no existe en Contabilidad." },
            Rota{ "entry_of_another",
                "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 1 WHERE Codigo = 'AT260002'",
                "es del documento AT260001." },
            Rota{ "code",
                "UPDATE Proveedores_Cargos_Atipicos_Lineas SET Codigo = 'X1' WHERE Codigo = 'AT260002'",
                "cargo X1 (empresa 1, ejercicio 2026, almacén 1): tiene una línea y no tiene cabecera." },
            Rota{ "counter", "UPDATE Contador_Proveedores_Cargos_Atipicos SET Numero = 260001",
                "cargo AT260002 (empresa 1, ejercicio 2026, almacén 1): el contador de su serie no ha "
                "llegado" },
            Rota{ "unbalanced", "B:UPDATE Apuntes SET Debe = Debe + 1 WHERE Asiento = 1 AND Linea = 1",
                "asiento 1 (empresa contable 1, ejercicio 2026): no cuadra, debe 497,40 y haber 496,40." },
            Rota{ "missing_line", "B:DELETE FROM Apuntes WHERE Asiento = 2 AND Linea = 3",
                "asiento 2 (empresa contable 1, ejercicio 2026): le faltan apuntes." },
            Rota{ "forecasts", "B:DELETE FROM Previsiones WHERE Asiento = 1 AND Numero = 1",
                "sus previsiones suman" },
            Rota{ "kind_of_document",
                "B:UPDATE Previsiones SET TipoDoc = 99 WHERE Asiento = 1 AND Numero = 2",
                "asiento 1 (empresa contable 1, ejercicio 2026): su previsión 2 es de un tipo de documento "
                "que "
                "no existe, el 99." },
            Rota{ "header_alone",
                "B:INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario) VALUES (2, "
                "2026, "
                "1, '21/11/2026', '1')",
                "asiento 1 (empresa contable 2, ejercicio 2026): le faltan apuntes." },
            Rota{ "reversed",
                "B:INSERT INTO Regularizaciones (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio, "
                "Por_Asiento, Usuario, Hora) VALUES (1, 2026, 1, 2026, 2, '1', '21/11/2026')",
                "cargo AT260001 (empresa 1, ejercicio 2026, almacén 1): su asiento 1 (empresa contable 1, "
                "ejercicio 2026) se anuló con el asiento 2 (empresa contable 1, ejercicio 2026)." },
            Rota{ "reversing",
                "B:INSERT INTO Regularizaciones (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio, "
                "Por_Asiento, Usuario, Hora) VALUES (1, 2026, 1, 2026, 2, '1', '21/11/2026')",
                "cargo AT260002 (empresa 1, ejercicio 2026, almacén 1): su asiento 2 (empresa contable 1, "
                "ejercicio 2026) anula el asiento 1 (empresa contable 1, ejercicio 2026)." },
            Rota{ "reversed_by_nothing",
                "B:INSERT INTO Regularizaciones (Cod_Empresa, Cod_Ejercicio, Asiento, Por_Ejercicio, "
                "Por_Asiento, Usuario, Hora) VALUES (1, 2026, 1, 2026, 7, '1', '21/11/2026')",
                "asiento 1 (empresa contable 1, ejercicio 2026): se anuló con el asiento 7 (empresa contable "
                "1, "
                "ejercicio 2026) y éste no está en Contabilidad." },
            Rota{ "tax_record", "B:UPDATE Registro_Impuestos SET Cuota = 1 WHERE Asiento = 1",
                "el registro de impuesto de su asiento 1" },
            Rota{ "entry_counter", "B:UPDATE Contador_Asientos SET Numero = 1",
                "asiento 2 (empresa contable 1, ejercicio 2026): el contador de asientos" }),
        [](const auto& caso) { return caso.param.nombre; });

    TEST(Verificacion, an_entry_number_that_went_to_the_same_code_of_another_warehouse_is_one_difference)
    {
        pruebas::Banco banco;
        banco.guarda({}, 2);
        auto& gestion = *banco.bases().orvalin;
        // As a kill between both commits leaves it: the charge of warehouse 1 names the entry that warehouse
        // 2 got.
        gestion.Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo,"
            " Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra,"
            " Documento, Impuesto, Impuesto_Importe, Tipo) VALUES (1, 2026, 1, 'AT260001', 101, '20/11/2026',"
            " 10, 1, 1, 2026, 1, '20/11/2026', '', 0, 0, 7, 0.7, 0)");
        gestion.Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo,"
            " Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ) VALUES (1, 2026, 1, 'AT260001',"
            " 1, 0, 'x', 1, 10, '')");
        gestion.Execute(
            "INSERT INTO Contador_Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen,"
            " Numero) VALUES (1, 2026, 1, 260001)");
        EXPECT_THAT(verifica(banco.bases()).diferencias,
            ElementsAre(
                "cargo AT260001 (empresa 1, ejercicio 2026, almacén 1): su asiento 1 (empresa contable 1, "
                "ejercicio 2026) es del documento AT260001 del almacén 2."));
    }

    TEST(Verificacion, of_two_charges_alike_the_entry_is_the_later_ones)
    {
        pruebas::Banco banco;
        auto& gestion = *banco.bases().orvalin;
        gestion.Execute("UPDATE Almacenes SET CtaIngresosAtipicos = '75900001' WHERE Codigo = 2");
        banco.guarda({}, 2);
        banco.guarda({}, 1); // the same amount, the same day, the same code, the same accounts
        gestion.Execute(
            "UPDATE Proveedores_Cargos_Atipicos SET Asiento = 1, Hora = '21/11/2026 8:00:00' WHERE "
            "Cod_Almacen = 1");
        EXPECT_EQ(verifica(banco.bases()).sin_asiento.at(0).cargo.almacen, 1);
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos SET Hora = '21/11/2026 9:30:00' WHERE "
                        "Cod_Almacen = 1");
        const auto otra = verifica(banco.bases());
        ASSERT_EQ(otra.sin_asiento.size(), 1U);
        EXPECT_EQ(otra.sin_asiento.at(0).cargo.almacen, 2);
        EXPECT_EQ(otra.sin_asiento.at(0).asiento, (ClaveAsiento{ 1, 2026, 1 }));
    }

    /// Two charges that are alike but for their supplier, both naming the entry of the one in warehouse 2.
    void deja_dos_con_un_asiento(pruebas::Banco& banco)
    {
        auto& gestion = *banco.bases().orvalin;
        gestion.Execute("UPDATE Almacenes SET CtaIngresosAtipicos = '75900001' WHERE Codigo = 2");
        banco.guarda({}, 2);
        banco.guarda({}, 1);
        for (const auto* tabla : { "Previsiones", "Registro_Impuestos", "Apuntes" })
            banco.bases().bexmor->Execute(std::string("DELETE FROM ") + tabla + " WHERE Asiento = 2");
        banco.bases().bexmor->Execute("DELETE FROM Asientos WHERE Numero = 2");
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos SET Asiento = 1, Proveedor = 103, Hora = "
                        "'21/11/2026 18:00:00' WHERE Cod_Almacen = 1");
    }

    TEST(Verificacion, of_two_charges_alike_the_entry_is_that_of_the_supplier_whose_accounts_it_bears)
    {
        pruebas::Banco banco;
        deja_dos_con_un_asiento(banco);
        const auto resultado = verifica(banco.bases());
        ASSERT_EQ(resultado.sin_asiento.size(), 1U);
        EXPECT_EQ(resultado.sin_asiento.at(0).cargo.almacen, 1) << "though it was saved later";
    }

    TEST(Verificacion, an_entry_with_the_accounts_of_another_supplier_is_not_the_charge_s)
    {
        pruebas::Banco banco;
        deja_dos_con_un_asiento(banco);
        ASSERT_TRUE(EliminarAtipico({ 2026, 2, "AT260001" }));
        const auto resultado = verifica(banco.bases());
        EXPECT_THAT(resultado.diferencias,
            ElementsAre(
                "cargo AT260001 (empresa 1, ejercicio 2026, almacén 1): su asiento 1 (empresa contable "
                "1, ejercicio 2026) es del proveedor 104."));
        EXPECT_EQ(resultado.sin_cargo.size(), 1U);
    }

    TEST(Verificacion, accounts_that_a_supplier_was_given_later_make_no_difference)
    {
        pruebas::Banco banco;
        banco.guarda();
        banco.bases().orvalin->Execute(
            "UPDATE Proveedores SET Cta_Deudor = '44009111', Cta_Proveedor = '40009110' WHERE Codigo = 104");
        EXPECT_THAT(verifica(banco.bases()).diferencias, IsEmpty());
    }

    TEST(Verificacion, a_proposal_says_what_has_to_be_done_before_it_can_succeed)
    {
        pruebas::Banco banco;
        banco.guarda();
        auto& gestion = *banco.bases().orvalin;
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos SET Asiento = 0, Fecha = '10/02/2031'");
        EXPECT_THAT(propone(verifica(banco.bases()), {}),
            HasSubstr("\n   Antes: El ejercicio 2031 no está abierto en la empresa contable 1: ábralo en "
                      "Contabilidad.\n   Contabilícelo;"));
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos SET EmpContable = 9");
        const auto sin_empresa = propone(verifica(banco.bases()), {});
        EXPECT_THAT(sin_empresa, HasSubstr("No se puede contabilizar: su empresa contable, que es la 9,"));
        EXPECT_THAT(sin_empresa, testing::Not(HasSubstr("atipicos contabilizar")));
    }

    TEST(Verificacion, forecasts_of_an_entry_without_charge_add_up_too)
    {
        pruebas::Banco banco;
        ASSERT_TRUE(EliminarAtipico({ 2026, 1, banco.guarda().Codigo }));
        EXPECT_THAT(verifica(banco.bases()).diferencias, IsEmpty());
        banco.bases().bexmor->Execute("DELETE FROM Previsiones WHERE Numero = 3");
        EXPECT_THAT(verifica(banco.bases()).diferencias,
            ElementsAre(HasSubstr("asiento 1 (empresa contable 1, ejercicio 2026): sus previsiones suman ")));
    }

    /// What the one entry without charge is taken for.
    Procedencia procedencia(const pruebas::Banco& banco)
    {
        const auto sin_cargo = verifica(banco.bases()).sin_cargo;
        EXPECT_EQ(sin_cargo.size(), 1U);
        return sin_cargo.at(0).procedencia;
    }

    TEST(Verificacion, tells_entries_of_deleted_charges_from_those_of_lost_ones)
    {
        pruebas::Banco banco;
        auto& gestion = *banco.bases().orvalin;
        ASSERT_TRUE(EliminarAtipico({ 2026, 1, banco.guarda().Codigo }));
        EXPECT_EQ(procedencia(banco), Procedencia::eliminado);
        gestion.Execute("UPDATE Contador_Proveedores_Cargos_Atipicos SET Numero = 260000");
        EXPECT_EQ(procedencia(banco), Procedencia::perdido) << "a copy was put back, perhaps";
        banco.guarda(); // the same number again
        EXPECT_EQ(procedencia(banco), Procedencia::cambiado);
        gestion.Execute("UPDATE Proveedores_Cargos_Atipicos SET Asiento = 0");
        const auto ambos = verifica(banco.bases()).sin_cargo;
        ASSERT_EQ(ambos.size(), 2U);
        EXPECT_EQ(ambos.at(0).procedencia, Procedencia::dudoso);
        EXPECT_EQ(ambos.at(1).procedencia, Procedencia::dudoso);
    }

    TEST(Verificacion, an_entry_that_somebody_s_own_cancels_is_left_to_him)
    {
        pruebas::Banco banco;
        auto& bexmor = *banco.bases().bexmor;
        ASSERT_TRUE(EliminarAtipico({ 2026, 1, banco.guarda().Codigo }));
        bexmor.Execute("INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario) VALUES (1, "
                       "2026, 2, '30/11/2026', '3')");
        bexmor.Execute("UPDATE Contador_Asientos SET Numero = 2");
        bexmor.Execute(
            "INSERT INTO Apuntes SELECT Cod_Empresa, Cod_Ejercicio, 2, Linea, Cuenta, '', 'Anula', "
            "'VARIOS', '', Haber, Debe, 0, 0, 0 FROM Apuntes WHERE Asiento = 1");
        EXPECT_EQ(procedencia(banco), Procedencia::saldado);
        bexmor.Execute("UPDATE Apuntes SET Debe = Debe + 1 WHERE Asiento = 2 AND Debe > 0");
        EXPECT_EQ(procedencia(banco), Procedencia::eliminado) << "it cancels something else";
    }

    TEST(Verificacion, an_entry_that_does_not_reverse_what_it_is_to_reverse_is_a_difference)
    {
        for (const auto* estropea : { "UPDATE Apuntes SET Debe = Debe + 1 WHERE Asiento = 2 AND Linea = 2",
                 "UPDATE Apuntes SET Cuenta = '75900002' WHERE Asiento = 2 AND Linea = 2",
                 "UPDATE Registro_Impuestos SET Cuota = 1 WHERE Asiento = 2",
                 "UPDATE Previsiones SET Vencimiento = '07/08/2027' WHERE Asiento = 2 AND Numero = 2" }) {
            pruebas::Banco banco;
            ASSERT_TRUE(EliminarAtipico({ 2026, 1, banco.guarda().Codigo }));
            const std::vector<ClaveAsiento> cuales{ { 1, 2026, 1 } };
            ASSERT_EQ(
                regulariza(banco.bases(), cuales, { pruebas::dia("30/11/2026"), "3", {} }).hechas.size(), 1U);
            EXPECT_THAT(verifica(banco.bases()).diferencias, IsEmpty());
            banco.bases().bexmor->Execute(estropea);
            EXPECT_THAT(verifica(banco.bases()).diferencias,
                Contains("asiento 1 (empresa contable 1, ejercicio 2026): el asiento 2 (empresa contable 1, "
                         "ejercicio 2026), que lo anula, no es su contrario."))
                << estropea;
        }
    }

    TEST(Verificacion, counts_everything_and_an_entry_left_without_charge_is_no_difference)
    {
        pruebas::Banco banco;
        banco.guarda();
        const auto segundo = banco.guarda().Codigo;
        banco.guarda(segundo); // posts again; the first entry stays
        const auto resultado = verifica(banco.bases());
        EXPECT_THAT(resultado.diferencias, IsEmpty());
        EXPECT_EQ(resultado.cargos, 2U);
        EXPECT_EQ(resultado.lineas, 6U);
        EXPECT_EQ(resultado.asientos, 3U);
        EXPECT_EQ(resultado.apuntes, 21U);
        EXPECT_EQ(resultado.registros, 3U);
        EXPECT_EQ(resultado.previsiones, 9U);
        EXPECT_EQ(resultado.sin_cargo.size(), 1U);
    }

}
}
