#include "host/documento/Plantilla.hpp"

#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

#include <fstream>

namespace atipicos::orvalin {
namespace {

    /// A template with the least that one can have, and `cuerpo` in it.
    std::string plantilla(const std::string& cuerpo)
    {
        return R"({ "ancho": 100, "alto": 50.5, "letra": "Fija", "separacion": 2, "cuerpo_hasta": 45,
            "estilos": { "normal": { "cuerpo": 7.2, "negrita": true, "color": "#0a0B0c" } },
            "cabecera": [], "primera": [], "pie": [], "cuerpo": [)"
            + cuerpo + "] }";
    }

    std::string error_de(const std::string& json)
    {
        try {
            static_cast<void>(Plantilla::de_texto(json, "mía.json"));
        } catch (const Error& error) {
            return error.descripcion();
        }
        return "no error";
    }

    TEST(Plantilla, the_one_of_the_program_can_be_read)
    {
        const auto& de_serie = Plantilla::de_serie();
        EXPECT_EQ(de_serie.papel, A4);
        EXPECT_FALSE(de_serie.cuerpo.empty());
        EXPECT_LT(de_serie.cuerpo_hasta, A4.alto);
    }

    TEST(Plantilla, millimetres_and_points_become_hundredths)
    {
        const auto leida = Plantilla::de_texto(
            plantilla(
                R"({ "tipo": "parrafo", "si": "b", "unida": true, "separacion": 1.25, "x": 10, "ancho": 20.5,
                "derecha": true, "texto": [["normal", "NIF {a}"]] })"),
            "mía.json");
        EXPECT_EQ(leida.papel, (Tamano{ 10000, 5050 }));
        EXPECT_EQ(leida.separacion, 200);
        const auto& seccion = leida.cuerpo.at(0);
        EXPECT_EQ(seccion.tipo, Seccion::Tipo::Parrafo);
        EXPECT_EQ(seccion.si, "b");
        EXPECT_TRUE(seccion.unida);
        EXPECT_EQ(seccion.separacion, 125);
        const auto& pieza = seccion.piezas.at(0);
        EXPECT_EQ(pieza.lugar, (Recuadro{ 1000, 0, 2050, 0 }));
        EXPECT_TRUE(pieza.a_la_derecha);
        const auto& parrafo = pieza.parrafos.at(0);
        EXPECT_EQ(parrafo.texto, "NIF {a}");
        EXPECT_EQ(parrafo.estilo.letra, (Letra{ "Fija", 254, true }));
        EXPECT_EQ(parrafo.estilo.color, 0x0A0B0CU);
        EXPECT_EQ(parrafo.estilo.linea, 330);
    }

    TEST(Plantilla, what_is_wrong_is_said_with_the_name_of_the_file)
    {
        for (const auto& [json, motivo] : std::vector<std::pair<std::string, std::string>>{
                 { "{", "no se entiende (línea 1, columna 2)" },
                 { "{\n  \"ancho\": 12,,\n}", "no se entiende (línea 2, columna 15)" },
                 { "[]", "falta «letra»" },
                 { R"({ "letra": 3 })", "«letra» no es un texto" },
                 { plantilla(R"({ "x": 1 })"), "falta «tipo»" },
                 { plantilla(R"({ "tipo": "lista" })"), "no se conoce el tipo «lista»" },
                 { plantilla(R"({ "tipo": "grupo", "piezas": 3 })"), "«piezas» no es una lista" },
                 { plantilla(R"({ "tipo": "parrafo", "x": "1" })"), "«x» no es una medida" },
                 { plantilla(R"({ "tipo": "parrafo", "x": 1e9 })"), "«x» no es una medida" },
                 { plantilla(R"({ "tipo": "parrafo", "x": 1, "ancho": 2, "texto": [["grande", "a"]] })"),
                     "no hay ningún estilo «grande»" },
                 { plantilla(R"({ "tipo": "parrafo", "x": 1, "ancho": 2, "texto": ["normal"] })"),
                     "cada elemento de «texto» es un estilo y un texto" },
                 { plantilla(R"({ "tipo": "grupo", "piezas": [{ "x": 1, "ancho": 2, "relleno": "azul" }] })"),
                     "«relleno» no es un color como \"#1F3A5F\"" },
                 { plantilla(R"({ "tipo": "grupo", "unida": "sí", "piezas": [] })"),
                     "un valor no es de la clase que se espera" },
             })
            EXPECT_EQ(error_de(json), "La plantilla «mía.json»: " + motivo + ".");
    }

    TEST(Plantilla, a_file_is_read_with_its_comments_and_one_that_is_not_there_is_named)
    {
        const pruebas::CarpetaTemporal carpeta;
        std::ofstream(carpeta / "propia.json") << "// mía\n" << plantilla("");
        EXPECT_EQ(Plantilla::de_fichero(carpeta / "propia.json").cuerpo_hasta, 4500);
        try {
            static_cast<void>(Plantilla::de_fichero(carpeta / "otra.json"));
            FAIL() << "no error was raised";
        } catch (const Error& error) {
            EXPECT_EQ(error.descripcion(),
                "No se puede leer la plantilla «" + (carpeta / "otra.json").string() + "».");
        }
    }

}
}
