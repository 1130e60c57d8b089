// The file system refuses to let files grow beyond so many bytes, for one limit after the other: every
// command that writes says so, and the databases can be worked with afterwards.
#include "tests/app/Programa.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <iostream>

namespace atipicos {
namespace {

    using testing::EndsWith;
    using testing::HasSubstr;

    struct BarridoEscritura : testing::Test {
        pruebas::Programa programa;
        int rehusadas = 0;

        /// With files limited to so many KiB; the signal that would end the program is ignored, so that the
        /// write itself fails.
        pruebas::Ejecucion con_limite(const std::string& orden, int kib) const
        {
            const std::string guion = "ulimit -f " + std::to_string(kib) + "; trap '' XFSZ;";
            return programa(orden, guion);
        }

        /// The largest file of a folder in KiB.
        [[nodiscard]] int mayor(const char* donde) const
        {
            std::uintmax_t bytes = 0;
            for (const auto& entrada :
                std::filesystem::recursive_directory_iterator(programa.carpeta / donde))
                if (entrada.is_regular_file())
                    bytes = std::max(bytes, entrada.file_size());
            return static_cast<int>(bytes / 1024) + 1;
        }

        void escribe_reclamaciones() const
        {
            std::string filas
                = "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;descripcion;"
                  "unidades;costo;observaciones_linea\n";
            for (int i = 0; i < 12; ++i)
                filas += "R" + std::to_string(i) + ";1;101;21/11/2026;;;;Agua;1;10;" + std::string(400, 'o')
                    + "\n";
            programa.escribe("r.csv", filas);
        }
    };

    TEST_F(BarridoEscritura, crear_leaves_both_databases_or_none)
    {
        ASSERT_EQ(programa("crear --datos entera").estado, 0);
        const int todo = mayor("entera");
        for (int kib = 1; kib < todo; kib += std::max(todo / 25, 1)) {
            const auto ejecucion = con_limite("crear --datos d", kib);
            EXPECT_EQ(ejecucion.estado, 1) << kib;
            EXPECT_THAT(ejecucion.errores, testing::StartsWith("atipicos: ")) << kib;
            EXPECT_FALSE(std::filesystem::exists(programa.carpeta / "d/empresa.db")) << kib;
            ++rehusadas;
        }
        EXPECT_EQ(programa("crear --datos d").estado, 0);
        std::cout << rehusadas << " limits\n";
    }

    TEST_F(BarridoEscritura, registrar_and_eliminar_are_told_and_can_be_given_again)
    {
        escribe_reclamaciones();
        ASSERT_EQ(programa("crear --datos vacia").estado, 0);
        const int base = mayor("vacia");
        const std::string datos = " --datos d";
        for (int kib = 4; kib < base + 120; kib += 9) {
            std::filesystem::remove_all(programa.carpeta / "d");
            std::filesystem::copy(
                programa.carpeta / "vacia", programa.carpeta / "d", std::filesystem::copy_options::recursive);
            const auto limitada = con_limite("registrar r.csv" + datos, kib);
            EXPECT_LE(limitada.estado, 1) << kib << limitada.errores;
            if (limitada.estado == 1) {
                ++rehusadas;
                EXPECT_NE(limitada.errores, "") << kib;
            }
            const auto verificado = programa("verificar" + datos).salida;
            EXPECT_THAT(
                verificado, testing::AnyOf(EndsWith(": sin diferencias.\n"), EndsWith(": 1 diferencia.\n")))
                << kib;
            const auto borrado
                = con_limite("eliminar AT260001 --ejercicio 2026 --almacen 1 --si" + datos, kib);
            EXPECT_LE(borrado.estado, 1) << kib << borrado.errores;
            const auto acabada = programa("registrar r.csv" + datos);
            EXPECT_EQ(acabada.estado, 0) << kib << acabada.errores;
            EXPECT_THAT(acabada.salida, HasSubstr(", 0 rechazadas")) << kib;
        }
        EXPECT_GT(rehusadas, 3);
        std::cout << rehusadas << " refused of those limits\n";
    }

    TEST_F(BarridoEscritura, a_list_that_does_not_fit_is_told_and_leaves_no_file)
    {
        escribe_reclamaciones();
        ASSERT_EQ(programa("crear").estado, 0);
        ASSERT_EQ(programa("registrar r.csv").estado, 0);
        const std::string listar = "listar --desde 01/01/2026 --hasta 31/12/2026 ";
        for (const std::string formato : { "tabla", "csv", "json", "xlsx" }) {
            const auto orden = listar + "--formato " + formato + " --salida l";
            EXPECT_EQ(con_limite(orden, 100).estado, 0) << formato;
            std::filesystem::remove(programa.carpeta / "l");
            const auto limitada = con_limite(orden, 0);
            EXPECT_EQ(limitada.estado, 1) << formato;
            EXPECT_FALSE(std::filesystem::exists(programa.carpeta / "l")) << formato;
        }
    }

}
}
