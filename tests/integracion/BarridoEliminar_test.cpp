// The deletion of a charge, whole and with every operation failing.
#include "browser/EliminarAtipico.hpp"
#include "charges/clsAtipico.hpp"
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using pruebas::Banco;

    ClaveCargo guardado(Banco& banco)
    {
        const auto codigo = banco.guarda().Codigo;
        banco.parte->dichas.clear();
        return { 2026, 1, codigo };
    }

    struct BarridoEliminar : testing::TestWithParam<pruebas::Sede> {
        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
        }
    };

    TEST_P(BarridoEliminar, takes_header_and_lines_and_leaves_counter_and_entry)
    {
        Banco banco(GetParam());
        const auto clave = guardado(banco);
        auto esperado = banco.estado();
        esperado["Proveedores_Cargos_Atipicos"] = 0;
        esperado["Proveedores_Cargos_Atipicos_Lineas"] = 0;
        EXPECT_TRUE(EliminarAtipico(clave));
        EXPECT_EQ(banco.estado(), esperado);
        EXPECT_THAT(banco.titulos(), testing::IsEmpty());
    }

    TEST_P(BarridoEliminar, at_every_failing_operation_the_charge_stays_whole_and_one_box_is_shown)
    {
        for (std::size_t n = 1; n <= 4; ++n) {
            Banco banco(GetParam());
            const auto clave = guardado(banco);
            const auto antes = banco.estado();
            banco.parte->falla_en = n;
            EXPECT_FALSE(EliminarAtipico(clave)) << n;
            EXPECT_EQ(banco.estado(), antes) << n;
            EXPECT_EQ(banco.titulos().size(), 1U) << n;
        }
    }

    TEST_P(BarridoEliminar, existe_answers_before_and_after)
    {
        Banco banco(GetParam());
        const auto clave = guardado(banco);
        const clsAtipico cargo;
        EXPECT_TRUE(cargo.Existe(clave.Ejercicio, clave.Almacen, clave.Codigo));
        EXPECT_FALSE(cargo.Existe(clave.Ejercicio, 2, clave.Codigo));
        ASSERT_TRUE(EliminarAtipico(clave));
        EXPECT_FALSE(cargo.Existe(clave.Ejercicio, clave.Almacen, clave.Codigo));
    }

    TEST_P(BarridoEliminar, the_number_of_a_deleted_charge_is_not_given_again)
    {
        Banco banco(GetParam());
        const auto clave = guardado(banco);
        ASSERT_TRUE(EliminarAtipico(clave));
        EXPECT_EQ(clave.Codigo, "AT260001");
        EXPECT_EQ(banco.guarda().Codigo, "AT260002");
    }

    TEST_P(BarridoEliminar, a_change_of_a_shorter_charge_leaves_the_trailing_line_in_the_table)
    {
        Banco banco(GetParam());
        clsAtipico cargo;
        cargo.Cod_Ejercicio = 2026;
        cargo.Cod_Almacen = 1;
        cargo.Codigo = "AT269999";
        cargo.Fecha = cargo.Hora = pruebas::dia("21/11/2026");
        for (const auto* texto : { "uno", "dos", "tres" })
            cargo.Lineas->Add(0, texto, Currency::de_entero(1), Currency::de_entero(2));
        EXPECT_FALSE(cargo.Modificar_Atipico()) << "not stored yet: inserted";
        cargo.Lineas->Remove(3);
        cargo.Lineas->Item(1)->Descripcion = "cambiada";
        EXPECT_FALSE(cargo.Modificar_Atipico());
        EXPECT_EQ(banco.estado().at("Proveedores_Cargos_Atipicos_Lineas"), 3);
        EXPECT_EQ(
            banco.consulta("SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea = 1"),
            Variant("cambiada"));
        EXPECT_EQ(
            banco.consulta("SELECT Descripcion FROM Proveedores_Cargos_Atipicos_Lineas WHERE Num_Linea = 3"),
            Variant("tres"));
    }

    INSTANTIATE_TEST_SUITE_P(sedes, BarridoEliminar, testing::ValuesIn(pruebas::sedes()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
