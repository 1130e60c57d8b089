#include "tests/support/Aborto.hpp"

#include "runtime/Currency.hpp"

#include <gmock/gmock.h>

#include <vector>

namespace atipicos::pruebas {
namespace {

    /// Handles what `accion` raises as QTest does: takes it, and ends for it.
    template <class Accion> void aborta(Accion accion)
    {
        di_donde_al_abortar([] { return std::string("en mi_prueba"); });
        try {
            accion();
        } catch (...) {
            std::terminate();
        }
    }

    std::string en_linea(int linea) { return "Aborto_test\\.cpp:" + std::to_string(linea); }

    using AbortoDeathTest = testing::Test;

    TEST_F(AbortoDeathTest, of_an_error_says_what_and_in_which_test_and_by_which_line)
    {
        const int linea = __LINE__ + 1;
        EXPECT_DEATH(aborta([] { static_cast<void>(Currency::de_texto("141,22")); }),
            "ABORTADA en mi_prueba: No coinciden los tipos \\(.*" + en_linea(linea));
    }

    TEST_F(AbortoDeathTest, of_somebody_elses_exception_says_by_which_line_of_the_test)
    {
#if defined(__SANITIZE_ADDRESS__)
        GTEST_SKIP() << "the sanitizer watches over exceptions itself";
#endif
        const int linea = __LINE__ + 1;
        EXPECT_DEATH(aborta([] { static_cast<void>(std::vector<int>(3).at(7)); }),
            "ABORTADA en mi_prueba: vector::_M_range_check(.|\n)*" + en_linea(linea));
    }

}
} // namespace atipicos::pruebas
