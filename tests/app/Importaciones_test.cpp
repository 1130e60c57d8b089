#include "host/reclamaciones/Importaciones.hpp"

#include "editor/GuardarAtipico.hpp"
#include "tests/host/Suite.hpp"

namespace atipicos::app {
namespace {

    using pruebas::error_de;
    using testing::IsEmpty;
    using testing::SizeIs;

    struct ImportacionesDeMuestra : pruebas::Suite {
        Importaciones importaciones{ bases.orvalin, 1, "h" };
        const ClaveCargo cargo{ 2026, 3, "AT260004" };
        const CargoTecleado tecleado;
    };

    TEST_F(ImportacionesDeMuestra, remember_each_time_of_a_reference_whatever_the_file)
    {
        EXPECT_THAT(importaciones.busca("R1"), IsEmpty());
        importaciones.anota(*bases.orvalin, "R1", "c", 1, cargo);
        Importaciones(bases.orvalin, 1, "i").anota(*bases.orvalin, "R1", "d", 2, { 2025, 4, "AT250009" });
        importaciones.anota(*bases.orvalin, "R'3", "c", 1, { 2026, 3, "AT260005" });

        const auto veces = importaciones.busca("R1");
        ASSERT_THAT(veces, SizeIs(2));
        EXPECT_EQ(veces[0].contenido, "c");
        EXPECT_EQ(veces[1].vez, 2);
        EXPECT_EQ(veces[1].contenido, "d");
        EXPECT_EQ(veces[1].huella, "i");
        EXPECT_EQ(veces[1].clave.Ejercicio, 2025);
        EXPECT_EQ(veces[1].clave.Almacen, 4);
        EXPECT_EQ(veces[1].clave.Codigo, "AT250009");

        const auto todas = importaciones.busca(std::vector<std::string>{ "R1", "R2", "R'3" });
        ASSERT_THAT(todas, SizeIs(2));
        EXPECT_THAT(todas.at("R1"), SizeIs(2));
        EXPECT_EQ(todas.at("R'3").front().clave.Codigo, "AT260005");
        EXPECT_THAT(importaciones.busca(std::vector<std::string>{}), IsEmpty());
    }

    TEST_F(ImportacionesDeMuestra, are_those_of_one_company)
    {
        importaciones.anota(*bases.orvalin, "R1", "c", 1, cargo);
        EXPECT_THAT(importaciones.busca("R2"), IsEmpty());
        EXPECT_THAT(Importaciones(bases.orvalin, 2, "h").busca("R1"), IsEmpty());
    }

    TEST_F(ImportacionesDeMuestra, find_the_last_time_at_which_the_claim_said_the_same)
    {
        const std::vector<Importada> veces{ { 1, cargo, "h", "c" }, { 2, cargo, "h", "d" },
            { 3, cargo, "i", "c" }, { 4, cargo, "h", "e" } };
        EXPECT_EQ(importaciones.la_misma(veces, { "c", tecleado }), &veces[2]);
        EXPECT_EQ(importaciones.la_misma(veces, { "d", tecleado }), &veces[1]);
        EXPECT_EQ(importaciones.la_misma(veces, { "x", tecleado }), nullptr);
        EXPECT_EQ(importaciones.la_misma({}, { "c", tecleado }), nullptr);
    }

    TEST_F(ImportacionesDeMuestra, of_an_earlier_program_are_known_by_their_file_or_by_their_charge)
    {
        bases.orvalin->Execute(
            "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, "
            "Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Cod_Compra, "
            "Documento, Impuesto, Impuesto_Importe, Tipo) VALUES (1, 2026, 3, 'AT260004', 103, '19/11/2026', "
            "21.5, 0, 2, 2026, 1, '20/11/2026', 0, 0, 7, 1.51, 0)");
        CargoTecleado suyo;
        suyo.Almacen = 3;
        suyo.Proveedor = 103;
        suyo.Fecha = Date::de_texto("19/11/2026").value();
        suyo.Total = Currency::de_texto("21.5");
        const std::vector<Importada> de_otro_fichero{ { 1, cargo, "otro", "" } };
        const auto es = [&](const CargoTecleado& que) {
            return importaciones.la_misma(de_otro_fichero, { "c", que }) != nullptr;
        };
        EXPECT_TRUE(es(suyo));
        auto otro = suyo;
        otro.Total = Currency::de_texto("21.51");
        EXPECT_FALSE(es(otro));
        otro = suyo;
        otro.Proveedor = 104;
        EXPECT_FALSE(es(otro));
        otro = suyo;
        otro.Almacen = 4;
        EXPECT_FALSE(es(otro));
        otro = suyo;
        otro.Fecha = Date::de_texto("18/11/2026").value();
        EXPECT_FALSE(es(otro));
        EXPECT_NE(
            importaciones.la_misma(std::vector<Importada>{ { 1, cargo, "h", "" } }, { "c", otro }), nullptr)
            << "it is the very file";
        EXPECT_NE(importaciones.la_misma(
                      std::vector<Importada>{ { 1, { 2026, 3, "AT269999" }, "otro", "" } }, { "c", otro }),
            nullptr)
            << "of a charge that is gone nothing else can be said";
    }

    TEST_F(ImportacionesDeMuestra, that_another_has_made_meanwhile_are_told)
    {
        importaciones.anota(*bases.orvalin, "R1", "c", 1, cargo);
        const Importaciones de_otro_fichero(bases.orvalin, 1, "i");
        EXPECT_EQ(error_de([&] { de_otro_fichero.anota(*bases.orvalin, "R1", "d", 1, cargo); }),
            "Otro proceso acaba de registrar «R1» como AT260004.");
    }

    TEST_F(ImportacionesDeMuestra, any_other_failure_of_the_database_is_told_as_it_is)
    {
        bases.orvalin->Execute("CREATE TRIGGER no BEFORE INSERT ON Importaciones"
                               " BEGIN SELECT RAISE(ABORT, 'no se admite'); END");
        EXPECT_EQ(error_de([&] { importaciones.anota(*bases.orvalin, "R1", "c", 1, cargo); }),
            "La base de datos no admite el cambio (no se admite).");
    }

}
}
