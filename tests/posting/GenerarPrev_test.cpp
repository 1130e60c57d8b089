#include "posting/GenerarPrev.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <random>

namespace atipicos {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::ElementsAre;
    using testing::IsEmpty;
    using testing::SizeIs;

    constexpr auto consulta_proveedor
        = "SELECT a.DiaPago_1, a.DiaPago_2, b.*, c.Nombre AS NombTipoDoc, ISNULL(cue.Cuenta,cueEmp.Cuenta) "
          "AS Cuenta, "
          "ISNULL(cue.Nombre,cueEmp.Nombre) AS NombreBanco FROM Proveedores  a INNER JOIN "
          "Bexmor.dbo.Formas_Pago b ON "
          "a.Cod_FPago = b.Codigo INNER JOIN Bexmor.dbo.Tipos_Doc c ON b.TipoDoc = c.Codigo LEFT JOIN "
          "Bexmor.dbo.Cuentas cue ON cue.Cod_Empresa =2 AND cue.Cod_Ejercicio =2026 AND cue.Cuenta = "
          "a.CtaBancoPago "
          "LEFT JOIN Bexmor.dbo.Cuentas cueEmp ON cueEmp.Cod_Empresa =2 AND cueEmp.Cod_Ejercicio =2026 AND "
          "cueEmp.Cuenta ='572000001' WHERE a.Cod_Empresa =1 AND a.Codigo =17";
    constexpr auto consulta_empresa
        = "SELECT a.DiaPago_1, a.DiaPago_2, b.*, c.Nombre AS NombTipoDoc, ISNULL(cueEmp.Cuenta,'') AS "
          "Cuenta, "
          "ISNULL(cueEmp.Nombre,'') AS NombreBanco FROM Empresas a INNER JOIN Bexmor.dbo.Formas_Pago b ON "
          "a.FormaPago = b.Codigo INNER JOIN Bexmor.dbo.Tipos_Doc c ON b.TipoDoc = c.Codigo LEFT JOIN "
          "Bexmor.dbo.Cuentas cueEmp ON cueEmp.Cod_Empresa =2 AND cueEmp.Cod_Ejercicio =2026 AND "
          "cueEmp.Cuenta "
          "='572000001' WHERE a.Codigo =1";

    struct Plazos : testing::Test {
        pruebas::Contexto contexto;
        Contabilizacion datos{ moneda("100"), 17, dia("21/11/2026"), 2, true };
        std::vector<std::string>& dichas = contexto.gestion->dichas;

        static pruebas::Tabla condiciones(
            Variant generar, int plazos, int primero = 30, int resto = 30, int dia1 = 0, int dia2 = 0)
        {
            return { { "DiaPago_1", "DiaPago_2", "GenerarPrev", "NroVtos", "PrimerVto", "RestoVtos",
                         "TipoDoc", "NombTipoDoc", "Cuenta", "NombreBanco" },
                { { dia1, dia2, std::move(generar), plazos, primero, resto, 4, "Recibo", "57200009",
                    "Banco Ñandú" } } };
        }

        void del_proveedor(pruebas::Tabla tabla) const
        {
            contexto.gestion->responde(
                "SELECT a.DiaPago_1, a.DiaPago_2, b.*, c.Nombre AS NombTipoDoc, ISNULL(cue.",
                std::move(tabla));
        }

        void de_la_empresa(pruebas::Tabla tabla) const
        {
            contexto.gestion->responde(
                "SELECT a.DiaPago_1, a.DiaPago_2, b.*, c.Nombre AS NombTipoDoc, ISNULL(cueEmp.Cuenta,'')",
                std::move(tabla));
        }
    };

    std::vector<std::string> importes(const Propuesta& propuesta)
    {
        std::vector<std::string> textos;
        for (const auto& una : propuesta.previsiones)
            textos.push_back(una.prevision.Importe.texto());
        return textos;
    }

    std::vector<std::string> vencimientos(const Propuesta& propuesta)
    {
        std::vector<std::string> textos;
        for (const auto& una : propuesta.previsiones)
            textos.push_back(una.prevision.Vencimiento.texto());
        return textos;
    }

    TEST_F(Plazos, asks_for_the_suppliers_terms_letter_by_letter)
    {
        del_proveedor(condiciones(true, 1));
        const auto propuesta = GenerarPrev(datos);
        EXPECT_THAT(dichas, ElementsAre(std::string("OPEN static read-only ") + consulta_proveedor, "CLOSE"));
        ASSERT_THAT(propuesta.previsiones, SizeIs(1));
        const auto& una = propuesta.previsiones[0];
        EXPECT_EQ(una.prevision.Importe, moneda("100"));
        EXPECT_EQ(una.prevision.TipoDoc, 4);
        EXPECT_EQ(una.prevision.Vencimiento, dia("21/12/2026"));
        EXPECT_EQ(una.prevision.Banco, "57200009");
        EXPECT_EQ(una.NombTipoDoc, "Recibo");
        EXPECT_EQ(una.NombreBanco, "Banco Ñandú");
        EXPECT_EQ(propuesta.suma, moneda("100"));
    }

    TEST_F(Plazos, a_supplier_without_payment_method_of_its_own_gets_the_companys_terms)
    {
        de_la_empresa(condiciones(true, 2));
        EXPECT_THAT(importes(GenerarPrev(datos)), ElementsAre("50.0000", "50.0000"));
        EXPECT_THAT(dichas,
            ElementsAre(std::string("OPEN static read-only ") + consulta_proveedor, "CLOSE",
                std::string("OPEN static read-only ") + consulta_empresa, "CLOSE"));
    }

    TEST_F(Plazos, an_accounting_company_that_is_not_there_pays_from_no_bank)
    {
        datos.EmpresaContable = 0;
        EXPECT_THAT(GenerarPrev(datos).previsiones, IsEmpty());
        ASSERT_THAT(dichas, SizeIs(4));
        EXPECT_THAT(dichas[0],
            testing::HasSubstr(
                "cueEmp.Cod_Empresa =0 AND cueEmp.Cod_Ejercicio =2026 AND cueEmp.Cuenta ='' "));
        EXPECT_THAT(dichas[2],
            testing::HasSubstr(
                "cueEmp.Cod_Empresa =0 AND cueEmp.Cod_Ejercicio =2026 AND cueEmp.Cuenta ='' "));
        EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
    }

    TEST_F(Plazos, no_terms_at_all_give_no_forecasts_and_no_message)
    {
        const auto propuesta = GenerarPrev(datos);
        EXPECT_THAT(propuesta.previsiones, IsEmpty());
        EXPECT_EQ(propuesta.suma, Currency());
        EXPECT_TRUE(propuesta.GenerarPrev);
        EXPECT_THAT(contexto.avisos->dichos, IsEmpty());
    }

    TEST_F(Plazos, a_zero_amount_asks_the_database_nothing)
    {
        datos.Importe = Currency();
        EXPECT_THAT(GenerarPrev(datos).previsiones, IsEmpty());
        EXPECT_THAT(dichas, IsEmpty());
    }

    TEST_F(Plazos, a_method_without_forecasts_false_or_null_gives_none)
    {
        for (const Variant& no : { Variant(false), Variant(Nulo{}) }) {
            del_proveedor(condiciones(no, 3));
            const auto propuesta = GenerarPrev(datos);
            EXPECT_THAT(propuesta.previsiones, IsEmpty());
            EXPECT_FALSE(propuesta.GenerarPrev);
        }
    }

    TEST_F(Plazos, one_hundred_in_three_instalments_gives_the_last_one_the_rest)
    {
        del_proveedor(condiciones(true, 3));
        const auto propuesta = GenerarPrev(datos);
        EXPECT_THAT(importes(propuesta), ElementsAre("33.3300", "33.3300", "33.3400"));
        EXPECT_THAT(vencimientos(propuesta), ElementsAre("21/12/2026", "20/01/2027", "19/02/2027"));
    }

    TEST_F(Plazos, every_instalment_is_as_many_days_after_the_one_before_as_the_terms_say)
    {
        del_proveedor(condiciones(true, 8, 11, 17));
        EXPECT_THAT(vencimientos(GenerarPrev(datos)),
            ElementsAre("02/12/2026", "19/12/2026", "05/01/2027", "22/01/2027", "08/02/2027", "25/02/2027",
                "14/03/2027", "31/03/2027"));
    }

    TEST_F(Plazos, due_dates_count_from_the_charge_and_adjustments_do_not_add_up)
    {
        del_proveedor(condiciones(true, 3, 15, 30, 10, 25));
        EXPECT_THAT(vencimientos(GenerarPrev(datos)), ElementsAre("10/12/2026", "10/01/2027", "10/02/2027"));
    }

    TEST_F(Plazos, no_instalments_at_all_is_a_division_by_zero_that_is_shown)
    {
        del_proveedor(condiciones(true, 0));
        EXPECT_THAT(GenerarPrev(datos).previsiones, IsEmpty());
        ASSERT_THAT(contexto.avisos->dichos, SizeIs(1));
        const auto& dicho = contexto.avisos->dichos.front();
        EXPECT_EQ(dicho.titulo, "¡ Atención !");
        EXPECT_EQ(dicho.icono, Icono::critico);
        EXPECT_THAT(dicho.texto, testing::MatchesRegex("\\[[0-9]+\\] División por cero"));
        EXPECT_EQ(pruebas::linea_nombrada(dicho.texto, "posting/GenerarPrev.cpp"),
            "throw Error::de_ejecucion(numero_error::division_por_cero);");
    }

    TEST_F(Plazos, a_failure_of_the_database_is_shown_under_attention)
    {
        contexto.gestion->falla("SELECT a.", "no such table: Proveedores");
        EXPECT_THAT(GenerarPrev(datos).previsiones, IsEmpty());
        ASSERT_THAT(contexto.avisos->dichos, SizeIs(1));
        const auto& dicho = contexto.avisos->dichos.front();
        EXPECT_EQ(dicho.titulo, "¡ Atención !");
        EXPECT_EQ(dicho.icono, Icono::critico);
        EXPECT_THAT(dicho.texto, testing::MatchesRegex("\\[[0-9]+\\] no such table: Proveedores"));
    }

    TEST_F(Plazos, the_forecasts_found_before_a_failure_are_kept)
    {
        del_proveedor(condiciones(true, 3, 20, 30, 0, 15)); // the second due date falls past the only pay day
        const auto propuesta = GenerarPrev(datos);
        EXPECT_THAT(vencimientos(propuesta), ElementsAre("15/12/2026", "15/01/2027", "15/02/2027"));
        del_proveedor(condiciones(true, 3, 20, 16, 0, 15));
        EXPECT_THAT(vencimientos(GenerarPrev(datos)), ElementsAre("15/12/2026"));
        EXPECT_THAT(contexto.avisos->dichos, SizeIs(1));
    }

    TEST_F(Plazos, ten_thousand_random_amounts_in_1_to_36_instalments_add_up_exactly)
    {
        std::mt19937_64 azar(20261121); // NOLINT: the same amounts in every run
        std::uniform_int_distribution<std::int64_t> centimos(-50'000'000, 50'000'000);
        for (int vez = 0; vez < 10'000; ++vez) {
            const int plazos = 1 + vez % 36;
            del_proveedor(condiciones(true, plazos));
            datos.Importe = Currency::de_crudo(centimos(azar) * 100);
            const auto propuesta = GenerarPrev(datos);
            const std::size_t esperadas = datos.Importe == Currency() ? 0 : static_cast<std::size_t>(plazos);
            ASSERT_THAT(propuesta.previsiones, SizeIs(esperadas));
            std::int64_t suma = 0;
            for (const auto& una : propuesta.previsiones) {
                ASSERT_EQ(una.prevision.Importe.crudo() % 100, 0) << "whole cents";
                suma += una.prevision.Importe.crudo();
            }
            ASSERT_EQ(suma, datos.Importe.crudo());
            ASSERT_EQ(propuesta.suma, datos.Importe);
        }
    }

}
}
