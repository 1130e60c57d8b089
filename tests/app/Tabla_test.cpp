#include "host/terminal/Tabla.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace atipicos::app {
namespace {

    TEST(Tabla, aligns_letters_whatever_bytes_they_have)
    {
        Tabla tabla({ { "Año" }, { "€", Alineacion::derecha }, { "Fin" } });
        tabla.agrega({ "ñandú", "1,50", "a\tb\r\nc" });
        tabla.agrega({ "x", "1.000,00" });
        std::ostringstream salida;
        tabla.escribe(salida);
        EXPECT_EQ(salida.str(),
            "Año           €  Fin\n"
            "-----  --------  ------\n"
            "ñandú      1,50  a b  c\n"
            "x      1.000,00\n");
    }

    TEST(Tabla, counts_the_places_that_a_terminal_gives)
    {
        EXPECT_EQ(ancho("Año 5 €"), 7U);
        EXPECT_EQ(ancho("An\xCC\x83o"), 3U) << "the tilde comes as a letter of its own";
        EXPECT_EQ(ancho("日本"), 4U);
        EXPECT_EQ(ancho("a\xF1o"), 3U) << "a byte that is no letter takes a place";
        EXPECT_EQ(ancho(""), 0U);
    }

    TEST(Tabla, lets_no_control_character_reach_the_terminal)
    {
        EXPECT_EQ(en_una_linea("a\x1B[31mb\x7F\nñ"), "a [31mb  ñ");
    }

    TEST(Tabla, a_row_that_is_not_kept_is_as_wide_as_those_that_are_or_pushes_its_neighbours)
    {
        Tabla tabla({ { "Uno" }, { "Dos", Alineacion::derecha }, { "Tres" } });
        tabla.agrega({ "largo", "1", "x" });
        EXPECT_EQ(tabla.filas(), 1U);
        std::ostringstream salida;
        tabla.escribe_fila(salida, { "a", "23", "b\nc" });
        tabla.escribe_fila(salida, { "demasiado", "12.345" });
        EXPECT_EQ(salida.str(),
            "a       23  b c\n"
            "demasiado  12.345\n");
        EXPECT_EQ(tabla.filas(), 1U);
    }

    TEST(Tabla, written_in_pieces_it_says_its_titles_once_and_columns_only_grow)
    {
        Tabla tabla({ { "Uno" }, { "Dos", Alineacion::derecha } });
        std::ostringstream salida;
        tabla.agrega({ "a", "1234" });
        tabla.vuelca(salida);
        EXPECT_EQ(tabla.filas(), 0U);
        tabla.agrega({ "largo", "1" });
        tabla.agrega({ "b", "2" });
        tabla.vuelca(salida);
        tabla.agrega({ "c", "3" });
        tabla.vuelca(salida);
        tabla.vuelca(salida);
        EXPECT_EQ(salida.str(),
            "Uno   Dos\n"
            "---  ----\n"
            "a    1234\n"
            "largo     1\n"
            "b         2\n"
            "c         3\n");
    }

    TEST(Tabla, without_rows_shows_its_titles)
    {
        std::ostringstream salida;
        Tabla({ { "Uno" }, { "Dos" } }).escribe(salida);
        EXPECT_EQ(salida.str(), "Uno  Dos\n---  ---\n");
    }

}
}
