#include "host/bases/BasesEnPostgresql.hpp"

#include "tests/host/BasesDeMuestra.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

#include <filesystem>
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
        const std::filesystem::path permisos = ATIPICOS_FUENTES "/host/sql/permisos_postgresql.sql";

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

    TEST_F(BasesEnPostgresql, a_statement_that_nobody_wants_any_more_ends)
    {
        EXPECT_TRUE(crea());
        int preguntas = 0;
        const auto bases
            = abre_de_postgresql(direccion, { .sigue = [&] { return ++preguntas < 2; } }, Donde::aqui());
        EXPECT_THAT(error_de([&] {
            static_cast<void>(columna(*bases.orvalin,
                "SELECT COUNT(*) AS n FROM Articulos a, Articulos b, Articulos c, Articulos d, Articulos e,"
                " Articulos f, Articulos g, Articulos h"));
        }),
            HasSubstr("se ha dejado de esperar su respuesta"));
        EXPECT_GE(preguntas, 2); // opening the line again asks too
    }

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

    TEST_F(BasesEnPostgresql, in_a_database_that_is_not_there_are_told_with_what_makes_it)
    {
        direccion = servidor->direccion("sin_hacer");
        for (const auto& dicho : { error_al_abrir(), error_al_crear() }) {
            EXPECT_THAT(dicho,
                testing::StartsWith(
                    "«" + direccion + "»: La base de datos «sin_hacer» no existe en el servidor ("));
            EXPECT_THAT(dicho,
                EndsWith("Créela en el servidor con createdb, y después sus tablas con: atipicos crear "
                         "--conexion '"
                    + direccion + "'"));
        }
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
        const auto otra = "»: tiene la versión 7 de las tablas y este programa llega hasta la 6. Use la "
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
        std::string dicho;
        for (int veces = 0; veces < 2; ++veces) { // it can be run again
            EXPECT_EQ(servidor->guion("empresa", permisos, "atipicos", dicho), 0);
            EXPECT_EQ(dicho, "");
        }
        servidor->psql("empresa",
            "CREATE ROLE ana LOGIN IN ROLE atipicos_puesto; INSERT INTO orvalin.Accesos VALUES ('ana', 3)");
        const auto bases = abre_de_postgresql(servidor->direccion("empresa", "ana"), {}, Donde::aqui());
        EXPECT_EQ(error_de([&] {
            bases.bexmor->Execute("INSERT INTO Asientos (Cod_Empresa, Cod_Ejercicio, Numero, Fecha, Usuario)"
                                  " VALUES (1, 2026, 1, '21/11/2026', '3')");
        }),
            "no error");
        for (const auto* sql :
            { "UPDATE Cuentas SET Nombre = ''", "DELETE FROM Asientos", "UPDATE Asientos SET Numero = 2",
                "DROP TABLE Apuntes", "CREATE TABLE otra (id INT)", "DELETE FROM Contador_Asientos" })
            EXPECT_THAT(error_de([&] { bases.bexmor->Execute(sql); }), HasSubstr("SQLSTATE 42501")) << sql;
    }

    /// How many rights on the tables the two roles have been given.
    std::string concedidos(const pruebas::ServidorPostgresql& servidor)
    {
        return servidor.psql("empresa",
            "SELECT COUNT(*) FROM information_schema.table_privileges WHERE grantee LIKE 'atipicos\\_%'");
    }

    TEST_F(BasesEnPostgresql, rights_are_given_by_who_can_or_not_at_all_and_it_says_who_that_is)
    {
        servidor->psql("empresa",
            "DROP ROLE IF EXISTS ana, eva, atipicos_historial, atipicos_suplencia, atipicos_puesto, "
            "atipicos_consulta; CREATE "
            "ROLE eva LOGIN; "
            "GRANT CREATE ON DATABASE empresa TO eva");
        std::string dicho;
        EXPECT_EQ(servidor->guion("empresa", permisos, "atipicos", dicho), 3) << "psql's own for an error";
        EXPECT_THAT(dicho, HasSubstr("no están las tablas: ejecute antes atipicos crear."));

        EXPECT_TRUE(crea_en_postgresql(servidor->direccion("empresa", "eva"), true, Donde::aqui()));
        EXPECT_EQ(servidor->guion("empresa", permisos, "eva", dicho), 3);
        EXPECT_THAT(dicho, HasSubstr("«eva» no puede crear los papeles"));
        EXPECT_EQ(concedidos(*servidor), "0\n");

        servidor->psql("empresa", "CREATE ROLE ines LOGIN CREATEROLE");
        EXPECT_EQ(servidor->guion("empresa", permisos, "ines", dicho), 3);
        EXPECT_THAT(dicho, HasSubstr("Las tablas son de «eva»"));
        EXPECT_EQ(
            servidor->psql("empresa", "SELECT COUNT(*) FROM pg_roles WHERE rolname LIKE 'atipicos\\_%'"),
            "0\n");

        servidor->psql("empresa",
            "CREATE ROLE atipicos_consulta; CREATE ROLE atipicos_puesto IN ROLE atipicos_consulta;"
            "CREATE ROLE atipicos_suplencia IN ROLE atipicos_puesto;"
            "CREATE ROLE atipicos_historial IN ROLE atipicos_consulta");
        EXPECT_EQ(servidor->guion("empresa", permisos, "eva", dicho), 0) << dicho;
        EXPECT_NE(concedidos(*servidor), "0\n");
    }

    TEST_F(BasesEnPostgresql, a_user_without_rights_is_told_so_and_what_to_do)
    {
        servidor->psql("empresa", "DROP ROLE IF EXISTS \"don nadie\"; CREATE ROLE \"don nadie\" LOGIN");
        const auto direccion_suya = servidor->direccion("empresa", "don%20nadie");
        const auto al_abrir = [&] {
            return error_de(
                [&] { static_cast<void>(abre_de_postgresql(direccion_suya, {}, Donde::aqui())); });
        };
        EXPECT_THAT(al_abrir(), EndsWith("»: no es una base de datos de este programa.")) << "it is empty";
        crea(true);
        const auto esperado = "«" + direccion_suya
            + "»: el usuario «don nadie» no tiene permiso para usar estas tablas. Su propietario se lo da "
              "ejecutando permisos_postgresql.sql y después GRANT atipicos_consulta TO \"don nadie\" para "
              "consultar, o GRANT atipicos_puesto TO \"don nadie\" para registrar cargos.";
        EXPECT_EQ(al_abrir(), esperado);
        EXPECT_EQ(error_de([&] { crea_en_postgresql(direccion_suya, true, Donde::aqui()); }), esperado);
        servidor->psql("empresa", "GRANT USAGE ON SCHEMA dbo TO \"don nadie\"");
        EXPECT_EQ(al_abrir(), esperado) << "he sees one half";
        servidor->psql("empresa", "GRANT USAGE ON SCHEMA orvalin TO \"don nadie\"");
        EXPECT_EQ(al_abrir(), esperado) << "he sees the tables and may not read them";
        std::string dicho;
        EXPECT_EQ(servidor->guion("empresa", permisos, "atipicos", dicho), 0) << dicho;
        servidor->psql("empresa", "GRANT atipicos_consulta TO \"don nadie\"");
        EXPECT_EQ(al_abrir(), "no error") << "what it said to do";
    }

}
}
