#include "host/bases/CarpetaProvisional.hpp"

#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/DiscoPequeno.hpp"

#include <fcntl.h>
#include <fstream>
#include <optional>
#include <sys/file.h>
#include <unistd.h>

namespace atipicos::bases {
namespace {

    namespace fs = std::filesystem;

    struct CarpetaProvisional_ : testing::Test {
        pruebas::CarpetaTemporal carpeta;

        /// What a killed process has left, so many minutes ago.
        fs::path resto(const char* nombre, int minutos) const
        {
            fs::create_directory(carpeta / nombre);
            std::ofstream(carpeta / nombre / "empresa.db") << "a medias";
            fs::last_write_time(
                carpeta / nombre, fs::file_time_type::clock::now() - std::chrono::minutes(minutos));
            return carpeta / nombre;
        }
        std::string lee(const char* nombre) const
        {
            std::ifstream flujo(carpeta / nombre);
            std::string linea;
            std::getline(flujo, linea);
            return linea;
        }
        std::size_t entradas() const
        {
            return static_cast<std::size_t>(
                std::distance(fs::directory_iterator(carpeta.ruta()), fs::directory_iterator()));
        }
    };

    TEST_F(CarpetaProvisional_, is_gone_at_the_end_with_what_is_in_it)
    {
        {
            const CarpetaProvisional provisional(carpeta.ruta());
            std::ofstream(provisional / "algo") << "x";
            EXPECT_EQ(entradas(), 1U);
        }
        EXPECT_EQ(entradas(), 0U);
    }

    TEST_F(CarpetaProvisional_, sweeps_what_killed_processes_have_left)
    {
        resto(".nuevas-abcdef", 5);
        resto(".nuevas-fedcba", 600);
        const CarpetaProvisional provisional(carpeta.ruta());
        EXPECT_EQ(entradas(), 1U);
    }

    TEST_F(CarpetaProvisional_, leaves_what_is_new_or_held_or_not_its_own)
    {
        const auto nueva = resto(".nuevas-111111", 0);
        const auto tenida = resto(".nuevas-222222", 5);
        const auto ajena = resto("nuevas-333333", 5);
        std::ofstream(carpeta / ".nuevas-fichero") << "x";
        const int candado = open(tenida.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ASSERT_EQ(flock(candado, LOCK_EX | LOCK_NB), 0);
        {
            const CarpetaProvisional provisional(carpeta.ruta());
        }
        close(candado);
        for (const auto& queda : { nueva, tenida, ajena, carpeta / ".nuevas-fichero" })
            EXPECT_TRUE(fs::exists(queda)) << queda;
    }

    TEST_F(CarpetaProvisional_, is_held_while_it_lives)
    {
        const CarpetaProvisional una(carpeta.ruta());
        fs::last_write_time(una / ".", fs::file_time_type::clock::now() - std::chrono::hours(5));
        const CarpetaProvisional otra(carpeta.ruta());
        EXPECT_EQ(entradas(), 2U);
    }

    TEST_F(CarpetaProvisional_, where_nothing_can_be_written_says_so)
    {
        const pruebas::DiscoPequeno disco(carpeta / "disco");
        if (!disco.montado() || !disco.protege())
            GTEST_SKIP() << "mounting a small disk needs root";
        EXPECT_EQ(pruebas::error_de([&] { const CarpetaProvisional provisional(carpeta / "disco"); }),
            "«" + (carpeta / "disco").string()
                + "»: no se puede escribir en la carpeta: el disco es de sólo lectura.");
    }

    TEST_F(CarpetaProvisional_, a_file_gets_a_name_that_is_free)
    {
        std::ofstream(carpeta / "nuevo") << "uno";
        EXPECT_TRUE(coloca(carpeta / "nuevo", carpeta / "definitivo"));
        EXPECT_EQ(lee("definitivo"), "uno");
        EXPECT_FALSE(fs::exists(carpeta / "nuevo"));
    }

    TEST_F(CarpetaProvisional_, a_file_never_takes_the_place_of_another)
    {
        std::ofstream(carpeta / "nuevo") << "uno";
        std::ofstream(carpeta / "definitivo") << "otro";
        EXPECT_FALSE(coloca(carpeta / "nuevo", carpeta / "definitivo"));
        EXPECT_EQ(lee("definitivo"), "otro");
        EXPECT_EQ(lee("nuevo"), "uno");
        fs::remove(carpeta / "definitivo");
        fs::create_symlink("a ninguna parte", carpeta / "definitivo");
        EXPECT_FALSE(coloca(carpeta / "nuevo", carpeta / "definitivo"));
    }

    TEST_F(CarpetaProvisional_, a_name_that_cannot_be_given_is_named)
    {
        std::ofstream(carpeta / "nuevo") << "uno";
        EXPECT_EQ(pruebas::error_de(
                      [&] { static_cast<void>(coloca(carpeta / "nuevo", carpeta / "no hay" / "x")); }),
            "«" + (carpeta / "no hay" / "x").string() + "»: no se puede crear el fichero: no existe.");
    }

}
} // namespace atipicos::bases
