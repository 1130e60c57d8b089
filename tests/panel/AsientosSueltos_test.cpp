#include "host/panel/AsientosSueltos.hpp"

#include "host/comprobacion/Contrario.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/panel/EnPanel.hpp"

namespace atipicos::app {
namespace {

    using pruebas::sin_parar;
    using testing::ElementsAre;
    using testing::IsEmpty;

    struct SueltosEnPanel : testing::TestWithParam<pruebas::Sede> { };

    TEST_P(SueltosEnPanel, are_those_that_no_charge_names_until_they_are_reversed)
    {
        if (!GetParam().falta.empty())
            GTEST_SKIP() << GetParam().falta;
        pruebas::Banco banco(GetParam());
        for (int i = 0; i < 3; ++i)
            banco.guarda();
        const Ambito ambito{ banco.bases(), 1, 1 };
        const auto sueltos = [&] { return asientos_sueltos(ambito, sin_parar).value(); };
        EXPECT_THAT(sueltos().asientos, IsEmpty());

        banco.bases().orvalin->Execute(
            "DELETE FROM Proveedores_Cargos_Atipicos_Lineas WHERE Codigo = 'AT260002'");
        banco.bases().orvalin->Execute("DELETE FROM Proveedores_Cargos_Atipicos WHERE Codigo = 'AT260002'");
        // Somebody's own, which is of no charge.
        banco.bases().bexmor->Execute("INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, "
                                      "Usuario) VALUES (1, 2026, 900, '02/03/2026', '2')");
        const ClaveAsiento suelto{ 1, 2026, 2 };
        const auto dichos = sueltos().asientos;
        ASSERT_EQ(dichos.size(), 1U);
        EXPECT_EQ(dichos[0].asiento, suelto);
        EXPECT_EQ(dichos[0].fecha, pruebas::dia("21/11/2026"));
        EXPECT_EQ(dichos[0].documento, "AT260002");
        EXPECT_EQ(dichos[0].cuenta, "40000104") << "the supplier's";
        EXPECT_EQ(dichos[0].importe, pruebas::moneda("248.20")) << "with tax";
        EXPECT_FALSE(sueltos().hay_mas);

        const std::vector<ClaveAsiento> cuales{ suelto };
        static_cast<void>(regulariza(
            banco.bases(), cuales, { pruebas::dia("30/11/2026"), "2", pruebas::dia("30/11/2026") }));
        EXPECT_THAT(sueltos().asientos, IsEmpty());
    }

    TEST_P(SueltosEnPanel, given_up_they_are_not_told)
    {
        if (!GetParam().falta.empty())
            GTEST_SKIP() << GetParam().falta;
        pruebas::Banco banco(GetParam());
        banco.guarda();
        for (int veces = 0; veces < 2; ++veces) {
            int faltan = veces;
            EXPECT_FALSE(asientos_sueltos({ banco.bases(), 1, 1 }, [&] { return faltan-- > 0; }));
        }
    }

    INSTANTIATE_TEST_SUITE_P(
        Sedes, SueltosEnPanel, testing::ValuesIn(pruebas::sedes_sin_odbc()), pruebas::nombre_de_sede);

}
}
