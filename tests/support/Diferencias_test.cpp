#include "tests/support/Diferencias.hpp"

#include <gtest/gtest.h>

namespace atipicos::pruebas {
namespace {

    const std::string libro = "uno\n  a\n  b\n  c\n\ndos\n  d\n";

    TEST(Diferencias, of_equal_texts_are_none)
    {
        EXPECT_EQ(diferencias(libro, libro), "");
        EXPECT_EQ(diferencias("", ""), "");
    }

    TEST(Diferencias, are_the_lines_that_changed_under_the_title_of_their_block)
    {
        EXPECT_EQ(diferencias(libro, "uno\n  a\n  x\n  c\n\ndos\n  d\n"), "uno\n  -   b\n  +   x\n");
        EXPECT_EQ(diferencias(libro, "uno\n  b\n  c\n\ndos\n  d\n  e\n"), "uno\n  -   a\ndos\n  +   e\n");
        EXPECT_EQ(diferencias("uno\n  a\n  a\n", "uno\n  a\n"), "uno\n  -   a\n") << "how often counts";
        EXPECT_EQ(diferencias("uno\n  a\n  b\n", "uno\n  b\n  a\n"), "uno\n  -   a\n  +   a\n");
    }

    TEST(Diferencias, name_the_blocks_that_one_has_and_the_other_has_not)
    {
        EXPECT_EQ(diferencias(libro, "dos\n  d\n\ntres\n  e\n"), "uno: falta\ntres: sobra\n");
        EXPECT_EQ(diferencias(libro, ""), "uno: falta\ndos: falta\n");
    }

    TEST(Diferencias, are_also_those_of_the_order)
    {
        EXPECT_EQ(
            diferencias("uno\n  a\n\ndos\n  d\n", "dos\n  d\n\nuno\n  a\n"), "El orden:\n  - uno\n  + uno\n");
    }

}
} // namespace atipicos::pruebas
