#include "context/HastaElFinal.hpp"

#include "runtime/Error.hpp"

#include <gtest/gtest.h>

#include <string>

namespace atipicos {
namespace {

    TEST(HastaElFinal, all_are_done_and_the_first_error_is_raised)
    {
        std::string hechos;
        HastaElFinal pasos;
        pasos.haz([&] { hechos += "a"; });
        pasos.haz([&] {
            hechos += "b";
            throw Error(7, "f", "primero");
        });
        pasos.haz([&] {
            hechos += "c";
            throw Error(8, "f", "segundo");
        });
        pasos.haz([&] { hechos += "d"; });
        EXPECT_EQ(hechos, "abcd");
        try {
            pasos.termina();
            FAIL() << "nothing was raised";
        } catch (const Error& error) {
            EXPECT_EQ(error.descripcion(), "primero");
        }
    }

    TEST(HastaElFinal, without_an_error_nothing_is_raised)
    {
        HastaElFinal pasos;
        pasos.haz([] {});
        EXPECT_NO_THROW(pasos.termina());
    }

}
}
