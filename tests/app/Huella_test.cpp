#include "host/reclamaciones/Huella.hpp"

#include <gtest/gtest.h>

namespace atipicos::app {
namespace {

    TEST(Huella, is_the_sha_256_of_the_pieces_together)
    {
        Huella una;
        una.agrega("a");
        una.agrega("");
        una.agrega("bc");
        EXPECT_EQ(una.texto(), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
        EXPECT_EQ(Huella().texto(), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    }

    TEST(Huella, a_text_is_stood_for_by_half_of_it)
    {
        EXPECT_EQ(resumen_de("R1"), resumen_de("R1"));
        EXPECT_NE(resumen_de("R1"), resumen_de("R2"));
        EXPECT_NE(resumen_de("R1")[0], resumen_de("R1")[1]);
    }

}
}
