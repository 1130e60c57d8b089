#include "engines/sql/Esqueleto.hpp"

#include <gmock/gmock.h>

#include <memory>
#include <string>

namespace atipicos::sql {
namespace {

    /// The skeleton with a letter for each mark, and the literals behind it; "-" when there is none.
    std::string esqueleto_de(std::string_view sql, Numeros numeros = Numeros::con_tipo)
    {
        const auto esqueleto = std::make_unique<Esqueleto>(numeros);
        if (!esqueleto->lee(sql))
            return "-";
        std::string texto;
        for (const char c : esqueleto->texto())
            texto += c > 0 && c <= 8 ? std::string(1, "_TILDTild"[static_cast<int>(c)]) : std::string(1, c);
        for (const auto& literal : esqueleto->literales())
            texto += "|" + std::string(literal.texto);
        return texto;
    }

    TEST(Esqueleto, texts_and_numbers_leave_marks_of_their_class)
    {
        EXPECT_EQ(esqueleto_de("INSERT INTO t (a, b) VALUES (1, 'it''s', 12.50, 3000000000)"),
            "INSERT INTO t (a, b) VALUES (I, T, D, L)|1|'it''s'|12.50|3000000000");
        EXPECT_EQ(esqueleto_de("SELECT * FROM t1 WHERE c2 ='x'AND 1=1"), "-") << "a word right behind a text";
        EXPECT_EQ(esqueleto_de("SELECT * FROM t1 WHERE c2 ='x' AND d=7"),
            "SELECT * FROM t1 WHERE c2 =T AND d=I|'x'|7");
    }

    TEST(Esqueleto, numbers_without_types_leave_one_mark)
    {
        EXPECT_EQ(esqueleto_de("VALUES (1, 12.5, 3000000000)", Numeros::segun_valor),
            "VALUES (I, I, I)|1|12.5|3000000000");
    }

    TEST(Esqueleto, whole_numbers_of_32_bits_are_told_from_longer_ones)
    {
        EXPECT_EQ(esqueleto_de("(2147483647,2147483648)"), "(I,L)|2147483647|2147483648");
        EXPECT_EQ(esqueleto_de("(-2147483648,-2147483649)"), "(i,l)|-2147483648|-2147483649");
        EXPECT_EQ(esqueleto_de("(0000000000000123)"), "(I)|0000000000000123");
    }

    TEST(Esqueleto, a_minus_sign_belongs_to_a_number_where_it_cannot_be_an_operator)
    {
        EXPECT_EQ(esqueleto_de("(-5,-1.5) a=-1 AND b > -2"), "(i,d) a=i AND b > i|-5|-1.5|-1|-2");
        EXPECT_EQ(esqueleto_de("a -5, b- 5, (- 5)"), "a -I, b- I, (- I)|5|5|5");
        EXPECT_EQ(esqueleto_de("BETWEEN -5 AND 'x' -3"), "BETWEEN -I AND T -I|5|'x'|3");
    }

    TEST(Esqueleto, numbers_that_are_not_read_exactly_stay)
    {
        EXPECT_EQ(esqueleto_de("(999999999999999999, 1234567890123456789)"),
            "(L, 1234567890123456789)|999999999999999999");
        EXPECT_EQ(esqueleto_de("(-1234567890123456789, 7)"), "(-1234567890123456789, I)|7");
        EXPECT_EQ(esqueleto_de("(12345678901.2345, 123456789012.3456)", Numeros::segun_valor),
            "(I, 123456789012.3456)|12345678901.2345");
        EXPECT_EQ(esqueleto_de("(1.2345, 1.23456, -1.23456)", Numeros::segun_valor),
            "(I, 1.23456, -1.23456)|1.2345");
        EXPECT_EQ(esqueleto_de("(12345678901234567890.123456789012345678)"),
            "(D)|12345678901234567890.123456789012345678");
        EXPECT_EQ(esqueleto_de("(12345678901234567890.1234567890123456789)"),
            "(12345678901234567890.1234567890123456789)");
    }

    TEST(Esqueleto, names_are_not_looked_into)
    {
        EXPECT_EQ(esqueleto_de("\"a'1\"\"2\" [x 1]]'] t1 5"), "\"a'1\"\"2\" [x 1]]'] t1 I|5");
        EXPECT_EQ(esqueleto_de("año2='ñ'"), "año2=T|'ñ'");
    }

    TEST(Esqueleto, whatever_databases_may_read_otherwise_has_none)
    {
        for (const std::string sql : { "SELECT 1 -- no", "SELECT 1 /* no */", "SELECT 1;", "a = ?", "a = $1",
                 "a = :x", "a = @x", "`a`", "N'x'", "E'x'", "x'00'", "U&'x'", "$t$x$t$", "a::int", "\"a\"'x'",
                 "'x'\"a\"", "'x'y", "1x", "1e5", "1.5e5", "1.", "1..2", "1.2.3", ".5", "0x1f", "1'x'", "'no",
                 "'no''", "\"no", "\"no\"\"", "[no", "a\\b", "a ~ 'x'", "a & 1", "{d '1'}", "a\1b", "1_000",
                 "12345678901234567890e1" })
            EXPECT_EQ(esqueleto_de(sql), "-") << sql;
        EXPECT_EQ(esqueleto_de(std::string("a\0b", 3)), "-");
        EXPECT_EQ(esqueleto_de(std::string("'a\0b'", 5)), "-") << "nor inside a text";
        EXPECT_EQ(esqueleto_de("'a\tb\1\\;?'"), "T|'a\tb\1\\;?'") << "inside a text there is no doubt";
    }

    TEST(Esqueleto, neither_too_many_literals_nor_too_long_a_text)
    {
        std::string sql = "(1";
        for (std::size_t i = 1; i < Esqueleto::maximo_de_literales; ++i)
            sql += ",1";
        EXPECT_NE(esqueleto_de(sql), "-");
        EXPECT_EQ(esqueleto_de(sql + ",1"), "-");
        const std::string largo = "'" + std::string(Esqueleto::maximo_de_texto - 2, 'x') + "'";
        EXPECT_EQ(esqueleto_de(largo), "T|" + largo);
        EXPECT_EQ(esqueleto_de(largo + " "), "-");
    }

    TEST(Esqueleto, reads_one_statement_after_the_other)
    {
        Esqueleto esqueleto(Numeros::segun_valor);
        EXPECT_TRUE(esqueleto.lee("SELECT 'a', 2"));
        EXPECT_FALSE(esqueleto.lee("SELECT 'a'; SELECT 2"));
        EXPECT_TRUE(esqueleto.lee("SELECT 'it''s'"));
        EXPECT_EQ(esqueleto.texto(), "SELECT \1");
        ASSERT_EQ(esqueleto.literales().size(), 1U);
        EXPECT_TRUE(esqueleto.literales()[0].con_dobles);
    }

}
}
