#include "host/reclamaciones/FicheroPorTrozos.hpp"

#include "runtime/Error.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <sys/stat.h>
#include <thread>

namespace atipicos::app {
namespace {

    struct Fichero : testing::Test {
        pruebas::CarpetaTemporal carpeta;

        static std::string lee(FicheroPorTrozos& fichero)
        {
            std::string todo;
            fichero.empieza();
            for (auto trozo = fichero.trozo(); !trozo.empty(); trozo = fichero.trozo())
                todo += trozo;
            return todo;
        }

        static std::string huella_de(const std::string& texto)
        {
            Huella una;
            una.agrega(texto);
            return una.texto();
        }

        static std::string largo()
        {
            std::string texto;
            for (int i = 0; i < 30'000; ++i)
                texto += std::to_string(i) + ";";
            return texto;
        }
    };

    TEST_F(Fichero, is_read_as_often_as_wanted_and_known_by_its_digest)
    {
        const auto texto = largo();
        std::ofstream(carpeta / "r.csv", std::ios::binary) << texto;
        FicheroPorTrozos fichero(carpeta / "r.csv");
        for (int vez = 0; vez < 2; ++vez) {
            EXPECT_EQ(lee(fichero), texto);
            EXPECT_EQ(fichero.huella(), huella_de(texto));
        }
        std::ofstream(carpeta / "r.csv", std::ios::binary | std::ios::app) << "x";
        EXPECT_EQ(lee(fichero), texto + "x");
        EXPECT_EQ(fichero.huella(), huella_de(texto + "x"));
    }

    TEST_F(Fichero, only_its_last_piece_is_short)
    {
        std::ofstream(carpeta / "r.csv", std::ios::binary) << std::string(100'000, 'a');
        FicheroPorTrozos fichero(carpeta / "r.csv");
        fichero.empieza();
        const auto primero = fichero.trozo().size();
        EXPECT_LT(primero, 100'000U);
        EXPECT_EQ(fichero.trozo().size(), 100'000U - primero);
        EXPECT_EQ(fichero.trozo().size(), 0U);
    }

    TEST_F(Fichero, may_be_a_pipe)
    {
        const auto texto = largo();
        const auto tuberia = carpeta / "tuberia";
        ASSERT_EQ(mkfifo(tuberia.c_str(), 0600), 0);
        std::thread otro([&] { std::ofstream(tuberia, std::ios::binary) << texto; });
        FicheroPorTrozos fichero(tuberia);
        otro.join();
        EXPECT_EQ(lee(fichero), texto);
        EXPECT_EQ(lee(fichero), texto);
        EXPECT_EQ(fichero.huella(), huella_de(texto));
    }

    TEST_F(Fichero, that_cannot_be_read_is_told)
    {
        for (const auto& [nombre, motivo] :
            { std::pair{ "no_hay.csv", "No se puede leer «@/no_hay.csv»: no existe." },
                { "", "«@/» es una carpeta, no un fichero." } }) {
            try {
                const FicheroPorTrozos fichero(carpeta.ruta() / nombre);
                ADD_FAILURE() << nombre;
            } catch (const Error& error) {
                auto esperado = std::string(motivo);
                esperado.replace(esperado.find('@'), 1, carpeta.ruta().string());
                EXPECT_EQ(error.descripcion(), esperado);
            }
        }
    }

}
}
