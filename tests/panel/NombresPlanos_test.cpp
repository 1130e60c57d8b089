#include "host/panel/NombresPlanos.hpp"

#include <gmock/gmock.h>

namespace atipicos::app {
namespace {

    TEST(NombresPlanos, have_neither_capitals_nor_accents)
    {
        EXPECT_EQ(plano("Ñandú Exportaciones, S.L."), "nandu exportaciones, s.l.");
        EXPECT_EQ(plano("ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÑÒÓÔÕÖÙÚÛÜÝ"), "aaaaaaceeeeiiiinooooouuuuy");
        EXPECT_EQ(plano("àáâãäåçèéêëìíîïñòóôõöùúûüýÿ"), "aaaaaaceeeeiiiinooooouuuuyy");
        EXPECT_EQ(plano("n\u0303andu\u0301"), "nandu"); // letters and accents apart
    }

    TEST(NombresPlanos, leave_all_else_as_it_is)
    {
        EXPECT_EQ(plano("Caña×3 — Straße Œuvre 中"), "cana×3 — straße Œuvre 中");
        EXPECT_EQ(plano("\xC3"), "\xC3"); // an end in the middle of a letter
        EXPECT_EQ(plano(""), "");
    }

    TEST(NombresPlanos, are_taken_apart_at_blanks)
    {
        EXPECT_THAT(palabras("  la  graciosa "), testing::ElementsAre("la", "graciosa"));
        EXPECT_THAT(palabras(" "), testing::IsEmpty());
    }

}
}
