#include "runtime/SalidaSegura.hpp"

#include "runtime/Error.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace atipicos {
namespace {

    std::string contenido(const std::filesystem::path& fichero)
    {
        std::ifstream flujo(fichero);
        std::ostringstream contenido_leido;
        contenido_leido << flujo.rdbuf();
        return contenido_leido.str();
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
        EXPECT_EQ(error(carpeta / "no hay/x.csv"),
            "No se puede escribir «" + (carpeta / "no hay/x.csv").string() + "»: no existe la carpeta.");
        EXPECT_THAT(
            error(carpeta / std::string(300, 'x')), testing::EndsWith("»: el nombre es demasiado largo."));
    }

    TEST(SalidaSegura, a_link_stays_a_link_and_its_file_is_replaced)
    {
        const pruebas::CarpetaTemporal carpeta;
        std::ofstream(carpeta / "real.csv") << "antes";
        std::filesystem::create_symlink(carpeta / "real.csv", carpeta / "enlace.csv");
        SalidaSegura salida(carpeta / "enlace.csv");
        salida.flujo() << "después";
        salida.termina();
        EXPECT_TRUE(std::filesystem::is_symlink(carpeta / "enlace.csv"));
        EXPECT_EQ(contenido(carpeta / "real.csv"), "después");
        EXPECT_EQ(ficheros(carpeta), 2U);
    }

    TEST(SalidaSegura, a_pipe_is_written_to_and_stays_a_pipe)
    {
        const pruebas::CarpetaTemporal carpeta;
        const auto tubo = carpeta / "tubo";
        ASSERT_EQ(mkfifo(tubo.c_str(), 0600), 0);
        const int lector = open(tubo.c_str(), O_RDONLY | O_NONBLOCK);
        {
            SalidaSegura salida(tubo);
            salida.flujo() << "por el tubo";
            salida.termina();
        }
        std::string leido(100, ' ');
        const auto bytes = read(lector, leido.data(), leido.size());
        close(lector);
        EXPECT_EQ(leido.substr(0, static_cast<std::size_t>(bytes)), "por el tubo");
        EXPECT_TRUE(std::filesystem::is_fifo(tubo));
    }

    TEST(SalidaSegura, without_a_destination_it_is_the_standard_output)
    {
        SalidaSegura salida({});
        EXPECT_EQ(&salida.flujo(), &std::cout);
        salida.termina();
        EXPECT_TRUE(salida.provisional().empty());
    }

    /// What `termina` says that went wrong; empty when nothing did.
    std::string fallo_al_terminar(SalidaSegura& salida)
    {
        try {
            salida.termina();
        } catch (const Error& fallo) {
            return fallo.descripcion();
        }
        return {};
    }

    TEST(SalidaSegura, a_folder_that_took_the_name_meanwhile_is_told_and_stays)
    {
        const pruebas::CarpetaTemporal carpeta;
        {
            SalidaSegura salida(carpeta / "x.csv");
            salida.flujo() << "entero";
            std::filesystem::create_directory(carpeta / "x.csv");
            EXPECT_EQ(fallo_al_terminar(salida),
                "No se puede escribir «" + (carpeta / "x.csv").string() + "»: es una carpeta.");
        }
        EXPECT_TRUE(std::filesystem::is_directory(carpeta / "x.csv"));
        EXPECT_EQ(ficheros(carpeta), 1U);
    }

    TEST(SalidaSegura, a_write_that_failed_before_the_end_is_told_although_closing_went_well)
    {
        const pruebas::CarpetaTemporal carpeta;
        SalidaSegura salida(carpeta / "x.csv");
        salida.flujo() << "a medias";
        salida.flujo().setstate(std::ios::badbit);
        EXPECT_EQ(fallo_al_terminar(salida),
            "No se puede escribir «" + (carpeta / "x.csv").string() + "»: no se pudo escribir entero.");
        EXPECT_FALSE(std::filesystem::exists(carpeta / "x.csv"));
    }

    TEST(SalidaSegura, who_writes_for_long_is_told_in_between)
    {
        if (!std::filesystem::exists("/dev/full"))
            GTEST_SKIP() << "this system has no /dev/full";
        SalidaSegura salida("/dev/full");
        EXPECT_NO_THROW(salida.comprueba());
        salida.flujo() << std::string(100'000, 'x');
        try {
            salida.comprueba();
            FAIL() << "nothing is told";
        } catch (const Error& fallo) {
            EXPECT_EQ(fallo.descripcion(), "No se puede escribir «/dev/full»: no queda sitio en el disco.");
        }
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
        EXPECT_THAT(fallo_al_terminar(otra), testing::EndsWith("»: no se pudo escribir entero."));
        SalidaSegura corta(carpeta / "x.csv"); // the disk is found full only when the last of it is written
        corta.flujo() << "x";
        EXPECT_THAT(fallo_al_terminar(corta), testing::EndsWith("»: no queda sitio en el disco."));
        EXPECT_FALSE(std::filesystem::exists(carpeta / "x.csv"));
    }

}
}
