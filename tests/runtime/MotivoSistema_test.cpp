#include "runtime/MotivoSistema.hpp"

#include <gtest/gtest.h>

#include <cerrno>

namespace atipicos {
namespace {

    TEST(MotivoSistema, speaks_spanish_of_what_a_person_can_mend)
    {
        EXPECT_EQ(motivo_sistema(ENOENT), "no existe");
        EXPECT_EQ(motivo_sistema(EACCES), "no hay permiso");
        EXPECT_EQ(motivo_sistema(ENOSPC), "no queda sitio en el disco");
        EXPECT_EQ(motivo_sistema(EROFS), "el disco es de sólo lectura");
        EXPECT_EQ(motivo_sistema(ENAMETOOLONG), "el nombre es demasiado largo");
    }

    TEST(MotivoSistema, gives_the_number_of_anything_else)
    {
        EXPECT_EQ(motivo_sistema(EDOM), "error " + std::to_string(EDOM) + " del sistema");
    }

}
}
