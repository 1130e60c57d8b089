#include "runtime/MotivoSistema.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <string>

namespace atipicos {
namespace {

    TEST(MotivoSistema, speaks_spanish_of_what_a_person_can_mend)
    {
        const std::map<int, std::string> motivos{ { ENOENT, "no existe" },
            { ENOTDIR, "una parte de su ruta no es una carpeta" }, { EISDIR, "es una carpeta" },
            { EACCES, "no hay permiso" }, { EPERM, "no hay permiso" },
            { EROFS, "el disco es de sólo lectura" }, { ENOSPC, "no queda sitio en el disco" },
            { EDQUOT, "no queda sitio en el disco" }, { EFBIG, "el fichero es demasiado grande" },
            { ENAMETOOLONG, "el nombre es demasiado largo" },
            { ELOOP, "sus enlaces no llevan a ningún sitio" }, { EMFILE, "hay demasiados ficheros abiertos" },
            { ENFILE, "hay demasiados ficheros abiertos" }, { EBUSY, "está en uso" },
            { ETXTBSY, "está en uso" }, { EIO, "el disco ha fallado" } };
        for (const auto& [numero, motivo] : motivos)
            EXPECT_EQ(motivo_sistema(numero), motivo) << numero;
    }

    TEST(MotivoSistema, gives_the_number_of_anything_else)
    {
        EXPECT_EQ(motivo_sistema(EDOM), "error " + std::to_string(EDOM) + " del sistema");
    }

}
}
