#include "host/panel/Comparacion.hpp"

#include "tests/panel/EnPanel.hpp"

namespace atipicos::app {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using pruebas::sin_parar;

    struct ComparaEnPanel : pruebas::EnPanel { };

    TEST(Periodos, are_as_long_as_the_ones_they_are_compared_with)
    {
        const auto noviembre = Periodos::de(dia("22/11/2026"));
        EXPECT_EQ(noviembre.mes, (Periodo{ dia("01/11/2026"), dia("22/11/2026") }));
        EXPECT_EQ(noviembre.mes_anterior, (Periodo{ dia("01/10/2026"), dia("22/10/2026") }));
        EXPECT_EQ(noviembre.anio, (Periodo{ dia("01/01/2026"), dia("22/11/2026") }));
        EXPECT_EQ(noviembre.anio_anterior, (Periodo{ dia("01/01/2025"), dia("22/11/2025") }));
    }

    TEST(Periodos, end_with_the_month_where_it_has_no_such_day_and_cross_the_year)
    {
        EXPECT_EQ(Periodos::de(dia("31/03/2026")).mes_anterior.hasta, dia("28/02/2026"));
        EXPECT_EQ(Periodos::de(dia("29/02/2024")).anio_anterior.hasta, dia("28/02/2023"));
        EXPECT_EQ(
            Periodos::de(dia("15/01/2026")).mes_anterior, (Periodo{ dia("01/12/2025"), dia("15/12/2025") }));
    }

    TEST(Cambio, is_in_whole_percent_of_what_it_was)
    {
        EXPECT_EQ(cambio(moneda("200"), moneda("250")), 25);
        EXPECT_EQ(cambio(moneda("200"), moneda("150")), -25);
        EXPECT_EQ(cambio(moneda("-200"), moneda("-100")), 50);
        EXPECT_EQ(cambio(moneda("0"), moneda("150")), std::nullopt);
    }

    TEST_P(ComparaEnPanel, each_period_has_its_first_and_its_last_day)
    {
        pon({ "AT250001", 2, "22/11/2025", 104, "100.05", "7" });
        pon({ "AT250002", 2, "23/11/2025", 104, "9000", "630" });
        pon({ "AT250003", 3, "01/01/2025", 104, "0.10", "0.01" });
        pon({ "AT260001", 1, "01/10/2026", 104, "50", "3.50" });
        pon({ "AT260002", 1, "22/10/2026", 104, "25.20", "1.76" });
        pon({ "AT260003", 1, "23/10/2026", 104, "800", "56" });
        pon({ "AT260004", 1, "01/11/2026", 104, "-10", "-0.70" });
        pon({ "AT260005", 1, "22/11/2026", 104, "30.30", "2.12" });
        pon({ "AT260006", 1, "23/11/2026", 104, "4000", "280" });
        pon({ "AT260007", 1, "22/11/2026", 104, "70000", "0", 5, 2 });
        const auto hoy = dia("22/11/2026");
        const auto comparacion = compara(ambito, hoy, sin_parar);
        ASSERT_TRUE(comparacion);
        EXPECT_EQ(comparacion->mes, (Totales{ 2, moneda("20.30"), moneda("1.42") }));
        EXPECT_EQ(comparacion->mes_anterior, (Totales{ 2, moneda("75.20"), moneda("5.26") }));
        EXPECT_EQ(comparacion->anio, (Totales{ 5, moneda("895.50"), moneda("62.68") }));
        EXPECT_EQ(comparacion->anio_anterior, (Totales{ 2, moneda("100.15"), moneda("7.01") }));
        EXPECT_EQ(comparacion->anio.total(), moneda("958.18"));
        EXPECT_EQ(comparacion->periodos.anio, Periodos::de(hoy).anio);
    }

    TEST_P(ComparaEnPanel, without_charges_all_is_nothing)
    {
        EXPECT_EQ(compara(ambito, dia("22/11/2026"), sin_parar).value().anio, Totales());
    }

    TEST_P(ComparaEnPanel, given_up_it_says_nothing)
    {
        EXPECT_FALSE(compara(ambito, dia("22/11/2026"), [] { return false; }));
    }

    INSTANTIATE_TEST_SUITE_P(
        Sedes, ComparaEnPanel, testing::ValuesIn(pruebas::sedes()), pruebas::nombre_de_sede);

}
}
