// How a pair of connections loses its transaction, and what it says of it.
#include "tests/engines/ParPostgresql.hpp"
#include "tests/support/Intermediario.hpp"

namespace atipicos::postgresql {
namespace {

    using adodb::Categoria;
    using adodb::CursorType;
    using adodb::LockType;
    using testing::EndsWith;
    using testing::HasSubstr;
    using testing::StartsWith;

    struct PostgresqlPerdida : ParPostgresql { };

    TEST_F(PostgresqlPerdida, a_commit_refused_by_a_deferred_condition_is_lost_and_its_roll_back_says_nothing)
    {
        empieza();
        gestion->Execute(inserta_cargo);
        contabilidad->Execute("INSERT INTO Firmas (Id, Apunte) VALUES (1, 99)");
        gestion->CommitTrans();
        const auto fallo = fallo_de([&] { contabilidad->CommitTrans(); });
        EXPECT_EQ(fallo.categoria, Categoria::restriccion);
        EXPECT_THAT(fallo.descripcion, HasSubstr("firmas_apunte_fkey"));
        EXPECT_EQ(al_ejecutar(*contabilidad, inserta_apunte).descripcion,
            "La transacción se ha perdido porque no se ha podido confirmar: sólo se puede deshacer.");
        EXPECT_EQ(viajes([&] {
            contabilidad->RollbackTrans();
            gestion->RollbackTrans();
        }),
            0U);
        EXPECT_EQ(guardado(), "/\n");
        guarda("2");
        EXPECT_EQ(guardado(), "2/2\n");
    }

    TEST_F(PostgresqlPerdida, killed_between_the_two_commits_nothing_is_kept_and_nobody_claims_to_know)
    {
        empieza();
        escribe("1");
        gestion->CommitTrans();
        mata();
        const auto fallo = fallo_de([&] { contabilidad->CommitTrans(); });
        EXPECT_EQ(fallo.categoria, Categoria::conexion);
        EXPECT_THAT(
            fallo.descripcion, EndsWith("No se sabe si los datos llegaron a guardarse: compruébelo."));
        EXPECT_EQ(al_ejecutar(*contabilidad, inserta_apunte).descripcion, perdida_con_la_linea);
        contabilidad->RollbackTrans();
        gestion->RollbackTrans();
        EXPECT_EQ(guardado(), "/\n");
        guarda("2");
        EXPECT_EQ(guardado(), "2/2\n");
    }

    TEST_F(PostgresqlPerdida, a_commit_whose_answer_is_lost_may_have_kept_all)
    {
        pruebas::Intermediario intermediario(servidor->enchufe());
        auto con = opciones();
        con.direccion += intermediario.por_aqui();
        abre(con);
        empieza();
        escribe("1");
        gestion->CommitTrans();
        intermediario.pierde_la_proxima_respuesta();
        EXPECT_THAT(fallo_de([&] { contabilidad->CommitTrans(); }).descripcion,
            EndsWith("No se sabe si los datos llegaron a guardarse: compruébelo."));
        EXPECT_EQ(guardado(), "1/1\n");
        contabilidad->RollbackTrans();
        guarda("2");
        EXPECT_EQ(guardado(), "1 2/1 2\n");
        suelta();
    }

    TEST_F(PostgresqlPerdida, a_line_lost_in_the_middle_loses_the_transaction_of_both)
    {
        empieza();
        escribe("1");
        mata();
        EXPECT_THAT(al_ejecutar(*gestion, "DELETE FROM Cargos").descripcion,
            EndsWith(" La próxima operación volverá a conectar."));
        for (auto* una : { gestion.get(), contabilidad.get() }) {
            const auto fallo = fallo_de([&] { lee(*una, "SELECT 1 AS uno"); });
            EXPECT_EQ(fallo.descripcion, perdida_con_la_linea);
            EXPECT_EQ(fallo.categoria, Categoria::conexion);
        }
        gestion->RollbackTrans();
        EXPECT_EQ(lee(*gestion, "SELECT COUNT(*) FROM Cargos"), "0") << "this side goes on";
        EXPECT_EQ(fallo_de([&] { contabilidad->CommitTrans(); }).descripcion, perdida_con_la_linea);
        contabilidad->RollbackTrans();
        guarda("2");
        EXPECT_EQ(guardado(), "2/2\n");
    }

    TEST_F(PostgresqlPerdida, a_line_that_went_dead_while_idle_is_opened_again_by_the_first_statement)
    {
        for (const std::string sql : { "INSERT INTO Cargos (Id) VALUES (1)",
                 "INSERT INTO Cargos (Id, Texto) VALUES (2, 'a;b')", "SELECT Id FROM Cargos" }) {
            mata();
            empieza();
            gestion->Execute(sql);
            confirma();
        }
        mata();
        auto rs = gestion->CreateRecordset();
        rs->Open("SELECT * FROM Cargos WHERE Id =2", CursorType::Keyset, LockType::Pessimistic);
        rs->Fields("Texto").Value("dos");
        rs->Update();
        EXPECT_EQ(guardado(), "1 2/\n") << "each of them once";
        EXPECT_EQ(lee(*gestion, "SELECT Texto FROM Cargos WHERE Id =2"), "dos");
    }

    TEST_F(PostgresqlPerdida, on_a_line_opened_again_the_tables_are_looked_at_again)
    {
        mata();
        servidor->psql("par", "ALTER TABLE propio.cargos ADD dia TIMESTAMP");
        EXPECT_EQ(lee(*gestion, "SELECT COUNT(*) FROM Cargos"), "0");
        gestion->Execute("INSERT INTO Cargos (Id, Dia) VALUES (1, '9:05:03')");
        EXPECT_EQ(lee(*gestion, "SELECT Dia FROM Cargos"), "01/01/1900 9:05:03");
    }

    TEST_F(PostgresqlPerdida, a_server_that_is_not_there_when_a_transaction_begins_loses_it)
    {
        servidor->detiene();
        empieza();
        EXPECT_THAT(al_ejecutar(*gestion, inserta_cargo).descripcion,
            StartsWith("No se puede conectar con el servidor de la base de datos ("));
        servidor->arranca();
        EXPECT_EQ(al_ejecutar(*contabilidad, inserta_apunte).descripcion, perdida_con_la_linea)
            << "what comes now would be half of it";
        EXPECT_EQ(fallo_de([&] { gestion->CommitTrans(); }).descripcion, perdida_con_la_linea);
        deshace();
        EXPECT_EQ(guardado(), "/\n");
        guarda("2");
        EXPECT_EQ(guardado(), "2/2\n");
    }

    TEST_F(PostgresqlPerdida, a_unit_whose_line_is_lost_takes_nothing_more_and_keeps_nothing)
    {
        {
            sql::Unidad unidad(transacciones);
            guarda("1");
            mata();
            empieza();
            EXPECT_EQ(
                al_ejecutar(*gestion, "INSERT INTO Cargos (Id) VALUES (2)").categoria, Categoria::conexion);
            deshace();
            EXPECT_EQ(fallo_de([&] { gestion->BeginTrans(); }).descripcion, perdida_con_la_linea);
            EXPECT_EQ(fallo_de([&] { unidad.confirma(); }).descripcion, perdida_con_la_linea);
        }
        EXPECT_EQ(guardado(), "/\n");
        guarda("3");
        EXPECT_EQ(guardado(), "3/3\n");
    }

    TEST_F(PostgresqlPerdida, a_transaction_that_a_statement_ends_is_lost)
    {
        empieza();
        escribe("1");
        EXPECT_NE(al_ejecutar(*gestion, "ROLLBACK").descripcion, "no error");
        EXPECT_EQ(al_ejecutar(*contabilidad, inserta_apunte).descripcion,
            "La transacción se ha perdido porque el servidor la ha terminado: sólo se puede deshacer.");
        deshace();
        EXPECT_EQ(guardado(), "/\n");
    }

    TEST_F(PostgresqlPerdida, a_side_that_is_dropped_undoes_what_it_has_begun)
    {
        empieza();
        escribe("1");
        contabilidad.reset();
        EXPECT_EQ(al_ejecutar(*gestion, inserta_cargo).descripcion,
            "La otra conexión ha deshecho la transacción de las dos: sólo se puede deshacer.");
        gestion->RollbackTrans();
        gestion->BeginTrans();
        gestion->Execute(inserta_cargo);
        gestion->CommitTrans();
        EXPECT_EQ(guardado(), "1/\n");
    }

}
}
