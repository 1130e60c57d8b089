#include "host/panel/Busqueda.hpp"

#include "host/panel/LecturaDeCargos.hpp"
#include "tests/panel/EnPanel.hpp"

namespace atipicos::app {
namespace {

    using pruebas::sin_parar;
    using testing::ElementsAre;
    using testing::IsEmpty;

    struct BuscaEnPanel : pruebas::EnPanel {
        void SetUp() override
        {
            EnPanel::SetUp();
            if (IsSkipped())
                return;
            pon({ "AT240007", 2, "29/02/2024", 103, "1234.56", "86.42" });
            pon({ "AT260001", 1, "02/03/2026", 104, "10.10", "0.71", 0 });
            pon({ "AT260002", 3, "02/03/2026", 103, "55", "3.85" });
            pon({ "AT260002", 1, "21/11/2026", 101, "10.81", "0" });
            pon({ "AT260014", 1, "20/11/2026", 999, "7", "0.49" });
            pon({ "AT260001", 1, "19/11/2026", 104, "10.10", "0.71", 5, 2 }); // of another company
        }

        std::vector<std::string> halla(const std::string& tecleado, const Sigue& sigue = sin_parar) const
        {
            const Busqueda busqueda(ambito);
            std::vector<std::string> hallados;
            EXPECT_FALSE(busqueda.busca(busqueda.interpreta(tecleado), sigue, [&](const auto& unos) {
                for (const auto& uno : unos)
                    hallados.push_back(uno.codigo + "/" + std::to_string(uno.almacen));
            }));
            return hallados;
        }
    };

    TEST_P(BuscaEnPanel, the_latest_come_first_and_no_more_than_asked_for)
    {
        const auto ultimos = ultimos_cargos(ambito, 4);
        ASSERT_EQ(ultimos.size(), 4U);
        EXPECT_EQ(ultimos[0],
            (CargoResumido{ 2026, 1, "AT260002", 101, "Aguas de Ucanca, S.A.", pruebas::dia("21/11/2026"),
                pruebas::moneda("10.81"), {}, 5 }));
        EXPECT_EQ(ultimos[1].codigo, "AT260014");
        EXPECT_EQ(ultimos[1].nombre_proveedor, ""); // there is no such supplier any more
        EXPECT_EQ(ultimos[2].almacen, 1); // of one day by warehouse
        EXPECT_EQ(ultimos[2].total(), pruebas::moneda("10.81"));
        EXPECT_EQ(ultimos[2].asiento, 0);
        EXPECT_EQ(ultimos[3].almacen, 3);
    }

    TEST_P(BuscaEnPanel, a_code_is_found_by_its_beginning_in_every_year_and_warehouse)
    {
        EXPECT_THAT(halla("AT2400"), ElementsAre("AT240007/2"));
        EXPECT_THAT(halla("at260002"), ElementsAre("AT260002/1", "AT260002/3"));
        EXPECT_THAT(halla("26001"), ElementsAre("AT260014/1"));
        EXPECT_THAT(halla("AT9"), IsEmpty());
    }

    TEST_P(BuscaEnPanel, a_supplier_is_found_by_parts_of_the_name_without_accents_and_by_his_code)
    {
        EXPECT_THAT(halla(" nandu EXPORT"), ElementsAre("AT260002/3", "AT240007/2"));
        EXPECT_THAT(halla("Ñandú"), ElementsAre("AT260002/3", "AT240007/2"));
        EXPECT_THAT(halla("101"), ElementsAre("AT260002/1"));
        EXPECT_THAT(halla("nandu ucanca"), IsEmpty());
    }

    TEST_P(BuscaEnPanel, an_amount_is_found_as_base_and_as_total)
    {
        EXPECT_THAT(halla("10,81"), ElementsAre("AT260002/1", "AT260001/1"));
        EXPECT_THAT(halla("10,1"), ElementsAre("AT260001/1"));
        EXPECT_THAT(halla("1.320,98"), ElementsAre("AT240007/2"));
        EXPECT_THAT(halla("10,80"), IsEmpty());
    }

    TEST_P(BuscaEnPanel, nothing_typed_and_nothing_meant_finds_nothing)
    {
        EXPECT_TRUE(Busqueda(ambito).interpreta("  ").nada());
        EXPECT_TRUE(Busqueda(ambito).interpreta("x'y").nada());
        EXPECT_THAT(halla("'; --"), IsEmpty());
    }

    TEST_P(BuscaEnPanel, it_stops_before_the_older_ones_when_it_is_told_to)
    {
        pon({ "AT260020", 3, "01/10/2026", 103, "2", "0" }); // of the month before the last one
        int veces = 0;
        EXPECT_THAT(halla("nandu", [&] { return ++veces < 3; }), ElementsAre("AT260020/3"));
        EXPECT_THAT(halla("nandu"), ElementsAre("AT260020/3", "AT260002/3", "AT240007/2"));
        EXPECT_THAT(halla("nandu", [] { return false; }), IsEmpty());
    }

    TEST_P(BuscaEnPanel, more_than_it_shows_are_told_to_be_more)
    {
        for (std::size_t i = 0; i < Busqueda::maximo; ++i)
            pon({ ("AT25" + std::to_string(10'000 + i)).c_str(), 4, "15/06/2025", 110, "3", "0" });
        const Busqueda busqueda(ambito);
        std::size_t hallados = 0;
        EXPECT_TRUE(busqueda.busca(busqueda.interpreta("peninsular"), sin_parar,
            [&](const auto& unos) { hallados += unos.size(); }));
        EXPECT_EQ(hallados, Busqueda::maximo);
    }

    INSTANTIATE_TEST_SUITE_P(
        Sedes, BuscaEnPanel, testing::ValuesIn(pruebas::sedes()), pruebas::nombre_de_sede);

}
}
