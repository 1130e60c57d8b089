#include "host/app/Tabla.hpp"

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

    TEST(Tabla, without_rows_shows_its_titles)
    {
        std::ostringstream salida;
        Tabla({ { "Uno" }, { "Dos" } }).escribe(salida);
        EXPECT_EQ(salida.str(), "Uno  Dos\n---  ---\n");
    }

}
}
