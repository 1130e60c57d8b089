#include "host/app/Importaciones.hpp"

#include "tests/host/BasesDeMuestra.hpp"

namespace atipicos::app {
namespace {

    using pruebas::cuenta;
    using pruebas::error_de;

    struct ImportacionesDeMuestra : pruebas::BasesDeMuestra {
        Importaciones importaciones{ bases.orvalin, 1, "h" };
        clsAtipico cargo;

        ImportacionesDeMuestra()
        {
            cargo.Cod_Ejercicio = 2026;
            cargo.Cod_Almacen = 3;
            cargo.Codigo = "AT260004";
            guarda(cargo);
        }

        void guarda(const clsAtipico& uno) const
        {
            bases.orvalin->Execute("INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, "
                                   "Cod_Almacen, Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, "
                                   "EjContable, Usuario, Hora, Cod_Compra, Documento, Impuesto, "
                                   "Impuesto_Importe, Tipo) VALUES (1, 2026, 3, '"
                + uno.Codigo + "', 101, '21/11/2026', 1, 0, 1, 2026, 1, '21/11/2026', 0, 0, 0, 0, 0)");
        }
    };

    TEST_F(ImportacionesDeMuestra, remember_the_last_charge_of_a_reference)
    {
        EXPECT_FALSE(importaciones.hay_alguna());
        EXPECT_FALSE(importaciones.busca("R1"));
        importaciones.anota(*bases.orvalin, "R1", 1, cargo);
        EXPECT_TRUE(importaciones.hay_alguna());
        EXPECT_EQ(importaciones.busca("R1").value().vez, 1);

        clsAtipico otro;
        otro.Cod_Ejercicio = 2026;
        otro.Cod_Almacen = 3;
        otro.Codigo = "AT260009";
        guarda(otro);
        importaciones.anota(*bases.orvalin, "R1", 2, otro);
        const auto ultima = importaciones.busca("R1").value();
        EXPECT_EQ(ultima.vez, 2);
        EXPECT_EQ(ultima.clave.Ejercicio, 2026);
        EXPECT_EQ(ultima.clave.Almacen, 3);
        EXPECT_EQ(ultima.clave.Codigo, "AT260009");
    }

    TEST_F(ImportacionesDeMuestra, are_those_of_one_file_and_company)
    {
        importaciones.anota(*bases.orvalin, "R1", 1, cargo);
        EXPECT_FALSE(importaciones.busca("R2"));
        EXPECT_FALSE(Importaciones(bases.orvalin, 1, "i").hay_alguna());
        EXPECT_FALSE(Importaciones(bases.orvalin, 2, "h").busca("R1"));
    }

    TEST_F(ImportacionesDeMuestra, of_a_charge_that_is_not_there_are_not_remembered)
    {
        cargo.Codigo = "AT260005";
        importaciones.anota(*bases.orvalin, "R1", 1, cargo);
        EXPECT_EQ(cuenta(*bases.orvalin, "Importaciones"), 0);
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
