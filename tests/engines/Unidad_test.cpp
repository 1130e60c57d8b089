#include "engines/sql/Unidad.hpp"

#include "tests/engines/ConTransacciones.hpp"

namespace atipicos::sql {
namespace {

    using adodb::Categoria;
    using testing::ElementsAre;

    class Unidad_test : public ConTransacciones { };

    TEST_F(Unidad_test, a_unit_commits_all_its_transactions_at_its_end)
    {
        Unidad unidad(par);
        for (int vez = 0; vez < 2; ++vez) {
            EXPECT_EQ(empieza(gestion), "");
            EXPECT_EQ(empieza(contabilidad), "");
            EXPECT_EQ(confirma(gestion), "");
            EXPECT_EQ(confirma(contabilidad), "");
        }
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "punto", "punto"));
        unidad.confirma();
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "punto", "punto", "confirma"));
        EXPECT_FALSE(par->en_unidad());
    }

    TEST_F(Unidad_test, in_a_unit_one_is_undone_alone_before_and_after_its_commit)
    {
        Unidad unidad(par);
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(deshace(gestion), "");
        EXPECT_EQ(pregunta(contabilidad), la_otra);
        EXPECT_EQ(deshace(contabilidad), "");
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "punto", "vuelve"));
        unidad.deshace_ultima();
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "punto", "vuelve")) << "it is undone already";
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(confirma(gestion), "");
        unidad.deshace_ultima();
        unidad.deshace_ultima();
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "punto", "vuelve", "punto", "vuelve"));
        unidad.confirma();
        EXPECT_EQ(fisica.pedido.back(), "confirma");
    }

    TEST_F(Unidad_test, a_unit_that_is_not_ended_is_undone)
    {
        {
            const Unidad unidad(par);
            EXPECT_EQ(empieza(gestion), "");
            EXPECT_EQ(empieza(contabilidad), "");
            EXPECT_EQ(confirma(gestion), "");
        }
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "punto", "deshace"));
        EXPECT_EQ(deshace(contabilidad), "") << "whoever was in it may still say so";
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(fisica.pedido.back(), "empieza");
    }

    TEST_F(Unidad_test, a_unit_neither_begins_nor_ends_in_the_middle_of_a_transaction)
    {
        constexpr auto abierta = "Hay una transacción abierta: termínela antes.";
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(error([&] { const Unidad unidad(par); }), abierta);
        EXPECT_EQ(confirma(contabilidad), "");
        Unidad unidad(par);
        EXPECT_EQ(error([&] { const Unidad otra(par); }), "Ya hay una unidad abierta.");
        EXPECT_EQ(escribe(gestion), "Dentro de una unidad sólo se escribe en una transacción.");
        EXPECT_EQ(pregunta(gestion), "");
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(escribe(gestion), "");
        EXPECT_EQ(error([&] { unidad.confirma(); }), abierta);
        EXPECT_EQ(error([&] { unidad.deshace_ultima(); }), abierta);
        EXPECT_EQ(confirma(gestion), "");
        unidad.confirma();
    }

    TEST_F(Unidad_test, a_unit_that_is_lost_takes_nothing_more)
    {
        {
            Unidad unidad(par);
            EXPECT_EQ(empieza(gestion), "");
            par->se_pierde(Categoria::otra, "Disco lleno.");
            EXPECT_EQ(deshace(gestion), "");
            EXPECT_EQ(empieza(gestion), "Disco lleno.");
            EXPECT_EQ(escribe(contabilidad), "Disco lleno.");
            EXPECT_EQ(error([&] { unidad.deshace_ultima(); }), "Disco lleno.");
            EXPECT_EQ(error([&] { unidad.confirma(); }), "Disco lleno.");
        }
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "punto")) << "there is nothing to roll back";
        EXPECT_EQ(empieza(gestion), "");
    }

    TEST_F(Unidad_test, a_unit_of_which_one_could_not_be_undone_keeps_nothing)
    {
        constexpr auto sin_deshacer
            = "Una transacción de la unidad no se ha podido deshacer: sólo se puede deshacer la unidad.";
        for (const bool tras_su_fin : { false, true }) {
            {
                Unidad unidad(par);
                EXPECT_EQ(empieza(gestion), "");
                fisica.falla_en = "vuelve";
                if (tras_su_fin) {
                    EXPECT_EQ(confirma(gestion), "");
                    EXPECT_EQ(error([&] { unidad.deshace_ultima(); }), "no queda sitio");
                } else {
                    EXPECT_EQ(deshace(gestion), "no queda sitio");
                }
                EXPECT_EQ(empieza(contabilidad), sin_deshacer);
                EXPECT_EQ(error([&] { unidad.deshace_ultima(); }), sin_deshacer);
                EXPECT_EQ(error([&] { unidad.confirma(); }), sin_deshacer);
                fisica.falla_en.clear();
                fisica.pedido.clear();
            }
            EXPECT_THAT(fisica.pedido, ElementsAre("deshace"));
            EXPECT_EQ(empieza(gestion), "");
            EXPECT_EQ(confirma(gestion), "");
        }
    }

    TEST_F(Unidad_test, a_unit_that_is_lost_while_one_is_undone_stays_lost)
    {
        Unidad unidad(par);
        EXPECT_EQ(empieza(contabilidad), "");
        fisica.falla_en = "vuelve";
        fisica.calla = true;
        fisica.al_fallar = [&] { par->se_pierde(Categoria::otra, "Se cortó la línea."); };
        EXPECT_EQ(deshace(contabilidad), "");
        EXPECT_EQ(empieza(gestion), "Se cortó la línea.");
        EXPECT_EQ(error([&] { unidad.confirma(); }), "Se cortó la línea.");
    }

    TEST_F(Unidad_test, the_end_of_a_unit_that_fails_leaves_it_to_be_undone)
    {
        {
            Unidad unidad(par);
            fisica.falla_en = "confirma";
            EXPECT_EQ(error([&] { unidad.confirma(); }), "no queda sitio");
        }
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "confirma", "deshace"));
        EXPECT_FALSE(par->en_unidad());
    }

}
}
