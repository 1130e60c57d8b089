#include "host/bexmor/ServicioCuentas.hpp"

#include "tests/host/EmpresaContable.hpp"

namespace atipicos::bexmor {
namespace {

    using pruebas::error_de;

    struct BexmorServicioCuentas : pruebas::EmpresaContable {
        ServicioCuentas servicio{ *empresa };
    };

    TEST_F(BexmorServicioCuentas, forms_an_account_with_the_code_at_the_right)
    {
        EXPECT_EQ(servicio.FormarCuenta("400", 17, 8), "40000017");
        EXPECT_EQ(servicio.FormarCuenta("400", 17, 9), "400000017");
        EXPECT_EQ(servicio.FormarCuenta("4000", 0, 8), "40000000");
        EXPECT_EQ(servicio.FormarCuenta("521", 99999, 8), "52199999");
    }

    TEST_F(BexmorServicioCuentas, refuses_what_does_not_fit)
    {
        EXPECT_EQ(error_de([&] { static_cast<void>(servicio.FormarCuenta("400", 123456, 8)); }),
            "La raíz 400 y el código 123456 no caben en una cuenta de 8 cifras.");
        EXPECT_EQ(error_de([&] { static_cast<void>(servicio.FormarCuenta("400", 1, 0)); }),
            "La raíz 400 y el código 1 no caben en una cuenta de 0 cifras.");
    }

    TEST_F(BexmorServicioCuentas, refuses_a_missing_root_and_a_negative_code)
    {
        EXPECT_EQ(error_de([&] { static_cast<void>(servicio.FormarCuenta("", 101, 8)); }),
            "No hay raíz con la que formar la cuenta del código 101. Revise la configuración.");
        EXPECT_EQ(error_de([&] { static_cast<void>(servicio.FormarCuenta("400", -5, 8)); }),
            "El código -5 es negativo y no puede formar una cuenta.");
    }

    TEST_F(BexmorServicioCuentas, knows_the_accounts_of_its_plan)
    {
        EXPECT_TRUE(servicio.ExisteCuenta("57200001"));
        EXPECT_FALSE(servicio.ExisteCuenta("57299999"));
        EXPECT_FALSE(servicio.ExisteCuenta("572000001")) << "of the other company";
        EXPECT_FALSE(servicio.ExisteCuenta("' OR ''='"));
        empresa->Ejercicio = 1999;
        EXPECT_FALSE(servicio.ExisteCuenta("57200001")) << "there is no plan of that year";
    }

    TEST_F(BexmorServicioCuentas, reads_a_tax_type_of_its_company)
    {
        EXPECT_EQ(servicio.LeerTipoImpuesto(2).Porcentaje, Currency::de_entero(3));
        EXPECT_EQ(servicio.LeerTipoImpuesto(2).Imp_CtaRep, "47700003");
        empresa->Codigo = 2;
        EXPECT_EQ(servicio.LeerTipoImpuesto(1).Imp_CtaRep, "477000007");
    }

    TEST_F(BexmorServicioCuentas, keeps_a_tax_type_as_it_was_when_the_company_was_loaded)
    {
        conexion.Execute("UPDATE Tipos_Impuesto SET Imp_CtaRep ='47700009' WHERE Codigo =2");
        EXPECT_EQ(servicio.LeerTipoImpuesto(2).Imp_CtaRep, "47700003");
        EXPECT_TRUE(empresa->Cargar());
        EXPECT_EQ(servicio.LeerTipoImpuesto(2).Imp_CtaRep, "47700009");
    }

    TEST_F(BexmorServicioCuentas, finds_a_tax_type_that_has_come_since_the_company_was_loaded)
    {
        conexion.Execute("INSERT INTO Tipos_Impuesto VALUES (1, 9, 'Nuevo', 12.5, '47700012')");
        EXPECT_EQ(servicio.LeerTipoImpuesto(9).Porcentaje, Currency::de_texto("12.5"));
        EXPECT_EQ(servicio.LeerTipoImpuesto(9).Imp_CtaRep, "47700012");
    }

    TEST_F(BexmorServicioCuentas, says_that_there_is_no_such_tax_type)
    {
        EXPECT_EQ(error_de([&] { static_cast<void>(servicio.LeerTipoImpuesto(9)); }),
            "No existe el tipo de impuesto 9 en la empresa contable 1.");
    }

}
} // namespace atipicos::bexmor
