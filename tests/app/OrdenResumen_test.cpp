// Summaries by the real program, read back with the tools of others.
#include "tests/app/Programa.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <filesystem>

namespace atipicos {
namespace {

    using Json = nlohmann::json;
    using testing::AllOf;
    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::Not;
    using testing::StartsWith;

    // Without a folder of the session's own Qt makes one among the temporary ones.
    const std::string sin_pantalla_ninguna
        = "unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM XDG_RUNTIME_DIR; export TMPDIR=\"$PWD\";";

    /// The sample company with its claims: recorded once, copied for each test.
    struct OrdenResumen : testing::Test {
        pruebas::Programa programa;

        OrdenResumen()
        {
            static const pruebas::Programa original;
            if (!std::filesystem::exists(original.carpeta / "datos")) {
                EXPECT_EQ(original("crear").estado, 0);
                EXPECT_EQ(original("registrar " ATIPICOS_FUENTES "/host/datos/reclamaciones.csv").estado, 0);
            }
            std::filesystem::copy(original.carpeta / "datos", programa.carpeta / "datos");
        }

        [[nodiscard]] std::string de(const std::string& orden) const
        {
            const auto linea
                = "cd '" + programa.carpeta.ruta().string() + "' && " + orden + " >leido.txt 2>/dev/null";
            EXPECT_EQ(std::system(linea.c_str()), 0) << orden;
            return programa.lee("leido.txt");
        }
    };

    const std::string del_anio = " --desde 01/01/2026 --hasta 31/12/2026";

    TEST_F(OrdenResumen, tells_the_same_numbers_as_the_list)
    {
        const auto lista = programa("listar" + del_anio);
        const auto texto = lista.salida.substr(lista.salida.rfind('\n', lista.salida.size() - 2) + 1);
        const auto json = Json::parse(programa("resumen --formato json" + del_anio).salida);
        for (const auto* por : { "proveedor", "mes", "almacen" }) {
            const auto uno
                = Json::parse(programa(std::string("resumen --formato json --por ") + por + del_anio).salida);
            EXPECT_EQ(uno["por"], por);
            EXPECT_EQ(uno["total"], json["total"]) << por;
        }
        EXPECT_THAT(texto, StartsWith(json["total"]["cargos"].dump() + " cargos, "));
        const auto tabla = programa("resumen --por almacen" + del_anio);
        EXPECT_EQ(tabla.estado, 0);
        EXPECT_EQ(tabla.errores, "");
        const auto importe = texto.substr(texto.find("importe ") + 8);
        EXPECT_THAT(tabla.salida, HasSubstr("  " + importe.substr(0, importe.find(", ")) + "  "));
        EXPECT_THAT(
            tabla.salida, AllOf(HasSubstr("Puerto del Rosario"), HasSubstr("█"), Not(HasSubstr("\x1b"))));
    }

    TEST_F(OrdenResumen, the_filters_and_the_rest_of_many_are_said)
    {
        const auto almacen = programa("resumen --almacen 3 --primeros 2" + del_anio);
        EXPECT_THAT(almacen.salida, AllOf(HasSubstr(", sólo del almacén 3\n"), HasSubstr("Los demás (")));
        const auto json
            = Json::parse(programa("resumen --proveedor 108 --por almacen --formato json" + del_anio).salida);
        EXPECT_EQ(json["proveedor"], 108);
        EXPECT_LT(json["total"]["cargos"], 20);
        EXPECT_GT(json["total"]["cargos"], 1);
    }

    TEST_F(OrdenResumen, without_days_it_is_this_year_until_today)
    {
        const auto hoy = std::chrono::year_month_day(
            std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()));
        const auto anio = std::to_string(static_cast<int>(hoy.year()));
        const auto json = Json::parse(programa("resumen --formato json").salida);
        EXPECT_EQ(json["desde"], anio + "-01-01");
        EXPECT_THAT(json["hasta"], StartsWith(anio));
        EXPECT_EQ(
            Json::parse(programa("resumen --formato json --hasta 15/03/2024").salida)["desde"], "2024-01-01");
        const auto vacio = programa("resumen --desde 01/01/1999 --hasta 31/12/1999");
        EXPECT_EQ(vacio.estado, 0);
        EXPECT_EQ(vacio.errores, "No hay cargos entre el 01/01/1999 y el 31/12/1999.\n");
    }

    TEST_F(OrdenResumen, a_file_has_the_format_that_its_name_ends_in)
    {
        for (const auto* fichero : { "r.csv", "r.JSON", "r.xlsx", "r.txt" })
            EXPECT_EQ(
                programa("resumen --por articulo --salida " + std::string(fichero) + del_anio).estado, 0);
        EXPECT_THAT(programa.lee("r.csv"), StartsWith("Código;Artículo;Líneas;Base;"));
        EXPECT_EQ(Json::parse(programa.lee("r.JSON"))["por"], "articulo");
        EXPECT_THAT(programa.lee("r.xlsx"), StartsWith("PK"));
        EXPECT_THAT(programa.lee("r.txt"), StartsWith("Líneas de cargos por artículo del 01/01/2026"));
        programa.escribe("r.csv", "antes");
        EXPECT_EQ(programa("resumen --formato json --salida r.csv" + del_anio).estado, 0);
        EXPECT_THAT(programa.lee("r.csv"), StartsWith("{\n  \"por\": \"proveedor\""));
    }

    TEST_F(OrdenResumen, wrong_usage_is_status_2)
    {
        for (const auto& [argumentos, mensaje] :
            { std::pair{ "--por usuario", "--por: no se conoce la manera de resumir «usuario»." },
                { "--salida r.doc", "--salida: no se conoce el formato «doc»; dígalo con --formato." },
                { "--formato png", "--formato: png necesita --salida FICHERO." },
                { "--formato xlsx", "--formato: xlsx necesita --salida FICHERO." },
                { "--desde 02/01/2026 --hasta 01/01/2026", "--desde: es un día posterior al de --hasta." },
                { "--desde 01/01/2199", "--desde: es un día posterior a hoy; falta --hasta." } }) {
            const auto ejecucion = programa(std::string("resumen ") + argumentos);
            EXPECT_EQ(ejecucion.estado, 2) << argumentos;
            EXPECT_THAT(ejecucion.errores, StartsWith(std::string("atipicos: ") + mensaje + "\n"))
                << argumentos;
        }
    }

#if ATIPICOS_CON_VENTANAS
    TEST_F(OrdenResumen, draws_without_a_display)
    {
        for (const auto* formato : { "pdf", "svg", "png" }) {
            const auto ejecucion
                = programa(std::string("resumen --salida r.") + formato + del_anio, sin_pantalla_ninguna);
            EXPECT_EQ(ejecucion.estado, 0) << ejecucion.errores;
            EXPECT_EQ(ejecucion.errores, "");
        }
        const auto texto = de("pdftotext -layout r.pdf -");
        EXPECT_THAT(texto,
            AllOf(HasSubstr("Cargos por proveedor del 01/01/2026 al 31/12/2026"),
                HasSubstr("Total por proveedor"), HasSubstr("Total mes a mes"), HasSubstr("Un año antes"),
                HasSubstr("Quesería Majorera")));
        EXPECT_THAT(de("pdfinfo r.pdf"), AllOf(HasSubstr("Pages:           1"), HasSubstr("A4")));
        const auto svg = programa.lee("r.svg");
        EXPECT_THAT(svg, AllOf(HasSubstr("<svg"), HasSubstr("viewBox=\"0 0 900 1100\""), HasSubstr("<path")));
        const auto png = programa.lee("r.png");
        ASSERT_THAT(png, StartsWith("\x89PNG"));
        EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x07\x08\0\0\x08\x98", 8)); // 1800 by 2200 points
    }
#else
    TEST_F(OrdenResumen, without_windows_it_says_that_it_cannot_draw)
    {
        const auto ejecucion = programa("resumen --salida r.png" + del_anio);
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(ejecucion.errores,
            "atipicos: Este programa se ha compilado sin ventanas, y sin ellas no dibuja (png). Los números "
            "los "
            "da con --formato tabla, csv, json o xlsx.\n");
        EXPECT_FALSE(std::filesystem::exists(programa.carpeta / "r.png"));
    }
#endif

}
}
