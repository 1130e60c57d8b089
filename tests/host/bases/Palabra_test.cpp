#include "host/bases/Palabra.hpp"

#include <gmock/gmock.h>

namespace atipicos::bases {
namespace {

    TEST(Palabra, stays_bare_where_a_shell_takes_it_as_it_is)
    {
        for (const auto* texto : { "datos", "/srv/datos_1/x-y.db", "sqlite:a=b" })
            EXPECT_EQ(como_palabra(texto), texto);
    }

    TEST(Palabra, is_quoted_where_a_shell_would_take_it_otherwise)
    {
        EXPECT_EQ(como_palabra("mis datos"), "'mis datos'");
        EXPECT_EQ(como_palabra("a$b;c"), "'a$b;c'");
        EXPECT_EQ(como_palabra("L'Hospitalet"), "'L'\\''Hospitalet'");
        EXPECT_EQ(como_palabra(""), "''");
    }

}
} // namespace atipicos::bases
