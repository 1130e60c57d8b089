#include "context/modComun.hpp"

#include "tests/support/Contexto.hpp"

#include <gtest/gtest.h>

namespace atipicos {
namespace {

    using pruebas::ConexionDePrueba;
    using pruebas::EmpresaDePrueba;

    template <class Uso> void espera_error_91(Uso uso, std::uint32_t linea)
    {
        try {
            uso();
            FAIL() << "no error was raised";
        } catch (const Error& error) {
            EXPECT_EQ(error.numero(), 91);
            EXPECT_EQ(error.descripcion(), "La variable de objeto no está establecida");
            EXPECT_EQ(error.donde().linea(), linea);
        }
    }

    TEST(modComun, raises_error_91_with_the_line_of_use_while_a_reference_is_not_set)
    {
        pruebas::vacia_contexto();
        espera_error_91([] { static_cast<void>(modComun::EmpresaOrvalin()); }, __LINE__);
        espera_error_91([] { static_cast<void>(modComun::ConexionOrvalin()); }, __LINE__);
        espera_error_91([] { static_cast<void>(modComun::EmpresaBexmor()); }, __LINE__);
        espera_error_91([] { static_cast<void>(modComun::ConexionBexmor()); }, __LINE__);
        espera_error_91([] { static_cast<void>(modComun::Avisos()); }, __LINE__);
        espera_error_91([] { static_cast<void>(modComun::reloj()); }, __LINE__);
        espera_error_91([] { static_cast<void>(modComun::BibliotecaOrvalin()); }, __LINE__);
    }

    TEST(modComun, the_last_reference_set_wins)
    {
        const pruebas::Contexto contexto;
        const auto otra = std::make_shared<EmpresaDePrueba>();
        modComun::set_EmpresaOrvalin(otra);
        EXPECT_EQ(modComun::EmpresaOrvalin().get(), otra.get());
        modComun::set_EmpresaOrvalin(contexto.empresa);
        EXPECT_EQ(modComun::EmpresaOrvalin().get(), contexto.empresa.get());
    }

    TEST(modComun, setting_takes_a_new_hold_and_drops_the_previous_one)
    {
        const pruebas::Contexto contexto;
        auto primera = std::make_shared<ConexionDePrueba>();
        const std::weak_ptr<ConexionDePrueba> vista = primera;
        modComun::set_ConexionOrvalin(std::move(primera));
        EXPECT_FALSE(vista.expired()) << "the component holds it after the host has let go";
        modComun::set_ConexionOrvalin(contexto.gestion);
        EXPECT_TRUE(vista.expired());
    }

    TEST(modComun, checks_nothing_when_a_reference_is_set)
    {
        const pruebas::Contexto contexto;
        modComun::set_ConexionOrvalin(nullptr);
        EXPECT_TRUE(contexto.gestion->dichas.empty());
        EXPECT_TRUE(contexto.empresa->preguntas.empty());
    }

}
}
