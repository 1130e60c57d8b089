#include "context/Transaccion.hpp"

#include "tests/support/ConexionDePrueba.hpp"
#include "tests/support/ConexionEspia.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    using testing::ElementsAre;

    TEST(Transaccion, is_rolled_back_when_it_is_left_without_confirming)
    {
        const auto conexion = std::make_shared<pruebas::ConexionDePrueba>();
        {
            const Transaccion transaccion(conexion);
        }
        EXPECT_THAT(conexion->dichas, ElementsAre("BEGIN", "ROLLBACK"));
    }

    TEST(Transaccion, is_committed_once_when_confirmed)
    {
        const auto conexion = std::make_shared<pruebas::ConexionDePrueba>();
        {
            Transaccion transaccion(conexion);
            transaccion.Confirma();
        }
        EXPECT_THAT(conexion->dichas, ElementsAre("BEGIN", "COMMIT"));
    }

    TEST(Transaccion, is_rolled_back_when_the_commit_fails)
    {
        const auto real = std::make_shared<pruebas::ConexionDePrueba>();
        const auto parte = std::make_shared<pruebas::Parte>();
        parte->falla_en = 2;
        const auto conexion = std::make_shared<pruebas::ConexionEspia>("g", real, parte);
        {
            Transaccion transaccion(conexion);
            EXPECT_THROW(transaccion.Confirma(), adodb::ErrorBaseDatos);
        }
        EXPECT_THAT(parte->dichas, ElementsAre("g BEGIN", "g COMMIT", "g ROLLBACK"));
        EXPECT_THAT(real->dichas, ElementsAre("BEGIN", "ROLLBACK"));
    }

    TEST(Transaccion, swallows_the_failure_of_a_roll_back_on_a_lost_connection)
    {
        const auto parte = std::make_shared<pruebas::Parte>();
        parte->falla_en = 2;
        parte->conexion_perdida = true;
        const auto conexion = std::make_shared<pruebas::ConexionEspia>(
            "g", std::make_shared<pruebas::ConexionDePrueba>(), parte);
        EXPECT_NO_THROW({
            const Transaccion transaccion(conexion);
            EXPECT_THROW(
                conexion->Execute("X", nullptr, adodb::CommandType::Text, Donde{}), adodb::ErrorBaseDatos);
        });
    }

    TEST(Transaccion, holds_the_connection_on_which_it_began)
    {
        auto conexion = std::make_shared<pruebas::ConexionDePrueba>();
        const std::weak_ptr<pruebas::ConexionDePrueba> vista = conexion;
        {
            const Transaccion transaccion(std::move(conexion));
            EXPECT_FALSE(vista.expired());
        }
        EXPECT_TRUE(vista.expired());
    }

}
}
