#include "engines/postgresql/Direccion.hpp"

#include "platform/adodb/Connection.hpp"

#include <gmock/gmock.h>

namespace atipicos::postgresql {
namespace {

    /// The parameters of an address, and whether statements are prepared.
    std::string en(const std::string& direccion)
    {
        try {
            const auto leida = lee_direccion(direccion, Donde::aqui());
            std::string texto = leida.preparadas ? "prepared" : "not prepared";
            for (const auto& [nombre, valor] : leida.parametros)
                texto.append("|").append(nombre).append("=").append(valor);
            return texto;
        } catch (const adodb::ErrorBaseDatos& error) {
            EXPECT_EQ(error.categoria(), adodb::Categoria::conexion);
            return error.descripcion();
        }
    }

    TEST(Direccion, gives_what_the_client_library_understands)
    {
        EXPECT_EQ(en("postgresql://begona@servidor:5433/empresa?sslmode=verify-full"),
            "prepared|dbname=empresa|host=servidor|port=5433|sslmode=verify-full|user=begona");
        EXPECT_EQ(en("host=servidor dbname='mi empresa'"), "prepared|dbname=mi empresa|host=servidor");
    }

    TEST(Direccion, preparing_can_be_switched_off_wherever_a_parameter_stands)
    {
        for (const auto* direccion : { "postgresql://s/e?preparadas=no", "postgres://s/e?preparadas=no",
                 "host=s preparadas=no dbname=e", "preparadas=no host=s dbname=e",
                 "host=s dbname=e preparadas=no" })
            EXPECT_EQ(en(direccion), "not prepared|dbname=e|host=s") << direccion;
        for (const auto* direccion :
            { "postgresql://s/e?preparadas=no&port=7", "postgresql://s/e?port=7&preparadas=no",
                "postgresql://s/e?preparadas=no&port=7", "port=7 preparadas=no host=s dbname=e" })
            EXPECT_EQ(en(direccion), "not prepared|dbname=e|host=s|port=7") << direccion;
        EXPECT_EQ(
            en("postgresql://s/e?port=7&preparadas=no&user=u"), "not prepared|dbname=e|host=s|port=7|user=u");
        EXPECT_EQ(en("postgresql://s/e?preparadas=si"), "prepared|dbname=e|host=s");
    }

    TEST(Direccion, a_value_that_looks_like_the_parameter_is_a_value)
    {
        EXPECT_EQ(en("host=s dbname='a preparadas=no b\\' preparadas=no'"),
            "prepared|dbname=a preparadas=no b' preparadas=no|host=s");
        EXPECT_EQ(en("postgresql://s/e_preparadas=no"), "prepared|dbname=e_preparadas=no|host=s");
    }

    TEST(Direccion, says_for_how_long_a_lost_line_is_tried)
    {
        const auto segundos = [](const std::string& direccion) {
            return lee_direccion(direccion, Donde::aqui()).reintento.count();
        };
        EXPECT_EQ(segundos("postgresql://s/e"), 120);
        EXPECT_EQ(segundos("postgresql://s,t/e?reintento=0&preparadas=no"), 0);
        EXPECT_EQ(segundos("host=s reintento=300 dbname=e"), 300);
        EXPECT_EQ(segundos("postgresql://s/e?reintento=86400"), 86'400) << "a day";
        EXPECT_EQ(en("postgresql://s,t/e?preparadas=no&reintento=30&port=7"),
            "not prepared|dbname=e|host=s,t|port=7");
        for (const auto* valor : { "", "-1", "un rato", "3s", "86401", "99999999999999" })
            EXPECT_EQ(en(std::string("postgresql://s/e?reintento=") + valor),
                "El parámetro reintento de la dirección de la base de datos es un número de segundos, de 0 a "
                "86400.");
    }

    TEST(Direccion, what_is_not_understood_is_not_repeated)
    {
        EXPECT_EQ(en("postgresql://s/e?preparadas=quiza"),
            "El parámetro preparadas de la dirección de la base de datos es «si» o «no».");
        EXPECT_THAT(
            en("postgresql://s/e?secreto=1"), testing::StartsWith("La dirección de la base de datos no se"));
        EXPECT_THAT(en("host=s password=secreto"), testing::StartsWith("La contraseña no se escribe"));
    }

}
}
