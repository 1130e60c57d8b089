#include "posting/Calendario.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <array>

namespace atipicos {
namespace {

    using pruebas::dia;

    std::int32_t numero_de_error(int d, int m, int a)
    {
        try {
            static_cast<void>(FechaValida(d, m, a));
        } catch (const Error& error) {
            return error.numero();
        }
        return 0;
    }

    TEST(FechaValida, gives_the_day_itself_when_the_month_has_it)
    {
        EXPECT_EQ(FechaValida(21, 11, 2026), dia("21/11/2026"));
        EXPECT_EQ(FechaValida(29, 2, 2028), dia("29/02/2028"));
    }

    TEST(FechaValida, gives_the_last_day_of_a_month_that_is_too_short)
    {
        EXPECT_EQ(FechaValida(31, 4, 2026), dia("30/04/2026"));
        EXPECT_EQ(FechaValida(30, 2, 2026), dia("28/02/2026"));
        EXPECT_EQ(FechaValida(30, 2, 2028), dia("29/02/2028"));
        EXPECT_EQ(FechaValida(31, 2, 2100), dia("28/02/2100")) << "2100 is no leap year";
        EXPECT_EQ(FechaValida(99, 12, 2026), dia("31/12/2026"));
    }

    TEST(FechaValida, is_error_13_when_there_is_no_such_day_at_all)
    {
        EXPECT_EQ(numero_de_error(0, 1, 2026), 13);
        EXPECT_EQ(numero_de_error(-3, 1, 2026), 13);
        EXPECT_EQ(numero_de_error(15, 13, 2026), 13);
    }

    TEST(AjustarDiaPago, leaves_the_date_alone_without_pay_days)
    {
        EXPECT_EQ(AjustarDiaPago(dia("20/03/2026"), 0, 0), dia("20/03/2026"));
        EXPECT_EQ(AjustarDiaPago(dia("20/03/2026"), 5, -5), dia("20/03/2026"));
        EXPECT_EQ(AjustarDiaPago(dia("20/03/2026"), -1, 0), dia("20/03/2026"));
    }

    TEST(AjustarDiaPago, one_pay_day_stays_in_the_month_even_when_it_has_passed)
    {
        EXPECT_EQ(AjustarDiaPago(dia("20/03/2026"), 5, 0), dia("05/03/2026"));
        EXPECT_EQ(AjustarDiaPago(dia("03/03/2026"), 5, 0), dia("05/03/2026"));
    }

    TEST(AjustarDiaPago, pay_day_31_is_the_last_of_february)
    {
        EXPECT_EQ(AjustarDiaPago(dia("10/02/2026"), 31, 0), dia("28/02/2026"));
        EXPECT_EQ(AjustarDiaPago(dia("10/02/2028"), 31, 0), dia("29/02/2028"));
    }

    TEST(AjustarDiaPago, pay_days_10_and_25)
    {
        EXPECT_EQ(AjustarDiaPago(dia("05/06/2026"), 10, 25), dia("10/06/2026"));
        EXPECT_EQ(AjustarDiaPago(dia("10/06/2026"), 10, 25), dia("25/06/2026")) << "on the first: the second";
        EXPECT_EQ(AjustarDiaPago(dia("25/06/2026"), 10, 25), dia("25/06/2026"));
        EXPECT_EQ(AjustarDiaPago(dia("26/06/2026"), 10, 25), dia("10/07/2026"));
        EXPECT_EQ(AjustarDiaPago(dia("26/12/2026"), 10, 25), dia("10/01/2027")) << "over the year's end";
    }

    TEST(AjustarDiaPago, past_the_second_pay_day_every_month_goes_on_to_the_next_one)
    {
        constexpr std::array siguientes{ "07/02/2027", "07/03/2027", "07/04/2027", "07/05/2027", "07/06/2027",
            "07/07/2027", "07/08/2027", "07/09/2027", "07/10/2027", "07/11/2027", "07/12/2027",
            "07/01/2028" };
        for (int mes = 1; mes <= 12; ++mes)
            EXPECT_EQ(AjustarDiaPago(*Date::de_dia(2027, mes, 23), 7, 22),
                dia(siguientes[static_cast<std::size_t>(mes - 1)]))
                << mes;
    }

    TEST(AjustarDiaPago, descending_pay_days_leave_the_dates_between_them_unchanged)
    {
        EXPECT_EQ(AjustarDiaPago(dia("15/06/2026"), 25, 10), dia("15/06/2026"));
        EXPECT_EQ(AjustarDiaPago(dia("05/06/2026"), 25, 10), dia("25/06/2026"));
        EXPECT_EQ(AjustarDiaPago(dia("10/06/2026"), 25, 10), dia("25/06/2026")) << "on the second one";
        EXPECT_EQ(AjustarDiaPago(dia("25/06/2026"), 25, 10), dia("25/07/2026")) << "on the first one";
        EXPECT_EQ(AjustarDiaPago(dia("26/06/2026"), 25, 10), dia("25/07/2026"));
    }

    TEST(AjustarDiaPago, only_a_second_pay_day_fails_past_it_because_there_is_no_day_0)
    {
        EXPECT_EQ(AjustarDiaPago(dia("05/06/2026"), 0, 15), dia("15/06/2026"));
        EXPECT_THROW(static_cast<void>(AjustarDiaPago(dia("16/06/2026"), 0, 15)), Error);
    }

    TEST(AjustarDiaPago, every_day_of_a_common_and_of_a_leap_year_with_pay_days_15_and_30)
    {
        constexpr std::array<std::array<int, 12>, 2> dias{
            { { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 },
                { 31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 } }
        };
        for (const int anio : { 2026, 2028 })
            for (int mes = 1; mes <= 12; ++mes) {
                const int ultimo = dias[anio == 2028 ? 1 : 0][static_cast<std::size_t>(mes - 1)];
                for (int d = 1; d <= ultimo; ++d) {
                    const Date fecha = *Date::de_dia(anio, mes, d);
                    Date esperada;
                    if (d <= 14)
                        esperada = *Date::de_dia(anio, mes, 15);
                    else if (d <= 30)
                        esperada = *Date::de_dia(anio, mes, ultimo < 30 ? ultimo : 30);
                    else
                        esperada = *Date::de_dia(mes == 12 ? anio + 1 : anio, mes == 12 ? 1 : mes + 1, 15);
                    ASSERT_EQ(AjustarDiaPago(fecha, 15, 30), esperada) << fecha.texto();
                }
            }
    }

}
}
