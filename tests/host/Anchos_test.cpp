#include "host/sql/Anchos.hpp"

#include "host/sql/Guiones.hpp"
#include "runtime/Error.hpp"

#include <gtest/gtest.h>

namespace atipicos::sql {
namespace {

    constexpr auto guion
        = "CREATE TABLE A (\n    Uno  NVARCHAR(7) NOT NULL,\n    Otro INT NOT NULL\n);\n"
          "CREATE TABLE AB (\n    Uno NVARCHAR(9),\n    Dos NVARCHAR(12) -- NVARCHAR(3)\n);\n";

    TEST(Anchos, are_what_the_script_says_of_the_column_of_that_table)
    {
        EXPECT_EQ(ancho_de_texto(guion, "A", "Uno"), 7U);
        EXPECT_EQ(ancho_de_texto(guion, "AB", "Uno"), 9U);
        EXPECT_EQ(ancho_de_texto(guion, "AB", "Dos"), 12U);
        EXPECT_EQ(ancho_de_texto(guiones::orvalin(), "Importaciones", "Referencia"), 60U);
        EXPECT_EQ(ancho_de_texto(guiones::orvalin(), "Proveedores_Cargos_Atipicos", "Observ"), 4000U);
    }

    TEST(Anchos, of_what_is_no_text_of_the_script_there_are_none)
    {
        EXPECT_THROW(static_cast<void>(ancho_de_texto(guion, "A", "Otro")), Error);
        EXPECT_THROW(static_cast<void>(ancho_de_texto(guion, "A", "Dos")), Error);
        EXPECT_THROW(static_cast<void>(ancho_de_texto(guion, "B", "Uno")), Error);
    }

    TEST(Anchos, count_letters_as_utf_16_does)
    {
        EXPECT_EQ(letras(""), 0U);
        EXPECT_EQ(letras("añ€"), 3U);
        EXPECT_EQ(letras("😀x"), 3U);
    }

}
}
