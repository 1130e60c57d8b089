#include "tests/engines/ConTransacciones.hpp"

namespace atipicos::sql {
namespace {

    using adodb::Categoria;
    using testing::ElementsAre;

    class Transacciones_test : public ConTransacciones { };

    TEST_F(Transacciones_test, the_second_begin_joins_and_the_last_commit_commits)
    {
        for (const auto& [primero, segundo] :
            { std::pair{ gestion, contabilidad }, { contabilidad, gestion } }) {
            fisica.pedido.clear();
            EXPECT_EQ(empieza(primero), "");
            EXPECT_EQ(empieza(segundo), "");
            EXPECT_THAT(fisica.pedido, ElementsAre("empieza"));
            EXPECT_EQ(confirma(gestion), "");
            EXPECT_THAT(fisica.pedido, ElementsAre("empieza")) << "only promised";
            EXPECT_FALSE(par->en_transaccion(gestion));
            EXPECT_TRUE(par->abierta());
            EXPECT_EQ(confirma(contabilidad), "");
            EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "confirma"));
            EXPECT_FALSE(par->abierta());
        }
    }

    TEST_F(Transacciones_test, one_side_alone_commits_and_rolls_back_at_once)
    {
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(confirma(contabilidad), "");
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(deshace(gestion), "");
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "confirma", "empieza", "deshace"));
    }

    TEST_F(Transacciones_test, beginning_twice_and_ending_what_was_not_begun_is_refused)
    {
        EXPECT_EQ(confirma(gestion), ninguna);
        EXPECT_EQ(deshace(gestion), ninguna);
        EXPECT_EQ(m_categoria, Categoria::instruccion);
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(confirma(contabilidad), ninguna) << "of the other's it has no part";
        EXPECT_EQ(deshace(contabilidad), ninguna);
        EXPECT_EQ(empieza(gestion), ya_abierta);
        EXPECT_EQ(confirma(gestion), "");
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "confirma"));
    }

    TEST_F(Transacciones_test, a_begin_that_fails_has_begun_nothing)
    {
        fisica.falla_en = "empieza";
        EXPECT_EQ(empieza(gestion), "no queda sitio");
        EXPECT_FALSE(par->en_transaccion(gestion));
        EXPECT_EQ(deshace(gestion), ninguna);
        fisica.falla_en.clear();
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(confirma(gestion), "");
    }

    TEST_F(Transacciones_test, rolling_back_one_loses_the_other_until_it_rolls_back_too)
    {
        for (const auto& [una, otra] : { std::pair{ gestion, contabilidad }, { contabilidad, gestion } }) {
            fisica.pedido.clear();
            EXPECT_EQ(empieza(una), "");
            EXPECT_EQ(empieza(otra), "");
            EXPECT_EQ(deshace(una), "");
            EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "deshace"));
            EXPECT_TRUE(par->en_transaccion(otra));
            EXPECT_EQ(pregunta(otra), la_otra);
            EXPECT_EQ(escribe(otra), la_otra);
            EXPECT_EQ(confirma(otra), la_otra);
            EXPECT_EQ(empieza(otra), ya_abierta);
            EXPECT_EQ(m_categoria, Categoria::instruccion);
            EXPECT_EQ(escribe(una), "") << "the one that has rolled back is as new";
            EXPECT_EQ(deshace(otra), "");
            EXPECT_EQ(deshace(otra), ninguna);
            EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "deshace"));
        }
    }

    TEST_F(Transacciones_test, rolling_back_after_a_promised_commit_undoes_both)
    {
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(confirma(gestion), "");
        EXPECT_EQ(confirma(gestion), ninguna);
        EXPECT_EQ(empieza(gestion),
            "La transacción anterior de esta conexión espera a que la otra termine la suya.");
        EXPECT_EQ(pregunta(gestion), "");
        EXPECT_EQ(escribe(gestion), sin_empezar);
        EXPECT_EQ(deshace(gestion), "");
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "deshace"));
        EXPECT_EQ(confirma(contabilidad), la_otra);
        EXPECT_EQ(deshace(contabilidad), "");
    }

    TEST_F(Transacciones_test, when_the_other_rolls_back_a_promised_commit_is_undone_and_may_be_rolled_back)
    {
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(confirma(gestion), "");
        EXPECT_EQ(deshace(contabilidad), "");
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "deshace"));
        EXPECT_EQ(escribe(gestion), "");
        EXPECT_EQ(deshace(gestion), "") << "its owner may not have trusted the promise";
        EXPECT_EQ(deshace(gestion), ninguna);
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(confirma(gestion), "");
    }

    TEST_F(Transacciones_test, a_promise_that_the_other_has_undone_keeps_nobody_from_beginning_again)
    {
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(confirma(contabilidad), "");
        EXPECT_EQ(deshace(gestion), "");
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(confirma(contabilidad), "");
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "deshace", "empieza", "confirma"));
    }

    TEST_F(Transacciones_test, who_has_not_begun_may_ask_but_not_write_while_the_other_is_in)
    {
        EXPECT_EQ(escribe(contabilidad), "");
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(pregunta(contabilidad), "");
        EXPECT_EQ(escribe(contabilidad), sin_empezar);
        EXPECT_EQ(escribe(gestion), "");
        EXPECT_EQ(confirma(gestion), "");
        EXPECT_EQ(escribe(contabilidad), "");
    }

    TEST_F(Transacciones_test, a_commit_that_fails_is_raised_to_the_last_side_and_can_be_undone_from_both)
    {
        for (const auto quien : { gestion, contabilidad }) {
            fisica.pedido.clear();
            EXPECT_EQ(empieza(gestion), "");
            EXPECT_EQ(empieza(contabilidad), "");
            EXPECT_EQ(confirma(gestion), "");
            fisica.falla_en = "confirma";
            EXPECT_EQ(confirma(contabilidad), "no queda sitio");
            fisica.falla_en.clear();
            EXPECT_TRUE(par->en_transaccion(contabilidad));
            EXPECT_EQ(deshace(quien), "");
            EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "confirma", "deshace"));
            EXPECT_EQ(deshace(quien == gestion ? contabilidad : gestion), "");
            EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "confirma", "deshace"));
        }
    }

    TEST_F(Transacciones_test, a_commit_that_fails_may_be_tried_again)
    {
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(confirma(gestion), "");
        fisica.falla_en = "confirma";
        EXPECT_EQ(confirma(contabilidad), "no queda sitio");
        fisica.falla_en.clear();
        EXPECT_EQ(confirma(contabilidad), "");
        EXPECT_FALSE(par->abierta());
        EXPECT_EQ(deshace(gestion), ninguna);
    }

    TEST_F(Transacciones_test, a_transaction_lost_by_the_session_is_lost_to_both)
    {
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(empieza(contabilidad), "");
        par->se_pierde(Categoria::conexion, "Se fue la línea.");
        for (const auto lado : { gestion, contabilidad }) {
            EXPECT_EQ(pregunta(lado), "Se fue la línea.");
            EXPECT_EQ(m_categoria, Categoria::conexion);
            EXPECT_EQ(confirma(lado), "Se fue la línea.");
        }
        EXPECT_EQ(deshace(gestion), "");
        EXPECT_EQ(pregunta(gestion), "");
        EXPECT_EQ(pregunta(contabilidad), "Se fue la línea.");
        EXPECT_EQ(deshace(contabilidad), "");
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza"));
    }

    TEST_F(Transacciones_test, one_lost_in_its_commit_leaves_the_promised_side_free)
    {
        fisica.falla_en = "confirma";
        fisica.al_fallar = [&] { par->se_pierde(Categoria::otra, "Se perdió."); };
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(empieza(contabilidad), "");
        EXPECT_EQ(confirma(gestion), "");
        EXPECT_EQ(confirma(contabilidad), "no queda sitio");
        EXPECT_EQ(pregunta(contabilidad), "Se perdió.");
        EXPECT_EQ(escribe(gestion), "");
        EXPECT_EQ(deshace(contabilidad), "");
        EXPECT_EQ(deshace(gestion), "");
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "confirma"));
    }

    TEST_F(Transacciones_test, who_is_dropped_undoes_what_he_was_in)
    {
        par->abandona(gestion);
        EXPECT_EQ(empieza(gestion), "");
        EXPECT_EQ(empieza(contabilidad), "");
        par->abandona(gestion);
        EXPECT_THAT(fisica.pedido, ElementsAre("empieza", "deshace"));
        EXPECT_EQ(pregunta(contabilidad), la_otra);
        par->abandona(contabilidad);
        fisica.falla_en = "deshace";
        EXPECT_EQ(empieza(contabilidad), "");
        par->abandona(contabilidad);
        EXPECT_FALSE(par->en_transaccion(contabilidad));
    }

    TEST_F(Transacciones_test, nothing_is_lost_where_nothing_was_begun)
    {
        par->se_pierde(Categoria::otra, "Se perdió.");
        EXPECT_EQ(escribe(gestion), "");
        EXPECT_EQ(empieza(gestion), "");
    }

}
}
