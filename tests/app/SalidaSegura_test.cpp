#include "host/app/SalidaSegura.hpp"

#include "runtime/Error.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace atipicos::app {
namespace {

    std::string contenido(const std::filesystem::path& fichero)
    {
        std::ifstream flujo(fichero);
        return { std::istreambuf_iterator<char>(flujo), {} };
    }

    std::size_t ficheros(const pruebas::CarpetaTemporal& carpeta)
    {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(carpeta.ruta()), {}));
    }

    TEST(SalidaSegura, gives_the_file_its_name_when_it_is_complete)
    {
        const pruebas::CarpetaTemporal carpeta;
        std::ofstream(carpeta / "x.csv") << "antes";
        SalidaSegura salida(carpeta / "x.csv");
        salida.flujo() << "después";
        EXPECT_EQ(contenido(carpeta / "x.csv"), "antes");
        salida.termina();
        EXPECT_EQ(contenido(carpeta / "x.csv"), "después");
        EXPECT_EQ(ficheros(carpeta), 1U);
    }

    TEST(SalidaSegura, leaves_nothing_behind_when_it_is_given_up)
    {
        const pruebas::CarpetaTemporal carpeta;
        {
            SalidaSegura salida(carpeta / "x.csv");
            salida.flujo() << "a medias";
        }
        EXPECT_EQ(ficheros(carpeta), 0U);
    }

    TEST(SalidaSegura, names_the_file_that_cannot_be_written)
    {
        const pruebas::CarpetaTemporal carpeta;
        const auto error = [](const std::filesystem::path& fichero) -> std::string {
            try {
                const SalidaSegura salida(fichero);
            } catch (const Error& fallo) {
                return fallo.descripcion();
            }
            return "opened";
        };
        EXPECT_EQ(
            error(carpeta.ruta()), "No se puede escribir «" + carpeta.ruta().string() + "»: es una carpeta.");
        EXPECT_THAT(error(carpeta / "no hay/x.csv"), testing::StartsWith("No se puede escribir «"));
    }

    TEST(SalidaSegura, a_full_disk_is_told_and_nothing_takes_the_name)
    {
        if (!std::filesystem::exists("/dev/full"))
            GTEST_SKIP() << "this system has no /dev/full";
        const pruebas::CarpetaTemporal carpeta;
        SalidaSegura salida(carpeta / "x.csv");
        std::filesystem::remove(salida.provisional());
        std::filesystem::create_symlink("/dev/full", salida.provisional());
        SalidaSegura otra(carpeta / "x.csv"); // opens what now stands for a full disk
        otra.flujo() << std::string(100'000, 'x');
        EXPECT_THROW(otra.termina(), Error);
        EXPECT_FALSE(std::filesystem::exists(carpeta / "x.csv"));
    }

}
}
