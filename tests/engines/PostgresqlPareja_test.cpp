// What a pair of connections says to the server. What holds for every engine is in Pareja_test.
#include "tests/engines/ParPostgresql.hpp"

namespace atipicos::postgresql {
namespace {

    using adodb::Categoria;
    using adodb::CursorType;
    using adodb::LockType;
    using testing::EndsWith;
    using testing::HasSubstr;

    struct PostgresqlPareja : ParPostgresql { };

    TEST_F(PostgresqlPareja, a_save_costs_a_round_trip_for_each_statement_and_one_for_its_commit)
    {
        const pruebas::TrazaPostgresql traza(gestion->base(), [&] {
            empieza();
            escribe("1");
            auto rs = contabilidad->CreateRecordset();
            rs->Open("SELECT * FROM Apuntes WHERE Id =1", CursorType::Keyset, LockType::Pessimistic);
            rs->Fields("Dia").Value("21/11/2026");
            rs->Update();
            confirma();
        });
        EXPECT_EQ(traza.viajes(), 5U) << "with begin and savepoints";
        EXPECT_EQ(traza.cuantas("CommandComplete\t \"BEGIN\""), 1U);
        EXPECT_EQ(traza.cuantas("CommandComplete\t \"COMMIT\""), 1U);
        EXPECT_EQ(guardado(), "1/1\n");
    }

    TEST_F(PostgresqlPareja, transactions_without_statements_cost_nothing)
    {
        EXPECT_EQ(viajes([&] {
            empieza();
            confirma();
            empieza();
            deshace();
            sql::Unidad unidad(transacciones);
            empieza();
            confirma();
            unidad.deshace_ultima();
            empieza();
            deshace();
            unidad.confirma();
        }),
            0U);
    }

    TEST_F(PostgresqlPareja, a_unit_costs_its_statements_and_one_commit_also_when_saves_of_it_are_undone)
    {
        EXPECT_EQ(viajes([&] {
            sql::Unidad unidad(transacciones);
            guarda("1");
            guarda("2");
            unidad.deshace_ultima();
            guarda("3");
            empieza();
            escribe("4");
            deshace();
            unidad.confirma();
        }),
            9U);
        EXPECT_EQ(guardado(), "1 3/1 3\n");
    }

    TEST_F(PostgresqlPareja, the_catalogue_is_read_once_for_both)
    {
        abre(opciones());
        contabilidad->Execute("CREATE TABLE Otra (Dia DATETIME)"); // it is to be read again
        EXPECT_EQ(viajes([&] { lee(*gestion, "SELECT Id FROM Cargos"); }), 2U);
        EXPECT_EQ(viajes([&] { contabilidad->Execute("INSERT INTO Otra (Dia) VALUES ('09/02/2026')"); }), 1U);
        EXPECT_EQ(lee(*gestion, "SELECT o.Dia FROM dbo.Otra o"), "09/02/2026");
    }

    TEST_F(PostgresqlPareja, a_first_statement_that_fails_undoes_itself_alone)
    {
        guarda("1");
        for (const std::string mala : { "INSERT INTO Cargos (Id) VALUES (1)", "INSRT INTO Cargos",
                 "INSERT INTO Cargos (Id, Texto) VALUES (1, 'a;b')", "INSRT ';'", "SELECT 1/0 AS x",
                 "INSERT INTO NoHay (Id) VALUES (1)" }) {
            SCOPED_TRACE(mala);
            empieza();
            EXPECT_NE(al_ejecutar(*gestion, mala).descripcion, "no error");
            EXPECT_NE(al_ejecutar(*gestion, mala).descripcion, "no error");
            escribe("2");
            EXPECT_NE(al_ejecutar(*gestion, mala).descripcion, "no error");
            confirma();
            EXPECT_EQ(guardado(), "1 2/1 2\n");
            empieza();
            contabilidad->Execute("DELETE FROM Apuntes WHERE Id =2");
            gestion->Execute("DELETE FROM Cargos WHERE Id =2");
            confirma();
        }
        empieza();
        EXPECT_EQ(viajes([&] { al_ejecutar(*gestion, "INSRT"); }), 1U) << "not even the begin was done";
        EXPECT_EQ(viajes([&] { al_ejecutar(*gestion, inserta_cargo); }), 2U);
        EXPECT_EQ(viajes([&] { confirma(); }), 0U);
    }

    TEST_F(PostgresqlPareja, statements_that_fail_in_a_unit_leave_its_other_saves_as_they_are)
    {
        guarda("1");
        {
            sql::Unidad unidad(transacciones);
            for (const std::string mala :
                { "INSERT INTO Cargos (Id) VALUES (1)", "INSRT", "INSERT INTO Cargos (Id) VALUES ('a;b')" }) {
                SCOPED_TRACE(mala);
                for (const bool antes : { true, false }) {
                    empieza();
                    if (antes) {
                        EXPECT_NE(al_ejecutar(*gestion, mala).descripcion, "no error");
                    }
                    escribe("2");
                    EXPECT_NE(al_ejecutar(*gestion, mala).descripcion, "no error");
                    confirma();
                    EXPECT_NE(fallo_de([&] { lee(*gestion, "SELECT 1/0 AS x"); }).descripcion, "no error");
                    EXPECT_EQ(lee(*gestion, "SELECT COUNT(*) FROM Cargos"), "2");
                    unidad.deshace_ultima();
                    EXPECT_NE(fallo_de([&] { lee(*gestion, "SELECT 1/0 AS x"); }).descripcion, "no error");
                    EXPECT_EQ(lee(*gestion, "SELECT COUNT(*) FROM Cargos"), "1");
                }
            }
            guarda("3");
            EXPECT_EQ(guardado(), "1/1\n");
            unidad.confirma();
        }
        EXPECT_EQ(guardado(), "1 3/1 3\n");
    }

    TEST_F(PostgresqlPareja, tables_changed_in_a_save_of_a_unit_that_is_undone_are_looked_at_again)
    {
        gestion->Execute("CREATE TABLE Nueva (Dato NVARCHAR(30))");
        const auto inserta = [&] {
            gestion->Execute("INSERT INTO Nueva (Dato) VALUES ('09/02/2026 9:05:03')");
            return lee(*gestion, "SELECT Dato FROM Nueva WHERE Dato ='09/02/2026 9:05:03'");
        };
        const auto cambia = [&] {
            empieza();
            gestion->Execute("ALTER TABLE Nueva DROP COLUMN Dato");
            gestion->Execute("ALTER TABLE Nueva ADD Dato TIMESTAMP");
            EXPECT_EQ(inserta(), "09/02/2026 9:05:03");
            confirma();
        };
        sql::Unidad unidad(transacciones);
        cambia();
        unidad.deshace_ultima();
        gestion->BeginTrans();
        EXPECT_EQ(inserta(), "09/02/2026 9:05:03");
        gestion->CommitTrans();
        unidad.confirma();
        EXPECT_EQ(servidor->psql("par", "SELECT dato FROM propio.nueva"), "09/02/2026 9:05:03\n");
    }

    TEST_F(PostgresqlPareja, the_names_of_the_accounting_database_may_stand_in_it)
    {
        abre(opciones(), [](adodb::Connection& contable) {
            auto rs = contable.CreateRecordset();
            rs->Open("SELECT Nombre FROM Nombres", CursorType::Static, LockType::ReadOnly);
            return std::vector{ CStr(rs->Fields("Nombre").Value()) };
        });
        contabilidad->Execute("INSERT INTO Contable.dbo.Apuntes (Id, Dia) VALUES (4, '09/02/2026')");
        EXPECT_EQ(lee(*gestion, "SELECT a.Id FROM Contable.dbo.Apuntes a WHERE a.Dia ='09/02/2026'"), "4");
        EXPECT_THAT(al_ejecutar(*gestion, "DELETE FROM Otra.dbo.Apuntes").descripcion, EndsWith("0A000])."));
    }

    TEST_F(PostgresqlPareja, settings_are_those_of_the_one_session)
    {
        auto con = opciones();
        con.solo_lectura = true;
        con.espera = std::chrono::milliseconds(1234);
        abre(con);
        EXPECT_EQ(gestion->base(), contabilidad->base());
        EXPECT_EQ(lee(*contabilidad, "SELECT current_setting('lock_timeout')"), "1234ms");
        for (const auto& [conexion, sql] :
            { std::pair{ gestion, inserta_cargo }, { contabilidad, inserta_apunte } })
            EXPECT_EQ(al_ejecutar(*conexion, sql).categoria, Categoria::solo_lectura);
    }

    TEST_F(PostgresqlPareja, a_counter_locked_on_one_side_holds_others_off_until_the_last_commit)
    {
        contabilidad->Execute(inserta_apunte);
        empieza();
        auto rs = contabilidad->CreateRecordset();
        rs->Open("SELECT * FROM Apuntes WHERE Id =1", CursorType::Keyset, LockType::Pessimistic);
        rs->Fields("Dia").Value("21/11/2026");
        rs->Update();
        contabilidad->CommitTrans();
        EXPECT_THAT(servidor->psql("par", "SET lock_timeout = 50; DELETE FROM dbo.apuntes"),
            HasSubstr("lock timeout"));
        gestion->CommitTrans();
        EXPECT_EQ(servidor->psql("par", "SET lock_timeout = 50; DELETE FROM dbo.apuntes RETURNING dia"),
            "2026-11-21 00:00:00\n");
    }

}
}
