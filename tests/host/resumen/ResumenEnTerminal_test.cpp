#include "host/resumen/ResumenEnTerminal.hpp"

#include "host/terminal/Tabla.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <sstream>

namespace atipicos::app {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::Not;
    using testing::StartsWith;

    ResumenCargos de_almacenes(const std::string& nombre)
    {
        return { { VistaResumen::almacen, { dia("01/01/2026"), dia("31/12/2026") } },
            { { 2, nombre, { 12, moneda("750"), moneda("52.5") }, { 9, moneda("1000"), moneda("70") } },
                { 3, "Arrecife", { 4, moneda("375"), moneda("26.25") }, {} },
                { 4, "Vuelta", { 1, moneda("-75"), moneda("-5.25") }, {} } } };
    }

    std::vector<std::string> en_lineas(const ResumenCargos& resumen, const Aspecto& aspecto = {})
    {
        std::stringstream salida;
        resumen_en_terminal(salida, resumen, aspecto);
        std::vector<std::string> todas;
        for (std::string una; std::getline(salida, una);)
            todas.push_back(una);
        return todas;
    }

    TEST(ResumenEnTerminal, a_table_with_its_total_and_bars_below)
    {
        const auto todas = en_lineas(de_almacenes("La Orotava"));
        ASSERT_EQ(todas.size(), 13U);
        EXPECT_EQ(todas[0], "Cargos por almacén del 01/01/2026 al 31/12/2026");
        EXPECT_EQ(todas[2],
            "Código  Almacén     Cargos      Base  Impuesto     Total  Parte  Un año antes   Cambio");
        EXPECT_EQ(todas[4],
            "     2  La Orotava      12    750,00     52,50    802,50      –      1.070,00  -25,0 %");
        EXPECT_EQ(todas[7],
            "        Total           17  1.050,00     73,50  1.123,50      –      1.070,00   +5,0 %");
        EXPECT_EQ(
            todas[8], "No se dicen partes del total: hay importes de los dos signos, o todos son cero.");
        // 80 places: the name, the amount and four blanks leave 80 - 10 - 6 - 4 = 60 to the longest bar.
        const auto larga = [](const char* que, int veces) {
            std::string texto;
            for (int i = 0; i < veces; ++i)
                texto += que;
            return texto;
        };
        EXPECT_EQ(todas[10], "La Orotava  802,50  " + larga("█", 60));
        EXPECT_EQ(todas[11], "Arrecife    401,25  " + larga("█", 30));
        EXPECT_EQ(todas[12], "Vuelta      -80,25  " + larga("░", 6));
    }

    TEST(ResumenEnTerminal, bars_are_as_wide_as_the_terminal_and_never_wider)
    {
        for (const std::size_t lugares : { 60U, 97U, 211U }) {
            const auto todas = en_lineas(de_almacenes("La Orotava"), { lugares, true, false });
            EXPECT_EQ(ancho(todas[10]), lugares);
            EXPECT_LT(ancho(todas[11]), lugares);
        }
        EXPECT_GT(ancho(en_lineas(de_almacenes("La Orotava"), { 5, true, false })[10]), 20U);
    }

    TEST(ResumenEnTerminal, a_long_name_is_cut_beside_a_bar_and_where_the_terminal_is_narrow)
    {
        const std::string largo = "Ñandú y Añaza, exportaciones de todo el archipiélago";
        const auto fichero = en_lineas(de_almacenes(largo));
        EXPECT_THAT(fichero[4], HasSubstr(largo));
        EXPECT_THAT(fichero[10], StartsWith("Ñandú y Añaza, exportaciones …  802,50"));
        const auto estrecha = en_lineas(de_almacenes(largo), { 115, true, false });
        EXPECT_THAT(estrecha[4], HasSubstr("  Ñandú y Añaza,…  "));
        EXPECT_THAT(en_lineas(de_almacenes(largo), { 200, true, false })[4], HasSubstr(largo));
    }

    TEST(ResumenEnTerminal, colours_are_for_whoever_sees_them)
    {
        const auto con = en_lineas(de_almacenes("La Orotava"), { 80, true, true });
        EXPECT_THAT(con[10], HasSubstr("\x1b[36m█"));
        EXPECT_THAT(con[10], EndsWith("█\x1b[0m"));
        for (const auto& linea : en_lineas(de_almacenes("La \x1b[31mOrotava")))
            EXPECT_THAT(linea, Not(HasSubstr("\x1b")));
    }

    TEST(ResumenEnTerminal, of_no_charges_there_is_no_table)
    {
        EXPECT_THAT(en_lineas({ { VistaResumen::almacen, { dia("01/01/2026"), dia("31/12/2026") } }, {} }),
            testing::ElementsAre("Cargos por almacén del 01/01/2026 al 31/12/2026", ""));
    }

    TEST(ResumenEnTerminal, a_bar_is_drawn_in_eighths_and_seen_when_there_is_anything)
    {
        const auto de = [](const char* valor) { return barra(moneda(valor), moneda("16"), 2); };
        EXPECT_EQ(de("16"), "██");
        EXPECT_EQ(de("9"), "█▏");
        EXPECT_EQ(de("15"), "█▉");
        EXPECT_EQ(de("4"), "▌");
        EXPECT_EQ(de("0.0001"), "▏");
        EXPECT_EQ(de("0"), "");
        EXPECT_EQ(de("-16"), "░░");
        EXPECT_EQ(de("-0.01"), "░");
        EXPECT_EQ(barra(moneda("3"), moneda("0"), 9), "");
    }

}
}
