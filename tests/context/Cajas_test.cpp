#include "context/Cajas.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    TEST(Cajas, tells_with_the_common_title_and_an_exclamation_unless_told_otherwise)
    {
        const pruebas::Contexto contexto;
        avisa("Debe especificar el Almacén");
        avisa(" Se esperaba Fecha ", Icono::informacion, "otro");
        EXPECT_THAT(contexto.avisos->dichos,
            testing::ElementsAre(Mensaje{ "Debe especificar el Almacén", "¡ Atención !", Icono::exclamacion },
                Mensaje{ " Se esperaba Fecha ", "otro", Icono::informacion }));
    }

    TEST(Cajas, a_question_is_answered_no_by_enter)
    {
        const pruebas::Contexto contexto;
        EXPECT_FALSE(confirma("¿Seguro?"));
        contexto.avisos->respuestas.push_back(Respuesta::Si);
        EXPECT_TRUE(confirma("¿Seguro?", "Confirmar"));
        EXPECT_THAT(contexto.avisos->dichos,
            testing::ElementsAre(
                Mensaje{ "¿Seguro?", "¡ Atención !", Icono::pregunta, Botones::SiNo, Respuesta::No },
                Mensaje{ "¿Seguro?", "Confirmar", Icono::pregunta, Botones::SiNo, Respuesta::No }));
    }

}
}
