#include "host/bases/FicheroNuevo.hpp"

#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/DiscoLleno.hpp"
#include "tests/support/DiscoPequeno.hpp"

#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace atipicos::bases {
namespace {

    namespace fs = std::filesystem;

    struct FicheroNuevo : testing::Test {
        pruebas::CarpetaTemporal carpeta;
        const std::string contenido = std::string(300'000, 'a') + "\nñ";

        std::string lee(const char* nombre) const
        {
            std::ifstream flujo(carpeta / nombre, std::ios::binary);
            return { std::istreambuf_iterator<char>(flujo), {} };
        }
        std::size_t entradas() const
        {
            return static_cast<std::size_t>(
                std::distance(fs::directory_iterator(carpeta.ruta()), fs::directory_iterator()));
        }
    };

    TEST_F(FicheroNuevo, holds_what_was_given_and_is_alone)
    {
        const auto antes = umask(027);
        EXPECT_TRUE(escribe_nuevo(carpeta / "a.db", contenido));
        umask(antes);
        EXPECT_EQ(lee("a.db"), contenido);
        EXPECT_EQ(entradas(), 1U);
        EXPECT_EQ(fs::status(carpeta / "a.db").permissions(), fs::perms(0640));
    }

    TEST_F(FicheroNuevo, is_found_from_the_folder_one_stands_in)
    {
        const auto antes = fs::current_path();
        fs::current_path(carpeta.ruta());
        EXPECT_TRUE(escribe_nuevo("a.db", contenido));
        fs::current_path(antes);
        EXPECT_EQ(lee("a.db"), contenido);
    }

    TEST_F(FicheroNuevo, never_takes_the_place_of_another)
    {
        std::ofstream(carpeta / "a.db") << "de otro";
        fs::create_symlink("a ninguna parte", carpeta / "b.db");
        EXPECT_FALSE(escribe_nuevo(carpeta / "a.db", contenido));
        EXPECT_FALSE(escribe_nuevo(carpeta / "b.db", contenido));
        EXPECT_EQ(lee("a.db"), "de otro");
        EXPECT_EQ(entradas(), 2U);
    }

    TEST_F(FicheroNuevo, that_several_write_at_once_is_written_by_one_of_them)
    {
        constexpr int cuantos = 6;
        for (int i = 0; i < cuantos; ++i)
            if (fork() == 0)
                _exit(escribe_nuevo(carpeta / "a.db", std::string(200'000, static_cast<char>('a' + i))) ? 1
                                                                                                        : 0);
        int escritos = 0;
        for (int i = 0; i < cuantos; ++i) {
            int estado = 0;
            wait(&estado);
            escritos += WEXITSTATUS(estado);
        }
        EXPECT_EQ(escritos, 1);
        EXPECT_EQ(lee("a.db"), std::string(200'000, lee("a.db").at(0)));
        EXPECT_EQ(entradas(), 1U);
    }

    TEST_F(FicheroNuevo, leaves_nothing_when_it_does_not_fit)
    {
        for (const rlim_t bytes : { 100'000U, 280'000U }) { // the last block fits in part
            const pruebas::DiscoLleno lleno(bytes);
            EXPECT_EQ(
                pruebas::error_de([&] { static_cast<void>(escribe_nuevo(carpeta / "a.db", contenido)); }),
                "«" + (carpeta / "a.db").string()
                    + "»: no se puede crear el fichero: el fichero es demasiado grande.");
            EXPECT_EQ(entradas(), 0U);
        }
    }

    TEST_F(FicheroNuevo, where_nothing_can_be_written_says_so)
    {
        EXPECT_EQ(pruebas::error_de([&] { static_cast<void>(escribe_nuevo(carpeta / "no hay/a.db", "x")); }),
            "«" + (carpeta / "no hay").string() + "»: no se puede escribir en la carpeta: no existe.");
        const pruebas::DiscoPequeno disco(carpeta / "disco");
        if (!disco.montado() || !disco.protege())
            GTEST_SKIP() << "mounting a small disk needs root";
        EXPECT_EQ(pruebas::error_de([&] { static_cast<void>(escribe_nuevo(carpeta / "disco/a.db", "x")); }),
            "«" + (carpeta / "disco").string()
                + "»: no se puede escribir en la carpeta: el disco es de sólo lectura.");
    }

}
} // namespace atipicos::bases
