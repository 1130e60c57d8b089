// What README.md shows of the program is what the program says.
#include "tests/app/Programa.hpp"

#include <gmock/gmock.h>

#include <regex>
#include <vector>

namespace atipicos {
namespace {

    using testing::HasSubstr;

    std::vector<std::string> lineas_de(const std::string& texto)
    {
        std::vector<std::string> lineas;
        std::istringstream flujo(texto);
        for (std::string linea; std::getline(flujo, linea);)
            lineas.push_back(linea);
        return lineas;
    }

    /// The lines below "$ ORDEN" in a block of the file.
    std::vector<std::string> salida_en_leeme(const std::string& orden)
    {
        const auto leeme = lineas_de(pruebas::lee_fichero(ATIPICOS_FUENTES "/"
                                                                           "README.md"));
        auto linea = std::ranges::find(leeme, "$ " + orden);
        std::vector<std::string> salida;
        if (linea != leeme.end())
            for (++linea; linea != leeme.end() && *linea != "```" && !linea->starts_with("$ "); ++linea)
                salida.push_back(*linea);
        EXPECT_FALSE(salida.empty()) << "README.md shows nothing of: " << orden;
        return salida;
    }

    /// The moment of the save is another one in each run.
    std::string sin_hora(const std::string& linea)
    {
        static const std::regex momento(R"((Registrado\s+)\d{2}/\d{2}/\d{4} \d{1,2}:\d{2}:\d{2})");
        return std::regex_replace(linea, momento, "$1(ahora)");
    }

    /// Compares line by line. "…" alone on a line stands for any lines.
    void compara(const std::vector<std::string>& mostrada, const std::string& dicha)
    {
        const auto hallada = lineas_de(dicha);
        std::size_t j = 0;
        bool salta = false;
        for (const auto& linea : mostrada) {
            if (linea == "…") {
                salta = true;
                continue;
            }
            while (salta && j < hallada.size() && sin_hora(hallada[j]) != sin_hora(linea))
                ++j;
            salta = false;
            ASSERT_LT(j, hallada.size()) << "README.md: " << linea << "\nand the program says no more";
            ASSERT_EQ(sin_hora(linea), sin_hora(hallada[j])) << "- as README.md shows it, + as it is";
            ++j;
        }
        if (!salta) {
            EXPECT_EQ(j, hallada.size()) << "README.md leaves out: " << hallada.back();
        }
    }

    /// What is shown of the first session's company; the last two change it.
    const std::vector<std::string> ordenes{ "mostrar AT260001 --ejercicio 2026 --almacen 4",
        "resumen --por almacen --desde 01/01/2026 --hasta 31/12/2026", "copiar copias/",
        "eliminar AT260001 --ejercicio 2026 --almacen 4 --si", "regularizar --si --fecha 30/11/2026" };

    struct Leeme : testing::Test {
        pruebas::Programa programa;
        std::string primera_sesion; ///< what the commands of ./run say, without its own lines

        Leeme()
        {
            std::filesystem::create_directories(programa.carpeta / "host/datos");
            std::filesystem::copy_file(ATIPICOS_FUENTES "/host/datos/reclamaciones.csv",
                programa.carpeta / "host/datos/reclamaciones.csv");
            for (const auto* orden : { "crear --datos datos",
                     "registrar --datos datos host/datos/reclamaciones.csv", "verificar --datos datos" }) {
                const auto ejecucion = programa(orden);
                EXPECT_EQ(ejecucion.estado, 0) << ejecucion.errores;
                primera_sesion += ejecucion.salida;
            }
        }
    };

    TEST_F(Leeme, shows_the_first_session_as_it_is)
    {
        const auto run = pruebas::lee_fichero(ATIPICOS_FUENTES "/"
                                                               "run");
        std::vector<std::string> del_programa;
        for (const auto& linea : salida_en_leeme("./run"))
            if (linea.starts_with("==> ")) {
                EXPECT_THAT(run, HasSubstr("paso \"" + linea.substr(4) + "\""));
            } else {
                del_programa.push_back(linea);
            }
        compara(del_programa, primera_sesion);
    }

    TEST_F(Leeme, shows_the_charges_as_they_are)
    {
        for (const auto& orden : ordenes) {
            const auto ejecucion = programa(orden);
            EXPECT_EQ(ejecucion.estado, 0) << ejecucion.errores;
            compara(salida_en_leeme("./run " + orden), ejecucion.salida);
        }
    }

    TEST_F(Leeme, shows_no_other_output_of_the_program)
    {
        std::vector<std::string> mostradas;
        for (const auto& linea : lineas_de(pruebas::lee_fichero(ATIPICOS_FUENTES "/"
                                                                                 "README.md")))
            if (linea.starts_with("$ "))
                mostradas.push_back(linea.substr(2));
        std::vector<std::string> comprobadas{ "./run" };
        for (const auto& orden : ordenes)
            comprobadas.push_back("./run " + orden);
        EXPECT_THAT(mostradas, testing::UnorderedElementsAreArray(comprobadas))
            << "what README.md shows besides is checked by nobody: add it here";
    }

}
}
