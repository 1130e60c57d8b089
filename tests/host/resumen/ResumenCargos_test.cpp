#include "host/resumen/ColumnasResumen.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos::app {
namespace {

    using pruebas::dia;
    using pruebas::moneda;
    using testing::ElementsAre;

    PeticionResumen peticion(VistaResumen por) { return { por, { dia("15/11/2025"), dia("20/02/2026") } }; }

    Cifras cifras(std::int64_t cuantos, const char* base, const char* impuesto)
    {
        return { cuantos, moneda(base), moneda(impuesto) };
    }

    GrupoResumen grupo(std::int32_t clave, const char* nombre, const char* total, const char* antes = "0")
    {
        return { clave, nombre, cifras(3, total, "0"), cifras(2, antes, "0") };
    }

    std::vector<std::string> columna(const ResumenCargos& resumen, DatoResumen dato)
    {
        std::vector<std::string> celdas;
        for (const auto& cual : columnas_resumen(resumen.peticion().por))
            if (cual.dato == dato)
                for (const auto& uno : resumen.grupos())
                    celdas.push_back(celda_de(resumen, uno, cual));
        return celdas;
    }

    TEST(ResumenCargos, the_two_periods_of_a_group_are_put_together)
    {
        const ResumenCargos resumen(peticion(VistaResumen::almacen),
            { { 4, "Puerto", cifras(2, "10.5", "0.74"), {} }, { 2, "Orotava", {}, cifras(7, "3", "0.21") },
                { 4, "Puerto", {}, cifras(1, "20", "1.4") } });
        ASSERT_EQ(resumen.grupos().size(), 2U);
        EXPECT_EQ(resumen.grupos()[0].clave, 4);
        EXPECT_EQ(resumen.grupos()[0].ahora, cifras(2, "10.5", "0.74"));
        EXPECT_EQ(resumen.grupos()[0].antes, cifras(1, "20", "1.4"));
        EXPECT_EQ(resumen.grupos()[1].antes, cifras(7, "3", "0.21"));
        EXPECT_EQ(resumen.total().ahora, cifras(2, "10.5", "0.74"));
        EXPECT_EQ(resumen.total().antes, cifras(8, "23", "1.61"));
    }

    TEST(ResumenCargos, the_largest_come_first_and_equal_ones_by_their_code)
    {
        const ResumenCargos resumen(peticion(VistaResumen::proveedor),
            { grupo(110, "diez", "5"), grupo(103, "tres", "-7"), grupo(112, "doce", "5", "9"),
                grupo(107, "siete", "60"), grupo(104, "cuatro", "5") });
        EXPECT_THAT(columna(resumen, DatoResumen::codigo), ElementsAre("107", "112", "104", "110", "103"));
    }

    TEST(ResumenCargos, months_come_as_they_are_and_none_is_left_out)
    {
        const ResumenCargos resumen(peticion(VistaResumen::mes),
            { grupo(clave_de_mes(dia("28/02/2026")), "", "1"),
                grupo(clave_de_mes(dia("01/12/2025")), "", "90") });
        EXPECT_THAT(
            columna(resumen, DatoResumen::codigo), ElementsAre("2025-11", "2025-12", "2026-01", "2026-02"));
        EXPECT_THAT(columna(resumen, DatoResumen::nombre),
            ElementsAre("noviembre de 2025", "diciembre de 2025", "enero de 2026", "febrero de 2026"));
        EXPECT_THAT(columna(resumen, DatoResumen::total), ElementsAre("0,00", "90,00", "0,00", "1,00"));
        EXPECT_THAT(columna(resumen, DatoResumen::cambio), ElementsAre("–", "–", "–", "–"));
    }

    TEST(ResumenCargos, of_a_range_without_end_there_are_the_months_that_count)
    {
        const PeticionResumen siempre{ VistaResumen::mes, { dia("01/01/1800"), dia("31/12/9999") } };
        const ResumenCargos resumen(siempre,
            { grupo(clave_de_mes(dia("28/02/2026")), "", "1"),
                grupo(clave_de_mes(dia("01/12/2025")), "", "90") });
        EXPECT_THAT(columna(resumen, DatoResumen::codigo), ElementsAre("2025-12", "2026-01", "2026-02"));
        EXPECT_TRUE(ResumenCargos(siempre, {}).grupos().empty());
        const PeticionResumen diez{ VistaResumen::mes, { dia("01/01/2020"), dia("31/12/2029") } };
        EXPECT_EQ(ResumenCargos(diez, {}).grupos().size(), 120U);
    }

    TEST(ResumenCargos, what_has_no_name_any_more_is_told_so)
    {
        const ResumenCargos resumen(peticion(VistaResumen::articulo),
            { grupo(0, "", "3"), grupo(1077, "", "2"), grupo(8, "Gofio", "1") });
        EXPECT_THAT(columna(resumen, DatoResumen::nombre),
            ElementsAre("(sin artículo)", "(ya no está en su catálogo)", "Gofio"));
        const ResumenCargos otro(peticion(VistaResumen::almacen), { grupo(0, "", "3") });
        EXPECT_THAT(columna(otro, DatoResumen::nombre), ElementsAre("(ya no está en su catálogo)"));
    }

    TEST(ResumenCargos, shares_are_of_the_total_and_none_are_told_of_mixed_signs)
    {
        const auto partes = [](std::vector<GrupoResumen> grupos) {
            return columna({ peticion(VistaResumen::almacen), std::move(grupos) }, DatoResumen::parte);
        };
        EXPECT_THAT(partes({ grupo(1, "a", "2"), grupo(2, "b", "1"), grupo(3, "c", "0") }),
            ElementsAre("66,7 %", "33,3 %", "0,0 %"));
        EXPECT_THAT(partes({ grupo(1, "a", "-2"), grupo(2, "b", "-1") }), ElementsAre("33,3 %", "66,7 %"));
        EXPECT_THAT(partes({ grupo(1, "a", "200"), grupo(2, "b", "-100") }), ElementsAre("–", "–"));
        EXPECT_THAT(partes({ grupo(1, "a", "0"), grupo(2, "b", "0") }), ElementsAre("–", "–"));
        const ResumenCargos devuelto(
            peticion(VistaResumen::almacen), { grupo(1, "a", "-2"), grupo(2, "b", "-1") });
        EXPECT_EQ(devuelto.parte(devuelto.grupos()[1]), moneda("66.6667"));
    }

    TEST(ResumenCargos, what_the_numbers_do_not_tell_is_told_under_them)
    {
        const auto nota = [](VistaResumen por, const char* uno, const char* otro) {
            return nota_de({ peticion(por), { grupo(1, "a", uno), grupo(2, "b", otro) } });
        };
        EXPECT_EQ(nota(VistaResumen::almacen, "2", "1"), "");
        EXPECT_THAT(nota(VistaResumen::almacen, "2", "-1"), testing::StartsWith("No se dicen partes"));
        EXPECT_THAT(nota(VistaResumen::articulo, "2", "1"), testing::EndsWith("en unos céntimos."));
        EXPECT_THAT(nota(VistaResumen::articulo, "2", "-2"),
            testing::AllOf(testing::StartsWith("El impuesto"), testing::HasSubstr(" No se dicen partes")));
        EXPECT_EQ(nota_de({ peticion(VistaResumen::almacen), {} }), "");
    }

    TEST(ResumenCargos, a_change_says_what_there_was_a_year_before)
    {
        const auto de = [](std::int64_t ahora, const char* total, std::int64_t antes, const char* entonces) {
            return texto_de_cambio({ 1, "", cifras(ahora, total, "0"), cifras(antes, entonces, "0") });
        };
        EXPECT_EQ(de(3, "30", 2, "40"), "-25,0 %");
        EXPECT_EQ(de(0, "0", 2, "40"), "-100,0 %");
        EXPECT_EQ(de(3, "30", 0, "0"), "nuevo");
        EXPECT_EQ(de(3, "30", 2, "0"), "–"); // a claim and its pay back
        EXPECT_EQ(de(0, "0", 0, "0"), "–");
        const GrupoResumen con_impuesto{ 1, "", cifras(3, "100", "7"), cifras(2, "50", "3.5") };
        EXPECT_EQ(texto_de_cambio(con_impuesto), "+100,0 %");
        EXPECT_EQ(cambio(con_impuesto), moneda("100"));
    }

    TEST(ResumenCargos, the_first_ones_are_told_apart_and_the_rest_together)
    {
        const ResumenCargos resumen(peticion(VistaResumen::proveedor),
            { grupo(1, "a", "50", "1"), grupo(2, "b", "40", "2"), grupo(3, "c", "6", "3"),
                grupo(4, "d", "4", "5") });
        const auto dos = resumen.primeros(2);
        EXPECT_THAT(columna(dos, DatoResumen::nombre), ElementsAre("a", "b", "Los demás (2)"));
        EXPECT_THAT(columna(dos, DatoResumen::codigo), ElementsAre("1", "2", ""));
        EXPECT_THAT(columna(dos, DatoResumen::total), ElementsAre("50,00", "40,00", "10,00"));
        EXPECT_THAT(columna(dos, DatoResumen::antes), ElementsAre("1,00", "2,00", "8,00"));
        EXPECT_THAT(columna(dos, DatoResumen::parte), ElementsAre("50,0 %", "40,0 %", "10,0 %"));
        EXPECT_EQ(dos.total().ahora, resumen.total().ahora);
        EXPECT_EQ(resumen.primeros(3).grupos().size(), 4U); // one alone is no rest
        EXPECT_EQ(resumen.primeros(3).grupos()[3].nombre, "d");
    }

    TEST(ResumenCargos, a_sum_that_does_not_fit_is_an_error)
    {
        EXPECT_THROW(static_cast<void>(ResumenCargos(peticion(VistaResumen::almacen),
                         { grupo(1, "a", "900000000000000"), grupo(2, "b", "900000000000000") })),
            Error);
    }

    TEST(ResumenCargos, by_article_lines_are_counted)
    {
        EXPECT_STREQ(columnas_resumen(VistaResumen::articulo)[2].titulo, "Líneas");
        EXPECT_STREQ(columnas_resumen(VistaResumen::almacen)[2].titulo, "Cargos");
    }

}
}
