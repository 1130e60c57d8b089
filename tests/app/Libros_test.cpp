// The books that the sample claims make, as a bookkeeper reads them: tests/datos/libros.txt. Whoever changes
// a rule on purpose writes them anew and reads the difference before he keeps it:
//     ATIPICOS_LIBROS_NUEVOS=tests/datos/libros.txt ctest --preset dev -R Libros
#include "host/bases/Bases.hpp"
#include "tests/app/LibrosEnTexto.hpp"
#include "tests/app/Programa.hpp"
#include "tests/support/Diferencias.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

#include <cstdlib>

namespace atipicos {
namespace {

    const std::string guardados = ATIPICOS_FUENTES "/tests/datos/libros.txt";

    /// The books after the program has made the sample company at a place and recorded its claims.
    std::string libros_en(const bases::Lugar& lugar)
    {
        const pruebas::Programa programa;
        for (const auto& orden : { std::string("crear "), "registrar " + pruebas::muestra + " " }) {
            const auto ejecucion = programa(orden + lugar.opcion());
            EXPECT_EQ(ejecucion.estado, 0) << ejecucion.errores;
        }
        return pruebas::libros_en_texto(bases::abre_bases(lugar, { .solo_lectura = true }));
    }

    TEST(Libros, of_the_sample_company_are_those_that_are_kept)
    {
        const pruebas::CarpetaTemporal carpeta;
        const auto hallados = libros_en(carpeta.ruta() / "datos");
        if (const char* fichero = std::getenv("ATIPICOS_LIBROS_NUEVOS"))
            std::ofstream(fichero, std::ios::binary) << hallados;
        const auto esperados = pruebas::lee_fichero(guardados);
        EXPECT_EQ(pruebas::bloques(esperados).size(), 74U) << "the charges of the sample claims";
        EXPECT_TRUE(esperados == hallados)
            << "- as kept in " << guardados << ", + as the program makes them now\n"
            << pruebas::diferencias(esperados, hallados);
    }

    TEST(Libros, are_the_same_on_a_server)
    {
        if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
            GTEST_SKIP() << falta;
        const pruebas::ServidorPostgresql servidor;
        servidor.crea_base("empresa");
        EXPECT_EQ(pruebas::diferencias(pruebas::lee_fichero(guardados),
                      libros_en(bases::Lugar::de_conexion(servidor.direccion("empresa")))),
            "");
    }

}
}
