#include "host/resumen/Porcentaje.hpp"

#include "tests/support/Contexto.hpp"

#include <gtest/gtest.h>

namespace atipicos::app {
namespace {

    using pruebas::moneda;

    std::string tanto(const char* parte, const char* todo)
    {
        const auto valor = porcentaje(moneda(parte), moneda(todo));
        return valor ? valor->texto() : "nothing";
    }

    TEST(Porcentaje, is_rounded_once_at_the_fourth_decimal)
    {
        EXPECT_EQ(tanto("1", "3"), "33.3333");
        EXPECT_EQ(tanto("2", "3"), "66.6667");
        EXPECT_EQ(tanto("-2", "3"), "-66.6667");
        EXPECT_EQ(tanto("2", "-3"), "66.6667"); // of its size
        EXPECT_EQ(tanto("0.0001", "200"), "0.0001"); // half away from zero
        EXPECT_EQ(tanto("0.0001", "200.0001"), "0.0000");
        EXPECT_EQ(tanto("7", "0"), "nothing");
        EXPECT_EQ(tanto("922337203685477", "0.0001"), "nothing");
    }

    std::string parte_de(const char* parte, const char* todo)
    {
        return texto_parte(moneda(parte), moneda(todo));
    }

    TEST(Porcentaje, a_share_is_told_no_better_than_it_is)
    {
        EXPECT_EQ(parte_de("1", "8"), "12,5 %");
        EXPECT_EQ(parte_de("0.25", "200"), "0,1 %"); // 0.125
        EXPECT_EQ(parte_de("0.1", "200"), "0,1 %"); // 0.05, half away from zero
        EXPECT_EQ(parte_de("0.0999", "200"), "<0,1 %");
        EXPECT_EQ(parte_de("-0.0999", "200"), ">-0,1 %");
        EXPECT_EQ(parte_de("0", "200"), "0,0 %");
        EXPECT_EQ(parte_de("200", "200"), "100,0 %");
        EXPECT_EQ(parte_de("199.9999", "200"), ">99,9 %");
        EXPECT_EQ(parte_de("199.9", "200"), ">99,9 %"); // 99.95 would be 100,0
        EXPECT_EQ(parte_de("199.8", "200"), "99,9 %");
        EXPECT_EQ(parte_de("1", "0"), "–");
    }

    std::string cambio_de(const char* antes, const char* ahora)
    {
        return texto_cambio(moneda(antes), moneda(ahora));
    }

    TEST(Porcentaje, a_change_has_its_sign)
    {
        EXPECT_EQ(cambio_de("80", "100"), "+25,0 %");
        EXPECT_EQ(cambio_de("100", "80"), "-20,0 %");
        EXPECT_EQ(cambio_de("80", "80"), "0,0 %");
        EXPECT_EQ(cambio_de("1000", "1000.01"), "<0,1 %");
        EXPECT_EQ(cambio_de("1000", "999.99"), ">-0,1 %");
        EXPECT_EQ(cambio_de("-100", "50"), "+150,0 %"); // paid back then, claimed now: more
        EXPECT_EQ(cambio_de("-100", "-150"), "-50,0 %");
        EXPECT_EQ(cambio_de("1", "1235.5"), "+123.450,0 %");
        EXPECT_EQ(cambio_de("0", "5"), "–");
        EXPECT_EQ(cambio_de("0.0001", "922337203685477"), "–");
    }

}
}
