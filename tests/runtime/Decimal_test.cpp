#include "runtime/Decimal.hpp"

#include "tests/runtime/NumeroDeError.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace atipicos {
namespace {

    std::int64_t unidades(std::string_view texto, int decimales)
    {
        return static_cast<std::int64_t>(*en_unidades(*lee_decimal(texto, '.'), decimales));
    }

    TEST(Decimal, reads_sign_digits_and_decimals)
    {
        EXPECT_EQ(unidades("12.34", 2), 1234);
        EXPECT_EQ(unidades("-12.34", 4), -123400);
        EXPECT_EQ(unidades("+7", 0), 7);
        EXPECT_EQ(unidades(".5", 1), 5);
        EXPECT_EQ(unidades("5.", 1), 50);
        EXPECT_EQ(unidades("000.0", 3), 0);
    }

    TEST(Decimal, refuses_what_is_no_number)
    {
        for (const auto* texto :
            { "", "-", "+", ".", "-.", "1.2.3", "1,2", "--1", "1-", " 1", "1 ", "1e3", "x" })
            EXPECT_FALSE(lee_decimal(texto, '.').has_value()) << texto;
        EXPECT_FALSE(lee_decimal("1.5", ',').has_value());
        EXPECT_TRUE(lee_decimal("1,5", ',').has_value());
    }

    TEST(Decimal, rounds_once_however_many_digits_follow)
    {
        const std::string nueves(60, '9');
        const std::string ceros(60, '0');
        EXPECT_EQ(unidades("0.4" + nueves, 0), 0);
        EXPECT_EQ(unidades("0.5" + ceros, 0), 1);
        EXPECT_EQ(unidades("-0.5" + ceros, 0), -1);
        EXPECT_EQ(unidades("-0.4" + nueves, 0), 0);
        EXPECT_EQ(unidades(ceros + "1.49", 0), 1);
        EXPECT_EQ(unidades("0." + ceros + "5", 2), 0);
        EXPECT_EQ(unidades("0." + ceros + "5", 61), 1 * 5); // still there when asked for
    }

    TEST(Decimal, a_number_beyond_37_digits_has_no_units)
    {
        EXPECT_FALSE(en_unidades(*lee_decimal("1" + std::string(37, '0'), '.'), 0).has_value());
        EXPECT_FALSE(en_unidades({ 1, 300 }, 0).has_value());
        EXPECT_FALSE(en_unidades({ -1, 300 }, 0).has_value());
        EXPECT_TRUE(en_unidades({ 0, 300 }, 0) == entero_ancho{ 0 });
        EXPECT_TRUE(en_unidades({ 1, 36 }, 0) == potencia_de_10(36));
        EXPECT_TRUE(en_unidades({ 1, -300 }, 0) == entero_ancho{ 0 });
    }

    TEST(Decimal, reads_15_digits_where_they_reach_and_the_shortest_text_where_not)
    {
        const auto restos = decimal_leido(3.5349999999999997, 2, {}); // 3.535 to a person
        EXPECT_EQ(static_cast<std::int64_t>(*en_unidades(restos, 3)), 3535);
        const auto grande = decimal_leido(1234567890123.565, 2, {}); // 15 digits end at the second decimal
        EXPECT_EQ(static_cast<std::int64_t>(*en_unidades(grande, 3)), 1234567890123565);
        EXPECT_EQ(static_cast<std::int64_t>(*en_unidades(decimal_leido(-0.0, 2, {}), 2)), 0);
    }

    TEST(Decimal, a_value_that_is_not_finite_is_error_6)
    {
        using Limites = std::numeric_limits<double>;
        for (const double valor : { Limites::infinity(), -Limites::infinity(), Limites::quiet_NaN() })
            EXPECT_EQ(pruebas::numero_de_error([&] { return decimal_leido(valor, 2, {}).exponente; }), 6);
    }

}
}
