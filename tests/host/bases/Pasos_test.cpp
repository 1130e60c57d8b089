#include "host/bases/Pasos.hpp"

#include "host/bases/BasesEnPostgresql.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/ConexionEspia.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/VersionDos.hpp"

#include <array>
#include <memory>
#include <utility>

namespace atipicos::bases {
namespace {

    using pruebas::columna;
    using pruebas::cuenta;
    using pruebas::error_de;
    using testing::ElementsAre;
    using testing::HasSubstr;

    // Versions that the program does not have yet, after its own.
    constexpr std::array<Paso, 4> inventados{ { { .hasta = guiones::version },
        { .hasta = guiones::version + 1,
            .orvalin = "ALTER TABLE Proveedores ADD Telefono NVARCHAR(20);"
                       "UPDATE Proveedores SET Telefono ='922 000 ' || Codigo",
            .bexmor = "CREATE TABLE Notas (Codigo INT NOT NULL PRIMARY KEY, Fecha DATETIME NOT NULL)" },
        { .hasta = guiones::version + 2,
            .bexmor = "INSERT INTO Notas (Codigo, Fecha) VALUES (7, '21/11/2026')" },
        { .hasta = guiones::version + 3,
            .orvalin = "CREATE TABLE Notas (Codigo INT NOT NULL PRIMARY KEY);"
                       "INSERT INTO Notas (Codigo) SELECT Codigo + 1 FROM Bexmor.dbo.Notas" } } };

    std::string numero(int mas) { return std::to_string(guiones::version + mas); }

    struct Motor {
        const char* nombre;
        bool con_servidor;
    };
    void PrintTo(const Motor& motor, std::ostream* salida) { *salida << motor.nombre; }

    struct Pasos : testing::TestWithParam<Motor> {
        static inline std::unique_ptr<pruebas::ServidorPostgresql> servidor;
        pruebas::CarpetaTemporal carpeta;
        Bases bases;

        static void TearDownTestSuite() { servidor.reset(); }

        void SetUp() override
        {
            if (GetParam().con_servidor) {
                if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
                    GTEST_SKIP() << falta;
                if (!servidor)
                    servidor = std::make_unique<pruebas::ServidorPostgresql>();
                servidor->crea_base("pasos");
            }
            crea_bases(lugar(), false);
            bases = abre_bases(lugar());
        }
        void TearDown() override
        {
            bases = {};
            if (GetParam().con_servidor && servidor)
                servidor->borra_base("pasos");
        }

        Lugar lugar() const
        {
            return GetParam().con_servidor ? Lugar::de_conexion(servidor->direccion("pasos"))
                                           : Lugar(carpeta.ruta());
        }
        std::int32_t da(std::span<const Paso> cuales) const
        {
            return da_pasos(bases, cuales, "aquí", Donde::aqui());
        }
        void pon_version(int version) const
        {
            for (const auto& conexion : { bases.orvalin, bases.bexmor })
                conexion->Execute("UPDATE Esquema SET Version =" + std::to_string(version));
        }
        std::vector<std::string> versiones() const
        {
            auto todas = columna(*bases.orvalin, "SELECT Version FROM Esquema");
            todas.push_back(columna(*bases.bexmor, "SELECT Version FROM Esquema").at(0));
            return todas;
        }
    };

    TEST_P(Pasos, are_taken_in_order_from_the_version_that_there_is)
    {
        EXPECT_EQ(da(inventados), guiones::version);
        EXPECT_THAT(versiones(), ElementsAre(numero(3), numero(3)));
        EXPECT_THAT(
            columna(*bases.orvalin, "SELECT Telefono FROM Proveedores WHERE Cod_Empresa =1 AND Codigo =103"),
            ElementsAre("922 000 103"));
        EXPECT_THAT(columna(*bases.orvalin, "SELECT Codigo FROM Notas"), ElementsAre("8"));
        EXPECT_THAT(
            columna(*bases.bexmor, "SELECT Codigo FROM Notas WHERE Fecha ='21/11/2026'"), ElementsAre("7"));
    }

    TEST_P(Pasos, that_have_been_taken_are_not_taken_again)
    {
        da(std::span(inventados).first(3));
        EXPECT_THAT(versiones(), ElementsAre(numero(2), numero(2)));
        EXPECT_EQ(da(inventados), guiones::version + 2);
        EXPECT_EQ(da(inventados), guiones::version + 3);
        EXPECT_THAT(versiones(), ElementsAre(numero(3), numero(3)));
        EXPECT_EQ(cuenta(*bases.bexmor, "Notas"), 1);
    }

    TEST_P(Pasos, are_undone_all_when_the_last_one_fails)
    {
        auto malos = inventados;
        malos.back().orvalin = "CREATE TABLE Notas (Codigo INT NOT NULL PRIMARY KEY);"
                               "INSERT INTO Notas (Codigo) VALUES (1); INSERT INTO Notas (Codigo) VALUES (1)";
        EXPECT_THAT(error_de([&] { da(malos); }), HasSubstr("línea 1 del guion"));
        EXPECT_THAT(versiones(), ElementsAre(numero(0), numero(0)));
        for (const auto* instruccion : { "SELECT * FROM Notas", "SELECT Telefono FROM Proveedores" })
            EXPECT_NE(error_de([&] { columna(*bases.orvalin, instruccion); }), "no error") << instruccion;
        EXPECT_EQ(da(inventados), guiones::version);
    }

    TEST_P(Pasos, beyond_which_the_tables_are_are_not_taken)
    {
        pon_version(guiones::version + 4);
        EXPECT_EQ(error_de([&] { da(inventados); }),
            "«aquí»: tiene la versión " + numero(4) + " de las tablas y este programa llega hasta la "
                + numero(3) + ". Use la última versión del programa.");
        EXPECT_THAT(versiones(), ElementsAre(numero(4), numero(4)));
    }

    TEST_P(Pasos, want_both_products_to_have_the_same_version)
    {
        bases.bexmor->Execute("UPDATE Esquema SET Version =1");
        EXPECT_EQ(error_de([&] { da(inventados); }),
            "«aquí»: las tablas de gestión tienen la versión " + numero(0) + " y las de contabilidad la 1.");
        EXPECT_THAT(versiones(), ElementsAre(numero(0), "1"));
    }

    TEST_P(Pasos, of_the_program_keep_every_claim_that_is_remembered_and_number_those_of_several_files)
    {
        for (const auto& una : pruebas::sin_derechos(GetParam().con_servidor))
            bases.orvalin->Execute(una);
        for (const auto& una : pruebas::sin_historial(GetParam().con_servidor))
            bases.orvalin->Execute(una);
        for (const auto& una : pruebas::hacia_version_2())
            bases.orvalin->Execute(una);
        bases.bexmor->Execute("DROP TABLE Regularizaciones");
        pon_version(2);
        for (const auto* una : { "'f1', 'R1', 1, 1, 2026, 3, 'AT260004'",
                 "'f1', 'R1', 2, 1, 2026, 3, 'AT260009'", "'f0', 'R1', 1, 1, 2026, 3, 'AT260007'",
                 "'f0', 'R2', 1, 1, 2025, 2, 'AT250001'", "'f0', 'R1', 1, 2, 2026, 1, 'AT260002'" })
            bases.orvalin->Execute("INSERT INTO Importaciones (Huella, Referencia, Vez, Cod_Empresa,"
                                   " Cod_Ejercicio, Cod_Almacen, Codigo) VALUES ("
                + std::string(una) + ")");
        EXPECT_EQ(da(pasos()), 2);
        EXPECT_THAT(columna(*bases.orvalin,
                        "SELECT Cod_Empresa || ' ' || Referencia || ' ' || Vez || ' ' || Codigo || ' ' ||"
                        " Huella || ' <' || Contenido || '>' FROM Importaciones"
                        " ORDER BY Cod_Empresa, Referencia, Vez"),
            ElementsAre("1 R1 1 AT260004 f1 <>", "1 R1 2 AT260007 f0 <>", "1 R1 3 AT260009 f1 <>",
                "1 R2 1 AT250001 f0 <>", "2 R1 1 AT260002 f0 <>"));
        EXPECT_NE(error_de([&] {
            bases.orvalin->Execute("INSERT INTO Importaciones (Huella, Referencia, Vez, Cod_Empresa,"
                                   " Cod_Ejercicio, Cod_Almacen, Codigo) VALUES"
                                   " ('f9', 'R1', 3, 1, 2026, 3, 'AT260020')");
        }),
            "no error")
            << "a time of a reference is one charge, whatever its file";
    }

    TEST_P(Pasos, that_another_takes_meanwhile_are_not_taken_again)
    {
        const auto parte = std::make_shared<pruebas::Parte>();
        bool llegado = false;
        parte->antes = [&](const std::string& dicha) { // he is through when the tables are free again
            if (dicha.find("SET Version =Version") != std::string::npos && !std::exchange(llegado, true))
                pon_version(guiones::version + 3);
        };
        const Bases detras{ std::make_shared<pruebas::ConexionEspia>("gestion", bases.orvalin, parte),
            bases.bexmor, bases.transacciones };
        EXPECT_EQ(da_pasos(detras, inventados, "aquí", Donde::aqui()), guiones::version + 3);
        EXPECT_TRUE(llegado);
        EXPECT_NE(error_de([&] { columna(*bases.orvalin, "SELECT * FROM Notas"); }), "no error");
    }

    TEST_P(Pasos, of_the_program_itself_end_at_its_version)
    {
        EXPECT_EQ(pasos().back().hasta, guiones::version);
        for (const auto& una : pruebas::sin_derechos(GetParam().con_servidor))
            bases.orvalin->Execute(una);
        for (const auto& una : pruebas::sin_historial(GetParam().con_servidor))
            bases.orvalin->Execute(una);
        for (const auto& una : pruebas::hacia_version_2())
            bases.orvalin->Execute(una);
        bases.bexmor->Execute("DROP TABLE Regularizaciones"); // which the first version did not have
        pon_version(1);
        EXPECT_THAT(error_de([&] { static_cast<void>(abre_bases(lugar())); }),
            HasSubstr("tiene la versión 1 de las tablas y este programa usa la " + numero(0)
                + ". Actualícelas con: atipicos actualizar " + lugar().opcion()));
        EXPECT_EQ(da(pasos()), 1);
        EXPECT_THAT(versiones(), ElementsAre(numero(0), numero(0)));
        static_cast<void>(abre_bases(lugar()));
    }

    INSTANTIATE_TEST_SUITE_P(motores, Pasos,
        testing::Values(Motor{ "sqlite", false }, Motor{ "postgresql", true }),
        [](const auto& caso) { return caso.param.nombre; });

}
} // namespace atipicos::bases
