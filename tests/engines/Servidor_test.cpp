#include "engines/odbc/Servidor.hpp"

#include "engines/sql/Reescritura.hpp"

#include <gmock/gmock.h>

namespace atipicos::odbc {
namespace {

    using adodb::Categoria;
    using namespace std::chrono_literals;
    using testing::Contains;
    using testing::ElementsAre;
    using testing::Not;

    TEST(Servidor, sql_server_is_told_how_to_read_dates_and_how_long_to_wait)
    {
        const auto& sql_server = servidor(nombre_sql_server);
        EXPECT_THAT(sql_server.sesion({ .espera = 1'500ms }),
            ElementsAre("SET DATEFORMAT dmy", "SET NOCOUNT OFF", "SET XACT_ABORT OFF",
                "SET IMPLICIT_TRANSACTIONS OFF", "SET LOCK_TIMEOUT 1500"));
        EXPECT_THAT(sql_server.sesion({ .espera = 0ms }), Contains("SET LOCK_TIMEOUT 1")) << "0 is for ever";
        EXPECT_EQ(sql_server.categoria("HY000", 1222), Categoria::bloqueo);
        EXPECT_EQ(sql_server.categoria("40001", 1205), Categoria::bloqueo);
        EXPECT_EQ(sql_server.categoria("23000", 547), Categoria::restriccion);
        EXPECT_EQ(sql_server.categoria("42S02", 208), Categoria::instruccion);
        EXPECT_EQ(sql_server.categoria("08S01", 0), Categoria::conexion);
        EXPECT_EQ(sql_server.categoria("08004", 916), Categoria::otra) << "the database is closed to it";
        EXPECT_EQ(sql_server.categoria("HYT00", 0), Categoria::otra) << "slow, not locked";
    }

    TEST(Servidor, sessions_that_only_read_are_asked_for_where_there_are_any)
    {
        const auto* de_postgresql = "SET default_transaction_read_only TO on";
        EXPECT_THAT(servidor(nombre_postgresql).sesion({ .solo_lectura = true }), Contains(de_postgresql));
        EXPECT_THAT(servidor(nombre_postgresql).sesion({}), Not(Contains(de_postgresql)));
        EXPECT_THAT(
            servidor(nombre_sqlite).sesion({ .solo_lectura = true }), Contains("PRAGMA query_only=ON"));
    }

    TEST(Servidor, an_unknown_one_has_no_peculiarities)
    {
        EXPECT_STREQ(servidor("Otra").empieza, "BEGIN");
        EXPECT_TRUE(servidor("Otra").sesion({}).empty());
        EXPECT_TRUE(servidor("").nombre.empty());
    }

    /// A statement as SQL Server gets it.
    std::string reescrita(std::string_view sql)
    {
        return sql::reescribe(sql, sql::Catalogo(servidor(nombre_sql_server).dialecto));
    }

    TEST(Servidor, sql_server_gets_statements_letter_by_letter_but_for_texts_that_it_would_maim)
    {
        for (const auto* sql : { "SELECT ISNULL(a, '') FROM Bexmor.dbo.Cuentas WHERE Fecha = '21/11/2026'",
                 "INSERT INTO t (a) VALUES ('x;''y')", "DELETE FROM t", "INSERT INTO t VALUES (N'ñ')" })
            EXPECT_EQ(reescrita(sql), sql);
        EXPECT_EQ(reescrita("INSERT INTO t VALUES ('ñ€', 'a', '😀''x')"),
            "INSERT INTO t VALUES (N'ñ€', 'a', N'😀''x')");
    }

    TEST(Servidor, sql_server_gets_one_statement_at_a_time_also_where_none_is_separated)
    {
        for (const auto* sql :
            { "INSERT INTO t (a) VALUES ('x') DELETE FROM t", "INSERT INTO t (a) VALUES ('x') SELECT 1",
                "DELETE FROM t DROP TABLE t", "UPDATE t SET a = 'x' SET NOCOUNT ON",
                "UPDATE t SET a = 'x' exec sp_who", "SELECT 1 SELECT 2", "SELECT 1; DELETE FROM t",
                "SELECT a FROM t) SELECT b FROM t", "SELECT 1 WAITFOR DELAY '1:00'" })
            EXPECT_THROW(static_cast<void>(reescrita(sql)), adodb::ErrorBaseDatos) << sql;
        for (const auto* sql : { "INSERT INTO t (a) SELECT a FROM u WHERE b IN (SELECT c FROM v)",
                 "SELECT a FROM t UNION ALL SELECT b FROM u", "UPDATE t SET a = (SELECT 1), [drop] = 2",
                 "SELECT 'DELETE' FROM t -- DELETE", "SELECT a FROM t WHERE EXISTS (SELECT 1 FROM u);",
                 "IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION" })
            EXPECT_EQ(reescrita(sql), sql);
    }

    TEST(Servidor, tables_of_sql_server_compare_texts_by_their_letters)
    {
        EXPECT_EQ(reescrita("CREATE TABLE t (a NVARCHAR(20) NOT NULL, b MONEY, c AS (b), d BIT)"),
            "CREATE TABLE t (a NVARCHAR(20) COLLATE Latin1_General_100_BIN2 NOT NULL, b MONEY, c AS (b), "
            "d BIT)");
    }

}
}
