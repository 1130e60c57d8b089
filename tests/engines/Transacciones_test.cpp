#include "engines/sql/Transacciones.hpp"

#include "engines/sql/Unidad.hpp"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

namespace atipicos::sql {
namespace {

    using adodb::Categoria;
    using testing::ElementsAre;
    using testing::IsEmpty;

    constexpr auto gestion = Lado::gestion;
    constexpr auto contabilidad = Lado::contabilidad;

    /// Writes down what the session is asked for, and fails where it is told to.
    class FisicaDePrueba final : public TransaccionFisica {
    public:
        void empieza(Donde donde) override { hace("empieza", donde); }
        void confirma(Donde donde) override { hace("confirma", donde); }
        void deshace(Donde donde) override { hace("deshace", donde); }
        void pon_punto(Donde donde) override { hace("punto", donde); }
        void vuelve_al_punto(Donde donde) override { hace("vuelve", donde); }

        std::vector<std::string> pedido;
        std::string falla_en;
        std::function<void()> al_fallar;

    private:
        void hace(const std::string& que, Donde donde)
        {
            pedido.push_back(que);
            if (que != falla_en)
                return;
            if (al_fallar)
                al_fallar();
            throw adodb::ErrorBaseDatos(Categoria::otra, "Prueba", "no queda sitio", que, donde);
        }
    };

    class Transacciones_test : public testing::Test {
    protected:
        template <class Accion> std::string error(Accion accion)
        {
            try {
                accion();
                return {};
            } catch (const adodb::ErrorBaseDatos& error) {
                m_categoria = error.categoria();
                EXPECT_EQ(error.fuente(), error.descripcion() == "no queda sitio" ? "Prueba" : "Motor");
                return error.descripcion();
            }
        }
        std::string empieza(Lado lado)
        {
            return error([&] { par->empieza(lado, {}); });
        }
        std::string confirma(Lado lado)
        {
            return error([&] { par->confirma(lado, {}); });
        }
        std::string deshace(Lado lado)
        {
            return error([&] { par->deshace(lado, {}); });
        }
        std::string escribe(Lado lado)
        {
            return error([&] { par->admite(lado, "UPDATE t", true, {}); });
        }
        std::string pregunta(Lado lado)
        {
            return error([&] { par->admite(lado, "SELECT 1", false, {}); });
        }

        FisicaDePrueba fisica;
        std::shared_ptr<Transacciones> par = std::make_shared<Transacciones>(fisica, "Motor");
        Categoria m_categoria{};

        static constexpr auto ya_abierta = "Ya hay una transacción abierta en esta conexión.";
        static constexpr auto ninguna = "No hay ninguna transacción abierta en esta conexión.";
        static constexpr auto la_otra
            = "La otra conexión ha deshecho la transacción de las dos: sólo se puede "
              "deshacer.";
        static constexpr auto sin_empezar
            = "La otra conexión tiene una transacción abierta y esta no: antes de escribir, empiécela.";
    };

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

    TEST_F(Transacciones_test, a_unit_commits_all_its_transactions_at_its_end)
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

    TEST_F(Transacciones_test, in_a_unit_one_is_undone_alone_before_and_after_its_commit)
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

    TEST_F(Transacciones_test, a_unit_that_is_not_ended_is_undone)
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

    TEST_F(Transacciones_test, a_unit_neither_begins_nor_ends_in_the_middle_of_a_transaction)
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

    TEST_F(Transacciones_test, a_unit_that_is_lost_takes_nothing_more)
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

    TEST_F(Transacciones_test, a_unit_of_which_one_could_not_be_undone_keeps_nothing)
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

    TEST_F(Transacciones_test, the_end_of_a_unit_that_fails_leaves_it_to_be_undone)
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
