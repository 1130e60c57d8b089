#include "host/documento/Parrafo.hpp"

#include "tests/host/MedidorFijo.hpp"

#include <gmock/gmock.h>

#include <random>

namespace atipicos::orvalin {
namespace {

    using testing::ElementsAre;
    using testing::IsEmpty;

    const Letra letra{ "Fija", 2, false }; // one character, one unit

    std::vector<std::string> en_lineas(
        std::string_view texto, Medida ancho, Palabras palabras = Palabras::Partidas)
    {
        return parte_en_lineas(texto, letra, ancho, pruebas::MedidorFijo(), palabras);
    }

    TEST(Parrafo, a_text_that_fits_is_one_line_and_none_is_no_line)
    {
        EXPECT_THAT(en_lineas("diez letra", 10), ElementsAre("diez letra"));
        EXPECT_THAT(en_lineas("", 10), IsEmpty());
        EXPECT_THAT(en_lineas(" \r\n\t\n", 10), IsEmpty());
    }

    TEST(Parrafo, lines_end_at_blanks)
    {
        EXPECT_THAT(en_lineas("uno dos tres cuatro", 8), ElementsAre("uno dos", "tres", "cuatro"));
        EXPECT_THAT(en_lineas("uno dos", 7), ElementsAre("uno dos"));
        EXPECT_THAT(en_lineas("uno dos", 6), ElementsAre("uno", "dos"));
    }

    TEST(Parrafo, accented_letters_count_as_one)
    {
        EXPECT_THAT(en_lineas("ñandú pingüino €", 5), ElementsAre("ñandú", "pingü", "ino €"));
    }

    TEST(Parrafo, a_word_too_wide_is_cut_between_characters)
    {
        EXPECT_THAT(en_lineas("abcdefghij", 4), ElementsAre("abcd", "efgh", "ij"));
        EXPECT_THAT(en_lineas("a bcdefgh ij", 4), ElementsAre("a", "bcde", "fgh", "ij"));
        EXPECT_THAT(en_lineas("ééé", 1), ElementsAre("é", "é", "é"));
        EXPECT_THAT(en_lineas("ab", 0), ElementsAre("a", "b")); // a character that does not fit stands alone
    }

    TEST(Parrafo, a_letter_and_an_accent_of_its_own_stay_together)
    {
        EXPECT_THAT(en_lineas("ae\u0301io", 2), ElementsAre("a", "e\u0301", "io"));
    }

    TEST(Parrafo, whole_words_are_never_cut)
    {
        EXPECT_THAT(en_lineas("-123.456,78 €", 5, Palabras::Enteras), ElementsAre("-123.456,78", "€"));
    }

    TEST(Parrafo, its_own_line_breaks_are_kept_of_any_kind)
    {
        EXPECT_THAT(en_lineas("uno\r\ndos\rtres\ncuatro", 20), ElementsAre("uno", "dos", "tres", "cuatro"));
        EXPECT_THAT(en_lineas("uno\n\ndos\n", 20), ElementsAre("uno", "", "dos"));
        EXPECT_THAT(en_lineas("a\tb\x01"
                              "c",
                        20),
            ElementsAre("a bc"));
    }

    TEST(Parrafo, no_letter_is_lost_and_no_line_is_too_wide)
    {
        std::mt19937 azar(7);
        for (int vez = 0; vez < 2000; ++vez) {
            std::string texto;
            for (auto letras = azar() % 60; letras > 0; --letras)
                texto += azar() % 5 == 0 ? " " : azar() % 4 == 0 ? "ñ" : "x";
            const auto ancho = static_cast<Medida>(1 + azar() % 12);
            std::string unido;
            for (const auto& linea : en_lineas(texto, ancho)) {
                EXPECT_LE(pruebas::MedidorFijo().ancho(linea, letra), ancho) << texto;
                unido += linea;
            }
            std::erase(texto, ' ');
            std::erase(unido, ' ');
            EXPECT_EQ(unido, texto);
        }
    }

}
}
