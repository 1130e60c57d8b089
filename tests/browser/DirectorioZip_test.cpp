// The directory at the end of a ZIP file says of each part where it is and how large: readers that do not try
// to mend it go by that alone.
#include "browser/EscritorZip.hpp"
#include "browser/ExportarLista.hpp"
#include "browser/LibroXlsx.hpp"
#include "runtime/Error.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace atipicos {
namespace {

    /// Reads a number of so many bytes, the lowest first.
    std::size_t numero_en(const std::string& bytes, std::size_t lugar, std::size_t cuantos)
    {
        std::size_t numero = 0;
        for (std::size_t i = cuantos; i-- > 0;)
            numero = numero << 8U | static_cast<unsigned char>(bytes.at(lugar + i));
        return numero;
    }

    TEST(DirectorioZip, every_part_begins_ends_and_measures_what_the_directory_says)
    {
        std::ostringstream salida;
        EscritorZip zip(salida);
        const std::vector<std::pair<std::string, std::string>> partes{ { "uno.txt", "Palé dañado" },
            { "carpeta/vacia", "" }, { "tres.xml", std::string(300'000, 'x') + "fin" } };
        for (const auto& [nombre, contenido] : partes) {
            zip.empieza(nombre);
            zip.escribe(contenido.substr(0, contenido.size() / 2));
            zip.escribe(contenido.substr(contenido.size() / 2));
            zip.termina_parte();
        }
        zip.termina();
        const std::string bytes = salida.str();

        const auto final = bytes.size() - 22;
        ASSERT_EQ(numero_en(bytes, final, 4), 0x0605'4B50U);
        EXPECT_EQ(numero_en(bytes, final + 8, 2), partes.size());
        EXPECT_EQ(numero_en(bytes, final + 10, 2), partes.size());
        const auto directorio = numero_en(bytes, final + 16, 4);
        EXPECT_EQ(directorio + numero_en(bytes, final + 12, 4), final) << "nothing between it and its end";

        std::size_t entrada = directorio;
        std::size_t comienzo = 0;
        for (const auto& [nombre, contenido] : partes) {
            ASSERT_EQ(numero_en(bytes, entrada, 4), 0x0201'4B50U) << nombre;
            EXPECT_EQ(numero_en(bytes, entrada + 24, 4), contenido.size());
            EXPECT_EQ(numero_en(bytes, entrada + 42, 4), comienzo);
            ASSERT_EQ(numero_en(bytes, comienzo, 4), 0x0403'4B50U);
            EXPECT_EQ(bytes.substr(comienzo + 14, 12), std::string(12, '\0')) << "they stand behind the part";
            const auto empaquetado = numero_en(bytes, entrada + 20, 4);
            const auto detras = comienzo + 30 + nombre.size() + empaquetado;
            ASSERT_EQ(numero_en(bytes, detras, 4), 0x0807'4B50U) << nombre;
            EXPECT_EQ(bytes.substr(detras + 4, 12), bytes.substr(entrada + 16, 12)) << "sum and sizes";
            EXPECT_EQ(bytes.substr(entrada + 46, nombre.size()), nombre);
            comienzo = detras + 16;
            entrada += 46 + nombre.size();
        }
        EXPECT_EQ(comienzo, directorio);
        EXPECT_EQ(entrada, final);
    }

    TEST(DirectorioZip, a_list_that_no_file_can_count_is_an_error_that_says_what_to_do)
    {
        const pruebas::CarpetaTemporal carpeta;
        try {
            exporta_xlsx(carpeta / "l.xlsx", [](const CadaCargo&) { throw std::length_error("4 GiB"); });
            FAIL() << "written";
        } catch (const Error& error) {
            EXPECT_EQ(error.descripcion(),
                "La lista entera no cabe en una hoja de cálculo (1.048.576 filas, 32.767 letras por celda): "
                "guárdelo como CSV.");
        }
    }

    TEST(HojaLlena, a_charge_behind_the_last_row_of_a_sheet_is_told_and_not_left_out)
    {
        const pruebas::CarpetaTemporal carpeta;
        CargoListado cargo; // not posted: its only cell is empty, which is written quickly
        cargo.Codigo = "AT250034";
        const auto asiento = columnas_lista().subspan(9, 1);
        const auto exporta = [&](std::size_t cuantos) {
            exporta_xlsx(
                carpeta / "l.xlsx",
                [&](const CadaCargo& cada) {
                    for (std::size_t i = 0; i < cuantos; ++i)
                        cada(cargo);
                },
                asiento);
        };
        constexpr std::size_t debajo_de_los_titulos = 1'048'575;
        try {
            exporta(debajo_de_los_titulos + 1);
            FAIL() << "written";
        } catch (const Error& error) {
            EXPECT_THAT(
                error.descripcion(), testing::StartsWith("El cargo AT250034 no cabe en una hoja de cálculo"));
        }
        EXPECT_NO_THROW(exporta(debajo_de_los_titulos));
    }

    TEST(HojaLlena, a_text_that_is_nothing_but_what_a_sheet_takes_for_a_letter_stays_that_text)
    {
        const pruebas::CarpetaTemporal carpeta;
        {
            std::ofstream salida(carpeta / "l.xlsx", std::ios::binary);
            LibroXlsx libro(salida, "Hoja", { "T" });
            EXPECT_TRUE(libro.empieza_fila());
            EXPECT_TRUE(libro.texto(0, "_x0041_"));
            libro.termina();
        }
        const auto orden = "unzip -p '" + (carpeta / "l.xlsx").string() + "' xl/worksheets/sheet1.xml >'"
            + (carpeta / "hoja").string() + "'";
        ASSERT_EQ(std::system(orden.c_str()), 0);
        std::ifstream hoja(carpeta / "hoja", std::ios::binary);
        EXPECT_THAT(
            std::string(std::istreambuf_iterator<char>(hoja), {}), testing::HasSubstr(">_x005F_x0041_<"));
    }

}
}
