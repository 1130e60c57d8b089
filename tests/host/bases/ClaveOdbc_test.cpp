#include "host/bases/ClaveOdbc.hpp"

#include "tests/host/BasesDeMuestra.hpp"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>

namespace atipicos::bases {
namespace {

    using pruebas::error_de;
    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::Not;

    struct ClaveOdbc : testing::Test {
        pruebas::CarpetaTemporal carpeta;
        std::filesystem::path fichero = carpeta / "clave";

        void SetUp() override
        {
            unsetenv("ATIPICOS_ODBC_CLAVE");
            unsetenv("ATIPICOS_ODBC_FICHERO_CLAVE");
            std::ofstream(fichero) << "secreto; {}\nmás\n";
        }
        void TearDown() override { SetUp(); }
    };

    TEST_F(ClaveOdbc, comes_from_the_environment_or_from_a_file_that_only_its_owner_reads)
    {
        EXPECT_EQ(clave_odbc(), "");
        setenv("ATIPICOS_ODBC_FICHERO_CLAVE", fichero.c_str(), 1);
        std::filesystem::permissions(fichero, std::filesystem::perms::owner_read);
        EXPECT_EQ(clave_odbc(), "secreto; {}");
        setenv("ATIPICOS_ODBC_CLAVE", "otra", 1);
        EXPECT_EQ(clave_odbc(), "otra");
    }

    TEST_F(ClaveOdbc, is_not_taken_from_a_file_that_others_read_and_never_repeated)
    {
        setenv("ATIPICOS_ODBC_FICHERO_CLAVE", fichero.c_str(), 1);
        std::filesystem::permissions(
            fichero, std::filesystem::perms::group_read, std::filesystem::perm_options::add);
        const auto error = error_de([] { static_cast<void>(clave_odbc()); });
        EXPECT_THAT(error, HasSubstr("otros usuarios pueden leer el fichero de la contraseña"));
        EXPECT_THAT(error, Not(HasSubstr("secreto")));
        setenv("ATIPICOS_ODBC_FICHERO_CLAVE", (carpeta / "no-hay").c_str(), 1);
        EXPECT_THAT(error_de([] { static_cast<void>(clave_odbc()); }),
            EndsWith("»: no se puede leer el fichero de la contraseña."));
    }

}
}
