#include "runtime/Currency.hpp"

#include "tests/runtime/NumeroDeError.hpp"
#include "tests/runtime/Oraculo.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <utility>

namespace atipicos {
namespace {

    using pruebas::Entero;
    using pruebas::linea_de_error;
    using pruebas::numero_de_error;

    template <class A, class B>
    concept sumables = requires(A a, B b)
    {
        a + b;
    };

    static_assert(std::is_trivially_copyable_v<Currency>);
    static_assert(sizeof(Currency) == 8);
    static_assert(std::is_nothrow_default_constructible_v<Currency>);
    static_assert(!std::is_constructible_v<Currency, double>); // money never meets a double by accident
    static_assert(!std::is_constructible_v<Currency, int>);
    static_assert(!std::is_convertible_v<Currency, double>);
    static_assert(!std::is_constructible_v<Operando, double>);
    static_assert(sumables<Currency, Currency>);
    static_assert(!sumables<Currency, double>);
    static_assert(!sumables<Currency, int>);
    static_assert(Currency() == Currency::de_crudo(0));
    static_assert(Currency::de_entero(-2).crudo() == -20'000);
    static_assert(
        Currency::de_entero(std::numeric_limits<std::int32_t>::min()).crudo() == -21'474'836'480'000);
    static_assert(Currency::de_crudo(-1) < Currency() && Currency() < Currency::de_crudo(1));

    constexpr auto maximo = Currency::de_crudo(std::numeric_limits<std::int64_t>::max());
    constexpr auto minimo = Currency::de_crudo(std::numeric_limits<std::int64_t>::min());
    constexpr auto diezmilesima = Currency::de_crudo(1);

    TEST(Currency, reads_texts_and_rounds_the_fifth_decimal_half_away_from_zero)
    {
        const std::pair<const char*, std::int64_t> textos[] = {
            { "0", 0 },
            { "-0", 0 },
            { "1", 10'000 },
            { "+1.5", 15'000 },
            { "-1234.5", -12'345'000 },
            { "0.0001", 1 },
            { ".5", 5'000 },
            { "5.", 50'000 },
            { "00012.3400", 123'400 },
            { "0.00005", 1 },
            { "-0.00005", -1 },
            { "0.000049999999999999999999", 0 },
            { "-0.00014999", -1 },
            { "0.00015", 2 },
            { "-2.99995", -30'000 },
            { "922337203685477.5807", std::numeric_limits<std::int64_t>::max() },
            { "922337203685477.58074999", std::numeric_limits<std::int64_t>::max() },
            { "-922337203685477.5808", std::numeric_limits<std::int64_t>::min() },
            { "-922337203685477.58084999", std::numeric_limits<std::int64_t>::min() },
        };
        for (const auto& [texto, crudo] : textos)
            EXPECT_EQ(Currency::de_texto(texto).crudo(), crudo) << texto;
    }

    TEST(Currency, a_text_that_is_no_number_is_error_13)
    {
        for (const auto* texto :
            { "", "-", ".", "1,5", "1.2.3", "1e3", " 1", "1 ", "0x1", "uno", "1-", "--1" })
            EXPECT_EQ(numero_de_error([&] { return Currency::de_texto(texto); }), 13) << texto;
    }

    TEST(Currency, a_text_that_does_not_fit_is_error_6)
    {
        for (const auto* texto : { "922337203685477.5808", "-922337203685477.5809", "922337203685477.58075",
                 "-922337203685477.58085", "1000000000000000", "99999999999999999999999999999999999999999" })
            EXPECT_EQ(numero_de_error([&] { return Currency::de_texto(texto); }), 6) << texto;
    }

    TEST(Currency, shows_always_four_decimals)
    {
        EXPECT_EQ(Currency().texto(), "0.0000");
        EXPECT_EQ(Currency::de_crudo(-1).texto(), "-0.0001");
        EXPECT_EQ(Currency::de_crudo(-12'345'000).texto(), "-1234.5000");
        EXPECT_EQ(maximo.texto(), "922337203685477.5807");
        EXPECT_EQ(minimo.texto(), "-922337203685477.5808");
    }

    TEST(Currency, its_text_and_its_nearest_double_give_it_back)
    {
        pruebas::Azar azar(2);
        for (int i = 0; i < pruebas::casos; ++i) {
            const auto importe = azar.moneda();
            const auto texto = importe.texto();
            ASSERT_EQ(Currency::de_texto(texto), importe);
            ASSERT_EQ(importe.a_double(), std::strtod(texto.c_str(), nullptr)) << texto;
            if (std::abs(importe.crudo()) < 1'000'000'000'000'000) // a double has 15 digits
            {
                ASSERT_EQ(Currency::de_double(importe.a_double()), importe);
            }
        }
    }

    /// The result, or error 6 exactly when the exact one does not fit.
    template <class Operacion>
    testing::AssertionResult es(Operacion operacion, const Entero& exacto, int& desbordados)
    {
        if (!pruebas::cabe(exacto)) {
            ++desbordados;
            const auto numero = numero_de_error(operacion);
            return numero == 6 ? testing::AssertionSuccess()
                               : testing::AssertionFailure() << "error " << numero << " for " << exacto;
        }
        const Currency obtenido = operacion();
        return obtenido.crudo() == exacto
            ? testing::AssertionSuccess()
            : testing::AssertionFailure() << obtenido.crudo() << " for " << exacto;
    }

    TEST(Currency, sums_and_differences_are_exact_or_error_6)
    {
        pruebas::Azar azar(3);
        int desbordados = 0;
        for (int i = 0; i < pruebas::casos; ++i) {
            const auto a = azar.moneda();
            const auto b = azar.moneda();
            ASSERT_TRUE(es([&] { return a + b; }, Entero(a.crudo()) + b.crudo(), desbordados));
            ASSERT_TRUE(es([&] { return a - b; }, Entero(a.crudo()) - b.crudo(), desbordados));
        }
        EXPECT_GT(desbordados, 500); // both answers were seen
        EXPECT_LT(desbordados, pruebas::casos);
    }

    TEST(Currency, products_are_rounded_once_or_error_6)
    {
        pruebas::Azar azar(4);
        int desbordados = 0;
        for (int i = 0; i < pruebas::casos; ++i) {
            const auto a = azar.moneda();
            const auto b = azar.moneda();
            const Entero exacto = pruebas::redondeada(Entero(a.crudo()) * b.crudo(), Currency::escala);
            ASSERT_TRUE(es([&] { return a * b; }, exacto, desbordados)) << a.texto() << " * " << b.texto();
        }
        EXPECT_GT(desbordados, 10'000);
        EXPECT_LT(desbordados, pruebas::casos - 10'000);
    }

    TEST(Currency, a_tie_of_a_product_goes_away_from_zero)
    {
        const auto mitad = Currency::de_texto("0.5");
        EXPECT_EQ(diezmilesima * mitad, diezmilesima);
        EXPECT_EQ(Currency::de_crudo(-1) * mitad, Currency::de_crudo(-1));
        EXPECT_EQ(diezmilesima * Currency::de_texto("0.4999"), Currency());
        EXPECT_EQ(Currency::de_entero(100) * Currency::de_texto("0.21"), Currency::de_entero(21));
    }

    TEST(Currency, doubles_are_read_as_a_person_reads_them)
    {
        pruebas::Azar azar(5);
        int desbordados = 0;
        for (int i = 0; i < pruebas::casos; ++i) {
            const double valor = azar.dudoso(4);
            const auto exacto = pruebas::unidades_leidas(valor, 4);
            ASSERT_TRUE(es([&] { return Currency::de_double(valor); }, exacto, desbordados))
                << std::hexfloat << valor;
        }
        EXPECT_GT(desbordados, 10);
    }

    TEST(Currency, doubles_at_the_limits_fit_or_are_error_6)
    {
        EXPECT_EQ(Currency::de_double(922337203685477.5).texto(), "922337203685477.5000");
        EXPECT_EQ(Currency::de_double(-922337203685477.5).texto(), "-922337203685477.5000");
        using Limites = std::numeric_limits<double>;
        for (const double valor : { 922337203685477.625, -922337203685477.625, 1e15, -1e15, 1e300,
                 Limites::infinity(), -Limites::infinity(), Limites::quiet_NaN() })
            EXPECT_EQ(numero_de_error([&] { return Currency::de_double(valor); }), 6) << valor;
        EXPECT_EQ(Currency::de_double(-0.0), Currency());
        EXPECT_EQ(Currency::de_double(Limites::denorm_min()), Currency());
    }

    TEST(Currency, the_limits_are_reached_and_not_passed)
    {
        EXPECT_EQ((maximo - diezmilesima) + diezmilesima, maximo);
        EXPECT_EQ((minimo + diezmilesima) - diezmilesima, minimo);
        EXPECT_EQ(numero_de_error([] { return maximo + diezmilesima; }), 6);
        EXPECT_EQ(numero_de_error([] { return minimo - diezmilesima; }), 6);
        EXPECT_EQ(numero_de_error([] { return Currency() - minimo; }), 6);
        EXPECT_EQ(numero_de_error([] { return minimo * Currency::de_entero(-1); }), 6);
        EXPECT_EQ(maximo * Currency::de_entero(1), maximo);
    }

    TEST(Currency, an_overflow_leaves_the_operands_as_they_were)
    {
        auto suma = maximo;
        EXPECT_EQ(numero_de_error([&] { return suma += diezmilesima; }), 6);
        EXPECT_EQ(suma, maximo);
        EXPECT_EQ(numero_de_error([&] { return suma -= minimo; }), 6);
        EXPECT_EQ(suma, maximo);
        suma -= diezmilesima;
        suma += diezmilesima;
        EXPECT_EQ(suma, maximo);
    }

    TEST(Currency, an_overflow_names_the_line_of_the_expression)
    {
        auto suma = maximo;
        EXPECT_EQ(linea_de_error([&] { return suma + diezmilesima; }), __LINE__);
        EXPECT_EQ(linea_de_error([&] { return minimo - diezmilesima; }), __LINE__);
        EXPECT_EQ(linea_de_error([&] { return maximo * maximo; }), __LINE__);
        EXPECT_EQ(linea_de_error([&] { return suma += diezmilesima; }), __LINE__);
        EXPECT_EQ(linea_de_error([&] { return suma -= minimo; }), __LINE__);
        EXPECT_EQ(linea_de_error([&] { return Currency::de_texto("x"); }), __LINE__);
        EXPECT_EQ(linea_de_error([&] { return Currency::de_double(1e20); }), __LINE__);
        EXPECT_EQ(linea_de_error([&] { return suma + Operando(diezmilesima, Donde::aqui(7)); }), 7);
    }

}
}
