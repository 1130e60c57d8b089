#include "browser/LibroXlsx.hpp"

#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>

namespace atipicos {
namespace {

    using testing::HasSubstr;
    using Formato = LibroXlsx::Formato;

    std::string salida_de(const std::string& orden)
    {
        const pruebas::CarpetaTemporal carpeta;
        EXPECT_EQ(std::system((orden + " >'" + (carpeta / "salida").string() + "'").c_str()), 0) << orden;
        std::ifstream flujo(carpeta / "salida", std::ios::binary);
        return { std::istreambuf_iterator<char>(flujo), {} };
    }

    /// The sheet of a book, as it is packed; the whole of the book has been tested by `unzip`.
    std::string hoja_de(const std::vector<std::string>& titulos, const std::function<void(LibroXlsx&)>& filas)
    {
        const pruebas::CarpetaTemporal carpeta;
        const auto fichero = carpeta / "l.xlsx";
        {
            std::ofstream salida(fichero, std::ios::binary);
            LibroXlsx libro(salida, "Hoja & más", titulos);
            filas(libro);
            libro.termina();
        }
        const std::string nombre = "'" + fichero.string() + "'";
        EXPECT_THAT(salida_de("unzip -t " + nombre), HasSubstr("No errors detected"));
        EXPECT_THAT(
            salida_de("unzip -p " + nombre + " xl/workbook.xml"), HasSubstr("name=\"Hoja &amp; más\""));
        return salida_de("unzip -p " + nombre + " xl/worksheets/sheet1.xml");
    }

    TEST(LibroXlsx, holds_texts_and_numbers_with_their_formats)
    {
        const auto hoja = hoja_de({ "Uno", "Dos" }, [](LibroXlsx& libro) {
            ASSERT_TRUE(libro.empieza_fila());
            ASSERT_TRUE(libro.texto(0, "ñ"));
            libro.numero(1, -1234.5, Formato::importe);
            libro.numero(2, 46347, Formato::fecha);
        });
        EXPECT_THAT(hoja, HasSubstr("<row r=\"1\"><c r=\"A1\" s=\"1\" t=\"inlineStr\"><is>"));
        EXPECT_THAT(hoja,
            HasSubstr("<row r=\"2\"><c r=\"A2\" t=\"inlineStr\">"
                      "<is><t xml:space=\"preserve\">ñ</t></is></c>"
                      "<c r=\"B2\" s=\"2\"><v>-1234.5</v></c>"
                      "<c r=\"C2\" s=\"3\"><v>46347</v></c></row></sheetData>"));
        EXPECT_THAT(hoja, HasSubstr("state=\"frozen\""));
        EXPECT_THAT(hoja, HasSubstr("max=\"2\""));
    }

    TEST(LibroXlsx, letters_that_mean_something_to_a_sheet_are_told_from_those_that_do)
    {
        const auto hoja = hoja_de({ "T" }, [](LibroXlsx& libro) {
            ASSERT_TRUE(libro.empieza_fila());
            ASSERT_TRUE(libro.texto(0, "<a & \"b\">\r\n\x1b[31m _x0041_ _xyz_\xff\t"));
        });
        EXPECT_THAT(hoja,
            HasSubstr(">&lt;a &amp; &quot;b&quot;&gt;_x000D_\n_x001B_[31m _x005F_x0041_ _xyz_\uFFFD\t</t>"));
    }

    TEST(LibroXlsx, an_empty_text_is_no_cell)
    {
        EXPECT_THAT(hoja_de({ "T" },
                        [](LibroXlsx& libro) {
                            ASSERT_TRUE(libro.empieza_fila());
                            ASSERT_TRUE(libro.texto(0, ""));
                        }),
            HasSubstr("<row r=\"2\"></row>"));
    }

    TEST(LibroXlsx, columns_behind_the_alphabet_have_two_letters)
    {
        const auto hoja = hoja_de(std::vector<std::string>(53, "T"), [](LibroXlsx&) {});
        for (const auto* celda : { "\"Z1\"", "\"AA1\"", "\"AZ1\"", "\"BA1\"" })
            EXPECT_THAT(hoja, HasSubstr(celda));
    }

    TEST(LibroXlsx, a_cell_holds_32767_letters_as_utf16_counts_them)
    {
        std::string justo(32'765, 'x');
        justo += "😀";
        const auto hoja = hoja_de({ "T" }, [&](LibroXlsx& libro) {
            ASSERT_TRUE(libro.empieza_fila());
            EXPECT_TRUE(libro.texto(0, justo));
            EXPECT_FALSE(libro.texto(1, justo + "x"));
        });
        EXPECT_THAT(hoja, HasSubstr("x😀</t>"));
        EXPECT_THAT(hoja, testing::Not(HasSubstr("\"B2\"")));
    }

    TEST(LibroXlsx, a_sheet_has_1048576_rows)
    {
        const auto hoja = hoja_de({ "T" }, [](LibroXlsx& libro) {
            for (std::size_t fila = 1; fila < LibroXlsx::filas_maximas; ++fila)
                ASSERT_TRUE(libro.empieza_fila());
            EXPECT_FALSE(libro.empieza_fila());
        });
        EXPECT_THAT(hoja, testing::EndsWith("<row r=\"1048576\"></row></sheetData></worksheet>"));
    }

    TEST(EscritorZip, what_32_bits_cannot_count_is_refused)
    {
        std::ostream a_ninguna_parte(nullptr);
        EscritorZip zip(a_ninguna_parte);
        zip.empieza("x");
        const std::string mucho(std::size_t{ 1 } << 26U, 'x');
        EXPECT_THROW(for (int i = 0; i < 64; ++i) zip.escribe(mucho), std::length_error);
    }

}
}
