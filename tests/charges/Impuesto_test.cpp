#include "charges/Impuesto.hpp"

#include "tests/support/Contexto.hpp"

#include <gtest/gtest.h>

#include <random>

namespace atipicos {
namespace {

    using pruebas::moneda;

    TEST(Impuesto, amount_of_a_line_is_exact_to_four_decimals_first_then_rounded_to_two)
    {
        EXPECT_EQ(importe_linea(moneda("2.5"), moneda("3")), moneda("7.50"));
        // 0.333 × 0.015 = 0.004995: four decimals give 0.0050, and that rounds to 0.01
        EXPECT_EQ(importe_linea(moneda("0.333"), moneda("0.015")), moneda("0.01"));
        EXPECT_EQ(importe_linea(moneda("-0.333"), moneda("0.015")), moneda("-0.01"));
        EXPECT_EQ(importe_linea(moneda("0"), moneda("12.3456")), Currency());
    }

    TEST(Impuesto, amount_of_a_line_beyond_currency_is_error_6)
    {
        try {
            static_cast<void>(importe_linea(moneda("99999999999"), moneda("99999")));
            FAIL() << "no error was raised";
        } catch (const Error& error) {
            EXPECT_EQ(error.numero(), 6);
            EXPECT_EQ(error.donde().linea(), __LINE__ - 4U);
        }
    }

    TEST(Impuesto, tax_rounds_the_value_a_person_would_read)
    {
        EXPECT_EQ(importe_impuesto(moneda("100"), moneda("7"), 2), moneda("7"));
        EXPECT_EQ(importe_impuesto(moneda("0.50"), moneda("7"), 2), moneda("0.04")); // 0.035
        EXPECT_EQ(importe_impuesto(moneda("-0.50"), moneda("7"), 2), moneda("-0.04"));
        EXPECT_EQ(importe_impuesto(moneda("50.50"), moneda("7"), 2), moneda("3.54")); // 3.535
        EXPECT_EQ(importe_impuesto(moneda("33.33"), moneda("6.5"), 0), moneda("2"));
    }

    TEST(Impuesto, the_tax_of_an_entry_is_exact_and_rounded_once)
    {
        EXPECT_EQ(cuota_impuesto(moneda("100"), moneda("7")), moneda("7"));
        EXPECT_EQ(cuota_impuesto(moneda("0.50"), moneda("7")), moneda("0.04")); // 0.035
        EXPECT_EQ(cuota_impuesto(moneda("-0.50"), moneda("7")), moneda("-0.04"));
        EXPECT_EQ(cuota_impuesto(moneda("33.33"), moneda("6.5")), moneda("2.17")); // 2.16645
        EXPECT_EQ(
            cuota_impuesto(moneda("92827024387.37"), moneda("13.5")), moneda("12531648292.29")); // .29495
        EXPECT_EQ(cuota_impuesto(moneda("-92827024387.37"), moneda("13.5")), moneda("-12531648292.29"));
        EXPECT_EQ(cuota_impuesto(moneda("0.0001"), moneda("0.0001")), Currency());
        EXPECT_EQ(cuota_impuesto(moneda("922337203685477.5"), moneda("100")), moneda("922337203685477.5"));
    }

    TEST(Impuesto, the_tax_of_an_entry_is_the_nearest_cent_to_the_exact_product)
    {
        std::mt19937_64 azar(20261121); // NOLINT: the same amounts in every run
        std::uniform_int_distribution<std::int64_t> importes(-10'000'000'000'000'000, 10'000'000'000'000'000);
        std::uniform_int_distribution<std::int64_t> porcentajes(0, 1'000'000);
        for (int vez = 0; vez < 100'000; ++vez) {
            const auto importe = importes(azar);
            const auto porcentaje = porcentajes(azar);
            const auto cuota
                = cuota_impuesto(Currency::de_crudo(importe), Currency::de_crudo(porcentaje)).crudo();
            ASSERT_EQ(cuota % 100, 0) << "whole cents";
            __extension__ using ancho = __int128;
            const auto error = ancho{ cuota } * 1'000'000 - ancho{ importe } * porcentaje;
            ASSERT_LE(error < 0 ? -error : error, 50'000'000) << "half a cent at most";
        }
    }

    TEST(Impuesto, the_tax_of_an_entry_beyond_currency_is_error_6)
    {
        for (const auto* importe : { "922337203685477.5807", "-922337203685477.5808" })
            try {
                static_cast<void>(cuota_impuesto(moneda(importe), moneda("100.01")));
                FAIL() << "no error was raised";
            } catch (const Error& error) {
                EXPECT_EQ(error.numero(), 6);
                EXPECT_EQ(error.donde().linea(), __LINE__ - 4U);
            }
    }

    TEST(Impuesto, the_tax_type_is_0_when_the_key_is_empty_and_nothing_is_made_of_a_null)
    {
        const pruebas::Contexto contexto;
        EXPECT_EQ(tipo_impuesto_atipicos(), 1);
        const auto pon = [&](Variant valor) {
            contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = std::move(valor);
        };
        for (const Variant& valor : { Variant(), Variant(""), Variant("0"), Variant(0) }) {
            pon(valor);
            EXPECT_EQ(tipo_impuesto_atipicos(), 0);
        }
        pon("27");
        EXPECT_EQ(tipo_impuesto_atipicos(), 27);
        const std::pair<Variant, int> malos[]{ { Nulo{}, 94 }, { "siete", 13 }, { " ", 13 }, { 40000, 6 } };
        for (const auto& [valor, numero] : malos) {
            pon(valor);
            try {
                static_cast<void>(tipo_impuesto_atipicos());
                ADD_FAILURE() << "no error " << numero;
            } catch (const Error& error) {
                EXPECT_EQ(error.numero(), numero);
                EXPECT_EQ(error.donde().linea(), __LINE__ - 4U);
            }
        }
    }

}
}
