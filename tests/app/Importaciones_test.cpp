#include "host/reclamaciones/Importaciones.hpp"

#include "tests/host/BasesDeMuestra.hpp"

namespace atipicos::app {
namespace {

    using pruebas::error_de;

    struct ImportacionesDeMuestra : pruebas::BasesDeMuestra {
        Importaciones importaciones{ bases.orvalin, 1, "h" };
        const ClaveAtipico cargo{ 2026, 3, "AT260004" };
    };

    TEST_F(ImportacionesDeMuestra, remember_the_last_charge_of_a_reference)
    {
        EXPECT_FALSE(importaciones.hay_alguna());
        EXPECT_FALSE(importaciones.busca("R1"));
        importaciones.anota(*bases.orvalin, "R1", 1, cargo);
        EXPECT_TRUE(importaciones.hay_alguna());
        EXPECT_EQ(importaciones.busca("R1").value().vez, 1);

        importaciones.anota(*bases.orvalin, "R1", 2, { 2025, 4, "AT250009" });
        const auto ultima = importaciones.busca("R1").value();
        EXPECT_EQ(ultima.vez, 2);
        EXPECT_EQ(ultima.clave.Ejercicio, 2025);
        EXPECT_EQ(ultima.clave.Almacen, 4);
        EXPECT_EQ(ultima.clave.Codigo, "AT250009");
    }

    TEST_F(ImportacionesDeMuestra, are_those_of_one_file_and_company)
    {
        importaciones.anota(*bases.orvalin, "R1", 1, cargo);
        EXPECT_FALSE(importaciones.busca("R2"));
        EXPECT_FALSE(Importaciones(bases.orvalin, 1, "i").hay_alguna());
        EXPECT_FALSE(Importaciones(bases.orvalin, 2, "h").busca("R1"));
    }

    TEST_F(ImportacionesDeMuestra, that_another_has_made_meanwhile_are_told)
    {
        importaciones.anota(*bases.orvalin, "R1", 1, cargo);
        EXPECT_EQ(error_de([&] { importaciones.anota(*bases.orvalin, "R1", 1, cargo); }),
            "Otro proceso acaba de registrar «R1» de este fichero como AT260004.");
    }

    TEST_F(ImportacionesDeMuestra, any_other_failure_of_the_database_is_told_as_it_is)
    {
        bases.orvalin->Execute("CREATE TRIGGER no BEFORE INSERT ON Importaciones"
                               " BEGIN SELECT RAISE(ABORT, 'no se admite'); END");
        EXPECT_EQ(error_de([&] { importaciones.anota(*bases.orvalin, "R1", 1, cargo); }), "no se admite");
    }

}
}
