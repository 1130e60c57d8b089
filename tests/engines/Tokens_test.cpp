#include "engines/sql/Tokens.hpp"

#include <gmock/gmock.h>

#include <string>

namespace atipicos::sql {
namespace {

    std::string clases(std::string_view sql)
    {
        static constexpr std::string_view letras
            = " cwntdo"; // blank, comment, word, name, text, digit, operator
        std::string resultado;
        for (const auto& token : separa(sql))
            resultado += letras[static_cast<std::size_t>(token.clase)];
        return resultado;
    }

    TEST(Tokens, tells_words_names_texts_numbers_and_symbols_apart)
    {
        EXPECT_EQ(clases("SELECT a.[b c], \"d\" FROM t"), "w wono n w w");
        EXPECT_EQ(clases("x='it''s' AND y>=-1.5e-3"), "wot w wood");
        EXPECT_EQ(clases("a -- no 'text'\n/* 'nor' */b"), "w c cw");
    }

    TEST(Tokens, text_that_is_never_closed_runs_to_the_end)
    {
        EXPECT_EQ(clases("a='never"), "wot");
        EXPECT_EQ(clases("a=[never"), "won");
        EXPECT_EQ(clases("/* never"), "c");
    }

    TEST(Tokens, what_lies_behind_the_end_of_the_statement_is_not_looked_at)
    {
        const std::string_view mas = "1e-5";
        EXPECT_EQ(clases(mas.substr(0, 3)), "dwo");
        EXPECT_EQ(clases(mas.substr(0, 2)), "dw");
        EXPECT_EQ(clases(mas.substr(0, 1)), "d");
        EXPECT_EQ(clases(std::string_view("1..5").substr(2, 1)), "o");
    }

    TEST(Tokens, spanish_letters_belong_to_names)
    {
        const auto tokens = separa("Año = 1");
        EXPECT_EQ(tokens.at(0).texto, "Año");
        EXPECT_EQ(tokens.at(0).clase, Clase::palabra);
    }

    TEST(Tokens, the_first_word_stands_behind_blanks_and_comments)
    {
        EXPECT_EQ(primera_palabra(" -- DROP\n/* ALTER */ CREATE TABLE"), "CREATE");
        EXPECT_EQ(primera_palabra("(SELECT 1)"), "");
        EXPECT_EQ(primera_palabra(" -- "), "");
    }

    TEST(Tokens, a_trigger_is_told_from_what_only_names_one)
    {
        EXPECT_TRUE(crea_disparador("CREATE TRIGGER x"));
        EXPECT_TRUE(crea_disparador("create /* a */ temp trigger x"));
        EXPECT_FALSE(crea_disparador("CREATE TABLE trigger"));
        EXPECT_FALSE(crea_disparador("DROP TRIGGER x"));
        EXPECT_FALSE(crea_disparador("CREATE"));
    }

    TEST(Tokens, put_together_they_are_the_statement)
    {
        const std::string sql = "SELECT 1.e5,.5,'a''b'''\t--x";
        std::string junto;
        for (const auto& token : separa(sql))
            junto += token.texto;
        EXPECT_EQ(junto, sql);
    }

}
}
