#include "engines/odbc/Cadena.hpp"

#include <gtest/gtest.h>

namespace atipicos::odbc {
namespace {

    TEST(Cadena, is_read_by_names_in_any_case)
    {
        const Cadena cadena("DRIVER={Free;TDS}; server = uno ;;solo;UID=ana");
        EXPECT_EQ(cadena.valor("driver"), "Free;TDS");
        EXPECT_EQ(cadena.valor("Server"), "uno");
        EXPECT_EQ(cadena.valor("UID"), "ana");
        EXPECT_FALSE(cadena.tiene("solo"));
        EXPECT_EQ(cadena.valor("PWD"), "");
    }

    TEST(Cadena, a_value_that_looks_like_a_name_is_none)
    {
        const Cadena cadena("DRIVER={x};APP={PWD=no};UID=PWD");
        EXPECT_FALSE(cadena.tiene("PWD"));
        EXPECT_TRUE(Cadena("pwd =x").tiene("PWD"));
    }

    TEST(Cadena, what_is_put_into_it_is_read_again)
    {
        for (const auto* valor : { "", "llano", "con;punto", "ll}a{ve", "}}", " blancos ", "a=b", "{}" }) {
            Cadena cadena("UID=ana;DATABASE=vieja");
            cadena.pon("database", valor);
            cadena.pon("PWD", valor);
            const Cadena leida(cadena.texto());
            EXPECT_EQ(leida.valor("DATABASE"), valor);
            EXPECT_EQ(leida.valor("PWD"), valor);
            EXPECT_EQ(leida.valor("UID"), "ana");
        }
    }

    TEST(Cadena, a_driver_that_reads_braces_plainly_gets_them_so_and_not_what_would_end_them)
    {
        Cadena cadena("DRIVER=x");
        cadena.pon("PWD", "a;b}c");
        EXPECT_EQ(cadena.texto(), "DRIVER=x;PWD={a;b}}c};");
        EXPECT_TRUE(cadena.admite(Llaves::sencillas));
        EXPECT_EQ(cadena.texto(Llaves::sencillas), "DRIVER=x;PWD={a;b}c};");
        cadena.pon("PWD", "a};b");
        EXPECT_TRUE(cadena.admite(Llaves::dobladas));
        EXPECT_FALSE(cadena.admite(Llaves::sencillas));
    }

    TEST(Cadena, braces_that_are_never_closed_end_with_the_text)
    {
        EXPECT_EQ(Cadena("A={x").valor("A"), "x");
        EXPECT_EQ(Cadena("A={x}}").valor("A"), "x}");
        EXPECT_EQ(Cadena("A={").valor("A"), "");
        EXPECT_EQ(Cadena("").texto(), "");
    }

}
}
