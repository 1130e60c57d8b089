#include "engines/postgresql/Puntos.hpp"

#include <gmock/gmock.h>

#include <string>

namespace atipicos::postgresql {
namespace {

    using testing::ElementsAre;
    using testing::IsEmpty;

    constexpr Orden cambio{ "UPDATE" };
    constexpr Orden consulta{ "SELECT" };

    std::vector<std::string> textos(const std::vector<Orden>& ordenes)
    {
        std::vector<std::string> todos;
        for (const auto& orden : ordenes)
            todos.emplace_back(orden.sql);
        return todos;
    }

    std::vector<std::string> cambia(Puntos& puntos)
    {
        const auto envio = puntos.con(cambio, true);
        EXPECT_STREQ(envio.ordenes[envio.lugar].sql, "UPDATE");
        puntos.lograda(true);
        return textos(envio.ordenes);
    }

    std::vector<std::string> pregunta(Puntos& puntos)
    {
        const auto envio = puntos.con(consulta, false);
        EXPECT_STREQ(envio.ordenes[envio.lugar].sql, "SELECT");
        puntos.lograda(false);
        return textos(envio.ordenes);
    }

    struct PostgresqlPuntos : testing::Test {
        Puntos puntos;
    };

    TEST_F(PostgresqlPuntos, the_beginning_travels_with_the_first_statement_and_a_savepoint_with_each_change)
    {
        EXPECT_FALSE(puntos.empezada());
        EXPECT_THAT(pregunta(puntos), ElementsAre("BEGIN", "SELECT"));
        EXPECT_TRUE(puntos.empezada());
        EXPECT_THAT(cambia(puntos), ElementsAre("UPDATE", "SAVEPOINT s"));
        EXPECT_THAT(cambia(puntos), ElementsAre("UPDATE", "RELEASE s", "SAVEPOINT s"));
        EXPECT_THAT(pregunta(puntos), ElementsAre("SELECT"));
        EXPECT_THAT(textos(puntos.confirmacion()), ElementsAre("COMMIT"));
        puntos.empieza();
        EXPECT_FALSE(puntos.empezada());
        EXPECT_THAT(cambia(puntos), ElementsAre("BEGIN", "UPDATE", "SAVEPOINT s"));
    }

    TEST_F(PostgresqlPuntos, without_statements_there_is_nothing_to_commit)
    {
        EXPECT_THAT(puntos.confirmacion(), IsEmpty());
        puntos.pon();
        puntos.vuelve();
        EXPECT_THAT(puntos.confirmacion(), IsEmpty());
    }

    TEST_F(PostgresqlPuntos, a_failure_goes_back_behind_the_last_change_or_to_before_the_beginning)
    {
        EXPECT_STREQ(puntos.fallida(true), "ROLLBACK");
        EXPECT_FALSE(puntos.empezada());
        pregunta(puntos);
        EXPECT_STREQ(puntos.fallida(true), "ROLLBACK");
        EXPECT_THAT(cambia(puntos), ElementsAre("BEGIN", "UPDATE", "SAVEPOINT s"));
        EXPECT_STREQ(puntos.fallida(true), "ROLLBACK TO s");
        EXPECT_TRUE(puntos.empezada());
        EXPECT_THAT(cambia(puntos), ElementsAre("UPDATE", "RELEASE s", "SAVEPOINT s"));
    }

    TEST_F(
        PostgresqlPuntos, each_transaction_of_a_unit_begins_at_a_savepoint_that_takes_the_place_of_the_last)
    {
        puntos.pon();
        EXPECT_THAT(cambia(puntos), ElementsAre("BEGIN", "SAVEPOINT u", "UPDATE", "SAVEPOINT s"));
        puntos.pon();
        puntos.pon(); // of one in between nothing was said
        EXPECT_THAT(cambia(puntos), ElementsAre("RELEASE u", "SAVEPOINT u", "UPDATE", "SAVEPOINT s"))
            << "the former s is gone with the former u";
        EXPECT_THAT(cambia(puntos), ElementsAre("UPDATE", "RELEASE s", "SAVEPOINT s"));
        EXPECT_THAT(textos(puntos.confirmacion()), ElementsAre("COMMIT"));
        puntos.pon();
        EXPECT_THAT(textos(puntos.confirmacion()), ElementsAre("COMMIT"));
    }

    TEST_F(PostgresqlPuntos, going_back_travels_with_whatever_comes_next)
    {
        puntos.pon();
        cambia(puntos);
        puntos.vuelve();
        EXPECT_THAT(textos(puntos.confirmacion()), ElementsAre("ROLLBACK TO u", "COMMIT"));
        EXPECT_THAT(pregunta(puntos), ElementsAre("ROLLBACK TO u", "SELECT"));
        EXPECT_THAT(pregunta(puntos), ElementsAre("SELECT"));
        puntos.pon();
        cambia(puntos);
        puntos.vuelve();
        puntos.pon(); // stands where it goes back to
        EXPECT_THAT(cambia(puntos), ElementsAre("ROLLBACK TO u", "UPDATE", "SAVEPOINT s"));
        EXPECT_THAT(textos(puntos.confirmacion()), ElementsAre("COMMIT"));
    }

    TEST_F(PostgresqlPuntos, going_back_from_a_transaction_without_statements_leaves_the_last_one)
    {
        puntos.pon();
        cambia(puntos);
        puntos.pon();
        puntos.vuelve();
        EXPECT_THAT(pregunta(puntos), ElementsAre("SELECT"));
        EXPECT_THAT(textos(puntos.confirmacion()), ElementsAre("COMMIT"));
    }

    TEST_F(PostgresqlPuntos, a_failure_in_a_unit_goes_back_to_its_last_change_or_to_the_savepoint)
    {
        puntos.pon();
        EXPECT_STREQ(puntos.fallida(true), "ROLLBACK TO u");
        EXPECT_THAT(cambia(puntos), ElementsAre("UPDATE", "SAVEPOINT s"));
        EXPECT_STREQ(puntos.fallida(true), "ROLLBACK TO s");
        puntos.pon();
        EXPECT_STREQ(puntos.fallida(true), "ROLLBACK TO u") << "the new one";
        EXPECT_THAT(pregunta(puntos), ElementsAre("SELECT"));
    }

    TEST_F(PostgresqlPuntos, when_what_stands_before_was_not_done_either_it_is_still_to_be_done)
    {
        puntos.pon();
        EXPECT_STREQ(puntos.fallida(false), "ROLLBACK");
        EXPECT_THAT(cambia(puntos), ElementsAre("BEGIN", "SAVEPOINT u", "UPDATE", "SAVEPOINT s"));
        puntos.pon();
        EXPECT_STREQ(puntos.fallida(false), "ROLLBACK TO s") << "behind the last change of the one before";
        EXPECT_THAT(pregunta(puntos), ElementsAre("RELEASE u", "SAVEPOINT u", "SELECT"));
        puntos.pon();
        EXPECT_STREQ(puntos.fallida(false), "ROLLBACK TO u");
        EXPECT_THAT(cambia(puntos), ElementsAre("RELEASE u", "SAVEPOINT u", "UPDATE", "SAVEPOINT s"));
        puntos.vuelve();
        EXPECT_STREQ(puntos.fallida(false), "ROLLBACK TO s");
        EXPECT_THAT(pregunta(puntos), ElementsAre("ROLLBACK TO u", "SELECT"));
    }

}
}
