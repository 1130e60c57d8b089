// Statements that the server keeps prepared for all that differ from them in values alone.
#include "engines/postgresql/Connection.hpp"

#include "engines/sql/Guion.hpp"
#include "engines/sql/Postgresql.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/TrazaPostgresql.hpp"

#include <gmock/gmock.h>

namespace atipicos::postgresql {
namespace {

    using adodb::CursorType;
    using adodb::ErrorBaseDatos;
    using adodb::LockType;

    constexpr auto tablas = R"(
        CREATE TABLE t (Id INT NOT NULL PRIMARY KEY, Corto SMALLINT, Dinero MONEY, Fecha DATETIME, Marca BIT,
                        Texto NVARCHAR(9));
        CREATE TABLE u (Id INT NOT NULL PRIMARY KEY, Texto NVARCHAR(9) NOT NULL CHECK (Texto <> 'no')))";

    struct PostgresqlPreparadas : testing::Test {
        static inline std::unique_ptr<pruebas::ServidorPostgresql> servidor;
        std::shared_ptr<Connection> conexion;

        static void TearDownTestSuite() { servidor.reset(); }

        void SetUp() override
        {
            if (const auto falta = pruebas::ServidorPostgresql::falta(); !falta.empty())
                GTEST_SKIP() << falta;
            if (!servidor)
                servidor = std::make_unique<pruebas::ServidorPostgresql>();
            servidor->crea_base("una");
            conexion = abre();
            conexion->BeginTrans();
            sql::crea_esquema_postgresql(*conexion, "propio");
            sql::ejecuta_guion(*conexion, tablas);
            conexion->CommitTrans();
            primero("SELECT 1 AS uno"); // the catalogue is read
        }

        void TearDown() override
        {
            conexion.reset();
            if (servidor)
                servidor->borra_base("una");
        }

        static std::shared_ptr<Connection> abre(const std::string& mas = {})
        {
            return Connection::Abrir({ .direccion = servidor->direccion("una") + mas, .esquema = "propio" });
        }

        static std::unique_ptr<adodb::Recordset> lee(Connection& donde, const std::string& sql)
        {
            auto rs = donde.CreateRecordset();
            rs->Open(sql, CursorType::Static, LockType::ReadOnly);
            return rs;
        }

        std::string primero(const std::string& sql) const
        {
            const auto rs = lee(*conexion, sql);
            return rs->Eof() ? "no row" : CStr(rs->Fields(std::size_t{ 0 }).Value());
        }

        /// How many statements the server keeps for the session that begin so; asked in a way that it does
        /// not keep itself.
        int preparadas(const std::string& comienzo) const
        {
            const auto sql
                = "SELECT count(*) FROM pg_prepared_statements WHERE statement LIKE '" + comienzo + "%'";
            const Respuesta respuesta(PQexec(conexion->base(), sql.c_str()));
            return std::atoi(PQgetvalue(respuesta.get(), 0, 0));
        }

        void varias_veces(const std::string& sql) const
        {
            for (int vez = 0; vez < 3; ++vez)
                conexion->Execute(sql);
        }

        template <class Uso> std::size_t viajes(Uso uso) const
        {
            return pruebas::TrazaPostgresql(conexion->base(), uso).viajes();
        }
    };

    /// How something ended, with everything that an error says.
    template <class Uso> std::string final_de(Uso uso)
    {
        try {
            uso();
        } catch (const ErrorBaseDatos& error) {
            return std::to_string(static_cast<int>(error.categoria())) + " " + error.descripcion() + " in "
                + error.instruccion();
        }
        return "no error";
    }

    TEST_F(PostgresqlPreparadas, one_is_enough_for_all_values_from_the_second_time_on)
    {
        conexion->Execute("INSERT INTO t VALUES (1, 1, 2.5, '21/11/2026', 0, 'uno')");
        EXPECT_EQ(preparadas("INSERT"), 0) << "what comes once is not worth it";
        conexion->Execute("INSERT INTO t VALUES (2, 2, 3.25, '', 1, 'd''Or')");
        conexion->Execute("INSERT INTO t VALUES (3, 3, 0.0001, '9:05:03', 1, '')");
        EXPECT_EQ(preparadas("INSERT INTO t VALUES ($1, $2, $3, $4, $5, $6)"), 1);
        conexion->Execute("INSERT INTO t VALUES (4, 4, 7, '', 0, '')");
        EXPECT_EQ(primero("SELECT Fecha FROM t WHERE Texto = 'd''Or'"), "01/01/1900");
        EXPECT_EQ(primero("SELECT Id FROM t WHERE Fecha = '9:05:03'"), "3");
        EXPECT_EQ(primero("SELECT Id FROM t WHERE Fecha = '21/11/2026'"), "1");
        EXPECT_EQ(primero("SELECT Dinero FROM t WHERE Id IN (3)"), "0,0001");
        EXPECT_EQ(primero("SELECT Dinero FROM t WHERE Id IN (4)"), "7");
        EXPECT_EQ(preparadas("SELECT"), 2);
    }

    TEST_F(PostgresqlPreparadas, each_statement_is_one_exchange_also_the_one_that_prepares)
    {
        conexion->BeginTrans();
        for (int i = 1; i < 5; ++i) {
            const auto numero = std::to_string(i);
            EXPECT_EQ(viajes([&] { conexion->Execute("INSERT INTO u VALUES (" + numero + ", 'a')"); }), 1U);
            EXPECT_EQ(viajes([&] { primero("SELECT Texto FROM u WHERE Id = " + numero); }), 1U);
        }
        EXPECT_EQ(viajes([&] { conexion->CommitTrans(); }), 1U);
        EXPECT_EQ(primero("SELECT COUNT(*) FROM u"), "4");
        EXPECT_EQ(preparadas("SAVEPOINT"), 1);
    }

    TEST_F(PostgresqlPreparadas, values_mean_what_their_literals_mean)
    {
        const auto texto = abre("?preparadas=no");
        for (const auto* literal :
            { "7", "-7", "7.0", "7.25", "-2147483648", "2147483647", "3000000000", "'7'", "'7.0'", "'x'",
                "'21/11/2026'", "12345678901234567890", "0.00004", "1e3", "99999999999.9999" }) {
            for (const std::string columna : { "Id", "Corto", "Dinero", "Fecha", "Marca", "Texto" })
                for (const std::string comienzo :
                    { "INSERT INTO t (Id) SELECT 1 WHERE NOT EXISTS (SELECT Id FROM t WHERE ",
                        "UPDATE t SET " }) {
                    const auto sql = comienzo + columna + " = " + literal + (comienzo[0] == 'I' ? ")" : "");
                    std::int32_t filas = -1;
                    const auto esperado = final_de([&] {
                        texto->BeginTrans();
                        texto->Execute(sql, &filas);
                    }) + std::to_string(filas);
                    const auto fila = "SELECT * FROM t";
                    const auto escrito = [&](Connection& donde) {
                        std::string todo;
                        for (auto rs = lee(donde, fila); !rs->Eof(); rs->MoveNext())
                            for (std::size_t i = 0; i < rs->Count(); ++i)
                                rs->Fields(i).anexa_texto(todo += "|");
                        return todo;
                    };
                    const auto queda = escrito(*texto);
                    texto->RollbackTrans();
                    for (int vez = 0; vez < 3; ++vez) {
                        filas = -1;
                        EXPECT_EQ(final_de([&] {
                            conexion->BeginTrans();
                            conexion->Execute(sql, &filas);
                        }) + std::to_string(filas),
                            esperado);
                        EXPECT_EQ(escrito(*conexion), queda) << sql;
                        conexion->RollbackTrans();
                    }
                }
            if (primero("SELECT COUNT(*) FROM t") == "0")
                texto->Execute("INSERT INTO t VALUES (1, 1, 1, '', 1, 'x')");
        }
    }

    TEST_F(PostgresqlPreparadas, errors_are_those_of_the_statement_as_a_text)
    {
        const auto texto = abre("?preparadas=no");
        conexion->Execute("INSERT INTO u VALUES (1, 'a')");
        for (const std::string sql : { "INSERT INTO u VALUES (1, 'b')", "INSERT INTO u VALUES (2, 'no')",
                 "INSERT INTO u VALUES (2, 'diez letras')", "INSERT INTO u VALUES ('x', 'a')",
                 "INSERT INTO u (Id) VALUES (2)", "INSERT INTO u VALUES (3000000000, 'a')",
                 "UPDATE t SET Corto = 70000 WHERE Texto = 'x'", "SELECT * FROM u WHERE Id = 'x'",
                 "SELECT * FROM u WHERE Texto = 7", "SELECT * FROM NoHay WHERE Texto = 7",
                 "SELECT NoHay FROM u WHERE Texto = '7'", "INSERT INTO u VALUES (2, 'b', 3)",
                 "INSERT INTO u VALUES (2 'b')", "UPDATE t SET Fecha = '31/02/2026' WHERE NoHay = 5",
                 "DELETE FROM u WHERE Id = 1 AND Texto = 'x' AND",
                 "SELECT Id FROM u WHERE Id = 1 AND ROUND(7)" }) {
            const auto esperado = final_de([&] { texto->Execute(sql); });
            EXPECT_NE(esperado, "no error") << sql;
            texto->BeginTrans();
            const auto dentro = final_de([&] { texto->Execute(sql); });
            texto->RollbackTrans();
            for (int vez = 0; vez < 3; ++vez) {
                EXPECT_EQ(final_de([&] { conexion->Execute(sql); }), esperado);
                conexion->BeginTrans();
                EXPECT_EQ(final_de([&] { conexion->Execute(sql); }), dentro);
                conexion->Execute("INSERT INTO u VALUES (9, 'b')");
                EXPECT_NE(final_de([&] { conexion->Execute(sql); }), "no error");
                conexion->Execute("UPDATE u SET Texto = 'c' WHERE Id = 9");
                conexion->CommitTrans();
                EXPECT_EQ(primero("SELECT Texto FROM u WHERE Id = 9"), "c") << sql;
                conexion->Execute("DELETE FROM u WHERE Id = 9");
            }
        }
    }

    TEST_F(PostgresqlPreparadas, the_server_is_told_the_limits_of_a_range_when_it_plans)
    {
        for (const auto* limite : { "2", "3" })
            for (int vez = 0; vez < 2; ++vez) {
                primero(std::string("SELECT Id FROM u WHERE Texto = 'a' AND Id BETWEEN 1 AND ") + limite);
                conexion->Execute(std::string("UPDATE u SET Texto = 'b' WHERE Id < ") + limite);
            }
        EXPECT_EQ(preparadas("SELECT Id FROM u WHERE Texto = $1 AND Id BETWEEN 1 AND"), 2);
        EXPECT_EQ(preparadas("UPDATE u SET Texto = $1 WHERE Id < $2"), 1);
    }

    TEST_F(PostgresqlPreparadas, rows_that_another_user_gave_other_columns_are_read_as_they_are)
    {
        conexion->Execute("INSERT INTO u VALUES (1, 'a')");
        const auto columnas = [&] { return lee(*conexion, "SELECT * FROM u WHERE Id = 1")->Count(); };
        for (int vez = 0; vez < 3; ++vez)
            EXPECT_EQ(columnas(), 2U);
        servidor->psql("una", "ALTER TABLE propio.u ADD COLUMN Otra INT");
        EXPECT_EQ(columnas(), 3U);
        EXPECT_EQ(columnas(), 3U);
        conexion->BeginTrans();
        conexion->Execute("UPDATE u SET Texto = 'b' WHERE Id = 1");
        EXPECT_EQ(columnas(), 3U);
        conexion->CommitTrans();
        servidor->psql("una", "ALTER TABLE propio.u ADD COLUMN YOtra INT");
        conexion->BeginTrans();
        conexion->Execute("UPDATE u SET Texto = 'c' WHERE Id = 1");
        EXPECT_EQ(columnas(), 4U);
        EXPECT_EQ(primero("SELECT Texto FROM u WHERE Id = 1"), "c") << "nothing of the transaction is lost";
        conexion->CommitTrans();
        EXPECT_EQ(columnas(), 4U);
        EXPECT_EQ(preparadas("SELECT * FROM u WHERE Id = $1"), 1) << "prepared again";
    }

    TEST_F(PostgresqlPreparadas, a_row_that_is_locked_is_read_as_it_is)
    {
        conexion->Execute("INSERT INTO u VALUES (1, 'a')");
        const auto cambia = [&](const std::string& texto) {
            auto rs = conexion->CreateRecordset();
            rs->Open("SELECT * FROM u WHERE Id = 1", CursorType::Keyset, LockType::Pessimistic);
            rs->Fields("Texto").Value(texto);
            rs->Update();
            return rs->Count();
        };
        for (int vez = 0; vez < 3; ++vez)
            EXPECT_EQ(cambia("b"), 2U);
        EXPECT_EQ(preparadas("SELECT * FROM u WHERE Id = $1\nFOR UPDATE"), 1);
        EXPECT_EQ(preparadas("UPDATE propio.u SET"), 1);
        servidor->psql("una", "ALTER TABLE propio.u ADD COLUMN Otra INT");
        EXPECT_EQ(cambia("c"), 3U);
        EXPECT_EQ(primero("SELECT Texto FROM u WHERE Id = 1"), "c");
    }

    TEST_F(PostgresqlPreparadas, what_the_server_has_forgotten_is_said_again)
    {
        varias_veces("UPDATE u SET Texto = 'b' WHERE Id = 1");
        for (const bool dentro : { false, true }) {
            conexion->Execute("DELETE FROM u WHERE Id = 1");
            if (dentro)
                conexion->BeginTrans();
            conexion->Execute("INSERT INTO u VALUES (1, 'a')");
            conexion->Execute("UPDATE u SET Texto = 'b' WHERE Id = 1");
            PQclear(PQexec(conexion->base(), "DEALLOCATE ALL"));
            std::int32_t filas = 0;
            conexion->Execute("UPDATE u SET Texto = 'c' WHERE Id = 1", &filas);
            EXPECT_EQ(filas, 1);
            if (dentro)
                conexion->CommitTrans();
            EXPECT_EQ(primero("SELECT Texto FROM u"), "c");
        }
        varias_veces("UPDATE u SET Texto = 'd' WHERE Id = 1");
        EXPECT_EQ(preparadas("UPDATE u SET"), 1);
    }

    TEST_F(PostgresqlPreparadas, a_table_that_another_user_made_anew_is_written_to)
    {
        varias_veces("UPDATE u SET Texto = 'b' WHERE Id = 1");
        servidor->psql("una", "DROP TABLE propio.u; CREATE TABLE propio.u (Texto TEXT, Id NUMERIC)");
        for (int i = 0; i < 3; ++i)
            conexion->Execute("INSERT INTO u VALUES ('largo como ninguno', 1.5)");
        std::int32_t filas = 0;
        conexion->Execute("UPDATE u SET Texto = 'c'  WHERE Id = 1.5", &filas);
        EXPECT_EQ(filas, 3);
        conexion->Execute("UPDATE u SET Texto = 'b' WHERE Id = 1", &filas);
        EXPECT_EQ(filas, 0);
        servidor->psql("una", "DROP TABLE propio.u");
        EXPECT_EQ(final_de([&] { conexion->Execute("UPDATE u SET Texto = 'b' WHERE Id = 1"); }),
            final_de([&] { abre("?preparadas=no")->Execute("UPDATE u SET Texto = 'b' WHERE Id = 1"); }));
    }

    TEST_F(PostgresqlPreparadas, tables_that_the_session_itself_changes_are_looked_at_anew)
    {
        varias_veces("UPDATE u SET Texto = '1/1/26' WHERE Id = 1");
        EXPECT_EQ(preparadas("UPDATE u"), 1);
        conexion->Execute("DROP TABLE u");
        conexion->Execute("CREATE TABLE u (Id INT, Texto DATETIME)");
        conexion->Execute("INSERT INTO u VALUES (1, '21/11/2026')");
        for (int vez = 0; vez < 3; ++vez)
            conexion->Execute("UPDATE u SET Texto = '22/11/2026' WHERE Id = 1");
        EXPECT_EQ(preparadas("UPDATE u"), 1);
        EXPECT_EQ(primero("SELECT Texto FROM u"), "22/11/2026");
    }

    TEST_F(PostgresqlPreparadas, behind_another_line_nothing_is_prepared_yet)
    {
        varias_veces("UPDATE u SET Texto = 'b' WHERE Id = 1");
        servidor->psql("postgres",
            "SELECT pg_terminate_backend(" + std::to_string(PQbackendPID(conexion->base())) + ", 5000)");
        EXPECT_EQ(primero("SELECT COUNT(*) FROM u"), "0");
        EXPECT_EQ(preparadas(""), 0);
        varias_veces("UPDATE u SET Texto = 'b' WHERE Id = 1");
        EXPECT_EQ(preparadas("UPDATE u"), 1);
    }

    TEST_F(PostgresqlPreparadas, the_error_of_a_lost_line_names_the_statement_with_its_values)
    {
        varias_veces("UPDATE u SET Texto = 'b' WHERE Id = 1");
        servidor->psql("postgres",
            "SELECT pg_terminate_backend(" + std::to_string(PQbackendPID(conexion->base())) + ", 5000)");
        EXPECT_THAT(final_de([&] { conexion->Execute("UPDATE u SET Texto = 'c' WHERE Id = 1"); }),
            testing::EndsWith(
                "La próxima operación volverá a conectar. in UPDATE u SET Texto = 'c' WHERE Id = 1"));
    }

    TEST_F(PostgresqlPreparadas, the_server_does_not_keep_them_without_end)
    {
        for (int i = 0; i < 400; ++i)
            for (int vez = 0; vez < 2; ++vez)
                primero("SELECT Id AS a" + std::to_string(i) + " FROM u WHERE Id = 1");
        EXPECT_LE(preparadas("SELECT"), 257) << "the last one to go is told with the next statement";
        EXPECT_GE(preparadas("SELECT"), 250);
    }

    TEST_F(PostgresqlPreparadas, switched_off_in_the_address_nothing_is_prepared)
    {
        conexion = abre("?preparadas=no");
        conexion->BeginTrans();
        varias_veces("UPDATE u SET Texto = 'b' WHERE Id = 1");
        auto rs = conexion->CreateRecordset();
        rs->Open("SELECT * FROM u WHERE Id = 1", CursorType::Keyset, LockType::Pessimistic);
        for (int i = 0; i < 3; ++i) {
            rs->AddNew();
            rs->Fields("Id").Value(i);
            rs->Fields("Texto").Value("a");
            rs->Update();
        }
        conexion->CommitTrans();
        EXPECT_EQ(preparadas(""), 0);
        EXPECT_EQ(primero("SELECT COUNT(*) FROM u"), "3");
    }

}
}
