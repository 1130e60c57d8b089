// What a SQL Server is told, in which order. Whether it agrees is seen where there is one: the tests of
// tests/integracion make the sample company on it when ATIPICOS_TEST_SQLSERVER says where.
#include "host/bases/BasesEnSqlServer.hpp"

#include "host/bases/BasesEnOdbc.hpp"
#include "host/sql/Guiones.hpp"
#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/ConexionDePrueba.hpp"
#include "tests/support/ServidorFingido.hpp"
#include "tests/support/ServidorTds.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

namespace atipicos::bases {
namespace {

    using pruebas::error_de;
    using testing::Contains;
    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::Not;

    struct BasesEnSqlServer : testing::Test {
        pruebas::ConexionDePrueba conexion;

        BasesEnSqlServer() { hay("Orvalin", 0, 0), hay("Bexmor", 0, 0); }

        /// How many tables a database has, and how many of them are that of the version.
        void hay(const std::string& base, int tablas, int esquemas)
        {
            conexion.responde(
                "SELECT COUNT(*), COUNT(CASE WHEN name = 'Esquema' THEN 1 END) FROM " + base + ".",
                { { "n", "m" }, { { tablas, esquemas } } });
            conexion.responde(
                "SELECT Version FROM " + base + ".dbo.Esquema", { { "Version" }, { { guiones::version } } });
        }

        bool crea(bool vacia = true)
        {
            return crea_en_sql_server(conexion, "SERVER=uno", vacia, Donde::aqui());
        }

        std::ptrdiff_t lugar(const std::string& parte) const
        {
            const auto dicha = std::find_if(conexion.dichas.begin(), conexion.dichas.end(),
                [&](const auto& una) { return una.find(parte) != std::string::npos; });
            EXPECT_NE(dicha, conexion.dichas.end()) << parte;
            return dicha - conexion.dichas.begin();
        }
    };

    TEST_F(BasesEnSqlServer, are_made_in_one_transaction_behind_a_lock)
    {
        EXPECT_TRUE(crea());
        EXPECT_THAT(conexion.dichas.front(), HasSubstr("sp_getapplock"));
        EXPECT_LT(lugar("IF DB_ID('Orvalin') IS NULL CREATE DATABASE"), lugar("BEGIN"));
        EXPECT_LT(lugar("ALTER DATABASE Bexmor SET READ_COMMITTED_SNAPSHOT ON"), lugar("BEGIN"))
            << "the server refuses it inside a transaction";
        EXPECT_LT(lugar("BEGIN"), lugar("USE Bexmor"));
        EXPECT_LT(lugar("CREATE TABLE Apuntes"), lugar("USE Orvalin"));
        EXPECT_LT(lugar("USE Orvalin"), lugar("CREATE TABLE Proveedores_Cargos_Atipicos"));
        EXPECT_EQ(conexion.dichas.back(), "COMMIT");
        EXPECT_THAT(conexion.dichas, Not(Contains(HasSubstr("INSERT INTO Articulos"))));
        conexion.dichas.clear();
        EXPECT_TRUE(crea(false));
        EXPECT_THAT(conexion.dichas, Contains(HasSubstr("INSERT INTO Articulos")));
    }

    TEST_F(BasesEnSqlServer, have_triggers_for_rights_after_all_tables)
    {
        crea();
        for (const auto* tabla : { "Asientos", "Regularizaciones", "Contador_Asientos" })
            EXPECT_LT(
                lugar(std::string("CREATE TABLE ") + tabla), lugar(std::string(" ON ") + tabla + " AFTER"));
        EXPECT_LT(lugar(" ON Contador_Asientos AFTER"), lugar("USE Orvalin"));
        for (const auto* tabla : { "Proveedores_Cargos_Atipicos", "Contador_Proveedores_Cargos_Atipicos" }) {
            EXPECT_LT(lugar("USE Orvalin"), lugar(std::string(" ON ") + tabla + " AFTER")) << tabla;
            EXPECT_LT(lugar("CREATE TABLE Accesos"), lugar(std::string(" ON ") + tabla + " AFTER"));
        }
        EXPECT_THAT(conexion.dichas,
            Contains(testing::AllOf(HasSubstr("TRIGGER Contador_Firme"), HasSubstr("n.Numero < o.Numero"),
                         EndsWith("END")))
                .Times(2))
            << "whole";
    }

    TEST_F(BasesEnSqlServer, write_the_trail_in_the_name_of_who_has_logged_in)
    {
        crea();
        const auto veces = [](const std::string& texto, const std::string& parte) {
            std::size_t cuantas = 0;
            for (auto i = texto.find(parte); i != std::string::npos; i = texto.find(parte, i + 1))
                ++cuantas;
            return cuantas;
        };
        std::size_t anotan = 0;
        for (const auto& dicha : conexion.dichas)
            if (const auto suyas = veces(dicha, "INSERT INTO Historial (")
                    + veces(dicha, "INSERT INTO Orvalin.dbo.Historial_Anulaciones (");
                suyas > 0) {
                EXPECT_EQ(veces(dicha, "ORIGINAL_LOGIN()"), suyas) << dicha;
                EXPECT_EQ(veces(dicha, "HOST_NAME()"), suyas) << dicha;
                EXPECT_EQ(veces(dicha, "APP_NAME()"), suyas) << dicha;
                anotan += suyas;
            }
        EXPECT_EQ(anotan, 5U) << "what was and what is new, of a header and of a line; and a reversal";
    }

    TEST(PermisosDeSqlServer, are_given_in_one_batch_and_one_transaction_after_what_they_need)
    {
        const auto guion = pruebas::lee_fichero(ATIPICOS_FUENTES "/host/sql/permisos_sqlserver.sql");
        std::vector<std::string> ordenes; // without comments
        std::istringstream lineas(guion);
        for (std::string una; std::getline(lineas, una);)
            if (!una.empty() && !una.starts_with("--"))
                ordenes.push_back(una);
        EXPECT_EQ(ordenes.front(), "SET XACT_ABORT ON;");
        EXPECT_EQ(ordenes.back(), "COMMIT TRANSACTION;");
        const auto primera = [&](const char* que) {
            return std::find_if(ordenes.begin(), ordenes.end(),
                [&](const auto& una) { return una.find(que) != std::string::npos; });
        };
        for (const auto* cambia : { "CREATE ROLE", "ALTER ROLE", "GRANT", "DENY" })
            EXPECT_LT(primera("BEGIN TRANSACTION;"), primera(cambia)) << cambia;
        EXPECT_LT(primera("Bexmor.dbo.Asientos_Incompletos"), primera("BEGIN TRANSACTION;"));
        EXPECT_EQ(std::count(ordenes.begin(), ordenes.end(), "GO"), 0) << "a batch of its own would go on";
    }

    TEST_F(BasesEnSqlServer, that_are_there_are_left_as_they_are)
    {
        hay("Orvalin", 12, 1);
        hay("Bexmor", 14, 1);
        EXPECT_FALSE(crea());
        EXPECT_THAT(conexion.dichas, Not(Contains("BEGIN")));
    }

    TEST_F(BasesEnSqlServer, of_somebody_else_are_not_touched)
    {
        hay("Orvalin", 300, 0);
        EXPECT_THAT(error_de([&] { crea(); }),
            EndsWith("»: la base de datos contiene tablas que no son de este programa. Use una vacía."));
        hay("Orvalin", 12, 1);
        EXPECT_THAT(error_de([&] { crea(); }),
            EndsWith("»: sólo una de las bases de datos Orvalin y Bexmor tiene sus tablas."));
        EXPECT_THAT(conexion.dichas, Not(Contains("BEGIN")));
    }

    TEST(BasesEnSqlServerPorFreeTds, that_are_not_there_are_told_with_the_command_that_makes_them)
    {
        if (const auto falta = pruebas::ServidorTds::falta(); !falta.empty())
            GTEST_SKIP() << falta;
        pruebas::ServidorTds servidor;
        servidor.falla("USE Orvalin", 911);
        auto cadena = servidor.cadena() + ";UID=begona";
        const auto al_abrir
            = [&] { return error_de([&] { static_cast<void>(abre_de_odbc(cadena, {}, Donde::aqui())); }); };
        const auto comienzo = "«" + cadena
            + "»: las bases de datos Orvalin y Bexmor no están en este servidor. "
              "Créelas con: atipicos crear --conexion 'odbc:"
            + cadena + "' (";
        EXPECT_THAT(al_abrir(), testing::StartsWith(comienzo));
        EXPECT_THAT(al_abrir(), Not(HasSubstr("Se ha perdido la conexión")));
        servidor.falla("", 4060);
        cadena += ";DATABASE=Orvalin";
        const auto esperado
            = HasSubstr("»: la base de datos que nombra DATABASE no está en el servidor, o este "
                        "usuario no puede entrar en ella. Quite DATABASE de la conexión");
        EXPECT_THAT(al_abrir(), esperado);
        EXPECT_THAT(error_de([&] { crea_por_odbc(cadena, true, Donde::aqui()); }), esperado);
    }

    /// On a driver that answers as its own does, and has no tables.
    TEST(BasesEnSqlServerPorOdbc, are_opened_over_one_line_and_looked_at_in_accounting_first)
    {
        pruebas::ServidorFingido servidor;
        EXPECT_NE(error_de([&] { static_cast<void>(abre_de_odbc(servidor.cadena(), {}, Donde::aqui())); }),
            "no error");
        const auto dicho = servidor.dicho();
        EXPECT_THAT(dicho, Contains("CONECTA").Times(1));
        ASSERT_GE(dicho.size(), 2U);
        EXPECT_EQ(dicho[dicho.size() - 2], "USE Orvalin");
        EXPECT_EQ(dicho.back(), "SELECT Version FROM Bexmor.dbo.Esquema");
    }

}
}
