#include "engines/sql/Catalogo.hpp"

#include <gmock/gmock.h>

namespace atipicos::sql {
namespace {

    TEST(Catalogo, names_compare_without_case)
    {
        Catalogo c;
        c.agrega_fecha("Cargos", "Fecha");
        c.agrega_base("Bexmor", "B_");
        EXPECT_TRUE(c.es_fecha("CARGOS", "fecha"));
        EXPECT_FALSE(c.es_fecha("Cargos", "Fech"));
        EXPECT_FALSE(c.es_fecha("Otra", "Fecha"));
        ASSERT_NE(c.base("BEXMOR"), nullptr);
        EXPECT_EQ(*c.base("bexmor"), "B_");
        EXPECT_EQ(c.base("Otra"), nullptr);
    }

    TEST(Catalogo, tells_the_places_of_dates_among_the_values_of_a_row)
    {
        Catalogo c;
        c.agrega_fecha("t", "b", 1);
        c.agrega_fecha("t", "a", 3);
        c.agrega_fecha("t", "computed");
        EXPECT_THAT(c.fechas_por_lugar("T"), testing::ElementsAre(false, true, false, true));
        EXPECT_THAT(c.fechas_por_lugar("otra"), testing::IsEmpty());
    }

    TEST(Catalogo, forgets_the_dates_and_keeps_the_bases)
    {
        Catalogo c;
        c.agrega_fecha("t", "b");
        c.agrega_base("Bexmor", "B_");
        c.olvida_fechas();
        EXPECT_FALSE(c.es_fecha("t", "b"));
        EXPECT_NE(c.base("Bexmor"), nullptr);
    }

}
}
