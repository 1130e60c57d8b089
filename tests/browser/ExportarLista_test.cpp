#include "browser/ExportarLista.hpp"

#include "tests/browser/CatorceColumnas.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace atipicos {
namespace {

    using testing::HasSubstr;

    CargoListado cargo()
    {
        return { "AT260001", 1, "Güímar central", 103, "Ñandú \"Exportaciones\"; S.L.",
            pruebas::dia("21/11/2026"), pruebas::moneda("1234.5"), pruebas::moneda("86.42"),
            pruebas::moneda("7"), 5, 2, "Íñigo Cabrera", "uno\r\ndos" };
    }

    OrigenLista de(const std::vector<CargoListado>& cargos)
    {
        return [cargos](const CadaCargo& cada) {
            for (const auto& uno : cargos)
                cada(uno);
        };
    }

    /// The parts of an XLSX file, one after the other.
    std::string hojas(const std::filesystem::path& libro)
    {
        const auto salida = libro.string() + ".txt";
        EXPECT_EQ(std::system(("unzip -p '" + libro.string() + "' >'" + salida + "'").c_str()), 0);
        std::ifstream flujo(salida, std::ios::binary);
        return { std::istreambuf_iterator<char>(flujo), {} };
    }

    TEST(ExportarLista, csv_quotes_the_fields_that_need_it)
    {
        std::ostringstream salida;
        exporta_csv(salida, de({ cargo() }));
        EXPECT_EQ(salida.str(),
            "Código;Almacén;Nombre del almacén;Proveedor;Nombre del proveedor;Fecha;Importe;Impuesto;% "
            "impuesto;Asiento;Usuario;Nombre del usuario;Observaciones\r\n"
            "AT260001;1;Güímar central;103;\"Ñandú \"\"Exportaciones\"\"; "
            "S.L.\";21/11/2026;1.234,50;86,42;7,00 %;5;"
            "2;Íñigo Cabrera;\"uno\r\ndos\"\r\n");
    }

    TEST(ExportarLista, csv_of_no_charge_is_its_headings)
    {
        std::ostringstream salida;
        exporta_csv(salida, de({}));
        EXPECT_THAT(salida.str(), testing::EndsWith(";Observaciones\r\n"));
    }

    TEST(ExportarLista, the_cells_are_those_of_the_list)
    {
        EXPECT_EQ(celdas_lista(cargo()).size(), columnas_lista().size());
        EXPECT_EQ(celdas_lista(cargo()).at(6), "1.234,50");
    }

    TEST(ExportarLista, xlsx_has_numbers_and_leaves_the_entry_of_an_unposted_charge_empty)
    {
        const pruebas::CarpetaTemporal carpeta;
        auto sin_asiento = cargo();
        sin_asiento.Asiento = 0;
        exporta_xlsx(carpeta / "l.xlsx", de({ cargo(), sin_asiento }));
        const auto todo = hojas(carpeta / "l.xlsx");
        for (const auto& columna : columnas_lista())
            EXPECT_THAT(todo, HasSubstr(">" + std::string(columna.nombre) + "<"));
        for (const auto* texto : { "A1\" s", "M1\" s", "A2\" t", "C2\" t", "E2\" t", "L2\" t", "M2\" t" })
            EXPECT_THAT(todo, HasSubstr("<c r=\"" + std::string(texto)));
        EXPECT_THAT(todo, HasSubstr("<c r=\"J2\"><v>5</v></c>"));
        EXPECT_THAT(todo, testing::Not(HasSubstr("r=\"J3\"")));
        EXPECT_THAT(todo, HasSubstr("<v>46347</v>")) << "the day as a sheet counts it";
        EXPECT_THAT(todo, HasSubstr("<v>1234.5</v>"));
    }

    TEST(ExportarLista, a_fourteenth_column_is_exported_as_what_it_is)
    {
        const pruebas::CarpetaTemporal carpeta;
        const auto catorce = pruebas::catorce_columnas();
        auto uno = cargo();
        uno.otros = { std::int32_t{ 41 } };
        std::ostringstream salida;
        exporta_csv(salida, de({ uno }), catorce);
        EXPECT_THAT(salida.str(), HasSubstr(";Observaciones;Empresa contable\r\n"));
        EXPECT_THAT(salida.str(), testing::EndsWith(";\"uno\r\ndos\";41\r\n"));
        exporta_xlsx(carpeta / "l.xlsx", de({ uno }), catorce);
        const auto todo = hojas(carpeta / "l.xlsx");
        EXPECT_THAT(todo, HasSubstr(">Empresa contable<"));
        EXPECT_THAT(todo, HasSubstr("<c r=\"N2\"><v>41</v></c>"));
    }

    TEST(ExportarLista, a_book_that_no_disk_takes_is_given_up_at_once_and_says_why)
    {
        if (!std::filesystem::exists("/dev/full"))
            GTEST_SKIP() << "this system has no /dev/full";
        std::size_t leidos = 0;
        try {
            exporta_xlsx("/dev/full", [&](const CadaCargo& cada) {
                for (; leidos < 1'000'000; ++leidos) {
                    auto uno = cargo();
                    uno.Codigo += std::to_string(leidos * 7919);
                    cada(uno);
                }
            });
            FAIL() << "written";
        } catch (const Error& error) {
            EXPECT_EQ(error.descripcion(), "No se pudo escribir el libro: no queda sitio en el disco.");
        }
        EXPECT_LT(leidos, 100'000U);
    }

    TEST(ExportarLista, a_book_whose_file_forbids_writing_says_why)
    {
        const int sellado = ::memfd_create("libro", MFD_ALLOW_SEALING);
        ASSERT_GE(sellado, 0);
        ASSERT_EQ(::fcntl(sellado, F_ADD_SEALS, F_SEAL_WRITE), 0);
        try {
            exporta_xlsx("/proc/self/fd/" + std::to_string(sellado), de({ cargo() }));
            ADD_FAILURE() << "written";
        } catch (const Error& error) {
            EXPECT_EQ(error.descripcion(), "No se pudo escribir el libro: no hay permiso.");
        }
        ::close(sellado);
    }

    TEST(ExportarLista, a_text_that_no_cell_can_hold_is_an_error_that_names_its_charge)
    {
        const pruebas::CarpetaTemporal carpeta;
        auto largo = cargo();
        largo.Observ.assign(32'768, 'x');
        try {
            exporta_xlsx(carpeta / "l.xlsx", de({ largo }));
            FAIL() << "written";
        } catch (const Error& error) {
            EXPECT_THAT(error.descripcion(), HasSubstr("El cargo AT260001 no cabe en una hoja de cálculo"));
        }
    }

    TEST(ExportarLista, a_book_that_cannot_be_written_says_why)
    {
        const pruebas::CarpetaTemporal carpeta;
        try {
            exporta_xlsx(carpeta.ruta() / "no hay" / "l.xlsx", de({ cargo() }));
            FAIL() << "written";
        } catch (const Error& error) {
            EXPECT_THAT(error.descripcion(), testing::StartsWith("No se pudo escribir el libro: "));
        }
    }

}
}
