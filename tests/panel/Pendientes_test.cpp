#include "host/panel/Pendientes.hpp"

#include "tests/panel/EnPanel.hpp"

namespace atipicos::app {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::IsEmpty;
    using testing::SizeIs;

    struct PendientesEnPanel : pruebas::EnPanel {
        void prevision(int asiento, const char* vencimiento, const char* importe, int empresa = 1) const
        {
            auto& bexmor = *ambito.bases.bexmor;
            const auto clave = std::to_string(empresa) + ", 2026, " + std::to_string(asiento);
            bexmor.Execute(
                "INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario) VALUES (" + clave
                + ", '02/03/2026', '2')");
            const std::string cuenta = empresa == 1 ? "40000104" : "400000104";
            bexmor.Execute("INSERT INTO Previsiones (Cod_Empresa, Cod_Ejercicio, Asiento, Numero, Cuenta, "
                           "Departamento, Importe, TipoDoc, Vencimiento, Banco) VALUES ("
                + clave + ", 1, '" + cuenta + "', '90', " + importe + ", 3, '" + vencimiento + "', '')");
        }
    };

    TEST_P(PendientesEnPanel, charges_without_entry_are_those_of_the_company_newest_first)
    {
        pon({ "AT260001", 2, "02/03/2026", 104, "10", "0", 0 });
        pon({ "AT260002", 2, "03/03/2026", 104, "10", "0", -1 });
        pon({ "AT260003", 2, "04/03/2026", 104, "10", "0", 1 });
        pon({ "AT260004", 2, "05/03/2026", 104, "10", "0", 0, 2 });
        const auto sin = cargos_sin_asiento(ambito);
        ASSERT_THAT(sin.cargos, SizeIs(2));
        EXPECT_EQ(sin.cargos[0].codigo, "AT260002");
        EXPECT_EQ(sin.cargos[1].codigo, "AT260001");
        EXPECT_FALSE(sin.hay_mas);
    }

    TEST_P(PendientesEnPanel, a_company_that_does_not_post_has_no_charge_without_entry)
    {
        pon({ "AT260004", 1, "05/03/2026", 104, "10", "0", 0, 2 });
        EXPECT_THAT(cargos_sin_asiento({ ambito.bases, 2, 1 }).cargos, IsEmpty());
    }

    TEST_P(PendientesEnPanel, of_very_many_charges_without_entry_the_newest_are_told)
    {
        for (std::size_t i = 0; i <= SinAsiento::maximo; ++i)
            pon({ ("AT" + std::to_string(260'000 + i)).c_str(), 2, "02/03/2026", 104, "10", "0", 0 });
        const auto sin = cargos_sin_asiento(ambito);
        EXPECT_THAT(sin.cargos, SizeIs(SinAsiento::maximo));
        EXPECT_TRUE(sin.hay_mas);
    }

    TEST_P(PendientesEnPanel, forecasts_are_those_of_today_and_the_thirty_days_after_it)
    {
        prevision(1, "21/11/2026", "1000"); // yesterday
        prevision(2, "22/11/2026", "10.10");
        prevision(3, "22/12/2026", "20.20");
        prevision(4, "23/12/2026", "2000");
        prevision(5, "01/12/2026", "30.03", 2);
        const auto proximas = previsiones_proximas(ambito, dia("22/11/2026"));
        EXPECT_EQ(proximas.desde, dia("22/11/2026"));
        EXPECT_EQ(proximas.hasta, dia("22/12/2026"));
        EXPECT_EQ(proximas.cuantas, 3);
        EXPECT_EQ(proximas.importe, moneda("60.33"));
        ASSERT_THAT(proximas.primeras, SizeIs(3));
        EXPECT_EQ(proximas.primeras[1].vencimiento, dia("01/12/2026"));
        EXPECT_EQ(proximas.primeras[1].importe, moneda("30.03"));
        EXPECT_EQ(proximas.primeras[1].asiento, (ClaveAsiento{ 2, 2026, 5 }));
        EXPECT_EQ(proximas.primeras[1].cuenta, "400000104");
        EXPECT_EQ(proximas.primeras[0].nombre_cuenta, "Conservas La Graciosa, S.A.");
    }

    TEST_P(PendientesEnPanel, forecasts_of_accounting_companies_of_others_do_not_count)
    {
        prevision(2, "23/11/2026", "10.10", 1);
        EXPECT_EQ(previsiones_proximas({ ambito.bases, 2, 1 }, dia("22/11/2026")).cuantas, 0); // posts to 2
        EXPECT_EQ(previsiones_proximas({ ambito.bases, 77, 1 }, dia("22/11/2026")).cuantas, 0);
    }

    INSTANTIATE_TEST_SUITE_P(
        Sedes, PendientesEnPanel, testing::ValuesIn(pruebas::sedes()), pruebas::nombre_de_sede);

}
}
