#include "engines/sql/Vigencia.hpp"

#include <gmock/gmock.h>

namespace atipicos::sql {
namespace {

    Vigencia leida()
    {
        Vigencia vigencia;
        vigencia.leido();
        return vigencia;
    }

    TEST(Vigencia, holds_from_when_the_catalogue_was_read_until_a_statement_changes_it)
    {
        EXPECT_FALSE(Vigencia().vale());
        for (const auto* sql : { "CREATE TABLE t (x INT)", "alter TABLE t ADD y INT", "DROP TABLE t",
                 "ATTACH 'f' AS otra", "DETACH otra" }) {
            auto vigencia = leida();
            vigencia.ejecutada("UPDATE t SET x = 1");
            EXPECT_TRUE(vigencia.vale());
            vigencia.ejecutada(sql);
            EXPECT_FALSE(vigencia.vale()) << sql;
        }
    }

    TEST(Vigencia, survives_a_transaction_undone_that_changed_only_rows)
    {
        auto vigencia = leida();
        vigencia.ejecutada("INSERT INTO t VALUES (1)");
        vigencia.deshecha();
        EXPECT_TRUE(vigencia.vale());
    }

    TEST(Vigencia, ends_with_a_transaction_undone_that_changed_the_catalogue_even_if_read_again_in_it)
    {
        auto vigencia = leida();
        vigencia.ejecutada("CREATE TABLE t (x DATE)");
        vigencia.leido();
        vigencia.deshecha();
        EXPECT_FALSE(vigencia.vale());
    }

    TEST(Vigencia, ends_with_a_part_undone_and_with_the_rest_if_the_catalogue_was_changed_before)
    {
        auto vigencia = leida();
        vigencia.ejecutada("DELETE FROM t");
        vigencia.deshecha_en_parte();
        EXPECT_TRUE(vigencia.vale());
        vigencia.ejecutada("CREATE TABLE t (x DATE)");
        vigencia.leido();
        vigencia.deshecha_en_parte();
        EXPECT_FALSE(vigencia.vale());
        vigencia.leido();
        vigencia.deshecha();
        EXPECT_FALSE(vigencia.vale());
    }

    TEST(Vigencia, a_change_that_was_committed_is_there_whatever_is_undone_later)
    {
        auto vigencia = leida();
        vigencia.ejecutada("CREATE TABLE t (x DATE)");
        vigencia.leido();
        vigencia.confirmada();
        vigencia.deshecha();
        EXPECT_TRUE(vigencia.vale());
    }

    TEST(Vigencia, undone_in_part_it_still_ends_with_what_is_undone_later)
    {
        auto vigencia = leida();
        vigencia.deshecha_en_parte();
        EXPECT_TRUE(vigencia.vale()) << "nothing was changed";
        vigencia.ejecutada("CREATE TABLE t (x DATE)");
        vigencia.leido();
        vigencia.deshecha_en_parte();
        EXPECT_FALSE(vigencia.vale()) << "the table may be gone";
        vigencia.leido();
        vigencia.deshecha();
        EXPECT_FALSE(vigencia.vale()) << "or be gone now";
    }

}
}
