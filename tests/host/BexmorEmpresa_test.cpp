#include "host/bexmor/Empresa.hpp"

#include "tests/host/EmpresaContable.hpp"

namespace atipicos::bexmor {
namespace {

    using BexmorEmpresa = pruebas::EmpresaContable;

    TEST_F(BexmorEmpresa, knows_the_length_of_its_accounts_and_its_bank)
    {
        EXPECT_EQ(empresa->LongitudCuenta(), 8);
        EXPECT_EQ(empresa->CuentaBancoPago(), "57200001");
        const auto segunda = carga(2, 2026);
        EXPECT_EQ(segunda->LongitudCuenta(), 9);
        EXPECT_EQ(segunda->CuentaBancoPago(), "572000001");
    }

    TEST_F(BexmorEmpresa, that_does_not_exist_is_not_loaded_and_keeps_nothing_of_the_one_before)
    {
        empresa->Codigo = 0;
        EXPECT_FALSE(empresa->Cargar());
        EXPECT_EQ(empresa->LongitudCuenta(), 0);
        EXPECT_EQ(empresa->CuentaBancoPago(), "");
    }

    TEST_F(BexmorEmpresa, gives_its_parameters_and_empty_for_those_it_has_not)
    {
        EXPECT_EQ(empresa->Parametro("ODBCBaseDatos"), Variant("Bexmor"));
        EXPECT_TRUE(empresa->Parametro("NoHay").es_vacio());
    }

    TEST_F(BexmorEmpresa, reads_its_parameters_again_when_it_is_loaded_again)
    {
        EXPECT_EQ(empresa->Parametro("ODBCBaseDatos"), Variant("Bexmor"));
        conexion.Execute("UPDATE Parametros SET Valor ='Otra' WHERE Cod_Empresa =1");
        EXPECT_EQ(empresa->Parametro("ODBCBaseDatos"), Variant("Bexmor"));
        EXPECT_TRUE(empresa->Cargar());
        EXPECT_EQ(empresa->Parametro("ODBCBaseDatos"), Variant("Otra"));
    }

    TEST_F(BexmorEmpresa, without_a_connection_raises_an_error)
    {
        empresa->Conexion = nullptr;
        EXPECT_EQ(pruebas::error_de([&] { static_cast<void>(empresa->Cargar()); }),
            Error::de_ejecucion(numero_error::objeto_no_establecido).descripcion());
    }

}
} // namespace atipicos::bexmor
