#include "runtime/Formato.hpp"

#include "tests/runtime/NumeroDeError.hpp"
#include "tests/runtime/Oraculo.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>
#include <utility>

namespace atipicos {
namespace {

    using pruebas::Entero;
    using pruebas::linea_de_error;
    using pruebas::numero_de_error;

    using Limites = std::numeric_limits<double>;
    constexpr auto mayor = Currency::de_crudo(std::numeric_limits<std::int64_t>::max());
    constexpr auto menor = Currency::de_crudo(std::numeric_limits<std::int64_t>::min());

    Currency moneda(const char* texto) { return Currency::de_texto(texto); }

    TEST(Redondear, of_money_takes_ties_away_from_zero_on_both_sides)
    {
        const std::tuple<const char*, int, const char*> redondeos[] = {
            { "1.005", 2, "1.01" },
            { "-1.005", 2, "-1.01" },
            { "1.0049", 2, "1" },
            { "-1.0049", 2, "-1" },
            { "0.125", 2, "0.13" },
            { "-0.125", 2, "-0.13" },
            { "0.5", 0, "1" },
            { "-0.5", 0, "-1" },
            { "0.4999", 0, "0" },
            { "2.5", 0, "3" },
            { "3.5", 0, "4" },
            { "0.0005", 3, "0.001" },
            { "1.2345", 4, "1.2345" },
            { "1.2345", 5, "1.2345" },
            { "1.2345", 99, "1.2345" },
        };
        for (const auto& [valor, decimales, esperado] : redondeos)
            EXPECT_EQ(Redondear(moneda(valor), decimales), moneda(esperado)) << valor << " to " << decimales;
    }

    TEST(Redondear, of_money_agrees_with_the_oracle_or_is_error_6)
    {
        pruebas::Azar azar(6);
        for (int i = 0; i < pruebas::casos; ++i) {
            const auto valor = azar.moneda();
            const int decimales = azar.hasta(4);
            const auto unidad = pruebas::potencia(4 - decimales);
            const Entero exacto = pruebas::redondeada(valor.crudo(), unidad) * unidad;
            ASSERT_TRUE(pruebas::cabe(exacto));
            ASSERT_EQ(Redondear(valor, decimales).crudo(), exacto) << valor.texto() << " to " << decimales;
        }
    }

    TEST(Redondear, of_money_beyond_the_limits_is_error_6)
    {
        for (const int decimales : { 0, 1, 3 }) { // ….5807 goes up to ….581, ….6 and …78
            EXPECT_EQ(numero_de_error([&] { return Redondear(mayor, decimales); }), 6) << decimales;
            EXPECT_EQ(numero_de_error([&] { return Redondear(menor, decimales); }), 6) << decimales;
        }
        EXPECT_EQ(Redondear(mayor, 2).texto(), "922337203685477.5800");
        EXPECT_EQ(Redondear(menor, 2).texto(), "-922337203685477.5800");
        EXPECT_EQ(Redondear(menor, 4), menor);
        EXPECT_EQ(linea_de_error([] { return Redondear(mayor, 0); }), __LINE__);
    }

    TEST(Redondear, decimals_out_of_range_are_error_5)
    {
        EXPECT_EQ(numero_de_error([] { return Redondear(Currency(), -1); }), 5);
        EXPECT_EQ(numero_de_error([] { return Redondear(1.0, -1); }), 5);
        EXPECT_EQ(numero_de_error([] { return Redondear(1.0, 16); }), 5);
        EXPECT_EQ(numero_de_error([] { return texto_pantalla(Currency(), -1); }), 5);
        EXPECT_EQ(numero_de_error([] { return texto_pantalla(Currency(), 16); }), 5);
        EXPECT_EQ(numero_de_error([] { return texto_pantalla(1.0, -1); }), 5);
        EXPECT_EQ(numero_de_error([] { return texto_pantalla(1.0, 16); }), 5);
        EXPECT_EQ(linea_de_error([] { return Redondear(1.0, 16); }), __LINE__);
    }

    TEST(Redondear, of_doubles_decides_on_the_value_a_person_would_read)
    {
        const std::tuple<double, int, double> redondeos[] = {
            { 1.005, 2, 1.01 },
            { -1.005, 2, -1.01 },
            { 2.675, 2, 2.68 },
            { -2.675, 2, -2.68 },
            { -0.125, 2, -0.13 },
            { 3.5349999999999997, 2, 3.54 },
            { -3.5349999999999997, 2, -3.54 },
            { 0.5, 0, 1 },
            { -0.5, 0, -1 },
            { 2.5, 0, 3 },
            { 0.49999, 0, 0 },
            { 1e-300, 15, 0 },
            { 0.1 + 0.2, 15, 0.3 },
            { 1e300, 2, 1e300 },
            { -1e22, 15, -1e22 },
            { 1234567890123.565, 2, 1234567890123.57 },
            { Limites::max(), 15, Limites::max() },
        };
        for (const auto& [valor, decimales, esperado] : redondeos)
            EXPECT_EQ(Redondear(valor, decimales), esperado) << valor << " to " << decimales;
        EXPECT_FALSE(std::signbit(Redondear(-0.001, 2)));
        EXPECT_FALSE(std::signbit(Redondear(-0.0, 2)));
    }

    TEST(Redondear, of_doubles_gives_the_double_nearest_to_the_oracle)
    {
        pruebas::Azar azar(7);
        for (int i = 0; i < pruebas::casos; ++i) {
            const int decimales = azar.hasta(16);
            const double valor = azar.dudoso(azar.hasta(4) == 0 ? azar.hasta(16) : decimales);
            const auto texto
                = pruebas::unidades_leidas(valor, decimales).str() + "e-" + std::to_string(decimales);
            ASSERT_EQ(Redondear(valor, decimales), std::strtod(texto.c_str(), nullptr))
                << std::hexfloat << valor << " to " << decimales;
        }
    }

    TEST(Redondear, money_and_doubles_round_alike)
    {
        pruebas::Azar azar(8);
        for (int i = 0; i < pruebas::casos; ++i) {
            const auto valor = Currency::de_crudo(azar.moneda().crudo() / 100'000); // up to 14 digits
            const int decimales = azar.hasta(5);
            ASSERT_EQ(
                Currency::de_double(Redondear(valor.a_double(), decimales)), Redondear(valor, decimales))
                << valor.texto() << " to " << decimales;
        }
    }

    TEST(Redondear, a_double_that_is_not_finite_is_error_6)
    {
        for (const double valor : { Limites::infinity(), -Limites::infinity(), Limites::quiet_NaN() }) {
            EXPECT_EQ(numero_de_error([&] { return Redondear(valor, 2); }), 6);
            EXPECT_EQ(numero_de_error([&] { return texto_sql(valor); }), 6);
            EXPECT_EQ(numero_de_error([&] { return texto_pantalla(valor, 2); }), 6);
        }
        EXPECT_EQ(numero_de_error([] { return texto_pantalla(1e300, 2); }), 6); // more digits than it shows
    }

    TEST(texto_sql, has_plain_digits_and_a_point)
    {
        const std::pair<double, const char*> textos[] = { { 0, "0" }, { -0.0, "0" }, { -12.5, "-12.5" },
            { 100, "100" }, { 0.1, "0.1" }, { 1e20, "100000000000000000000" }, { 1e-7, "0.0000001" },
            { 1234567.89, "1234567.89" }, { 922337203685477.5, "922337203685477.5" } };
        for (const auto& [valor, texto] : textos)
            EXPECT_EQ(texto_sql(valor), texto);
    }

    TEST(texto_sql, gives_the_value_back_and_never_an_exponent)
    {
        pruebas::Azar azar(9);
        const auto comprueba = [](double valor) {
            const auto texto = texto_sql(valor);
            ASSERT_EQ(std::strtod(texto.c_str(), nullptr), valor) << texto;
            ASSERT_EQ(texto.find_first_not_of("-.0123456789"), std::string::npos) << texto;
        };
        for (int i = 0; i < pruebas::casos; ++i)
            comprueba(azar.dudoso(azar.hasta(10)));
        for (const double valor :
            { Limites::max(), Limites::lowest(), Limites::min(), Limites::denorm_min() })
            comprueba(valor);
    }

    TEST(texto_pantalla, has_points_between_thousands_and_a_comma)
    {
        const std::tuple<const char*, int, const char*> textos[] = {
            { "0", 2, "0,00" },
            { "1234.56", 2, "1.234,56" },
            { "-0.5", 2, "-0,50" },
            { "-0.004", 2, "0,00" },
            { "-0.005", 2, "-0,01" },
            { "999.995", 2, "1.000,00" },
            { "100", 0, "100" },
            { "1000", 0, "1.000" },
            { "-999", 2, "-999,00" },
            { "-1000", 2, "-1.000,00" },
            { "1234567.8901", 4, "1.234.567,8901" },
            { "0.0001", 6, "0,000100" },
            { "-0.4", 0, "0" },
            { "-0.5", 0, "-1" },
        };
        for (const auto& [valor, decimales, texto] : textos) {
            EXPECT_EQ(texto_pantalla(moneda(valor), decimales), texto);
            EXPECT_EQ(texto_pantalla(std::strtod(valor, nullptr), decimales), texto);
        }
        EXPECT_EQ(texto_pantalla(-0.0, 2), "0,00");
        EXPECT_EQ(texto_pantalla(1.005, 2), "1,01");
        EXPECT_EQ(texto_pantalla(menor, 4), "-922.337.203.685.477,5808");
        EXPECT_EQ(texto_pantalla(mayor, 0), "922.337.203.685.478"); // text has room where an amount has not
        EXPECT_EQ(texto_pantalla(menor, 15), "-922.337.203.685.477,580800000000000");
    }

    TEST(texto_pantalla, agrees_with_the_oracle)
    {
        pruebas::Azar azar(10);
        for (int i = 0; i < pruebas::casos; ++i) {
            const int decimales = azar.hasta(8);
            const auto importe = azar.moneda();
            const auto unidades = pruebas::redondeada(importe.crudo() * pruebas::potencia(decimales), 10'000);
            ASSERT_EQ(texto_pantalla(importe, decimales), pruebas::pantalla(unidades, decimales));
            const double valor = azar.dudoso(decimales);
            ASSERT_EQ(texto_pantalla(valor, decimales),
                pruebas::pantalla(pruebas::unidades_leidas(valor, decimales), decimales));
        }
    }

    TEST(anexa_pantalla, appends_the_same_text_to_what_is_there)
    {
        std::string fila = "AT260001\t";
        anexa_pantalla(fila, moneda("1234.5"), 2);
        fila += '\t';
        anexa_pantalla(fila, moneda("-0.001"), 2);
        EXPECT_EQ(fila, "AT260001\t1.234,50\t0,00");
        EXPECT_EQ(linea_de_error([&] { return anexa_pantalla(fila, Currency(), 16), 0; }), __LINE__);
        EXPECT_EQ(fila, "AT260001\t1.234,50\t0,00"); // an error appends nothing
    }

    TEST(lee_pantalla, reads_with_or_without_thousands)
    {
        const std::pair<const char*, const char*> textos[] = {
            { "0,00", "0" },
            { "1.234,56", "1234.56" },
            { "1234,56", "1234.56" },
            { "-0,50", "-0.5" },
            { "+7", "7" },
            { ",5", "0.5" },
            { "5,", "5" },
            { "  12,5  ", "12.5" },
            { "-1.234.567", "-1234567" },
            { "1.234", "1234" },
            { "12.345,00005", "12345.0001" },
            { "-0,00005", "-0.0001" },
            { "-922.337.203.685.477,5808", "-922337203685477.5808" },
        };
        for (const auto& [texto, valor] : textos)
            EXPECT_EQ(lee_pantalla(texto), moneda(valor)) << texto;
    }

    TEST(lee_pantalla, what_is_no_number_is_error_13)
    {
        for (const auto* texto : { "", " ", "-", ",", "uno", "1,2,3", "12.34", "1.2345", "1234.567", ".123",
                 "-.123", "1..234", "1.234.", "1.234.56", "1,234.5", "1,5.000", "1 234", "- 5", "1e3",
                 "1.+23", "1.23,4", "12x", "€" })
            EXPECT_EQ(numero_de_error([&] { return lee_pantalla(texto); }), 13) << texto;
        EXPECT_EQ(linea_de_error([] { return lee_pantalla("x"); }), __LINE__);
    }

    TEST(lee_pantalla, what_does_not_fit_is_error_6)
    {
        EXPECT_EQ(numero_de_error([] { return lee_pantalla("922.337.203.685.477,5808"); }), 6);
        EXPECT_EQ(numero_de_error([] { return lee_pantalla("-922337203685477,58085"); }), 6);
    }

    TEST(lee_pantalla, gives_back_what_was_shown)
    {
        pruebas::Azar azar(11);
        for (int i = 0; i < pruebas::casos; ++i) {
            const auto importe = azar.moneda();
            ASSERT_EQ(lee_pantalla(texto_pantalla(importe, 4)), importe);
        }
    }

}
}
