#include "charges/Impuesto.hpp"

#include "tests/support/Contexto.hpp"

#include <gtest/gtest.h>

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

    TEST(Impuesto, the_tax_type_is_0_when_the_key_is_absent_empty_or_null)
    {
        const pruebas::Contexto contexto;
        EXPECT_EQ(tipo_impuesto_atipicos(), 1);
        for (const Variant& valor : { Variant(), Variant(""), Variant(Nulo{}), Variant("0") }) {
            contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = valor;
            EXPECT_EQ(tipo_impuesto_atipicos(), 0);
        }
        contexto.empresa->parametros["Proveedores_AtipcosImpuesto"] = Variant("siete");
        EXPECT_THROW(static_cast<void>(tipo_impuesto_atipicos()), Error);
    }

}
}
