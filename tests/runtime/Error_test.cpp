#include "runtime/Error.hpp"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace atipicos {
namespace {

    static_assert(std::is_base_of_v<std::exception, Error>);
    static_assert(std::is_nothrow_destructible_v<Error>);
    static_assert(std::is_trivially_copyable_v<Donde>);
    static_assert(Donde().linea() == 0);

    TEST(Error, run_time_errors_have_their_standard_text_and_source)
    {
        const std::pair<std::int32_t, const char*> textos[] = {
            { 5, "Llamada a procedimiento o argumento no válidos" },
            { 6, "Desbordamiento" },
            { 7, "Memoria insuficiente" },
            { 11, "División por cero" },
            { 13, "No coinciden los tipos" },
            { 51, "Error interno" },
            { 91, "La variable de objeto no está establecida" },
            { 94, "Uso no válido de Null" },
        };
        for (const auto& [numero, texto] : textos) {
            const auto error = Error::de_ejecucion(numero);
            EXPECT_EQ(error.numero(), numero);
            EXPECT_EQ(error.fuente(), "QVORComprasAtip");
            EXPECT_EQ(error.descripcion(), texto);
        }
    }

    TEST(Error, a_number_without_text_keeps_its_number)
    {
        const auto error = Error::de_ejecucion(777);
        EXPECT_EQ(error.numero(), 777);
        EXPECT_EQ(error.descripcion(), "Error interno");
    }

    TEST(Error, keeps_what_it_was_raised_with)
    {
        const auto linea = __LINE__ + 1;
        const Error error(1000, "QVORComprasAtip:Prueba", "No existe");
        EXPECT_EQ(error.numero(), 1000);
        EXPECT_EQ(error.fuente(), "QVORComprasAtip:Prueba");
        EXPECT_EQ(error.descripcion(), "No existe");
        EXPECT_STREQ(error.what(), "No existe");
        EXPECT_EQ(error.donde().linea(), linea);
        EXPECT_STREQ(error.donde().fichero(), __FILE__);
    }

    Error pedido(Donde donde = Donde::aqui()) { return Error::de_ejecucion(6, donde); }

    TEST(Error, a_place_passed_on_names_the_line_that_asked)
    {
        const auto linea = __LINE__ + 1;
        const auto error = pedido();
        EXPECT_EQ(error.donde().linea(), linea);
    }

    TEST(Error, an_unknown_place_is_line_0_of_no_file)
    {
        EXPECT_EQ(Donde().linea(), 0U);
        EXPECT_STREQ(Donde().fichero(), "");
    }

}
}
