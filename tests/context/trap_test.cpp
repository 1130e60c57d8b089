#include "context/trap.hpp"

#include "tests/support/Contexto.hpp"

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

namespace atipicos {
namespace {

    TEST(trap, shows_and_clears_the_error_with_tag_line_icon_and_button)
    {
        const pruebas::Contexto contexto;
        const int linea = __LINE__ + 1;
        const bool bien = trap("clsX:Y", [] { throw Error(1, "fuente", "algo falló"); });
        EXPECT_FALSE(bien);
        ASSERT_EQ(contexto.avisos->dichos.size(), 1U);
        const auto& aviso = contexto.avisos->dichos[0];
        EXPECT_EQ(aviso.titulo, "clsX:Y");
        EXPECT_EQ(aviso.texto, "[" + std::to_string(linea) + "] algo falló");
        EXPECT_EQ(aviso.icono, Icono::critico);
        EXPECT_EQ(aviso.botones, Botones::Aceptar);
    }

    TEST(trap, says_nothing_and_returns_true_when_all_went_well)
    {
        const pruebas::Contexto contexto;
        EXPECT_TRUE(trap("clsX:Y", [] {}));
        EXPECT_TRUE(contexto.avisos->dichos.empty());
    }

    TEST(trap, the_first_line_of_a_source_is_a_line_too)
    {
        const auto texto = [](Donde donde) { return mensaje_error("t", Error(1, "f", "algo", donde)).texto; };
        EXPECT_EQ(texto(Donde::aqui(1)), "[1] algo");
        EXPECT_EQ(texto(Donde{}), "algo");
    }

    TEST(trap, leaves_the_bracketed_line_out_when_it_is_not_known)
    {
        const pruebas::Contexto contexto;
        trap("t", [] { throw Error(1, "f", "sin lugar", Donde{}); });
        EXPECT_EQ(contexto.avisos->dichos.at(0).texto, "sin lugar");
    }

    TEST(trap, leaves_the_bracketed_line_out_where_the_procedure_shows_the_description_alone)
    {
        const pruebas::Contexto contexto;
        trap(
            "t", [] { throw Error(1, "f", "solo esto"); }, TextoError::SoloDescripcion);
        EXPECT_EQ(contexto.avisos->dichos.at(0).texto, "solo esto");
    }

    TEST(trap, reports_memory_and_foreign_exceptions_as_errors_of_the_component)
    {
        const pruebas::Contexto contexto;
        trap("t", [] { throw std::bad_alloc(); });
        trap("t", [] { throw std::runtime_error("ajeno"); });
        trap("t", [] { throw 5; });
        EXPECT_EQ(contexto.avisos->dichos.at(0).texto, "Memoria insuficiente");
        EXPECT_EQ(contexto.avisos->dichos.at(1).texto, "ajeno");
        EXPECT_EQ(contexto.avisos->dichos.at(2).texto, "Error interno");
    }

    TEST(trap, an_unset_reference_is_reported_with_the_line_that_used_it)
    {
        const pruebas::Contexto contexto;
        modComun::set_ConexionOrvalin(nullptr);
        const int linea = __LINE__ + 1;
        trap("t", [] { modComun::ConexionOrvalin()->BeginTrans(); });
        EXPECT_EQ(contexto.avisos->dichos.at(0).texto,
            "[" + std::to_string(linea) + "] La variable de objeto no está establecida");
    }

}
}
