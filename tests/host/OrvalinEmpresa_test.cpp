#include "host/orvalin/Empresa.hpp"

#include "tests/host/BasesDeMuestra.hpp"

namespace atipicos::orvalin {
namespace {

    using pruebas::error_de;
    using OrvalinEmpresa = pruebas::BasesDeMuestra;

    TEST_F(OrvalinEmpresa, reads_the_values_of_its_own_row)
    {
        const Empresa empresa(bases.orvalin, 1, 12);
        EXPECT_EQ(empresa.Codigo(), 1);
        EXPECT_EQ(empresa.Nombre(), "Comercial Drago Sur, S.L.");
        EXPECT_EQ(empresa.NIF(), "B38000011");
        EXPECT_EQ(empresa.DecimalesImporte(), 2);
        EXPECT_EQ(empresa.DecimalesCosto(), 4);
        EXPECT_EQ(empresa.DecimalesPrecio(), 3);
        EXPECT_EQ(empresa.AlmacenDefecto(), 1);
        EXPECT_EQ(empresa.EnlaceContable(), 1);
        EXPECT_EQ(empresa.EmpresaProveedores(), 1);
        EXPECT_EQ(empresa.RaizProveedores(), 400);
    }

    TEST_F(OrvalinEmpresa, may_keep_its_suppliers_under_another_company)
    {
        const Empresa empresa(bases.orvalin, 2, 1);
        EXPECT_EQ(empresa.EmpresaProveedores(), 1);
        EXPECT_EQ(empresa.EnlaceContable(), 0);
        EXPECT_FALSE(CBool(empresa.Parametro("GenerarPrevPagos")));
    }

    TEST_F(OrvalinEmpresa, gives_its_parameters_as_texts_and_empty_for_those_it_has_not)
    {
        const Empresa empresa(bases.orvalin, 1, 12);
        EXPECT_EQ(empresa.Parametro("Raiz_ProveedoresDeudor"), Variant("440"));
        EXPECT_EQ(empresa.Parametro("Concepto_Atipicos_Deudor"), Variant("Reclamación %DOCUMENTO%"));
        EXPECT_EQ(CInt(empresa.Parametro("Proveedores_AtipcosImpuesto")), 1);
        EXPECT_TRUE(CBool(empresa.Parametro("GenerarPrevPagos")));
        EXPECT_TRUE(empresa.Parametro("NoHay").es_vacio());
        EXPECT_TRUE(empresa.Parametro("").es_vacio());
    }

    TEST_F(OrvalinEmpresa, the_current_user_is_the_one_it_was_made_for)
    {
        bases.orvalin->Execute(
            "INSERT INTO Parametros (Cod_Empresa, Clave, Valor) VALUES (1, 'UsuarioActual', '3')");
        const Empresa empresa(bases.orvalin, 1, 12);
        EXPECT_EQ(empresa.Parametro("UsuarioActual"), Variant("12"));
        EXPECT_EQ(empresa.Usuario(), 12);
    }

    TEST_F(OrvalinEmpresa, gives_the_rate_of_a_tax_type_or_says_that_there_is_none)
    {
        const Empresa empresa(bases.orvalin, 1, 12);
        EXPECT_EQ(empresa.PorcentajeImpuesto(1), Currency::de_entero(7));
        EXPECT_EQ(empresa.PorcentajeImpuesto(2), Currency::de_entero(3));
        EXPECT_EQ(empresa.PorcentajeImpuesto(0), Currency());
        EXPECT_EQ(error_de([&] { static_cast<void>(empresa.PorcentajeImpuesto(9)); }),
            "No existe el tipo de impuesto 9.");
    }

    TEST_F(OrvalinEmpresa, that_does_not_exist_is_an_error)
    {
        EXPECT_EQ(error_de([&] { Empresa(bases.orvalin, 7, 12); }), "No existe la empresa 7.");
        EXPECT_EQ(error_de([] { Empresa(nullptr, 1, 12); }),
            Error::de_ejecucion(numero_error::objeto_no_establecido).descripcion());
    }

    TEST_F(OrvalinEmpresa, keeps_its_values_until_it_is_read_again)
    {
        Empresa empresa(bases.orvalin, 1, 12);
        bases.orvalin->Execute("UPDATE Parametros SET Valor ='441' WHERE Clave ='Raiz_ProveedoresDeudor'");
        bases.orvalin->Execute("UPDATE Tipos_Impuesto SET Porcentaje =9.5 WHERE Codigo =1");
        EXPECT_EQ(empresa.Parametro("Raiz_ProveedoresDeudor"), Variant("440"));
        EXPECT_EQ(empresa.PorcentajeImpuesto(1), Currency::de_entero(7));
        empresa.Recargar();
        EXPECT_EQ(empresa.Parametro("Raiz_ProveedoresDeudor"), Variant("441"));
        EXPECT_EQ(empresa.PorcentajeImpuesto(1), Currency::de_texto("9.5"));
    }

    TEST_F(OrvalinEmpresa, a_failed_reading_leaves_the_values_of_before)
    {
        Empresa empresa(bases.orvalin, 1, 12);
        bases.orvalin->Execute("UPDATE Empresas SET Nombre ='Otra', RaizProveedores ='x' WHERE Codigo =1");
        EXPECT_THROW(empresa.Recargar(), Error);
        EXPECT_EQ(empresa.Nombre(), "Comercial Drago Sur, S.L.");
        EXPECT_EQ(empresa.RaizProveedores(), 400);
    }

}
} // namespace atipicos::orvalin
