#include "host/bexmor/Apunte.hpp"

#include "tests/host/EmpresaContable.hpp"

namespace atipicos::bexmor {
namespace {

    using pruebas::columna;
    using pruebas::cuenta;
    using BexmorApunte = pruebas::EmpresaContable;

    TEST_F(BexmorApunte, is_stored_with_all_its_values)
    {
        const auto linea = apunte(asiento(), 3);
        linea->ConceptoAutomatico = "47";
        linea->Concepto = "Ingreso atípico O'Higgins " + std::string(300, 'x');
        linea->Documento = "AT260001";
        linea->Departamento = "90";
        linea->Debe = Currency::de_texto("-12.34");
        linea->Haber = Currency::de_texto("999999999999.99");
        linea->TipoImpuesto = 1;
        linea->PorcentajeImpuesto = Currency::de_texto("6.5");
        linea->BaseImpuesto = Currency::de_texto("0.1234");
        ASSERT_TRUE(linea->Guardar()) << linea->error().descripcion();

        const auto rs = conexion.CreateRecordset();
        rs->Open("SELECT * FROM Apuntes", adodb::CursorType::Static, adodb::LockType::ReadOnly);
        const auto valor = [&](const char* campo) { return rs->Fields(campo).Value(); };
        EXPECT_EQ(valor("Asiento"), Variant(1));
        EXPECT_EQ(valor("Linea"), Variant(3));
        EXPECT_EQ(valor("Cuenta"), Variant("44000101"));
        EXPECT_EQ(valor("Concepto"), Variant(linea->Concepto));
        EXPECT_EQ(valor("Documento"), Variant("AT260001"));
        EXPECT_EQ(valor("Departamento"), Variant("90"));
        EXPECT_EQ(valor("ConceptoAutomatico"), Variant("47"));
        EXPECT_EQ(valor("Debe"), Variant(Currency::de_texto("-12.34")));
        EXPECT_EQ(valor("Haber"), Variant(Currency::de_texto("999999999999.99")));
        EXPECT_EQ(CInt(valor("TipoImpuesto")), 1);
        EXPECT_EQ(valor("PorcentajeImpuesto"), Variant(Currency::de_texto("6.5")));
        EXPECT_EQ(valor("BaseImpuesto"), Variant(Currency::de_texto("0.1234")));
    }

    TEST_F(BexmorApunte, on_an_account_outside_the_plan_is_refused_naming_account_company_and_year)
    {
        const auto linea = apunte(asiento(), 1);
        linea->Cuenta = "44000017";
        EXPECT_FALSE(linea->Guardar());
        EXPECT_EQ(linea->error().numero(), 1000);
        EXPECT_EQ(linea->error().fuente(), "QVBXEMP:Apunte");
        EXPECT_EQ(linea->error().descripcion(),
            "La cuenta 44000017 no existe en el plan de la empresa contable 1, ejercicio 2026. "
            "Dela de alta antes de contabilizar.");
        linea->Cuenta.clear();
        EXPECT_FALSE(linea->Guardar());
        EXPECT_THAT(linea->error().descripcion(), testing::HasSubstr("La cuenta vacía no existe en el plan"));
        EXPECT_EQ(cuenta(conexion, "Apuntes"), 0);
    }

    TEST_F(BexmorApunte, the_plan_is_that_of_the_year)
    {
        conexion.Execute("DELETE FROM Cuentas WHERE Cuenta ='44000101' AND Cod_Ejercicio =2026");
        const auto linea = apunte(asiento(), 1);
        EXPECT_FALSE(linea->Guardar());
        EXPECT_THAT(linea->error().descripcion(), testing::HasSubstr("La cuenta 44000101 no existe"));
    }

    TEST_F(BexmorApunte, amounts_of_more_than_two_decimals_or_too_many_digits_are_refused)
    {
        const auto linea = apunte(asiento(), 1);
        linea->Debe = Currency::de_texto("1.005");
        EXPECT_FALSE(linea->Guardar());
        EXPECT_EQ(
            linea->error().descripcion(), "El importe 1,0050 tiene más de dos decimales. Redondéelo antes.");
        linea->Debe = Currency();
        for (const auto* importe : { "1000000000000", "-1000000000000" }) {
            linea->Haber = Currency::de_texto(importe);
            EXPECT_FALSE(linea->Guardar());
            EXPECT_THAT(linea->error().descripcion(),
                testing::EndsWith(
                    "1.000.000.000.000,00 es demasiado grande. El máximo es 999.999.999.999,99."));
        }
        EXPECT_EQ(linea->error().numero(), 1000);
        EXPECT_EQ(cuenta(conexion, "Apuntes"), 0);
    }

    TEST_F(BexmorApunte, of_no_entry_or_of_one_that_does_not_exist_is_refused)
    {
        const auto linea = apunte(0, 1);
        EXPECT_FALSE(linea->Guardar());
        EXPECT_EQ(linea->error().numero(), 1000);
        EXPECT_EQ(
            linea->error().descripcion(), "El apunte no pertenece a ningún asiento. Cree antes el asiento.");
        linea->Asiento = 8;
        EXPECT_FALSE(linea->Guardar());
        EXPECT_EQ(linea->error().descripcion(),
            "No existe el asiento 8 de la empresa contable 1, ejercicio 2026. Créelo antes.");
    }

    TEST_F(BexmorApunte, a_failure_of_the_database_is_kept_and_gives_false)
    {
        const auto linea = apunte(asiento(), 1);
        EXPECT_TRUE(linea->Guardar());
        EXPECT_FALSE(linea->Guardar()); // the same line number again
        EXPECT_THAT(linea->error().descripcion(), testing::HasSubstr("UNIQUE constraint failed"));
        linea->Linea = 2;
        linea->Concepto = std::string("a\0b", 3);
        EXPECT_FALSE(linea->Guardar());
        EXPECT_EQ(linea->error().numero(), numero_error::argumento_no_valido);
    }

    TEST_F(BexmorApunte, a_refused_line_leaves_the_transaction_usable_and_the_object_too)
    {
        conexion.BeginTrans();
        const auto linea = apunte(asiento(), 1);
        linea->Cuenta = "99999999";
        EXPECT_FALSE(linea->Guardar());
        linea->Cuenta = "40000101";
        EXPECT_TRUE(linea->Guardar());
        conexion.CommitTrans();
        EXPECT_EQ(columna(conexion, "SELECT Cuenta FROM Apuntes"), std::vector<std::string>{ "40000101" });
    }

    TEST_F(BexmorApunte, refused_leaves_its_entry_known_as_incomplete_with_the_reason)
    {
        const auto linea = apunte(asiento(), 1);
        EXPECT_TRUE(linea->Guardar());
        EXPECT_EQ(cuenta(conexion, "Asientos_Incompletos"), 0);
        linea->Asiento = 8;
        EXPECT_FALSE(linea->Guardar());
        EXPECT_EQ(cuenta(conexion, "Asientos_Incompletos"), 0) << "of an entry that does not exist";
        linea->Asiento = 1;
        linea->Linea = 2;
        linea->Cuenta = "99'9";
        EXPECT_FALSE(linea->Guardar());
        linea->Cuenta = "88888888";
        EXPECT_FALSE(linea->Guardar());
        EXPECT_EQ(columna(conexion,
                      "SELECT Cod_Empresa || '/' || Cod_Ejercicio || '/' || Numero || ' ' || Motivo FROM "
                      "Asientos_Incompletos"),
            std::vector<std::string>{
                "1/2026/1 La cuenta 99'9 no existe en el plan de la empresa contable 1, ejercicio 2026. Dela "
                "de alta antes de contabilizar." })
            << "the first reason";
    }

    TEST_F(BexmorApunte, refused_for_a_long_reason_leaves_as_much_of_it_as_fits)
    {
        const auto linea = apunte(asiento(), 1);
        linea->Cuenta = std::string(170, 'x') + "ñññññññññññññññññññññ€€€😀😀😀😀😀";
        EXPECT_FALSE(linea->Guardar());
        const auto motivo = columna(conexion, "SELECT Motivo FROM Asientos_Incompletos").at(0);
        EXPECT_EQ(motivo, "La cuenta " + std::string(170, 'x') + "ññññññññññññññññññññ");
    }

    TEST_F(BexmorApunte, its_error_names_the_line_that_stored_it)
    {
        const auto linea = apunte(asiento(), 1);
        linea->Cuenta = "99999999";
        const std::uint32_t aqui = __LINE__ + 1;
        EXPECT_FALSE(linea->Guardar());
        EXPECT_EQ(linea->error().donde().linea(), aqui);
    }

}
} // namespace atipicos::bexmor
