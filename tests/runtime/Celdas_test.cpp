#include "runtime/Celdas.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace atipicos {
namespace {

    TEST(Celdas, a_tab_inside_a_text_becomes_a_blank)
    {
        std::string fila = "1\t";
        anexa_celda(fila, "dos\tpalabras\t");
        EXPECT_EQ(fila, "1\tdos palabras "); // the tabs already in the row stay
    }

    TEST(Celdas, line_breaks_and_accents_stay)
    {
        std::string fila;
        anexa_celda(fila, "una línea\r\notra");
        EXPECT_EQ(fila, "una línea\r\notra");
    }

    TEST(Celdas, an_empty_text_adds_nothing)
    {
        std::string fila = "x\t";
        anexa_celda(fila, "");
        EXPECT_EQ(fila, "x\t");
    }

    TEST(Celdas, a_csv_field_is_quoted_where_it_would_be_read_as_several)
    {
        for (const auto& [texto, campo] :
            { std::pair{ "Palés, 3 \t'x'", "Palés, 3 \t'x'" }, { "a;b", "\"a;b\"" },
                { "de 3\"", "\"de 3\"\"\"" }, { "a\nb", "\"a\nb\"" }, { "a\rb", "\"a\rb\"" } }) {
            std::string linea = "9;";
            anexa_campo_csv(linea, texto);
            EXPECT_EQ(linea, std::string("9;") + campo);
        }
    }

    TEST(Celdas, numbers_are_plain_digits)
    {
        std::string fila;
        anexa_celda(fila, 1234567);
        fila += '\t';
        anexa_celda(fila, std::numeric_limits<std::int32_t>::min());
        fila += '\t';
        anexa_celda(fila, 0);
        EXPECT_EQ(fila, "1234567\t-2147483648\t0");
    }

}
}
