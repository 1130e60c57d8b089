#include "host/reclamaciones/Tanda.hpp"

#include <gmock/gmock.h>

#include <string>

namespace atipicos::app {
namespace {

    using namespace std::chrono_literals;
    using testing::ElementsAre;
    using testing::IsEmpty;

    struct SesionFingida final : sql::TransaccionFisica {
        std::vector<std::string> dichas;
        bool falla = false; ///< the next commit

        void empieza(Donde) override { dichas.emplace_back("empieza"); }
        void confirma(Donde donde) override
        {
            if (std::exchange(falla, false))
                throw Error(7, "Fingida", "no queda sitio", donde);
            dichas.emplace_back("confirma");
        }
        void deshace(Donde) override { dichas.emplace_back("deshace"); }
        void pon_punto(Donde) override { }
        void vuelve_al_punto(Donde) override { }
    };

    struct Tandas : testing::Test {
        SesionFingida sesion;
        std::shared_ptr<sql::Transacciones> transacciones
            = std::make_shared<sql::Transacciones>(sesion, "Fingida");
        Tanda::Reloj::time_point ahora;

        Tanda tanda(bool por_serie)
        {
            return { transacciones, por_serie, [this] { return ahora; } };
        }

        /// How many saves of the series, each that long, come into the next unit.
        std::size_t caben(Tanda& tanda, std::chrono::nanoseconds cada_una)
        {
            std::size_t cuantas = 0;
            for (; tanda.admite({ 2026, 1 }); ++cuantas) {
                tanda.empieza({ 2026, 1 });
                ahora += cada_una;
            }
            tanda.cierra();
            return cuantas;
        }
    };

    TEST_F(Tandas, grow_from_one_save_to_a_limit_and_begin_again_after_a_commit_that_failed)
    {
        auto una = tanda(false);
        std::vector<std::size_t> tamanos;
        for (int i = 0; i < 10; ++i)
            tamanos.push_back(caben(una, 1us));
        EXPECT_THAT(tamanos, ElementsAre(1, 2, 4, 8, 16, 32, 64, 128, 256, 256));

        sesion.falla = true;
        EXPECT_THROW(caben(una, 1us), Error);
        EXPECT_FALSE(una.abierta());
        EXPECT_EQ(sesion.dichas.back(), "deshace");
        EXPECT_EQ(caben(una, 1us), 1U);
        EXPECT_EQ(caben(una, 1us), 2U);
    }

    TEST_F(Tandas, end_before_a_save_as_long_as_the_longest_would_keep_others_waiting)
    {
        auto una = tanda(false);
        for (int i = 0; i < 9; ++i)
            static_cast<void>(caben(una, 1us));
        EXPECT_EQ(caben(una, 10ms), 17U) << "175 ms";
        EXPECT_EQ(caben(una, 100ms), 1U);
        EXPECT_EQ(caben(una, 10s), 1U) << "a save is never cut";

        una.empieza({ 2026, 1 });
        ahora += 90ms;
        una.empieza({ 2026, 1 });
        ahora += 1ms;
        EXPECT_FALSE(una.admite({ 2026, 1 })) << "the next one may be like the first";
        una.cierra();
    }

    TEST_F(Tandas, keep_to_one_series_where_rows_are_locked_one_by_one)
    {
        for (const bool por_serie : { false, true }) {
            auto una = tanda(por_serie);
            for (int i = 0; i < 3; ++i)
                static_cast<void>(caben(una, 1us));
            una.empieza({ 2026, 1 });
            EXPECT_TRUE(una.admite({ 2026, 1 }));
            EXPECT_EQ(una.admite({ 2026, 2 }), !por_serie);
            EXPECT_EQ(una.admite({ 2025, 1 }), !por_serie);
            una.cierra();
            EXPECT_TRUE(una.admite({ 2026, 2 }));
        }
    }

    TEST_F(Tandas, are_one_save_each_and_nothing_to_commit_where_sessions_are_not_shared)
    {
        Tanda una(nullptr, false, [this] { return ahora; });
        EXPECT_TRUE(una.admite({ 2026, 1 }));
        una.empieza({ 2026, 1 });
        EXPECT_FALSE(una.abierta());
        EXPECT_FALSE(una.admite({ 2026, 1 }));
        una.cierra();
        EXPECT_TRUE(una.admite({ 2026, 1 }));
        EXPECT_THAT(sesion.dichas, IsEmpty());
    }

    TEST_F(Tandas, that_are_dropped_are_undone)
    {
        {
            auto una = tanda(false);
            una.empieza({ 2026, 1 });
        }
        EXPECT_THAT(sesion.dichas, ElementsAre("empieza", "deshace"));
    }

}
}
