#include "host/bases/BasesEnOdbc.hpp"

#include "engines/odbc/Servidor.hpp"
#include "host/bases/BasesEnPostgresql.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/ControladorOdbc.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

namespace atipicos::bases {
namespace {

    using pruebas::columna;
    using pruebas::cuenta;
    using pruebas::error_de;
    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::StartsWith;

    const auto aqui = Donde::aqui();

    struct BasesEnOdbc : testing::Test {
        static inline std::unique_ptr<pruebas::ServidorPostgresql> servidor;
        std::string cadena;

        static void TearDownTestSuite() { servidor.reset(); }

        void SetUp() override
        {
            if (const auto falta = pruebas::ServidorPostgresql::falta()
                    + pruebas::falta_controlador("PostgreSQL Unicode", "odbc-postgresql");
                !falta.empty())
                GTEST_SKIP() << falta;
            if (!servidor)
                servidor = std::make_unique<pruebas::ServidorPostgresql>();
            servidor->crea_base("empresa");
            cadena = servidor->cadena_odbc("empresa");
        }

        void TearDown() override
        {
            if (servidor)
                servidor->borra_base("empresa");
        }
    };

    TEST_F(BasesEnOdbc, made_through_the_driver_are_what_the_engine_of_the_product_opens)
    {
        EXPECT_TRUE(crea_por_odbc(cadena, false, aqui));
        EXPECT_FALSE(crea_por_odbc(cadena, false, aqui)) << "they are left as they are";
        const auto bases = abre_de_odbc(cadena, {}, aqui);
        const auto otras = abre_de_postgresql(servidor->direccion("empresa"), {}, aqui);
        for (const auto* sql :
            { "SELECT Nombre FROM Bexmor.dbo.Cuentas ORDER BY Cod_Empresa, Cod_Ejercicio, Cuenta",
                "SELECT Nombre FROM Proveedores ORDER BY Cod_Empresa, Codigo" })
            EXPECT_EQ(columna(*bases.orvalin, sql), columna(*otras.orvalin, sql)) << sql;
        EXPECT_EQ(columna(*bases.bexmor, "SELECT GenerarPrev FROM Formas_Pago WHERE Codigo = 5"),
            std::vector<std::string>{ "Falso" });
    }

    TEST_F(BasesEnOdbc, a_user_without_rights_is_told_so)
    {
        EXPECT_TRUE(crea_por_odbc(cadena, true, aqui));
        servidor->psql("empresa", "DROP ROLE IF EXISTS nadie; CREATE ROLE nadie LOGIN");
        auto suya = cadena;
        suya.replace(suya.find("UID=atipicos"), 12, "UID=nadie");
        EXPECT_THAT(error_de([&] { static_cast<void>(abre_de_odbc(suya, {}, aqui)); }),
            HasSubstr("»: el usuario «nadie» no tiene permiso para usar estas tablas."));
    }

    TEST_F(BasesEnOdbc, are_not_made_beside_the_tables_of_somebody_else)
    {
        servidor->psql("empresa", "CREATE TABLE clientes (id int)");
        EXPECT_THAT(error_de([&] { crea_por_odbc(cadena, false, aqui); }),
            EndsWith("»: la base de datos contiene tablas que no son de este programa. Use una vacía."));
        EXPECT_THAT(error_de([&] { static_cast<void>(abre_de_odbc(cadena, {}, aqui)); }),
            EndsWith("»: no es una base de datos de este programa."));
    }

    TEST_F(BasesEnOdbc, are_one_session_whose_commits_are_there_together)
    {
        crea_por_odbc(cadena, false, aqui);
        const auto bases = abre_de_odbc(cadena, {}, aqui);
        const auto otras = abre_de_odbc(cadena, {}, aqui);
        ASSERT_NE(bases.transacciones, nullptr);
        bases.orvalin->BeginTrans();
        bases.bexmor->BeginTrans();
        bases.orvalin->Execute("INSERT INTO SGD_Usuarios (Codigo, Nombre) VALUES (77, 'Ana')");
        bases.bexmor->Execute("INSERT INTO Tipos_Doc (Codigo, Nombre) VALUES (77, 'Vale')");
        const auto vistas = [&] {
            return std::pair(
                columna(*otras.orvalin, "SELECT Nombre FROM SGD_Usuarios WHERE Codigo = 77").size(),
                columna(*otras.bexmor, "SELECT Nombre FROM Tipos_Doc WHERE Codigo = 77").size());
        };
        bases.orvalin->CommitTrans();
        EXPECT_EQ(vistas(), std::pair(std::size_t{ 0 }, std::size_t{ 0 }));
        EXPECT_TRUE(bases.transacciones->abierta());
        bases.bexmor->CommitTrans();
        EXPECT_EQ(vistas(), std::pair(std::size_t{ 1 }, std::size_t{ 1 }));
    }

    TEST_F(BasesEnOdbc, accounting_answers_to_its_configured_name)
    {
        crea_por_odbc(cadena, false, aqui);
        servidor->psql(
            "empresa", "UPDATE dbo.Parametros SET Valor = 'Conta2026' WHERE Clave = 'ODBCBaseDatos'");
        const auto bases = abre_de_odbc(cadena, {}, aqui);
        EXPECT_EQ(cuenta(*bases.orvalin, "conta2026.dbo.Tipos_Impuesto"), 4);
        EXPECT_EQ(cuenta(*bases.orvalin, "Tipos_Impuesto"), 2);
        EXPECT_EQ(cuenta(*bases.bexmor, "Tipos_Impuesto"), 4);
        EXPECT_NE(error_de([&] { cuenta(*bases.orvalin, "Bexmor.dbo.Cuentas"); }), "no error");
    }

    TEST_F(BasesEnOdbc, of_another_version_are_refused_whichever_product_has_it)
    {
        crea_por_odbc(cadena, true, aqui);
        for (const std::string esquema : { "orvalin", "dbo" }) {
            servidor->psql("empresa", "UPDATE " + esquema + ".Esquema SET Version = 7");
            EXPECT_THAT(error_de([&] { static_cast<void>(abre_de_odbc(cadena, {}, aqui)); }),
                HasSubstr("»: tiene la versión 7 de las tablas"))
                << esquema;
            servidor->psql("empresa", "UPDATE " + esquema + ".Esquema SET Version = 1");
        }
    }

    TEST_F(BasesEnOdbc, opened_to_read_are_not_written)
    {
        crea_por_odbc(cadena, true, aqui);
        const auto bases = abre_de_odbc(cadena, { .solo_lectura = true }, aqui);
        EXPECT_THAT(error_de([&] { bases.bexmor->Execute("DELETE FROM Asientos"); }),
            StartsWith("La base de datos es de sólo lectura"));
    }

    struct FicherosPorOdbc : testing::Test {
        pruebas::CarpetaTemporal carpeta;
        std::string cadena = "DRIVER={SQLite3};DATABASE=" + (carpeta / "datos/empresa.db").string();

        void SetUp() override
        {
            if (const auto falta = pruebas::falta_controlador("SQLite3", "libsqliteodbc"); !falta.empty())
                GTEST_SKIP() << falta;
        }
    };

    TEST_F(FicherosPorOdbc, of_another_name_are_none_that_could_be_opened)
    {
        const auto otro = "DRIVER={SQLite3};DATABASE=" + (carpeta / "otro.db").string();
        EXPECT_THAT(error_de([&] { static_cast<void>(abre_de_odbc(otro, {}, aqui)); }),
            EndsWith("»: por ODBC se admiten SQL Server, PostgreSQL y el fichero empresa.db de SQLite."));
    }

    TEST_F(FicherosPorOdbc, are_made_and_opened_together)
    {
        EXPECT_THAT(error_de([&] { static_cast<void>(abre_de_odbc(cadena, {}, aqui)); }),
            HasSubstr("no hay ninguna base de datos en esta carpeta"));
        EXPECT_TRUE(crea_por_odbc(cadena, false, aqui));
        const auto bases = abre_de_odbc(cadena, {}, aqui);
        EXPECT_EQ(cuenta(*bases.orvalin, "Bexmor.dbo.Cuentas"), 480);
        EXPECT_EQ(cuenta(*bases.bexmor, "Cuentas"), 480);
        EXPECT_EQ(cuenta(*bases.orvalin, "Tipos_Impuesto"), 2);
        EXPECT_EQ(cuenta(*bases.bexmor, "Tipos_Impuesto"), 4);
        EXPECT_NE(bases.transacciones, nullptr);
    }

    TEST_F(FicherosPorOdbc, opened_to_read_are_not_written)
    {
        crea_por_odbc(cadena, true, aqui);
        const auto bases = abre_de_odbc(cadena, { .solo_lectura = true }, aqui);
        EXPECT_NE(error_de([&] { bases.bexmor->Execute("DELETE FROM Asientos"); }), "no error");
    }

}
}
