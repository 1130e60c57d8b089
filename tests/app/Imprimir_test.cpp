// Charges printed by the real program, read back with the tools of another.
#include "tests/app/Programa.hpp"

#include "tests/support/DiscoPequeno.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <vector>

namespace atipicos {
namespace {

    using testing::AllOf;
    using testing::HasSubstr;
    using testing::Not;
    using testing::StartsWith;

    // Without a folder of the session's own Qt makes one among the temporary ones.
    const std::string sin_pantalla
        = "unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM XDG_RUNTIME_DIR; export TMPDIR=\"$PWD\";";

    struct ImprimirDeMuestra : testing::Test {
        pruebas::Programa programa;

        ImprimirDeMuestra() { EXPECT_EQ(programa("crear").estado, 0); }

        /// Records one charge of so many lines as AT260001 of warehouse 1, and more after it.
        void registra(const std::vector<int>& cargos) const
        {
            std::string csv
                = "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;descripcion;"
                  "unidades;costo;observaciones_linea\n";
            for (std::size_t cargo = 0; cargo < cargos.size(); ++cargo)
                for (int i = 1; i <= cargos[cargo]; ++i)
                    csv += "R" + std::to_string(cargo)
                        + ";1;105;20/11/2026;Pingüinos y ñandúes;N;1008;Línea número " + std::to_string(i)
                        + " de leche;1,5;2," + std::to_string(1000 + i) + ";\n";
            programa.escribe("cargos.csv", csv);
            ASSERT_EQ(programa("registrar cargos.csv").estado, 0);
        }

        /// What `orden` of another program writes.
        [[nodiscard]] std::string de(const std::string& orden) const
        {
            const auto hecho = std::system(
                ("cd '" + programa.carpeta.ruta().string() + "' && " + orden + " >leido.txt").c_str());
            EXPECT_EQ(hecho, 0) << orden;
            return programa.lee("leido.txt");
        }

        [[nodiscard]] int paginas(const std::string& fichero) const
        {
            const auto datos = de("pdfinfo " + fichero);
            const auto lugar = datos.find("Pages:");
            return lugar == std::string::npos ? 0 : std::stoi(datos.substr(lugar + 6));
        }

        [[nodiscard]] std::vector<std::string> ficheros() const
        {
            std::vector<std::string> nombres;
            for (const auto& uno : std::filesystem::recursive_directory_iterator(programa.carpeta.ruta()))
                if (const auto nombre = uno.path().filename().string();
                    nombre.find(".pdf") != std::string::npos || nombre.find("parcial") != std::string::npos)
                    nombres.push_back(nombre);
            std::ranges::sort(nombres);
            return nombres;
        }
    };

    TEST_F(ImprimirDeMuestra, the_text_of_the_file_is_that_of_the_charge)
    {
        registra({ 3 });
        const auto ejecucion
            = programa("imprimir AT260001 --ejercicio 2026 --almacen 1 --salida cargo.pdf", sin_pantalla);
        EXPECT_EQ(ejecucion.estado, 0);
        EXPECT_EQ(ejecucion.salida + ejecucion.errores, "");
        const auto texto = de("pdftotext -layout cargo.pdf -");
        // 3,15 three times (1,5 × 2,1001 … 2,1003), 7 % of 9,45 is 0,66.
        for (const auto* parte : { "AT260001", "20/11/2026", "Comercial Drago Sur, S.L.", "B38000011",
                 "Lácteos Tinerfeños Añaza, S.A.", "A38100105", "Güímar central", "Pingüinos y ñandúes",
                 "Línea número 1 de leche", "2,1003", "9,45 €", "Impuesto (7 %)", "0,66 €", "10,11 €",
                 "Previsión de vencimientos", "31/12/2026", "3,37", "Asiento contable n.º 1",
                 "Página 1 de 1" })
            EXPECT_THAT(texto, HasSubstr(parte));
    }

    TEST_F(ImprimirDeMuestra, opens_no_display_whatever_is_set_for_windows)
    {
        registra({ 1 });
        for (const auto* entorno : { "QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORM=wayland",
                 "QT_QPA_PLATFORM=", "QT_QPA_PLATFORM=no-la-hay", "QT_QPA_PLATFORM=xcb DISPLAY=:9999",
                 "QT_QPA_PLATFORM=wayland WAYLAND_DISPLAY=no-la-hay", "QT_QPA_PLATFORMTHEME=gtk3" }) {
            const auto ejecucion
                = programa("imprimir AT260001 --ejercicio 2026 --almacen 1 --salida cargo.pdf",
                    sin_pantalla + " env " + entorno);
            EXPECT_EQ(ejecucion.estado, 0) << entorno;
            EXPECT_EQ(ejecucion.salida + ejecucion.errores, "") << entorno;
            EXPECT_EQ(paginas("cargo.pdf"), 1) << entorno;
            std::filesystem::remove(programa.carpeta / "cargo.pdf");
        }
    }

    TEST_F(ImprimirDeMuestra, the_file_has_its_fonts_its_title_and_its_language)
    {
        registra({ 1 });
        ASSERT_EQ(programa("imprimir AT260001 --ejercicio 2026 --almacen 1 --salida cargo.pdf").estado, 0);
        std::istringstream fuentes(de("pdffonts cargo.pdf | tail -n +3 | awk '{ print $(NF-4) }'"));
        int cuantas = 0;
        for (std::string incrustada; std::getline(fuentes, incrustada); ++cuantas)
            EXPECT_EQ(incrustada, "yes");
        EXPECT_EQ(cuantas, 2);
        EXPECT_THAT(de("pdfinfo cargo.pdf"),
            AllOf(HasSubstr("Title:           Reclamación AT260001\n"), HasSubstr("(A4)")));
        EXPECT_THAT(de("pdfinfo -meta cargo.pdf"), HasSubstr("<dc:language><rdf:Bag><rdf:li>es-ES<"));
    }

    TEST_F(ImprimirDeMuestra, no_line_is_lost_at_page_breaks)
    {
        const std::vector<int> cargos{ 1, 30, 31, 500 };
        const std::vector<int> esperadas{ 1, 2, 2, 14 };
        registra(cargos);
        for (std::size_t i = 0; i < cargos.size(); ++i) {
            ASSERT_EQ(programa("imprimir AT26000" + std::to_string(i + 1)
                          + " --ejercicio 2026 --almacen 1 --salida cargo.pdf")
                          .estado,
                0);
            EXPECT_EQ(paginas("cargo.pdf"), esperadas[i]);
            const auto texto = de("pdftotext -layout cargo.pdf -");
            for (int linea = 1; linea <= cargos[i]; ++linea)
                EXPECT_THAT(texto, HasSubstr("Línea número " + std::to_string(linea) + " de leche"));
            EXPECT_THAT(texto, HasSubstr("Página " + std::to_string(esperadas[i]) + " de "));
        }
    }

    TEST_F(ImprimirDeMuestra, several_charges_go_into_one_file_or_into_one_each)
    {
        registra({ 1, 40, 2 });
        ASSERT_EQ(
            programa("imprimir AT260003 AT260002 --ejercicio 2026 --almacen 1 --salida varios.pdf").estado,
            0);
        EXPECT_EQ(paginas("varios.pdf"), 3);
        const auto texto = de("pdftotext varios.pdf -");
        EXPECT_LT(texto.find("AT260003"), texto.find("AT260002"));
        EXPECT_THAT(de("pdfinfo varios.pdf"), HasSubstr("Reclamaciones a proveedores (2)\n"));

        ASSERT_EQ(programa("imprimir --desde 01/11/2026 --hasta 30/11/2026 --carpeta todos").estado, 0);
        EXPECT_THAT(ficheros(),
            testing::ElementsAre(
                "AT260001-2026-1.pdf", "AT260002-2026-1.pdf", "AT260003-2026-1.pdf", "varios.pdf"));
        EXPECT_EQ(paginas("todos/AT260002-2026-1.pdf"), 2);
    }

    TEST_F(ImprimirDeMuestra, the_data_of_each_charge_are_in_the_file_for_a_program_to_take_out)
    {
        registra({ 2, 1 });
        ASSERT_EQ(
            programa("imprimir AT260002 AT260001 AT260002 --ejercicio 2026 --almacen 1 --salida dos.pdf")
                .estado,
            0);
        EXPECT_THAT(de("pdfinfo dos.pdf"), HasSubstr("PDF version:     1.6\n"));
        EXPECT_THAT(de("pdfdetach -list dos.pdf"),
            AllOf(StartsWith("2 embedded files\n"), HasSubstr(": AT260001-2026-1.json\n"),
                HasSubstr(": AT260002-2026-1.json\n")));
        ASSERT_EQ(de("pdfdetach -saveall dos.pdf"), "");
        const auto json = nlohmann::json::parse(programa.lee("AT260001-2026-1.json"));
        EXPECT_EQ(json["codigo"], "AT260001");
        EXPECT_EQ(json["observaciones"], "Pingüinos y ñandúes");
        EXPECT_EQ(json["lineas"].size(), 2U);
        EXPECT_EQ(json["lineas"][1]["precio"], 2.1002);
        EXPECT_EQ(json["importe"], 6.3); // 1,5 × 2,1001 and 1,5 × 2,1002
        EXPECT_EQ(json["impuesto"], 0.44);
        EXPECT_EQ(json["previsiones"][0]["vencimiento"], "2026-12-31");
        EXPECT_EQ(nlohmann::json::parse(programa.lee("AT260002-2026-1.json"))["lineas"].size(), 1U);
    }

    TEST_F(ImprimirDeMuestra, in_a_folder_no_file_takes_the_place_of_another)
    {
        registra({ 1, 1 });
        const std::string orden = "imprimir AT260001 AT260002 --ejercicio 2026 --almacen 1 --carpeta todos";
        EXPECT_EQ(programa(orden).salida, "");
        programa.escribe("todos/AT260002-2026-1.pdf", "de otra empresa");
        EXPECT_EQ(programa(orden).salida,
            "Ya había un fichero con ese nombre: queda en «AT260001-2026-1 (2).pdf».\n"
            "Ya había un fichero con ese nombre: queda en «AT260002-2026-1 (2).pdf».\n");
        EXPECT_THAT(programa(orden).salida, HasSubstr("«AT260001-2026-1 (3).pdf»"));
        EXPECT_EQ(programa.lee("todos/AT260002-2026-1.pdf"), "de otra empresa");
        EXPECT_THAT(ficheros(),
            testing::ElementsAre("AT260001-2026-1 (2).pdf", "AT260001-2026-1 (3).pdf", "AT260001-2026-1.pdf",
                "AT260002-2026-1 (2).pdf", "AT260002-2026-1 (3).pdf", "AT260002-2026-1.pdf"));
        EXPECT_EQ(paginas("'todos/AT260002-2026-1 (3).pdf'"), 1);
    }

    TEST_F(ImprimirDeMuestra, what_cannot_be_written_is_told_and_leaves_nothing_behind)
    {
        registra({ 30 });
        const std::string orden = "imprimir AT260001 --ejercicio 2026 --almacen 1 --salida ";
        auto ejecucion = programa(orden + "no/hay/x.pdf");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_EQ(
            ejecucion.errores, "atipicos: No se puede escribir «no/hay/x.pdf»: no existe la carpeta.\n");
        ejecucion = programa(orden + "/dev/full");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores, StartsWith("atipicos: No se puede escribir «/dev/full»: "));
        EXPECT_THAT(ficheros(), testing::IsEmpty());
    }

    TEST_F(ImprimirDeMuestra, a_full_disk_leaves_the_file_that_was_there)
    {
        registra({ 30 });
        const pruebas::DiscoPequeno disco(programa.carpeta / "disco", "16k");
        if (!disco.montado())
            GTEST_SKIP() << "mounting a small disk needs root";
        programa.escribe("disco/antes.pdf", "lo de antes");
        const auto ejecucion
            = programa("imprimir AT260001 --ejercicio 2026 --almacen 1 --salida disco/antes.pdf");
        EXPECT_EQ(ejecucion.estado, 1);
        EXPECT_THAT(ejecucion.errores, StartsWith("atipicos: No se puede escribir «disco/antes.pdf»: "));
        EXPECT_EQ(programa.lee("disco/antes.pdf"), "lo de antes");
        EXPECT_THAT(ficheros(), testing::ElementsAre("antes.pdf"));
    }

    TEST_F(ImprimirDeMuestra, what_is_not_there_is_told)
    {
        registra({ 1 });
        EXPECT_EQ(programa("imprimir AT260001 AT260002 --ejercicio 2026 --almacen 1 --salida x.pdf").errores,
            "atipicos: No existe el cargo AT260002 del ejercicio 2026 en el almacén 1.\n");
        EXPECT_EQ(programa("imprimir --desde 01/01/2020 --hasta 02/01/2020 --salida x.pdf").errores,
            "atipicos: No hay cargos entre el 01/01/2020 y el 02/01/2020.\n");
        EXPECT_THAT(ficheros(), testing::IsEmpty());
    }

    TEST_F(ImprimirDeMuestra, a_template_of_the_company_takes_the_place_of_the_programs_own)
    {
        registra({ 1 });
        std::ifstream de_serie(ATIPICOS_FUENTES "/host/documento/documento_cargo.json");
        std::string plantilla{ std::istreambuf_iterator<char>(de_serie), {} };
        const std::string titulo = "Reclamación a proveedor\"";
        plantilla.replace(plantilla.find(titulo), titulo.size(), "Nota de cargo\"");
        programa.escribe("datos/documento_cargo.json", plantilla);
        const std::string orden = "imprimir AT260001 --ejercicio 2026 --almacen 1 --salida x.pdf";
        ASSERT_EQ(programa(orden).estado, 0);
        EXPECT_THAT(de("pdftotext x.pdf -"), AllOf(HasSubstr("Nota de cargo"), Not(HasSubstr(titulo))));
        programa.escribe("rota.json", "{ \"letra\": 3 }");
        EXPECT_EQ(programa(orden + " --plantilla rota.json").errores,
            "atipicos: La plantilla «rota.json»: «letra» no es un texto.\n");
    }

    TEST_F(ImprimirDeMuestra, wrong_usage_is_status_2)
    {
        for (const auto& [argumentos, mensaje] :
            { std::pair{ "", "Falta CODIGO." }, { "AT1 --salida x.pdf", "Falta --ejercicio." },
                { "AT1 --ejercicio 2026 --salida x.pdf", "Falta --almacen." },
                { "AT1 --ejercicio 2026 --almacen 1",
                    "--salida: se da una de las dos, --salida o --carpeta." },
                { "AT1 --ejercicio 2026 --almacen 1 --salida x.pdf --carpeta y",
                    "--salida: se da una de las dos, --salida o --carpeta." },
                { "--desde 01/01/2026 --salida x.pdf", "Falta --hasta." },
                { "AT1 --desde 01/01/2026 --hasta 02/01/2026 --salida x.pdf",
                    "--desde: no va con códigos ni con --ejercicio." } }) {
            const auto ejecucion = programa(std::string("imprimir ") + argumentos);
            EXPECT_EQ(ejecucion.estado, 2) << argumentos;
            EXPECT_THAT(ejecucion.errores, StartsWith(std::string("atipicos: ") + mensaje + "\n"))
                << argumentos;
        }
    }

}
}
