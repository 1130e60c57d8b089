#include "runtime/Date.hpp"

#include "tests/runtime/NumeroDeError.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <utility>

namespace atipicos {

void PrintTo(Date fecha, std::ostream* salida) { *salida << fecha.texto_regional(); }

namespace {

    using namespace std::chrono_literals;
    using pruebas::linea_de_error;
    using pruebas::numero_de_error;

    static_assert(std::is_trivially_copyable_v<Date>);
    static_assert(std::is_nothrow_default_constructible_v<Date>);
    static_assert(!std::is_convertible_v<double, Date>);
    static_assert(!std::is_constructible_v<Date, double>);
    static_assert(Date() == Date(Date().instante()));
    static_assert(Date() < Date(Date().instante() + 1ms));

    Date dia(int anio, int mes, int dia_del_mes) { return Date::de_dia(anio, mes, dia_del_mes).value(); }
    Date con_hora(Date fecha, std::chrono::milliseconds hora) { return Date(fecha.instante() + hora); }

    TEST(Date, the_default_value_is_no_date)
    {
        EXPECT_EQ(Date(), dia(1899, 12, 30));
        EXPECT_EQ(Date().automatizacion(), 0);
        EXPECT_FALSE(Date().tiene_dia());
        EXPECT_FALSE(con_hora(Date(), 9h).tiene_dia());
        EXPECT_TRUE(dia(1899, 12, 31).tiene_dia());
        EXPECT_TRUE(con_hora(Date(), -1ms).tiene_dia());
    }

    TEST(Date, only_days_of_the_calendar_exist)
    {
        EXPECT_TRUE(Date::de_dia(2024, 2, 29).has_value());
        EXPECT_TRUE(Date::de_dia(2000, 2, 29).has_value());
        EXPECT_TRUE(Date::de_dia(100, 1, 1).has_value());
        EXPECT_TRUE(Date::de_dia(9999, 12, 31).has_value());
        const int imposibles[][3] = { { 2026, 2, 29 }, { 1900, 2, 29 }, { 2026, 4, 31 }, { 2026, 13, 1 },
            { 2026, 0, 1 }, { 2026, 1, 0 }, { 2026, 1, 32 }, { 99, 12, 31 }, { 10000, 1, 1 }, { 2026, -1, 1 },
            { 2026, 257, 1 }, { 2026, 1, 257 }, { 67562, 1, 1 } };
        for (const auto& [a, m, d] : imposibles)
            EXPECT_FALSE(Date::de_dia(a, m, d).has_value()) << a << "-" << m << "-" << d;
    }

    TEST(Date, typed_days_are_read_strictly_day_first)
    {
        EXPECT_EQ(Date::de_texto("21/11/2026"), dia(2026, 11, 21));
        EXPECT_EQ(Date::de_texto("01/02/2026"), dia(2026, 2, 1));
        EXPECT_EQ(Date::de_texto("29/02/2024"), dia(2024, 2, 29));
        for (const auto* texto : { "", "21/11/26", "1/2/2026", "21-11-2026", "21/11-2026", "2026-11-21",
                 "11/21/2026", "31/04/2026", "29/02/2026", "00/01/2026", "01/00/2026", "01/01/0099",
                 " 1/02/2026", "+1/02/2026", "-1/02/2026", "01/02/-026", "21/11/2026 ", " 21/11/2026",
                 "21/11/2026 9:00:00", "ab/cd/efgh", "__/__/____" })
            EXPECT_FALSE(Date::de_texto(texto).has_value()) << texto;
    }

    TEST(Date, automation_dates_count_days_and_fractions)
    {
        const std::pair<double, Date> fechas[] = {
            { 0.0, Date() },
            { 2.0, dia(1900, 1, 1) },
            { 25569.0, dia(1970, 1, 1) },
            { 46347.0, dia(2026, 11, 21) },
            { 46347.75, con_hora(dia(2026, 11, 21), 18h) },
            { -1.0, dia(1899, 12, 29) },
            { -1.25, con_hora(dia(1899, 12, 29), 6h) }, // the fraction still counts forward
            { 0.5, con_hora(Date(), 12h) },
            { -657434.0, dia(100, 1, 1) },
            { 2958465.0, dia(9999, 12, 31) },
        };
        for (const auto& [dias, fecha] : fechas) {
            EXPECT_EQ(Date::de_automatizacion(dias), fecha) << dias;
            EXPECT_EQ(fecha.automatizacion(), dias);
        }
        EXPECT_EQ(Date::de_automatizacion(-0.25), con_hora(Date(), 6h)); // day 0 has two spellings
        EXPECT_EQ(Date::de_automatizacion(1.99999999999), dia(1900, 1, 1)); // to the nearest millisecond
    }

    TEST(Date, every_millisecond_survives_the_automation_date)
    {
        for (const auto fecha :
            { dia(100, 1, 1), dia(1899, 12, 29), dia(1899, 12, 31), dia(2026, 11, 21), dia(9999, 12, 31) }) {
            for (auto hora = 0ms; hora < 24h; hora += 7919ms) {
                const auto momento = con_hora(fecha, hora);
                ASSERT_EQ(Date::de_automatizacion(momento.automatizacion()), momento);
            }
            const auto ultimo = con_hora(fecha, 24h - 1ms);
            ASSERT_EQ(Date::de_automatizacion(ultimo.automatizacion()), ultimo);
        }
    }

    TEST(Date, beyond_the_calendar_is_error_6)
    {
        using Limites = std::numeric_limits<double>;
        for (const double dias : { 2958466.0, -657435.0, 1e7, -1e7, 1e300, Limites::infinity(),
                 -Limites::infinity(), Limites::quiet_NaN() })
            EXPECT_EQ(numero_de_error([&] { return Date::de_automatizacion(dias); }), 6) << dias;
        EXPECT_EQ(numero_de_error([] { return dia(9999, 12, 31).mas_dias(1); }), 6);
        EXPECT_EQ(numero_de_error([] { return dia(100, 1, 1).mas_dias(-1); }), 6);
        EXPECT_EQ(
            numero_de_error([] { return Date().mas_dias(std::numeric_limits<std::int32_t>::max()); }), 6);
        EXPECT_EQ(
            numero_de_error([] { return Date().mas_dias(std::numeric_limits<std::int32_t>::min()); }), 6);
        constexpr std::int32_t dias_de_65536_anios = 23'936'532; // where a 16-bit year comes round again
        EXPECT_EQ(numero_de_error([] { return dia(2026, 11, 21).mas_dias(dias_de_65536_anios); }), 6);
        EXPECT_EQ(linea_de_error([] { return dia(9999, 12, 31).mas_dias(1); }), __LINE__);
        EXPECT_EQ(linea_de_error([] { return Date::de_automatizacion(1e9); }), __LINE__);
    }

    int dias_del_mes(int anio, int mes)
    {
        if (mes == 2)
            return anio % 4 == 0 && (anio % 100 != 0 || anio % 400 == 0) ? 29 : 28;
        return mes == 4 || mes == 6 || mes == 9 || mes == 11 ? 30 : 31;
    }

    TEST(Date, days_follow_one_another_through_400_years)
    {
        int a = 1800;
        int m = 1;
        int d = 1;
        for (auto fecha = dia(a, m, d); a < 2200; fecha = fecha.mas_dias(1)) {
            ASSERT_EQ(fecha.anio() * 10000 + fecha.mes() * 100 + fecha.dia(), a * 10000 + m * 100 + d);
            ASSERT_EQ(Date::de_dia(a, m, d), fecha);
            if (++d > dias_del_mes(a, m)) {
                d = 1;
                m = m % 12 + 1;
                a += m == 1 ? 1 : 0;
            }
        }
    }

    TEST(Date, the_text_of_a_day_gives_it_back)
    {
        EXPECT_EQ(dia(2026, 2, 1).texto(), "01/02/2026");
        EXPECT_EQ(dia(100, 1, 1).texto(), "01/01/0100");
        EXPECT_EQ(Date().texto(), "30/12/1899");
        EXPECT_EQ(con_hora(dia(2026, 2, 1), 23h + 59min).texto(), "01/02/2026"); // the day alone
        std::string fila = "x\t";
        dia(2026, 11, 21).anexa_texto(fila);
        EXPECT_EQ(fila, "x\t21/11/2026");
        for (auto fecha = dia(100, 1, 1); fecha < dia(9999, 10, 1); fecha = fecha.mas_dias(61))
            ASSERT_EQ(Date::de_texto(fecha.texto()), fecha);
    }

    TEST(Date, regional_text_shows_what_there_is)
    {
        const auto fecha = dia(2026, 11, 21);
        EXPECT_EQ(fecha.texto_regional(), "21/11/2026");
        EXPECT_EQ(con_hora(fecha, 9h + 5min + 3s).texto_regional(), "21/11/2026 9:05:03");
        EXPECT_EQ(con_hora(fecha, 23h + 59min + 59s).texto_regional(), "21/11/2026 23:59:59");
        EXPECT_EQ(con_hora(fecha, 30s).texto_regional(), "21/11/2026 0:00:30");
        EXPECT_EQ(con_hora(Date(), 9h + 5min + 3s).texto_regional(), "9:05:03");
        EXPECT_EQ(Date().texto_regional(), "0:00:00");
        EXPECT_EQ(Date::de_automatizacion(-1.25).texto_regional(), "29/12/1899 6:00:00");
    }

    TEST(Date, parts_with_the_time_of_day_before_and_after_the_base)
    {
        for (const auto fecha : { dia(1850, 3, 4), dia(2026, 3, 4) }) {
            const auto momento = con_hora(fecha, 17h + 1ms);
            EXPECT_EQ(momento.hora_del_dia(), 17h + 1ms);
            EXPECT_EQ(momento.solo_dia(), fecha);
            EXPECT_EQ(momento.mes(), 3);
            EXPECT_EQ(momento.dia(), 4);
            EXPECT_EQ(momento.mas_dias(-4).texto_regional(), momento.mas_dias(-4).texto() + " 17:00:00");
            EXPECT_EQ(momento.mas_dias(28).mas_dias(-28), momento);
            EXPECT_EQ(momento.mas_dias(28).mes(), 4);
        }
    }

}
}
