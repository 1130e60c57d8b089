#include "engines/sql/Fechas.hpp"

#include <gtest/gtest.h>

namespace atipicos::sql {
namespace {

    std::string iso(const char* regional)
    {
        const auto fecha = lee_fecha_regional(regional);
        return fecha ? texto_iso(*fecha) : "no";
    }

    TEST(Fechas, regional_texts_are_read_as_sql_server_reads_them)
    {
        EXPECT_EQ(iso("21/11/2026"), "2026-11-21");
        EXPECT_EQ(iso("21/11/2026 9:05:03"), "2026-11-21 09:05:03");
        EXPECT_EQ(iso("21/11/2026 23:59"), "2026-11-21 23:59:00");
        EXPECT_EQ(iso("21/11/2026 0:00:00"), "2026-11-21") << "midnight is the day alone";
        EXPECT_EQ(iso("9:05:03"), "1900-01-01 09:05:03");
        EXPECT_EQ(iso("0:00:00"), "1900-01-01");
        EXPECT_EQ(iso(""), "1900-01-01");
        EXPECT_EQ(iso("01/01/1753"), "1753-01-01");
    }

    TEST(Fechas, what_is_no_date_is_refused)
    {
        for (const auto* texto : { "31/02/2026", "1/1/2026", "21/11/26", "2026-11-21", "21/11/2026 24:00:00",
                 "21/11/2026 9:5:3", "21/11/2026x", "21/11/2026 ", "31/12/1752", "AT240001", "24:00", " " })
            EXPECT_EQ(iso(texto), "no") << texto;
    }

    TEST(Fechas, a_number_has_no_digit_too_many_nor_one_from_behind_the_end)
    {
        for (const auto* texto : { "009:05:03", "9:005:03", "9:05:003", "9:05:03.1234", "021/11/2026",
                 "21/011/2026", "21/11/02026", "21/11/2026 009:05:03" })
            EXPECT_EQ(iso(texto), "no") << texto;
        EXPECT_EQ(lee_fecha_regional(std::string_view("9:05:03").substr(0, 6)), std::nullopt);
        EXPECT_EQ(iso("9:05:03.123"), "1900-01-01 09:05:03.123");
    }

    TEST(Fechas, iso_text_comes_back_as_the_same_date_and_sorts_as_time_does)
    {
        Date anterior = *Date::de_dia(1753, 1, 1);
        std::string texto_anterior = texto_iso(anterior);
        for (int i = 0; i < 5'000; ++i) {
            const Date fecha(anterior.instante() + std::chrono::milliseconds(1'234'567'891));
            const auto texto = texto_iso(fecha);
            ASSERT_EQ(lee_iso(texto), fecha) << texto;
            ASSERT_LT(texto_anterior, texto);
            anterior = fecha;
            texto_anterior = texto;
        }
    }

}
}
