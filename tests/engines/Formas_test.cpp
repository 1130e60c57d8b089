#include "engines/sql/Formas.hpp"

#include "platform/adodb/Connection.hpp"
#include "tests/support/EnLiteral.hpp"

#include <gmock/gmock.h>

namespace atipicos::sql {
namespace {

    struct LasFormas : testing::Test {
        Catalogo catalogo;
        Formas<int> formas{ Numeros::segun_valor };

        LasFormas() { catalogo.agrega_fecha("Cargos", "Fecha"); }

        Formas<int>::Una* busca(const std::string& sql)
        {
            m_sql = sql;
            return formas.busca(m_sql, catalogo, Donde::aqui());
        }

        /// The place that the engine has for what it keeps of a statement.
        int& de(const std::string& sql) { return busca(sql)->preparada; }

        std::string texto(const std::string& sql)
        {
            const auto* una = busca(sql);
            return una == nullptr ? "-" : una->forma.texto;
        }

    private:
        std::string m_sql;
    };

    TEST_F(LasFormas, statements_that_differ_in_values_alone_share_one)
    {
        de("INSERT INTO t VALUES (1, 'a', -2)") = 17;
        EXPECT_EQ(de("INSERT INTO t VALUES (250, 'it''s', -3.5)"), 17);
        EXPECT_EQ(de("INSERT INTO t VALUES (1, 'a', 2)"), 0) << "a sign makes another statement";
        EXPECT_EQ(de("INSERT INTO u VALUES (1, 'a', -2)"), 0);
        EXPECT_EQ(formas.cuantas(), 3U);
    }

    TEST_F(LasFormas, the_values_are_those_of_the_statement_last_looked_for)
    {
        static_cast<void>(busca("UPDATE t SET a = 5, b = 'x'"));
        const auto* una = busca("UPDATE t SET a = 7.25, b = 'it''s'");
        ASSERT_EQ(una->forma.valores.size(), 2U);
        EXPECT_EQ(pruebas::en_literal(una->forma, formas.literales()), "UPDATE t SET a = 7.25, b = 'it''s'");
    }

    TEST_F(LasFormas, literals_that_stay_in_the_text_tell_shapes_apart)
    {
        de("SELECT * FROM t WHERE a = 5 AND b LIKE 'x%' LIMIT 3") = 17;
        EXPECT_EQ(de("SELECT * FROM t WHERE a = 6 AND b LIKE 'x%' LIMIT 3"), 17);
        EXPECT_EQ(de("SELECT * FROM t WHERE a = 6 AND b LIKE 'y%' LIMIT 3"), 0);
        EXPECT_EQ(texto("SELECT * FROM t WHERE a = 6 AND b LIKE 'x%' LIMIT 4"),
            "SELECT * FROM t WHERE a = ? AND b LIKE 'x%' LIMIT 4");
        EXPECT_EQ(texto("SELECT * FROM t WHERE a = 1 AND b LIKE 'x%' LIMIT 3"),
            "SELECT * FROM t WHERE a = 1 AND b LIKE 'x%' LIMIT 3");
        EXPECT_EQ(de("SELECT * FROM t WHERE a = 7 AND b LIKE 'x%' LIMIT 3"), 17);
    }

    TEST_F(LasFormas, what_has_none_goes_as_text_each_time)
    {
        for (int vez = 0; vez < 2; ++vez) {
            EXPECT_EQ(texto("PRAGMA user_version = 5"), "-");
            EXPECT_EQ(texto("SELECT 1; SELECT 2"), "-");
        }
    }

    TEST_F(LasFormas, an_error_of_the_rewriting_leaves_nothing_behind)
    {
        EXPECT_THROW(texto("UPDATE Cargos SET Fecha = '31/02/2026'"), adodb::ErrorBaseDatos);
        EXPECT_EQ(formas.cuantas(), 0U);
        EXPECT_EQ(texto("UPDATE Cargos SET Fecha = '28/02/2026'"), "UPDATE Cargos SET Fecha = ?");
    }

    TEST_F(LasFormas, emptied_it_looks_at_the_tables_anew)
    {
        de("UPDATE t SET Fecha = '28/02/2026'") = 17;
        catalogo.agrega_fecha("t", "Fecha");
        EXPECT_FALSE(busca("UPDATE t SET Fecha = '28/02/2026'")->forma.valores[0].es_fecha);
        formas.vacia();
        EXPECT_EQ(de("UPDATE t SET Fecha = '28/02/2026'"), 0);
        EXPECT_TRUE(busca("UPDATE t SET Fecha = '28/02/2026'")->forma.valores[0].es_fecha);
    }

    TEST_F(LasFormas, the_one_that_was_not_used_for_longest_makes_room)
    {
        const auto tabla = [](std::size_t i) { return "DELETE FROM t" + std::to_string(i); };
        for (std::size_t i = 0; i < Formas<int>::maximo; ++i)
            de(tabla(i)) = 17;
        EXPECT_EQ(de(tabla(0)), 17);
        EXPECT_EQ(de("DELETE FROM otra"), 0);
        EXPECT_EQ(formas.cuantas(), Formas<int>::maximo);
        EXPECT_EQ(de(tabla(0)), 17);
        EXPECT_EQ(de(tabla(2)), 17);
        EXPECT_EQ(de(tabla(1)), 0) << "it had to go";
    }

    TEST_F(LasFormas, one_skeleton_does_not_take_the_place_of_all_others)
    {
        de("DELETE FROM t") = 17;
        const auto parecida
            = [](std::size_t i) { return "SELECT * FROM t WHERE a LIKE " + std::to_string(i); };
        for (std::size_t i = 0; i < 2 * Formas<int>::maximo; ++i)
            de(parecida(i)) = 17;
        EXPECT_EQ(formas.cuantas(), Formas<int>::maximo_por_familia + 1);
        EXPECT_EQ(de("DELETE FROM t"), 17);
        EXPECT_EQ(de(parecida(2 * Formas<int>::maximo - 1)), 17);
        EXPECT_EQ(de(parecida(0)), 0);
    }

}
}
