#include "host/resumen/PeticionResumen.hpp"

#include <gtest/gtest.h>

namespace atipicos::app {
namespace {

    Periodo periodo_de(const char* desde, const char* hasta)
    {
        return { Date::de_texto(desde).value(), Date::de_texto(hasta).value() };
    }

    TEST(PeticionResumen, the_year_before_has_the_same_days)
    {
        EXPECT_EQ(
            un_anio_antes(periodo_de("15/03/2026", "20/11/2026")), periodo_de("15/03/2025", "20/11/2025"));
        EXPECT_EQ(
            un_anio_antes(periodo_de("01/01/2024", "31/12/2026")), periodo_de("01/01/2023", "31/12/2025"));
    }

    TEST(PeticionResumen, a_range_that_ends_with_a_month_is_compared_with_the_whole_month)
    {
        EXPECT_EQ(
            un_anio_antes(periodo_de("01/02/2028", "29/02/2028")), periodo_de("01/02/2027", "28/02/2027"));
        EXPECT_EQ(
            un_anio_antes(periodo_de("01/02/2029", "28/02/2029")), periodo_de("01/02/2028", "29/02/2028"));
        EXPECT_EQ(
            un_anio_antes(periodo_de("29/02/2028", "28/02/2029")), periodo_de("28/02/2027", "29/02/2028"));
        EXPECT_EQ(
            un_anio_antes(periodo_de("01/02/2028", "28/02/2028")), periodo_de("01/02/2027", "28/02/2027"));
    }

    TEST(PeticionResumen, no_day_is_asked_for_that_databases_do_not_know)
    {
        EXPECT_EQ(
            un_anio_antes(periodo_de("01/01/1753", "31/12/1754")), periodo_de("01/01/1753", "31/12/1753"));
        EXPECT_EQ(
            un_anio_antes(periodo_de("01/01/0100", "02/01/0100")), periodo_de("01/01/1753", "01/01/1753"));
    }

    TEST(PeticionResumen, the_title_tells_what_is_added_up)
    {
        const auto periodo = periodo_de("15/03/2026", "20/11/2026");
        EXPECT_EQ(titulo({ VistaResumen::proveedor, periodo }),
            "Cargos por proveedor del 15/03/2026 al 20/11/2026");
        EXPECT_EQ(titulo({ VistaResumen::articulo, periodo, 3, 107 }),
            "Líneas de cargos por artículo del 15/03/2026 al 20/11/2026, sólo del almacén 3, sólo del "
            "proveedor 107");
    }

    TEST(PeticionResumen, each_view_has_a_word_that_leads_back_to_it)
    {
        for (const auto por :
            { VistaResumen::proveedor, VistaResumen::mes, VistaResumen::almacen, VistaResumen::articulo })
            EXPECT_EQ(de_palabra(palabra(por)), por);
        EXPECT_EQ(palabra(VistaResumen::almacen), "almacen");
        EXPECT_EQ(nombre_de(VistaResumen::almacen), "almacén");
    }

}
}
