#include "runtime/Redondeo.hpp"

#include "tests/runtime/Oraculo.hpp"

#include <gtest/gtest.h>

namespace atipicos {
namespace {

    static_assert(redondea_cociente(25, 10) == 3); // ties, away from zero on both sides
    static_assert(redondea_cociente(-25, 10) == -3);
    static_assert(redondea_cociente(24, 10) == 2);
    static_assert(redondea_cociente(-24, 10) == -2);
    static_assert(redondea_cociente(26, 10) == 3);
    static_assert(redondea_cociente(-26, 10) == -3);
    static_assert(redondea_cociente(0, 10) == 0);
    static_assert(redondea_cociente(1, 3) == 0); // an odd divisor has no tie
    static_assert(redondea_cociente(2, 3) == 1);
    static_assert(redondea_cociente(-2, 3) == -1);
    static_assert(redondea_cociente(7, 1) == 7);
    static_assert(
        redondea_cociente<std::int64_t>(std::numeric_limits<std::int64_t>::min(), 10) == -922337203685477581);
    static_assert(
        redondea_cociente(std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max())
        == 1);
    static_assert(potencia_de_10<std::int64_t>(0) == 1);
    static_assert(potencia_de_10<std::int64_t>(18) == 1'000'000'000'000'000'000);
    static_assert(potencia_de_10(36) / potencia_de_10(18) == potencia_de_10(18));

    TEST(Redondeo, agrees_with_arithmetic_without_limits)
    {
        pruebas::Azar azar(1);
        for (int i = 0; i < pruebas::casos; ++i) {
            const auto valor = azar.moneda().crudo();
            const std::int64_t divisor
                = (azar.moneda().crudo() & std::numeric_limits<std::int64_t>::max()) | 1;
            const std::int64_t par = divisor / 2 + 1;
            ASSERT_EQ(redondea_cociente(valor, divisor), pruebas::redondeada(valor, divisor))
                << valor << " / " << divisor;
            ASSERT_EQ(redondea_cociente(valor, par), pruebas::redondeada(valor, par))
                << valor << " / " << par;
        }
    }

}
}
