#include "host/documento/Documento.hpp"

#include "tests/host/LienzoDePrueba.hpp"
#include "tests/host/MedidorFijo.hpp"

#include <gmock/gmock.h>

namespace atipicos::orvalin {
namespace {

    using pruebas::textos;
    using testing::ElementsAre;

    const pruebas::MedidorFijo medidor;

    // A type of 7.2 points is 2.54 mm high, its line 3.3 mm, and a character half of it wide.
    std::string plantilla_de(const std::string& cuerpo, const std::string& alto = "30")
    {
        return R"({ "ancho": 100, "alto": 60, "letra": "Fija", "separacion": 0, "cuerpo_hasta": )" + alto
            + R"(,
            "estilos": { "normal": { "cuerpo": 7.2 } },
            "cabecera": [{ "x": 0, "y": 0, "ancho": 90, "texto": [["normal", "{pagina}/{paginas}"]] }],
            "primera": [{ "x": 0, "y": 4, "ancho": 90, "texto": [["normal", "{nombre}"]] }], "pie": [],
            "cuerpo": [)"
            + cuerpo + "] }";
    }

    Documento documento(const std::string& cuerpo, const DatosDocumento& datos)
    {
        return { "Prueba", datos, Plantilla::de_texto(plantilla_de(cuerpo), "mía.json"), medidor };
    }

    const std::string tabla
        = R"({ "tipo": "tabla", "filas": "lineas", "margen": 0, "estilo_titulos": "normal",
        "fondo_titulos": "#FFFFFF", "filete": "#000000", "columnas": [
        { "titulo": "Qué", "x": 2, "ancho": 20, "texto": [["normal", "{que}"]] },
        { "titulo": "Cuánto", "x": 30, "ancho": 20, "derecha": true, "texto": [["normal", "{cuanto} €"]] }] })";

    DatosDocumento con_lineas(int cuantas)
    {
        DatosDocumento datos{ { { "nombre", "Añaza" } }, {} };
        auto& lineas = datos.listas["lineas"];
        for (int i = 1; i <= cuantas; ++i)
            lineas.push_back({ { "que", "q" + std::to_string(i) }, { "cuanto", std::to_string(i) } });
        return datos;
    }

    TEST(Documento, page_and_pages_are_known_on_every_page_and_column_heads_return)
    {
        // 30 mm less 7.3 on the first page and 3.3 on the others hold 5 and 7 rows beside the heads.
        const auto prueba = documento(tabla, con_lineas(8));
        EXPECT_EQ(prueba.titulo(), "Prueba");
        EXPECT_EQ(prueba.tamano(), (Tamano{ 10000, 6000 }));
        ASSERT_EQ(prueba.paginas(), 2);
        EXPECT_THAT(textos(prueba, 0),
            ElementsAre("1/2", "Añaza", "Qué", "Cuánto", "q1", "1 €", "q2", "2 €", "q3", "3 €", "q4", "4 €",
                "q5", "5 €"));
        EXPECT_THAT(
            textos(prueba, 1), ElementsAre("2/2", "Qué", "Cuánto", "q6", "6 €", "q7", "7 €", "q8", "8 €"));
    }

    TEST(Documento, page_counts_follow_the_rows)
    {
        for (const auto& [filas, paginas] :
            { std::pair{ 0, 1U }, { 5, 1U }, { 6, 2U }, { 12, 2U }, { 13, 3U }, { 500, 72U } })
            EXPECT_EQ(documento(tabla, con_lineas(filas)).paginas(), paginas) << filas;
    }

    TEST(Documento, a_table_without_rows_has_no_heads)
    {
        EXPECT_THAT(textos(documento(tabla, con_lineas(0))), ElementsAre("1/1", "Añaza"));
    }

    TEST(Documento, a_long_cell_is_wrapped_and_stays_on_one_page)
    {
        auto datos = con_lineas(4);
        datos.listas["lineas"].push_back({ { "que", "una descripción larga" }, { "cuanto", "5" } });
        const auto prueba = documento(tabla, datos);
        ASSERT_EQ(prueba.paginas(), 2);
        EXPECT_THAT(
            textos(prueba, 1), ElementsAre("2/2", "Qué", "Cuánto", "una descripción", "5 €", "larga"));
    }

    TEST(Documento, totals_do_not_stand_alone)
    {
        const auto prueba = documento(tabla + R"(, { "tipo": "grupo", "unida": true, "piezas": [
                    { "x": 0, "ancho": 40, "texto": [["normal", "Total {nombre}"]] }] })",
            con_lineas(5));
        ASSERT_EQ(prueba.paginas(), 2);
        EXPECT_THAT(textos(prueba, 1), ElementsAre("2/2", "Qué", "Cuánto", "q5", "5 €", "Total Añaza"));
    }

    TEST(Documento, an_empty_field_takes_its_paragraph_away_and_a_condition_its_section)
    {
        DatosDocumento datos{ { { "nombre", "" }, { "nif", "" }, { "otro", "x" } }, {} };
        EXPECT_THAT(textos(documento(R"(
            { "tipo": "parrafo", "si": "nif", "x": 0, "ancho": 90, "texto": [["normal", "no"]] },
            { "tipo": "parrafo", "x": 0, "ancho": 90, "texto": [["normal", "NIF {nif}"], ["normal", "fijo"],
                ["normal", "{nif} {otro}"]] })",
                        datos)),
            ElementsAre("1/1", "fijo", " x"));
    }

    TEST(Documento, what_is_not_there_or_does_not_fit_is_an_error)
    {
        const auto error_de = [](const std::string& json) -> std::string {
            try {
                const Documento prueba("", con_lineas(1), Plantilla::de_texto(json, "mía.json"), medidor);
                return "no error";
            } catch (const Error& error) {
                return error.descripcion();
            }
        };
        const auto parrafo = [](const std::string& texto) {
            return plantilla_de(
                R"({ "tipo": "parrafo", "x": 0, "ancho": 90, "texto": [["normal", ")" + texto + "\"]] }");
        };
        EXPECT_EQ(error_de(parrafo("{iban}")), "La plantilla pide el dato «iban», que no existe.");
        EXPECT_EQ(error_de(parrafo("a {iban")), "La plantilla tiene una llave sin cerrar: «{iban».");
        EXPECT_EQ(error_de(plantilla_de("", "20")), "La plantilla no deja sitio en la página.");
        auto otra = tabla;
        otra.replace(otra.find("lineas"), 6, "cargos");
        EXPECT_EQ(error_de(plantilla_de(otra)), "La plantilla pide la lista «cargos», que no existe.");
    }

    TEST(Documento, a_text_is_found_whatever_its_case_with_page_and_place)
    {
        const auto prueba = documento(tabla, con_lineas(8));
        EXPECT_TRUE(prueba.permite_buscar());
        EXPECT_THAT(prueba.busca("AÑAZA"), ElementsAre(Hallazgo{ 0, { 0, 400, 635, 330 } }));
        const auto cabeceras = prueba.busca("QUÉ");
        ASSERT_EQ(cabeceras.size(), 2);
        EXPECT_EQ(cabeceras[0].pagina, 0);
        EXPECT_EQ(cabeceras[1].pagina, 1);
        EXPECT_TRUE(prueba.busca("zzz").empty());
        EXPECT_TRUE(prueba.busca("").empty());
    }

}
}
