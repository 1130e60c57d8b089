#include "host/bases/BasesEnPostgresql.hpp"

#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <thread>

namespace atipicos::bases {
namespace {

    using pruebas::columna;
    using pruebas::cuenta;
    using pruebas::error_de;
    using testing::EndsWith;
    using testing::HasSubstr;

    struct BasesEnPostgresql : testing::Test {
        static inline std::unique_ptr<pruebas::ServidorPostgresql> servidor;
        std::string direccion;

        static void TearDownTestSuite() { servidor.reset(); }

        void SetUp() override
        {
            if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
                GTEST_SKIP() << falta;
            if (!servidor)
                servidor = std::make_unique<pruebas::ServidorPostgresql>();
            servidor->crea_base("empresa");
            direccion = servidor->direccion("empresa");
        }

        void TearDown() override
        {
            if (servidor)
                servidor->borra_base("empresa");
        }

        bool crea(bool vacia = false) const { return crea_en_postgresql(direccion, vacia, Donde::aqui()); }
        Bases abre() const { return abre_de_postgresql(direccion, {}, Donde::aqui()); }
        std::string error_al_crear() const
        {
            return error_de([&] { crea(); });
        }
        std::string error_al_abrir() const
        {
            return error_de([&] { static_cast<void>(abre()); });
        }
    };

    TEST_F(BasesEnPostgresql, hold_the_same_sample_company_as_a_folder)
    {
        EXPECT_TRUE(crea());
        const auto bases = abre();
        const pruebas::CarpetaTemporal carpeta;
        crea_bases(carpeta.ruta(), false);
        const auto en_carpeta = abre_bases(carpeta.ruta());
        for (const auto* sql : { "SELECT Nombre FROM Empresas ORDER BY Codigo",
                 "SELECT Valor FROM Parametros ORDER BY Cod_Empresa, Clave",
                 "SELECT Nombre FROM Proveedores ORDER BY Cod_Empresa, Codigo",
                 "SELECT Nombre FROM Articulos ORDER BY Cod_Empresa, Codigo" })
            EXPECT_EQ(columna(*bases.orvalin, sql), columna(*en_carpeta.orvalin, sql)) << sql;
        for (const auto* sql : { "SELECT Nombre FROM Empresas ORDER BY Codigo",
                 "SELECT Cuenta FROM Cuentas ORDER BY Cod_Empresa, Cod_Ejercicio, Cuenta",
                 "SELECT Nombre FROM Cuentas ORDER BY Cod_Empresa, Cod_Ejercicio, Cuenta" })
            EXPECT_EQ(columna(*bases.bexmor, sql), columna(*en_carpeta.bexmor, sql)) << sql;
    }

    TEST_F(BasesEnPostgresql, made_again_are_left_as_they_are)
    {
        EXPECT_TRUE(crea(true));
        abre().orvalin->Execute("INSERT INTO SGD_Usuarios (Codigo, Nombre) VALUES (7, 'Ana')");
        EXPECT_FALSE(crea());
        EXPECT_EQ(cuenta(*abre().orvalin, "SGD_Usuarios"), 1);
        EXPECT_EQ(cuenta(*abre().bexmor, "Empresas"), 0);
    }

    TEST_F(BasesEnPostgresql, made_by_two_at_once_are_made_once)
    {
        std::array<bool, 2> hechas{};
        std::jthread otro([&] { hechas[1] = crea(); });
        hechas[0] = crea();
        otro.join();
        EXPECT_NE(hechas[0], hechas[1]);
        EXPECT_EQ(cuenta(*abre().bexmor, "Empresas"), 2);
    }

    TEST_F(BasesEnPostgresql, are_not_made_beside_the_tables_of_somebody_else)
    {
        servidor->psql("empresa", "CREATE TABLE clientes (id int)");
        EXPECT_THAT(error_al_crear(),
            EndsWith("»: la base de datos contiene tablas que no son de este programa. Use una vacía."));
        servidor->psql(
            "empresa", "DROP TABLE clientes; CREATE SCHEMA dbo; CREATE TABLE dbo.esquema (version int)");
        EXPECT_THAT(error_al_crear(), HasSubstr("no son de este programa"));
        EXPECT_EQ(
            servidor->psql("empresa", "SELECT COUNT(*) FROM pg_class WHERE relname = 'apuntes'"), "0\n");
    }

    TEST_F(BasesEnPostgresql, of_another_version_or_of_nobody_are_refused)
    {
        EXPECT_THAT(error_al_abrir(), EndsWith("»: no es una base de datos de este programa."));
        crea(true);
        servidor->psql("empresa", "UPDATE orvalin.Esquema SET Version = 7");
        const auto otra = "»: tiene la versión 7 de las tablas y este programa llega hasta la 2. Use la "
                          "última versión del programa.";
        EXPECT_THAT(error_al_abrir(), EndsWith(otra));
        EXPECT_THAT(error_al_crear(), EndsWith(otra));
    }

    TEST_F(BasesEnPostgresql, tables_of_one_name_do_not_clash_and_accounting_answers_to_its_configured_name)
    {
        crea();
        servidor->psql(
            "empresa", "UPDATE dbo.Parametros SET Valor = 'Conta2026' WHERE Clave = 'ODBCBaseDatos'");
        const auto bases = abre();
        EXPECT_EQ(columna(*bases.orvalin, "SELECT Nombre FROM Tipos_Impuesto WHERE Codigo = 1"),
            std::vector<std::string>{ "IGIC general" });
        EXPECT_EQ(cuenta(*bases.orvalin, "Tipos_Impuesto"), 2);
        EXPECT_EQ(cuenta(*bases.bexmor, "Tipos_Impuesto"), 4);
        EXPECT_EQ(cuenta(*bases.orvalin, "conta2026.dbo.Tipos_Impuesto"), 4);
        EXPECT_NE(error_de([&] { cuenta(*bases.orvalin, "Bexmor.dbo.Cuentas"); }), "no error");
    }

    TEST_F(BasesEnPostgresql, the_role_of_workstations_can_add_entries_and_not_change_the_plan)
    {
        crea();
        std::ostringstream permisos;
        permisos << std::ifstream(ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql").rdbuf();
        for (int veces = 0; veces < 2; ++veces)
            EXPECT_EQ(servidor->psql("empresa", permisos.str()), "") << "it can be run again";
        servidor->psql("empresa", "CREATE ROLE ana LOGIN IN ROLE atipicos_puesto");
        const auto bases = abre_de_postgresql(servidor->direccion("empresa", "ana"), {}, Donde::aqui());
        EXPECT_EQ(error_de([&] {
            bases.bexmor->Execute("INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario)"
                                  " VALUES (1, 2026, 1, '21/11/2026', 'ana')");
        }),
            "no error");
        for (const auto* sql :
            { "UPDATE Cuentas SET Nombre = ''", "DELETE FROM Asientos", "UPDATE Asientos SET Numero = 2",
                "DROP TABLE Apuntes", "CREATE TABLE otra (id INT)", "DELETE FROM Contador_Asientos" })
            EXPECT_THAT(error_de([&] { bases.bexmor->Execute(sql); }), HasSubstr("SQLSTATE 42501")) << sql;
    }

}
}
