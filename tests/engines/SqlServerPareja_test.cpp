// Two connections over one session, on a driver that answers as SQL Server's: what it is told when.
#include "engines/odbc/Connection.hpp"
#include "engines/sql/Unidad.hpp"
#include "tests/support/ServidorFingido.hpp"

#include <gmock/gmock.h>

#include <utility>

namespace atipicos::odbc {
namespace {

    using adodb::Categoria;
    using testing::Contains;
    using testing::ElementsAre;
    using testing::EndsWith;
    using testing::IsEmpty;
    using testing::StartsWith;

    constexpr auto perdida = "La transacción se ha perdido por un error anterior: sólo se puede deshacer.";
    constexpr auto la_otra
        = "La otra conexión ha deshecho la transacción de las dos: sólo se puede deshacer.";
    constexpr auto ninguna = "No hay ninguna transacción abierta en esta conexión.";
    constexpr auto sin_empezar
        = "La otra conexión tiene una transacción abierta y esta no: antes de escribir, empiécela.";
    constexpr auto deshace = "IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION";

    struct SqlServerPareja : testing::Test {
        pruebas::ServidorFingido servidor;
        std::vector<sql::Linea> avisos;
        sql::Pareja pareja = Connection::AbrirPareja({ .cadena = servidor.cadena(),
            .al_abrir = [](const auto&) { return std::vector<std::string>{ "USE Orvalin" }; },
            .avisa = [this](sql::Linea que) { avisos.push_back(que); } });
        adodb::Connection& gestion = *pareja.gestion;
        adodb::Connection& contabilidad = *pareja.contabilidad;
        std::vector<std::string> al_abrir = dicho();

        std::vector<std::string> dicho() { return servidor.dicho(); }

        /// The text of an error; its kind is kept.
        template <class Uso> std::string error(Uso uso)
        {
            try {
                uso();
            } catch (const adodb::ErrorBaseDatos& error) {
                EXPECT_EQ(error.fuente(), "ODBC");
                categoria = error.categoria();
                return error.descripcion();
            }
            return "no error";
        }
        std::string ejecuta(adodb::Connection& lado, const std::string& sql)
        {
            return error([&] { lado.Execute(sql); });
        }
        std::string confirma(adodb::Connection& lado)
        {
            return error([&] { lado.CommitTrans(); });
        }
        std::string deshaz(adodb::Connection& lado)
        {
            return error([&] { lado.RollbackTrans(); });
        }
        void empieza() const
        {
            gestion.BeginTrans();
            contabilidad.BeginTrans();
        }
        Categoria categoria{};
    };

    TEST_F(SqlServerPareja, opens_one_line_and_sets_it_up_once_in_the_database_of_management)
    {
        EXPECT_THAT(al_abrir,
            ElementsAre("CONECTA", "SET DATEFORMAT dmy", "SET NOCOUNT OFF", "SET XACT_ABORT OFF",
                "SET IMPLICIT_TRANSACTIONS OFF", "SET LOCK_TIMEOUT 5000", "USE Orvalin"));
    }

    TEST_F(SqlServerPareja, plain_names_of_the_accounting_side_get_their_database_and_nothing_else_changes)
    {
        for (const auto& [escrita, dicha] : {
                 std::pair{ "SELECT Cuentas.Nombre FROM Cuentas WHERE Cuentas.Alta = '21/11/2026'",
                     "SELECT Cuentas.Nombre FROM Bexmor.dbo.Cuentas WHERE Cuentas.Alta = '21/11/2026'" },
                 { "SELECT ISNULL(a.x, 0) FROM [Cuentas] a LEFT JOIN Tipos_Doc ON a.t = Tipos_Doc.t",
                     "SELECT ISNULL(a.x, 0) FROM Bexmor.dbo.[Cuentas] a LEFT JOIN Bexmor.dbo.Tipos_Doc ON "
                     "a.t = Tipos_Doc.t" },
                 { "INSERT INTO Apuntes (Concepto) VALUES ('Ñandú')",
                     "INSERT INTO Bexmor.dbo.Apuntes (Concepto) VALUES (N'Ñandú')" },
                 { "UPDATE Contador_Asientos SET Numero = 7",
                     "UPDATE Bexmor.dbo.Contador_Asientos SET Numero = 7" },
                 { "DELETE FROM Apuntes WHERE Id IN (SELECT Id FROM Asientos)",
                     "DELETE FROM Bexmor.dbo.Apuntes WHERE Id IN (SELECT Id FROM Bexmor.dbo.Asientos)" },
                 { "SELECT x FROM Orvalin.dbo.Proveedores", "SELECT x FROM Orvalin.dbo.Proveedores" },
                 { "SELECT x FROM Conta2026.dbo.Cuentas c", "SELECT x FROM Conta2026.dbo.Cuentas c" },
             }) {
            contabilidad.Execute(escrita);
            EXPECT_THAT(dicho(), ElementsAre(dicha));
        }
        for (const auto* sql : { "SELECT Nombre FROM Cuentas", "DELETE FROM Apuntes",
                 "SELECT p.x FROM Proveedores p INNER JOIN Bexmor.dbo.Cuentas c ON c.x = p.x" }) {
            gestion.Execute(sql);
            EXPECT_THAT(dicho(), ElementsAre(sql)) << "management's stay letter by letter";
        }
    }

    TEST_F(SqlServerPareja, begins_once_and_commits_once_with_the_last)
    {
        empieza();
        gestion.Execute("DELETE FROM Cargos");
        contabilidad.Execute("DELETE FROM Apuntes");
        gestion.CommitTrans();
        EXPECT_EQ(ejecuta(contabilidad, "UPDATE Asientos SET n = 7"), "no error");
        contabilidad.CommitTrans();
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "DELETE FROM Cargos", "DELETE FROM Bexmor.dbo.Apuntes",
                "UPDATE Bexmor.dbo.Asientos SET n = 7", "COMMIT"));
        contabilidad.BeginTrans();
        contabilidad.CommitTrans();
        gestion.BeginTrans();
        gestion.RollbackTrans();
        EXPECT_THAT(dicho(), ElementsAre("BEGIN TRANSACTION", "COMMIT", "BEGIN TRANSACTION", deshace))
            << "one alone, at once";
    }

    TEST_F(SqlServerPareja, what_a_side_may_not_do_is_refused_and_not_sent)
    {
        EXPECT_EQ(confirma(gestion), ninguna);
        EXPECT_EQ(deshaz(contabilidad), ninguna);
        gestion.BeginTrans();
        EXPECT_EQ(error([&] { gestion.BeginTrans(); }), "Ya hay una transacción abierta en esta conexión.");
        EXPECT_EQ(confirma(contabilidad), ninguna);
        for (const auto* sql : { "UPDATE Asientos SET n = 7", "EXEC sp_who", "DROP TABLE Asientos",
                 "WITH q AS (SELECT 1 AS n) DELETE FROM q" })
            EXPECT_EQ(ejecuta(contabilidad, sql), sin_empezar) << sql;
        EXPECT_EQ(categoria, Categoria::instruccion);
        EXPECT_EQ(ejecuta(contabilidad, " select n FROM Asientos"), "no error") << "it may ask";
        contabilidad.BeginTrans();
        gestion.CommitTrans();
        EXPECT_EQ(ejecuta(gestion, "DELETE FROM Cargos"), sin_empezar);
        EXPECT_EQ(error([&] { gestion.BeginTrans(); }),
            "La transacción anterior de esta conexión espera a que la otra termine la suya.");
        EXPECT_THAT(dicho(), ElementsAre("BEGIN TRANSACTION", " select n FROM Bexmor.dbo.Asientos"));
    }

    TEST_F(SqlServerPareja, is_undone_once_by_whichever_side_rolls_back_also_behind_a_promise)
    {
        empieza();
        contabilidad.RollbackTrans();
        EXPECT_EQ(ejecuta(gestion, "SELECT 1"), la_otra);
        EXPECT_EQ(confirma(gestion), la_otra);
        EXPECT_EQ(categoria, Categoria::otra);
        EXPECT_EQ(deshaz(gestion), "no error");
        EXPECT_THAT(dicho(), ElementsAre("BEGIN TRANSACTION", deshace));
        empieza();
        gestion.CommitTrans();
        EXPECT_EQ(deshaz(gestion), "no error");
        EXPECT_EQ(ejecuta(contabilidad, "DELETE FROM Apuntes"), la_otra);
        EXPECT_EQ(deshaz(contabilidad), "no error");
        EXPECT_THAT(dicho(), ElementsAre("BEGIN TRANSACTION", deshace));
    }

    TEST_F(SqlServerPareja, of_a_statement_that_fails_on_one_side_the_transaction_of_both_survives)
    {
        empieza();
        EXPECT_NE(ejecuta(contabilidad, "INSERT INTO ClaveRepetida"), "no error");
        EXPECT_EQ(categoria, Categoria::restriccion);
        EXPECT_EQ(ejecuta(gestion, "DELETE FROM Cargos"), "no error");
        gestion.CommitTrans();
        contabilidad.CommitTrans();
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "INSERT INTO Bexmor.dbo.ClaveRepetida", "SELECT @@TRANCOUNT",
                "DELETE FROM Cargos", "COMMIT"));
    }

    TEST_F(SqlServerPareja, a_query_of_the_side_that_has_not_begun_can_lose_the_transaction_of_the_other)
    {
        gestion.BeginTrans();
        EXPECT_NE(ejecuta(contabilidad, "SELECT n FROM Interbloqueo"), "no error");
        EXPECT_EQ(categoria, Categoria::bloqueo);
        EXPECT_EQ(ejecuta(gestion, "DELETE FROM Cargos"), perdida);
        EXPECT_EQ(ejecuta(contabilidad, "DELETE FROM Apuntes"), "no error") << "it was in none";
        EXPECT_EQ(deshaz(gestion), "no error");
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "SELECT n FROM Bexmor.dbo.Interbloqueo", "SELECT @@TRANCOUNT",
                "DELETE FROM Bexmor.dbo.Apuntes"));
    }

    TEST_F(SqlServerPareja, undone_by_the_server_is_lost_to_both_until_each_rolls_back)
    {
        empieza();
        EXPECT_NE(ejecuta(contabilidad, "UPDATE Interbloqueo SET a = 1"), "no error");
        EXPECT_EQ(categoria, Categoria::bloqueo);
        for (auto* lado : { &gestion, &contabilidad }) {
            EXPECT_EQ(ejecuta(*lado, "SELECT 1"), perdida);
            EXPECT_EQ(categoria, Categoria::otra);
            EXPECT_EQ(confirma(*lado), perdida);
        }
        EXPECT_EQ(deshaz(gestion), "no error");
        EXPECT_EQ(deshaz(gestion), ninguna);
        EXPECT_EQ(ejecuta(contabilidad, "SELECT 1"), perdida);
        EXPECT_EQ(deshaz(contabilidad), "no error");
        EXPECT_THAT(dicho(),
            ElementsAre(
                "BEGIN TRANSACTION", "UPDATE Bexmor.dbo.Interbloqueo SET a = 1", "SELECT @@TRANCOUNT"))
            << "nothing is sent that would be committed alone";
    }

    TEST_F(SqlServerPareja, one_of_which_nobody_can_tell_whether_it_is_open_is_undone_and_lost)
    {
        empieza();
        gestion.Execute("UPDATE SinRespuestaAlPreguntar SET a = 1");
        EXPECT_NE(ejecuta(gestion, "INSERT INTO ClaveRepetida"), "no error");
        EXPECT_EQ(ejecuta(contabilidad, "DELETE FROM Apuntes"), perdida);
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "UPDATE SinRespuestaAlPreguntar SET a = 1",
                "INSERT INTO ClaveRepetida", "SELECT @@TRANCOUNT", deshace));
    }

    TEST_F(SqlServerPareja, a_line_that_may_still_hold_a_transaction_is_left_for_a_new_one)
    {
        empieza();
        gestion.Execute("UPDATE SinRespuestaAlDeshacer SET a = 1");
        EXPECT_THAT(
            deshaz(gestion), StartsWith("La base de datos ha dado un error (SinRespuestaAlDeshacer ["));
        EXPECT_EQ(deshaz(contabilidad), "no error");
        static_cast<void>(dicho());
        contabilidad.Execute("DELETE FROM Apuntes");
        const auto todo = dicho();
        EXPECT_EQ(todo.front(), "CONECTA");
        EXPECT_EQ(todo.back(), "DELETE FROM Bexmor.dbo.Apuntes");
        EXPECT_THAT(avisos, ElementsAre(sql::Linea::perdida, sql::Linea::reanudada));
    }

    TEST_F(SqlServerPareja, the_error_of_the_commit_is_raised_to_the_last_side_and_each_may_undo_it)
    {
        for (const bool primero_gestion : { true, false }) {
            empieza();
            gestion.Execute("UPDATE SinSitioAlConfirmar SET a = 1");
            gestion.CommitTrans();
            EXPECT_THAT(confirma(contabilidad),
                StartsWith("La base de datos no ha podido hacer lo que se le pedía (SinSitioAlConfirmar ["));
            EXPECT_EQ(deshaz(primero_gestion ? gestion : contabilidad), "no error");
            EXPECT_EQ(deshaz(primero_gestion ? contabilidad : gestion), "no error");
            EXPECT_THAT(dicho(),
                ElementsAre("BEGIN TRANSACTION", "UPDATE SinSitioAlConfirmar SET a = 1", "COMMIT",
                    "SELECT @@TRANCOUNT", deshace));
        }
    }

    TEST_F(SqlServerPareja, a_commit_with_which_the_server_has_undone_all_leaves_the_promised_side_free)
    {
        empieza();
        gestion.Execute("UPDATE InterbloqueoAlConfirmar SET a = 1");
        gestion.CommitTrans();
        EXPECT_NE(confirma(contabilidad), "no error");
        EXPECT_EQ(categoria, Categoria::bloqueo);
        EXPECT_EQ(confirma(contabilidad), perdida);
        EXPECT_EQ(ejecuta(gestion, "DELETE FROM Cargos"), "no error");
        EXPECT_EQ(deshaz(contabilidad), "no error");
        EXPECT_EQ(deshaz(gestion), "no error");
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "UPDATE InterbloqueoAlConfirmar SET a = 1", "COMMIT",
                "SELECT @@TRANCOUNT", "DELETE FROM Cargos"));
    }

    TEST_F(SqlServerPareja, a_line_lost_in_the_middle_is_lost_to_both_and_opened_once_for_both)
    {
        empieza();
        gestion.Execute("DELETE FROM Cargos");
        EXPECT_THAT(
            ejecuta(contabilidad, "DELETE FROM LineaCortada"), StartsWith("Se ha perdido la conexión"));
        EXPECT_EQ(categoria, Categoria::conexion);
        for (auto* lado : { &contabilidad, &gestion }) {
            EXPECT_EQ(ejecuta(*lado, "DELETE FROM t"), perdida);
            EXPECT_EQ(categoria, Categoria::conexion);
            EXPECT_EQ(confirma(*lado), perdida);
            EXPECT_EQ(deshaz(*lado), "no error");
        }
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "DELETE FROM Cargos", "DELETE FROM Bexmor.dbo.LineaCortada"));
        empieza();
        gestion.CommitTrans();
        contabilidad.CommitTrans();
        auto otra_vez = al_abrir;
        otra_vez.insert(otra_vez.end(), { "BEGIN TRANSACTION", "COMMIT" });
        EXPECT_EQ(dicho(), otra_vez);
        EXPECT_THAT(avisos, ElementsAre(sql::Linea::perdida, sql::Linea::reanudada));
    }

    TEST_F(SqlServerPareja, a_line_lost_in_the_commit_leaves_it_open_whether_that_was_kept)
    {
        empieza();
        gestion.Execute("UPDATE LineaCortadaAlConfirmar SET a = 1");
        gestion.CommitTrans();
        EXPECT_THAT(
            confirma(contabilidad), EndsWith(" No se sabe si los datos llegaron a guardarse: compruébelo."));
        EXPECT_EQ(categoria, Categoria::conexion);
        EXPECT_EQ(confirma(contabilidad), perdida) << "it is not committed on a new line";
        EXPECT_EQ(deshaz(contabilidad), "no error");
        EXPECT_EQ(deshaz(gestion), "no error");
    }

    TEST_F(SqlServerPareja, rows_of_the_accounting_side_are_locked_and_written_back_in_its_database)
    {
        empieza();
        const auto rs = pareja.contabilidad->CreateRecordset();
        rs->Open("SELECT * FROM Contador_Asientos WHERE Empresa =1", adodb::CursorType::Keyset,
            adodb::LockType::Pessimistic);
        rs->Fields("n").Value(7);
        rs->Update();
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION",
                "SELECT * FROM Bexmor.dbo.Contador_Asientos WITH (UPDLOCK, HOLDLOCK, ROWLOCK) WHERE Empresa "
                "=1",
                "CLAVE Bexmor dbo Contador_Asientos",
                "UPDATE Bexmor.dbo.Contador_Asientos SET \"n\" = 7 WHERE \"n\" = 1"));
    }

    TEST_F(SqlServerPareja, a_lock_taken_outside_a_transaction_joins_that_of_the_other_side)
    {
        gestion.BeginTrans();
        const auto rs = pareja.contabilidad->CreateRecordset();
        rs->Open("SELECT * FROM Contador", adodb::CursorType::Keyset, adodb::LockType::Pessimistic);
        rs->Fields("n").Value(7);
        rs->Update();
        EXPECT_THAT(dicho(), testing::Not(Contains("COMMIT"))) << "only promised";
        gestion.CommitTrans();
        EXPECT_THAT(dicho(), ElementsAre("COMMIT"));
    }

    TEST_F(SqlServerPareja, a_key_is_asked_once_for_both_sides)
    {
        for (auto* lado : { &gestion, &contabilidad, &gestion }) {
            const auto rs = lado->CreateRecordset();
            rs->Open(
                "SELECT * FROM Bexmor.dbo.Contador", adodb::CursorType::Keyset, adodb::LockType::Pessimistic);
            rs->Fields("n").Value(7);
            rs->Update();
        }
        EXPECT_THAT(dicho(), Contains("CLAVE Bexmor dbo Contador").Times(1));
    }

    TEST_F(SqlServerPareja, a_side_that_is_dropped_rolls_back_what_it_has_begun)
    {
        empieza();
        pareja.contabilidad.reset();
        EXPECT_THAT(dicho(), ElementsAre("BEGIN TRANSACTION", deshace));
        EXPECT_EQ(confirma(gestion), la_otra);
        EXPECT_EQ(deshaz(gestion), "no error");
        gestion.BeginTrans();
        pareja = {};
        EXPECT_THAT(dicho(), Contains("BEGIN TRANSACTION").Times(1));
    }

    TEST_F(SqlServerPareja, no_other_product_than_those_known_is_shared)
    {
        const auto otra = servidor.cadena() + ";NOMBRE=Otro Producto";
        EXPECT_NO_THROW(static_cast<void>(Connection::Abrir({ .cadena = otra })));
        EXPECT_EQ(error([&] { static_cast<void>(Connection::AbrirPareja({ .cadena = otra })); }),
            "Sólo SQL Server, PostgreSQL y SQLite pueden llevar gestión y contabilidad por la misma línea.");
    }

    struct SqlServerUnidad : SqlServerPareja {
        void guarda() const
        {
            empieza();
            gestion.Execute("DELETE FROM t");
            gestion.CommitTrans();
            contabilidad.CommitTrans();
        }
    };

    TEST_F(SqlServerUnidad, is_one_transaction_with_a_savepoint_for_each_save)
    {
        sql::Unidad unidad(pareja.transacciones);
        guarda();
        guarda();
        unidad.deshace_ultima();
        empieza();
        EXPECT_EQ(deshaz(contabilidad), "no error");
        EXPECT_EQ(deshaz(gestion), "no error");
        guarda();
        unidad.confirma();
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "SAVE TRANSACTION u", "DELETE FROM t", "SAVE TRANSACTION u",
                "DELETE FROM t", "ROLLBACK TRANSACTION u", "SAVE TRANSACTION u", "ROLLBACK TRANSACTION u",
                "SAVE TRANSACTION u", "DELETE FROM t", "COMMIT"));
    }

    TEST_F(SqlServerUnidad, lost_with_its_line_takes_nothing_more_and_commits_nothing)
    {
        {
            sql::Unidad unidad(pareja.transacciones);
            guarda();
            gestion.BeginTrans();
            gestion.Execute("UPDATE LineaCortadaAlSeguir SET a = 1");
            gestion.CommitTrans();
            EXPECT_THAT(error([&] { gestion.BeginTrans(); }), StartsWith("Se ha perdido la conexión"));
            EXPECT_EQ(error([&] { gestion.BeginTrans(); }), perdida);
            EXPECT_EQ(error([&] { unidad.confirma(); }), perdida);
            EXPECT_EQ(categoria, Categoria::conexion);
        }
        EXPECT_EQ(dicho().back(), "SAVE TRANSACTION u");
        guarda();
        EXPECT_EQ(dicho().back(), "COMMIT") << "the next one has a new line";
    }

    TEST_F(SqlServerUnidad, one_whose_save_cannot_be_undone_alone_is_undone_whole)
    {
        {
            sql::Unidad unidad(pareja.transacciones);
            guarda();
            empieza();
            gestion.Execute("UPDATE SinSitioAlVolver SET a = 1");
            EXPECT_THAT(deshaz(gestion),
                StartsWith("La base de datos no ha podido hacer lo que se le pedía (SinSitioAlVolver ["));
            EXPECT_EQ(dicho().back(), deshace);
            EXPECT_EQ(deshaz(contabilidad), "no error");
            EXPECT_EQ(error([&] { unidad.confirma(); }), perdida);
        }
        EXPECT_THAT(dicho(), IsEmpty());
    }

}
}
