#include "runtime/Variant.hpp"

#include "tests/runtime/NumeroDeError.hpp"
#include "tests/runtime/Oraculo.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace atipicos {
namespace {

    using pruebas::linea_de_error;
    using pruebas::numero_de_error;

    using LimitesDouble = std::numeric_limits<double>;

    Date fecha(const char* texto) { return Date::de_texto(texto).value(); }
    Variant objeto() { return Variant(std::make_shared<Objeto>()); }

    TEST(Variant, knows_its_kind)
    {
        EXPECT_TRUE(Variant().es_vacio());
        EXPECT_FALSE(Variant().es_nulo());
        EXPECT_TRUE(Variant(Nulo{}).es_nulo());
        EXPECT_FALSE(Variant(Nulo{}).es_vacio());
        EXPECT_TRUE(std::holds_alternative<bool>(Variant(true).valor()));
        EXPECT_TRUE(std::holds_alternative<std::int32_t>(Variant(1).valor()));
        EXPECT_TRUE(std::holds_alternative<double>(Variant(1.0).valor()));
        EXPECT_TRUE(std::holds_alternative<Currency>(Variant(Currency()).valor()));
        EXPECT_TRUE(std::holds_alternative<Date>(Variant(Date()).valor()));
        EXPECT_TRUE(std::holds_alternative<std::string>(Variant("texto").valor())); // and not a boolean
        EXPECT_TRUE(std::holds_alternative<std::string>(Variant(std::string_view("texto")).valor()));
        EXPECT_TRUE(std::holds_alternative<std::string>(Variant(std::string("texto")).valor()));
        EXPECT_TRUE(std::holds_alternative<std::shared_ptr<Objeto>>(objeto().valor()));
        EXPECT_EQ(Variant("a"), Variant(std::string("a")));
        EXPECT_NE(Variant(1), Variant(1.0));
        EXPECT_NE(Variant(), Variant(Nulo{}));
    }

    /// Every conversion, by its name.
    const std::vector<std::pair<const char*, std::function<int(const Variant&)>>> conversiones = {
        { "CBool", [](const Variant& v) { return static_cast<void>(CBool(v)), 0; } },
        { "CInt", [](const Variant& v) { return static_cast<void>(CInt(v)), 0; } },
        { "CLng", [](const Variant& v) { return static_cast<void>(CLng(v)), 0; } },
        { "CDbl", [](const Variant& v) { return static_cast<void>(CDbl(v)), 0; } },
        { "CCur", [](const Variant& v) { return static_cast<void>(CCur(v)), 0; } },
        { "CDate", [](const Variant& v) { return static_cast<void>(CDate(v)), 0; } },
        { "CStr", [](const Variant& v) { return static_cast<void>(CStr(v)), 0; } },
    };

    TEST(Conversions, of_null_are_error_94_and_of_objects_error_13)
    {
        for (const auto& par : conversiones) {
            const auto& nombre = par.first;
            const auto& conversion = par.second;
            EXPECT_EQ(numero_de_error([&] { return conversion(Variant(Nulo{})); }), 94) << nombre;
            EXPECT_EQ(numero_de_error([&] { return conversion(objeto()); }), 13) << nombre;
            EXPECT_EQ(numero_de_error([&] { return conversion(Variant(std::shared_ptr<Objeto>())); }), 13)
                << nombre;
        }
    }

    TEST(Conversions, of_empty_are_zero_false_no_date_and_no_text)
    {
        EXPECT_FALSE(CBool(Variant()));
        EXPECT_EQ(CInt(Variant()), 0);
        EXPECT_EQ(CLng(Variant()), 0);
        EXPECT_EQ(CDbl(Variant()), 0);
        EXPECT_EQ(CCur(Variant()), Currency());
        EXPECT_EQ(CDate(Variant()), Date());
        EXPECT_EQ(CStr(Variant()), "");
    }

    TEST(Conversions, of_texts_that_are_no_such_value_are_error_13)
    {
        for (const auto& par : conversiones) {
            const auto& nombre = par.first;
            const auto& conversion = par.second;
            if (nombre == std::string_view("CStr"))
                continue;
            for (const auto* texto : { "", " ", "siete", "1.5", "12/13/2026", "21/11/26" })
                EXPECT_EQ(numero_de_error([&] { return conversion(Variant(texto)); }), 13)
                    << nombre << " " << texto;
        }
    }

    TEST(Conversions, name_the_line_that_asked)
    {
        EXPECT_EQ(linea_de_error([] { return CBool("x"); }), __LINE__);
        EXPECT_EQ(linea_de_error([] { return CInt(1e9); }), __LINE__);
        EXPECT_EQ(linea_de_error([] { return CLng(1e10); }), __LINE__);
        EXPECT_EQ(linea_de_error([] { return CDbl("x"); }), __LINE__);
        EXPECT_EQ(linea_de_error([] { return CCur(1e20); }), __LINE__);
        EXPECT_EQ(linea_de_error([] { return CDate("x"); }), __LINE__);
        EXPECT_EQ(linea_de_error([] { return CStr(Nulo{}); }), __LINE__);
        EXPECT_EQ(linea_de_error([] { return CStr(HUGE_VAL); }), __LINE__);
        EXPECT_EQ(linea_de_error([] { return Val("1e999"); }), __LINE__);
    }

    TEST(CBool, is_true_for_what_is_not_zero_and_for_the_words)
    {
        for (const Variant& valor : { Variant(true), Variant(1), Variant(-1), Variant(0.001), Variant("1"),
                 Variant("-1,5"), Variant("Verdadero"), Variant("TRUE"), Variant("verdadero"),
                 Variant("True"), Variant(Currency::de_texto("0.0001")), Variant(fecha("21/11/2026")) })
            EXPECT_TRUE(CBool(valor)) << CStr(valor);
        for (const Variant& valor : { Variant(false), Variant(0), Variant(0.0), Variant("0"), Variant("0,00"),
                 Variant("Falso"), Variant("FALSE"), Variant("falso"), Variant(Currency()), Variant(Date()) })
            EXPECT_FALSE(CBool(valor)) << CStr(valor);
    }

    TEST(CLng, rounds_half_away_from_zero_whatever_the_kind)
    {
        const std::pair<Variant, std::int32_t> valores[] = { { 7, 7 }, { 2.5, 3 }, { -2.5, -3 }, { 3.5, 4 },
            { 0.5, 1 }, { -0.5, -1 }, { 2.49, 2 }, { 2.4999999999999996, 3 },
            { Currency::de_texto("2.5"), 3 }, { Currency::de_texto("-2.5"), -3 },
            { Currency::de_texto("2.4999"), 2 }, { "2,5", 3 }, { "-2,5", -3 }, { "1.234,4", 1234 },
            { true, -1 }, { false, 0 }, { fecha("21/11/2026"), 46347 } };
        for (const auto& [valor, esperado] : valores) {
            EXPECT_EQ(CLng(valor), esperado) << CStr(valor);
            if (esperado < 40'000) {
                EXPECT_EQ(CInt(valor), esperado) << CStr(valor);
            }
        }
    }

    TEST(CLng, rounds_a_text_once_on_all_its_decimals)
    {
        EXPECT_EQ(CLng("2,49996"), 2);
        EXPECT_EQ(CLng("1.234,5"), 1235);
        EXPECT_EQ(CDbl("0,12345"), 0.12345);
        EXPECT_EQ(CDbl("+1.000,5"), 1000.5);
        EXPECT_EQ(CDbl(",5"), 0.5);
    }

    TEST(CLng, reaches_its_limits_and_is_error_6_beyond)
    {
        EXPECT_EQ(CInt(32767), 32767);
        EXPECT_EQ(CInt(-32768), -32768);
        EXPECT_EQ(CInt(32767.4), 32767);
        EXPECT_EQ(CLng(2147483647.4), 2147483647);
        EXPECT_EQ(CLng(-2147483648.4), -2147483647 - 1);
        EXPECT_EQ(CLng("2.147.483.647"), 2147483647);
        for (const Variant& valor :
            { Variant(32768), Variant(-32769), Variant(32767.5), Variant(-32768.5), Variant("32768"),
                Variant(Currency::de_texto("32767.5")), Variant(1e300), Variant(LimitesDouble::quiet_NaN()) })
            EXPECT_EQ(numero_de_error([&] { return CInt(valor); }), 6);
        for (const Variant& valor : { Variant(2147483647.5), Variant(-2147483648.5), Variant("2147483648"),
                 Variant(Currency::de_texto("2147483647.5")), Variant(LimitesDouble::infinity()),
                 Variant(-1e20) })
            EXPECT_EQ(numero_de_error([&] { return CLng(valor); }), 6);
    }

    TEST(CLng, of_doubles_agrees_with_the_oracle_or_is_error_6)
    {
        pruebas::Azar azar(12);
        int desbordados = 0;
        for (int i = 0; i < pruebas::casos; ++i) {
            const double valor = azar.dudoso(0);
            const auto exacto = pruebas::unidades_leidas(valor, 0);
            if (abs(exacto) < 2'147'483'648) {
                ASSERT_EQ(CLng(valor), exacto) << std::hexfloat << valor;
            } else if (exacto != -2'147'483'648) {
                ++desbordados;
                ASSERT_EQ(numero_de_error([&] { return CLng(valor); }), 6) << std::hexfloat << valor;
            }
        }
        EXPECT_GT(desbordados, 1'000);
        EXPECT_LT(desbordados, pruebas::casos - 1'000);
    }

    TEST(CDbl, gives_the_value_of_every_kind)
    {
        EXPECT_EQ(CDbl(true), -1.0);
        EXPECT_EQ(CDbl(-7), -7.0);
        EXPECT_EQ(CDbl(0.1), 0.1);
        EXPECT_EQ(CDbl(Currency::de_texto("-1234.5678")), -1234.5678);
        EXPECT_EQ(CDbl(Date::de_automatizacion(-1.25)), -1.25);
        EXPECT_EQ(CDbl("-1.234,5"), -1234.5);
    }

    TEST(CDbl, of_a_text_is_error_6_for_the_too_large_and_0_for_the_too_small)
    {
        const std::string ceros(400, '0');
        for (const auto& texto : { "1" + ceros, "+1" + ceros + ",5", "-1" + ceros })
            EXPECT_EQ(numero_de_error([&] { return CDbl(texto); }), 6) << texto;
        for (const auto& texto : { "0," + ceros + "1", "-," + ceros + "1" })
            EXPECT_EQ(CDbl(texto), 0) << texto;
    }

    TEST(CCur, is_exact_for_amounts_and_texts_and_rounds_doubles)
    {
        EXPECT_EQ(CCur(Currency::de_texto("922337203685477.5807")).texto(), "922337203685477.5807");
        EXPECT_EQ(CCur("922.337.203.685.477,5807").texto(), "922337203685477.5807");
        EXPECT_EQ(CCur(0.00005), Currency::de_texto("0.0001"));
        EXPECT_EQ(CCur(-0.00005), Currency::de_texto("-0.0001"));
        EXPECT_EQ(CCur(std::numeric_limits<std::int32_t>::min()), Currency::de_texto("-2147483648"));
        EXPECT_EQ(CCur(true), Currency::de_texto("-1"));
        EXPECT_EQ(numero_de_error([] { return CCur(1e15); }), 6);
        EXPECT_EQ(numero_de_error([] { return CCur("1000000000000000"); }), 6);
    }

    TEST(CDate, reads_days_and_automation_dates)
    {
        EXPECT_EQ(CDate("21/11/2026"), fecha("21/11/2026"));
        EXPECT_EQ(CDate(fecha("21/11/2026")), fecha("21/11/2026"));
        EXPECT_EQ(CDate(46347), fecha("21/11/2026"));
        EXPECT_EQ(CDate(-1.25).texto_regional(), "29/12/1899 6:00:00");
        EXPECT_EQ(CDate(Currency::de_texto("46347.5")).texto_regional(), "21/11/2026 12:00:00");
        EXPECT_EQ(numero_de_error([] { return CDate(3e6); }), 6);
    }

    TEST(CDate, reads_the_dates_that_the_component_writes_with_their_times)
    {
        for (const auto* texto : { "21/11/2026 9:05:03", "21/11/2026 23:59:59", "01/01/0100 0:00:01",
                 "29/12/1899 6:00:00", "9:05:03", "18:30:59", "0:00:00", "21/11/2026" })
            EXPECT_EQ(CDate(texto).texto_regional(), texto);
        EXPECT_EQ(CDate("09:05:03"), CDate("9:05:03"));
        EXPECT_EQ(CDate("9:05:03").hora_del_dia(), std::chrono::seconds(32'703));
        EXPECT_FALSE(CDate("9:05:03").tiene_dia());
        EXPECT_EQ(CDate("0:00:00"), Date());
        for (const auto* texto :
            { "24:00:00", "9:60:00", "9:05:60", "9:05", "9:5:03", "9:05:3", ":05:03", "-9:05:03", "9:05:03 ",
                " 9:05:03", "9.05.03", "9:05.03", "21/11/2026 ", "21/11/2026  9:05:03", "31/02/2026 9:05:03",
                "21/11/26 9:05:03", "9:05:03 21/11/2026", "x9:05:03", "123:05:03" })
            EXPECT_EQ(numero_de_error([&] { return CDate(texto); }), 13) << texto;
    }

    TEST(CStr, gives_the_regional_text)
    {
        const std::pair<Variant, const char*> textos[] = { { true, "Verdadero" }, { false, "Falso" },
            { -7, "-7" }, { std::numeric_limits<std::int32_t>::min(), "-2147483648" }, { -12.5, "-12,5" },
            { 1234.5, "1234,5" }, { 0.1 + 0.2, "0,3" }, { -0.0, "0" }, { 100.0, "100" },
            { 1e14, "100000000000000" }, { 123456789012345.0, "123456789012345" }, { 0.00001, "0,00001" },
            { -1.5e-7, "-0,00000015" }, { 1e20, "1e+20" }, { 1.0 / 3, "0,333333333333333" },
            { Currency::de_texto("1234.5"), "1234,5" }, { Currency::de_texto("100"), "100" },
            { Currency::de_texto("-0.05"), "-0,05" }, { Currency(), "0" },
            { Currency::de_texto("-922337203685477.5808"), "-922337203685477,5808" },
            { fecha("01/02/2026"), "01/02/2026" },
            { Date::de_automatizacion(46347.75), "21/11/2026 18:00:00" }, { Date(), "0:00:00" },
            { "así, tal cual", "así, tal cual" } };
        for (const auto& [valor, texto] : textos)
            EXPECT_EQ(CStr(valor), texto);
        EXPECT_EQ(numero_de_error([] { return CStr(LimitesDouble::quiet_NaN()); }), 6);
    }

    TEST(CStr, of_an_amount_is_read_back)
    {
        pruebas::Azar azar(13);
        for (int i = 0; i < pruebas::casos; ++i) {
            const auto importe = azar.moneda();
            ASSERT_EQ(CCur(CStr(importe)), importe);
        }
    }

    TEST(Val, reads_the_number_with_which_a_text_begins)
    {
        const std::pair<const char*, double> textos[] = { { "", 0 }, { "abc", 0 }, { "12 abc", 12 },
            { "1,5", 1 }, { "1.5", 1.5 }, { "-1.5x", -1.5 }, { "+7", 7 }, { " 1 2\t3\r\n4", 1234 },
            { "- 5", -5 }, { ".5", 0.5 }, { "5.", 5 }, { "1.2.3", 1.2 }, { "-", 0 }, { "+", 0 }, { ".", 0 },
            { "--5", 0 }, { "+-5", 0 }, { "-+5", 0 }, { "007", 7 }, { "AT260001", 0 }, { "1e3", 1000 },
            { "1E-2", 0.01 }, { "12e", 12 }, { "12 euros", 12 }, { "inf", 0 }, { "-infinito", 0 },
            { "nan", 0 }, { "0x10", 0 }, { "1-2", 1 }, { "€5", 0 } };
        for (const auto& [texto, valor] : textos)
            EXPECT_EQ(Val(texto), valor) << texto;
        EXPECT_FALSE(std::signbit(Val("-0")));
    }

    TEST(Val, is_error_6_for_the_too_large_and_0_for_the_too_small)
    {
        const std::string ceros(400, '0');
        for (const auto& texto :
            { "1" + ceros, "-1" + ceros + ".5", std::string("1e999"), "1" + ceros + "e-2",
                std::string("0.1e+999"), std::string("9e99999999999999999999"), "1" + ceros + "E1",
                "1" + ceros + "e", "1" + ceros + "e+", "1" + ceros + " euros", "1" + ceros + "x" })
            EXPECT_EQ(numero_de_error([&] { return Val(texto); }), 6) << texto;
        for (const auto& texto : { "0." + ceros + "1", "-." + ceros + "1", std::string("1e-999"),
                 "0." + ceros + "1e9", std::string("9e-99999999999999999999"), ceros + "0e999" })
            EXPECT_EQ(Val(texto), 0) << texto;
        EXPECT_EQ(Val("0." + ceros + "1e401"), 1); // neither: the two make up for each other
    }

}
}
