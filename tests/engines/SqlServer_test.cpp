// The engine on a driver that answers as SQL Server's: what it is told, and what becomes of its errors.
#include "engines/odbc/Connection.hpp"
#include "tests/support/ServidorFingido.hpp"

#include <gmock/gmock.h>

namespace atipicos::odbc {
namespace {

    using adodb::Categoria;
    using testing::ElementsAre;
    using testing::StartsWith;

    struct SqlServer : testing::Test {
        pruebas::ServidorFingido servidor;
        std::shared_ptr<Connection> conexion = Connection::Abrir({ .cadena = servidor.cadena(),
            .al_abrir = [](const auto&) { return std::vector<std::string>{ "USE Orvalin" }; } });

        SqlServer() { static_cast<void>(dicho()); }

        std::vector<std::string> dicho() { return servidor.dicho(); }

        template <class Uso> Categoria falla(Uso uso)
        {
            try {
                uso();
            } catch (const adodb::ErrorBaseDatos& error) {
                texto = error.descripcion();
                return error.categoria();
            }
            ADD_FAILURE() << "no error";
            return Categoria::otra;
        }
        std::string texto; ///< of the last error

        void ejecuta(const std::string& sql) const { conexion->Execute(sql); }
    };

    TEST_F(SqlServer, a_session_is_set_up_before_anything_else_and_again_when_the_line_was_lost)
    {
        EXPECT_EQ(falla([&] { ejecuta("DELETE FROM LineaCortada"); }), Categoria::conexion);
        EXPECT_THAT(texto, StartsWith("Se ha perdido la conexión con el servidor"));
        ejecuta("DELETE FROM t");
        EXPECT_THAT(dicho(),
            ElementsAre("DELETE FROM LineaCortada", "CONECTA", "SET DATEFORMAT dmy", "SET NOCOUNT OFF",
                "SET XACT_ABORT OFF", "SET IMPLICIT_TRANSACTIONS OFF", "SET LOCK_TIMEOUT 5000", "USE Orvalin",
                "DELETE FROM t"));
    }

    TEST_F(SqlServer, statements_arrive_letter_by_letter_in_unicode)
    {
        ejecuta("INSERT INTO t (Fecha, Texto) VALUES ('21/11/2026', 'ñ € 😀')");
        EXPECT_THAT(dicho(), ElementsAre("INSERT INTO t (Fecha, Texto) VALUES ('21/11/2026', N'ñ € 😀')"));
    }

    TEST_F(SqlServer, a_statement_that_fails_leaves_the_transaction)
    {
        conexion->BeginTrans();
        EXPECT_EQ(falla([&] { ejecuta("INSERT INTO ClaveRepetida"); }), Categoria::restriccion);
        EXPECT_EQ(falla([&] { ejecuta("UPDATE Espera"); }), Categoria::bloqueo);
        ejecuta("DELETE FROM t");
        conexion->CommitTrans();
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "INSERT INTO ClaveRepetida", "SELECT @@TRANCOUNT",
                "UPDATE Espera", "SELECT @@TRANCOUNT", "DELETE FROM t", "COMMIT"));
    }

    TEST_F(SqlServer, a_transaction_that_the_server_has_undone_is_refused_until_it_is_rolled_back)
    {
        conexion->BeginTrans();
        EXPECT_EQ(falla([&] { ejecuta("UPDATE Interbloqueo"); }), Categoria::bloqueo);
        EXPECT_EQ(falla([&] { ejecuta("DELETE FROM t"); }), Categoria::otra);
        EXPECT_EQ(texto, "La transacción se ha perdido por un error anterior: sólo se puede deshacer.");
        EXPECT_THROW(conexion->CommitTrans(), adodb::ErrorBaseDatos);
        conexion->RollbackTrans();
        ejecuta("DELETE FROM t");
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "UPDATE Interbloqueo", "SELECT @@TRANCOUNT", "DELETE FROM t"))
            << "nothing is sent that would be committed alone";
    }

    TEST_F(SqlServer, an_error_that_comes_with_a_row_is_one_of_its_statement)
    {
        conexion->BeginTrans();
        const auto rs = conexion->CreateRecordset();
        EXPECT_EQ(falla([&] {
            rs->Open("SELECT * FROM EsperaAlLeer", adodb::CursorType::Keyset, adodb::LockType::Pessimistic);
        }),
            Categoria::bloqueo);
        EXPECT_THAT(texto, StartsWith("La base de datos está bloqueada por otro usuario ("));
        EXPECT_THAT(dicho(),
            ElementsAre("BEGIN TRANSACTION", "SELECT * FROM EsperaAlLeer WITH (UPDLOCK, HOLDLOCK, ROWLOCK)",
                "SELECT @@TRANCOUNT"));
    }

    TEST_F(SqlServer, a_commit_that_fails_leaves_the_transaction_if_the_server_has_it_still)
    {
        conexion->BeginTrans();
        ejecuta("UPDATE SinSitioAlConfirmar");
        EXPECT_EQ(falla([&] { conexion->CommitTrans(); }), Categoria::instruccion);
        conexion->CommitTrans();
        EXPECT_THAT(dicho(),
            ElementsAre(
                "BEGIN TRANSACTION", "UPDATE SinSitioAlConfirmar", "COMMIT", "SELECT @@TRANCOUNT", "COMMIT"));
        conexion->BeginTrans();
        ejecuta("UPDATE InterbloqueoAlConfirmar");
        EXPECT_EQ(falla([&] { conexion->CommitTrans(); }), Categoria::bloqueo);
        EXPECT_EQ(falla([&] { conexion->CommitTrans(); }), Categoria::otra);
        EXPECT_EQ(texto, "La transacción se ha perdido por un error anterior: sólo se puede deshacer.");
        conexion->RollbackTrans();
        EXPECT_THAT(dicho(),
            ElementsAre(
                "BEGIN TRANSACTION", "UPDATE InterbloqueoAlConfirmar", "COMMIT", "SELECT @@TRANCOUNT"));
    }

    TEST_F(SqlServer, the_key_of_a_table_is_asked_once_by_the_parts_of_its_name)
    {
        for (int vez = 0; vez < 2; ++vez)
            for (const auto* tabla : { "Contador", "Bexmor.dbo.[Contador]" }) {
                const auto rs = conexion->CreateRecordset();
                rs->Open(std::string("SELECT * FROM ") + tabla, adodb::CursorType::Keyset,
                    adodb::LockType::Pessimistic);
                rs->Fields("n").Value(7);
                rs->Update();
            }
        const auto todo = dicho();
        EXPECT_THAT(todo, testing::Contains("CLAVE - - Contador").Times(1));
        EXPECT_THAT(todo, testing::Contains("CLAVE Bexmor dbo Contador").Times(1));
        EXPECT_THAT(
            todo, testing::Contains("UPDATE Bexmor.dbo.[Contador] SET \"n\" = 7 WHERE \"n\" = 1").Times(2));
    }

    TEST_F(SqlServer, a_transaction_lost_with_its_line_is_not_committed_on_a_new_one)
    {
        conexion->BeginTrans();
        EXPECT_EQ(falla([&] { ejecuta("DELETE FROM LineaCortada"); }), Categoria::conexion);
        EXPECT_EQ(falla([&] { conexion->CommitTrans(); }), Categoria::conexion);
        conexion->RollbackTrans();
        EXPECT_THAT(dicho(), ElementsAre("BEGIN TRANSACTION", "DELETE FROM LineaCortada"));
    }

}
}
