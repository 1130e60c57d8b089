#include "host/bexmor/Biblioteca.hpp"

#include "tests/host/EmpresaContable.hpp"

namespace atipicos::bexmor {
namespace {

    using BexmorBiblioteca = pruebas::EmpresaContable;

    TEST_F(BexmorBiblioteca, a_new_company_has_its_connection_and_its_library)
    {
        const auto nueva = biblioteca.NuevaEmpresa();
        EXPECT_EQ(nueva->Conexion, bases.bexmor);
        EXPECT_EQ(&nueva->biblioteca(), &biblioteca);
        EXPECT_EQ(nueva->Codigo, 0);
    }

    TEST_F(BexmorBiblioteca, what_it_makes_for_a_company_works_in_the_company_and_year_at_that_moment)
    {
        const auto nuevo = biblioteca.NuevoAsiento(*empresa);
        empresa->Ejercicio = 2025;
        nuevo->Fecha = Date::de_texto("03/02/2025").value();
        nuevo->Crear();
        EXPECT_EQ(pruebas::cuenta(conexion, "Asientos WHERE Cod_Empresa =1 AND Cod_Ejercicio =2025"), 1);
    }

    TEST_F(BexmorBiblioteca, what_is_undone_leaves_no_trace_and_its_number_is_given_again)
    {
        conexion.BeginTrans();
        const auto numero = asiento();
        EXPECT_TRUE(apunte(numero, 1)->Guardar());
        conexion.RollbackTrans();
        EXPECT_EQ(pruebas::cuenta(conexion, "Asientos"), 0);
        EXPECT_EQ(pruebas::cuenta(conexion, "Apuntes"), 0);
        EXPECT_EQ(asiento(), numero);
    }

}
} // namespace atipicos::bexmor
