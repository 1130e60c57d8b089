#include "host/documento/Paginacion.hpp"

#include <gmock/gmock.h>

#include <ostream>
#include <random>

namespace atipicos::orvalin {

static void PrintTo(const Colocada& una, std::ostream* flujo)
{
    *flujo << "{ " << una.tira << ", " << una.y << ", " << static_cast<std::ptrdiff_t>(una.cabecera) << " }";
}

namespace {

    using testing::ElementsAre;

    constexpr auto nada = sin_tabla;
    const Papel papel{ 100, 200, { 10, 20 } };

    Tira fila(Medida alto) { return { alto, 0, 0 }; }

    TEST(Paginacion, no_strips_are_one_empty_page)
    {
        EXPECT_THAT(reparte({}, papel), ElementsAre(ElementsAre()));
    }

    TEST(Paginacion, what_fits_exactly_fits)
    {
        EXPECT_THAT(reparte({ { { 60 } }, { { 40 } } }, papel),
            ElementsAre(ElementsAre(Colocada{ 0, 0, nada }, Colocada{ 1, 60, nada })));
        EXPECT_THAT(reparte({ { { 60 } }, { { 41 } } }, papel),
            ElementsAre(ElementsAre(Colocada{ 0, 0, nada }), ElementsAre(Colocada{ 1, 0, nada })));
    }

    TEST(Paginacion, the_gap_above_a_strip_counts_but_not_at_the_top_of_a_page)
    {
        EXPECT_THAT(reparte({ { { 50, 7 } }, { { 43, 7 } }, { { 10, 7 } } }, papel),
            ElementsAre(ElementsAre(Colocada{ 0, 0, nada }, Colocada{ 1, 57, nada }),
                ElementsAre(Colocada{ 2, 0, nada })));
    }

    TEST(Paginacion, column_heads_stand_above_the_first_row_of_every_page)
    {
        EXPECT_THAT(reparte({ { fila(45) }, { fila(45) }, { fila(45) }, { fila(45) } }, papel),
            ElementsAre(ElementsAre(Colocada{ 0, 10, 0 }, Colocada{ 1, 55, nada }),
                ElementsAre(Colocada{ 2, 10, 0 }, Colocada{ 3, 55, nada })));
    }

    TEST(Paginacion, heads_that_do_not_fit_take_their_row_along)
    {
        EXPECT_THAT(reparte({ { { 85 } }, { fila(10) } }, papel),
            ElementsAre(ElementsAre(Colocada{ 0, 0, nada }), ElementsAre(Colocada{ 1, 10, 0 })));
    }

    TEST(Paginacion, another_table_has_heads_of_its_own)
    {
        EXPECT_THAT(reparte({ { fila(20) }, { { 20, 5, 1 } }, { { 5 } }, { fila(5) } }, papel),
            ElementsAre(ElementsAre(
                Colocada{ 0, 10, 0 }, Colocada{ 1, 55, 1 }, Colocada{ 2, 75, nada }, Colocada{ 3, 90, 0 })));
    }

    TEST(Paginacion, a_block_stays_together_when_a_page_can_hold_it)
    {
        EXPECT_THAT(reparte({ { { 50 } }, { { 30 }, { 30 } } }, papel),
            ElementsAre(ElementsAre(Colocada{ 0, 0, nada }),
                ElementsAre(Colocada{ 1, 0, nada }, Colocada{ 2, 30, nada })));
    }

    TEST(Paginacion, a_block_that_no_page_can_hold_begins_where_it_is_and_is_cut_between_strips)
    {
        EXPECT_THAT(reparte({ { { 50 } }, { fila(40), fila(90), fila(90), fila(90) } }, papel),
            ElementsAre(ElementsAre(Colocada{ 0, 0, nada }, Colocada{ 1, 60, 0 }),
                ElementsAre(Colocada{ 2, 10, 0 }, Colocada{ 3, 100, nada }),
                ElementsAre(Colocada{ 4, 10, 0 })));
    }

    TEST(Paginacion, a_strip_higher_than_a_page_has_one_to_itself)
    {
        EXPECT_THAT(reparte({ { { 10 } }, { { 300 } }, { { 10 } } }, papel),
            ElementsAre(ElementsAre(Colocada{ 0, 0, nada }), ElementsAre(Colocada{ 1, 0, nada }),
                ElementsAre(Colocada{ 2, 0, nada })));
    }

    /// Whatever the strips are: all of them once, in order, one below the other and inside the page.
    TEST(Paginacion, no_strip_is_lost_and_none_stands_on_another)
    {
        std::mt19937 azar(11);
        const auto entre = [&](unsigned minimo, unsigned maximo) {
            return static_cast<Medida>(minimo + azar() % (maximo - minimo + 1));
        };
        for (int vez = 0; vez < 2000; ++vez) {
            std::vector<Bloque> bloques(azar() % 30);
            std::vector<Tira> tiras;
            for (auto& bloque : bloques)
                for (auto cuantas = azar() % 6; cuantas > 0; --cuantas)
                    tiras.push_back(bloque.emplace_back(
                        Tira{ entre(1, 40), entre(0, 9), azar() % 3 == 0 ? nada : azar() % 2 }));
            std::size_t siguiente = 0;
            std::size_t numero = 0;
            for (const auto& pagina : reparte(bloques, papel)) {
                Medida hasta = 0;
                std::size_t tabla = nada;
                for (const auto& [tira, y, cabecera] : pagina) {
                    ASSERT_EQ(tira, siguiente++);
                    const auto& puesta = tiras[tira];
                    ASSERT_EQ(cabecera, puesta.tabla == tabla ? nada : puesta.tabla);
                    ASSERT_GE(y, hasta + (cabecera == nada ? 0 : papel.cabeceras[cabecera]));
                    hasta = y + puesta.alto;
                    tabla = puesta.tabla;
                }
                ASSERT_LE(hasta, numero++ == 0 ? papel.primera : papel.resto);
            }
            ASSERT_EQ(siguiente, tiras.size());
        }
    }

}
}
