// Rows that are read while the server sends them, and what else is asked meanwhile.
#include "engines/postgresql/Connection.hpp"

#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

namespace atipicos::postgresql {
namespace {

    using adodb::CursorType;
    using adodb::ErrorBaseDatos;
    using adodb::LockType;
    using testing::HasSubstr;

    struct PostgresqlLectura : testing::Test {
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
            conexion = Connection::Abrir({ .direccion = servidor->direccion("una"), .esquema = "public" });
        }

        void TearDown() override
        {
            conexion.reset();
            if (servidor)
                servidor->borra_base("una");
        }

        std::unique_ptr<adodb::Recordset> lee(
            const std::string& sql, CursorType cursor = CursorType::ForwardOnly) const
        {
            auto rs = conexion->CreateRecordset();
            rs->Open(sql, cursor, LockType::ReadOnly);
            return rs;
        }

        std::string uno(const std::string& sql) const
        {
            return CStr(lee(sql, CursorType::Static)->Fields(0).Value());
        }

        /// How the rows that are left add up, and how many they are: "12 4".
        static std::string resto(adodb::Recordset& rs)
        {
            std::int64_t suma = 0;
            int filas = 0;
            for (; !rs.Eof(); rs.MoveNext(), ++filas)
                suma += CLng(rs.Fields("n").Value());
            return std::to_string(suma) + ' ' + std::to_string(filas);
        }

        [[nodiscard]] bool en_la_linea() const
        {
            return PQtransactionStatus(conexion->base()) == PQTRANS_ACTIVE;
        }
    };

    const std::string diez = "SELECT n FROM generate_series(1, 10) AS s (n)";

    TEST_F(PostgresqlLectura, rows_stay_on_the_line_until_they_are_read)
    {
        auto rs = lee(diez);
        EXPECT_TRUE(en_la_linea());
        EXPECT_EQ(resto(*rs), "55 10");
        EXPECT_FALSE(en_la_linea());
        rs->Close();
        EXPECT_EQ(uno("SELECT 7"), "7");
    }

    TEST_F(PostgresqlLectura, rows_that_may_be_asked_for_again_come_whole)
    {
        auto rs = lee(diez, CursorType::Static);
        EXPECT_FALSE(en_la_linea());
        EXPECT_EQ(resto(*rs), "55 10");
    }

    TEST_F(PostgresqlLectura, no_row_is_the_end_at_once)
    {
        auto rs = lee("SELECT n, 'x' AS t FROM generate_series(1, 0) AS s (n)");
        EXPECT_TRUE(rs->Eof());
        EXPECT_EQ(rs->Count(), 2U);
        EXPECT_FALSE(en_la_linea());
    }

    TEST_F(PostgresqlLectura, whatever_else_is_asked_finds_the_line_free_and_the_rows_are_kept)
    {
        auto rs = lee("SELECT n, CASE WHEN n % 2 = 0 THEN NULL ELSE 'ñ' || n END AS t, "
                      "TIMESTAMP '2025-02-03 09:05:03' + n * INTERVAL '1 day' AS d, '' AS v "
                      "FROM generate_series(1, 4) AS s (n)");
        rs->MoveNext();
        EXPECT_EQ(uno("SELECT 7"), "7");
        EXPECT_FALSE(en_la_linea());
        std::string leido;
        for (; !rs->Eof(); rs->MoveNext()) {
            EXPECT_EQ(rs->Fields("t").Value().es_nulo(), CLng(rs->Fields("n").Value()) % 2 == 0);
            EXPECT_FALSE(rs->Fields("v").Value().es_nulo());
            leido += CStr(rs->Fields("n").Value());
            rs->Fields("t").anexa_texto(leido);
            leido += ' ' + CDate(rs->Fields("d").Value()).texto_regional() + '|';
        }
        EXPECT_EQ(leido, "2 05/02/2025 9:05:03|3ñ3 06/02/2025 9:05:03|4 07/02/2025 9:05:03|");
    }

    TEST_F(PostgresqlLectura, two_readings_at_once_do_not_disturb_each_other)
    {
        auto una = lee(diez);
        una->MoveNext();
        auto otra = lee("SELECT n FROM generate_series(101, 103) AS s (n)");
        una->MoveNext();
        otra->MoveNext();
        EXPECT_EQ(resto(*una), "52 8");
        EXPECT_EQ(resto(*otra), "205 2");
    }

    TEST_F(PostgresqlLectura, a_transaction_begun_meanwhile_is_one_like_any_other)
    {
        conexion->Execute("CREATE TABLE t (n INT)");
        auto rs = lee(diez);
        conexion->BeginTrans();
        conexion->Execute("INSERT INTO t VALUES (41)");
        EXPECT_EQ(resto(*rs), "55 10");
        conexion->CommitTrans();
        EXPECT_EQ(uno("SELECT n FROM t"), "41");
    }

    TEST_F(PostgresqlLectura, inside_a_transaction_rows_come_whole_and_an_error_undoes_itself_alone)
    {
        conexion->Execute("CREATE TABLE t (n INT)");
        conexion->BeginTrans();
        conexion->Execute("INSERT INTO t VALUES (41)");
        auto rs = lee(diez);
        EXPECT_FALSE(en_la_linea());
        EXPECT_EQ(resto(*rs), "55 10");
        EXPECT_THROW(lee("SELECT 1/(3 - n) AS n FROM generate_series(1, 9) AS s (n)"), ErrorBaseDatos);
        conexion->CommitTrans();
        EXPECT_EQ(uno("SELECT n FROM t"), "41");
    }

    TEST_F(PostgresqlLectura, an_error_comes_behind_the_rows_before_it_also_when_they_were_taken_off_the_line)
    {
        for (const bool recogidas : { false, true }) {
            auto rs = lee(std::string("SELECT 12/(3 - n) AS n") + (recogidas ? ", 5 AS otra" : "")
                + " FROM generate_series(1, 9) AS s (n)"); // the same text would be prepared
            if (recogidas) {
                EXPECT_EQ(uno("SELECT 7"), "7");
            }
            EXPECT_EQ(CLng(rs->Fields("n").Value()), 6);
            rs->MoveNext();
            EXPECT_EQ(CLng(rs->Fields("n").Value()), 12);
            try {
                rs->MoveNext();
                FAIL() << "nothing is told";
            } catch (const ErrorBaseDatos& error) {
                EXPECT_THAT(error.descripcion(), HasSubstr("division by zero"));
            }
            EXPECT_TRUE(rs->Eof());
            EXPECT_EQ(uno("SELECT 7"), "7");
        }
    }

    TEST_F(PostgresqlLectura, a_query_that_is_none_is_told_when_it_is_opened)
    {
        EXPECT_THROW(lee("SELECT nada FROM ninguna"), ErrorBaseDatos);
        EXPECT_THROW(lee("SELECT FROM FROM"), ErrorBaseDatos);
        EXPECT_EQ(uno("SELECT 7"), "7");
    }

    TEST_F(PostgresqlLectura, rows_that_nobody_reads_any_more_are_left)
    {
        for (const auto* cuantas : { "3", "20000000" }) { // of the latter the server is told to send no more
            auto rs = lee(std::string("SELECT generate_series(1, ") + cuantas + ") AS n");
            rs->MoveNext();
            rs->Close();
            EXPECT_EQ(uno("SELECT 7"), "7");
            rs->Open(diez, CursorType::ForwardOnly, LockType::ReadOnly);
            EXPECT_EQ(resto(*rs), "55 10");
        }
    }

    TEST_F(PostgresqlLectura, the_second_time_it_is_prepared_and_comes_whole)
    {
        const std::string sql = "SELECT n FROM generate_series(1, 10) AS s (n) WHERE n > 4";
        for (int vez = 0; vez < 3; ++vez) {
            auto rs = lee(sql);
            EXPECT_EQ(resto(*rs), "45 6") << vez;
        }
    }

    TEST_F(PostgresqlLectura, what_is_prepared_already_comes_whole_behind_a_reading)
    {
        const std::string sql = "SELECT n FROM generate_series(1, 10) AS s (n) WHERE n > 4";
        for (int vez = 0; vez < 3; ++vez)
            EXPECT_EQ(resto(*lee(sql, CursorType::Static)), "45 6");
        for (const bool hasta_el_final : { true, false }) {
            auto rs = lee(std::string("SELECT n") + (hasta_el_final ? "" : ", 5 AS otra")
                + " FROM generate_series(1, 10) AS s (n)");
            EXPECT_TRUE(en_la_linea());
            if (hasta_el_final) {
                EXPECT_EQ(resto(*rs), "55 10");
            }
            EXPECT_EQ(resto(*lee(sql, CursorType::Static)), "45 6") << hasta_el_final;
            EXPECT_EQ(resto(*lee(sql, CursorType::Static)), "45 6") << hasta_el_final;
        }
    }

    TEST_F(PostgresqlLectura, a_reader_has_longer_than_a_statement)
    {
        EXPECT_EQ(CStr(lee("SELECT current_setting('statement_timeout') AS n")->Fields(0).Value()), "1h");
        EXPECT_EQ(uno("SELECT current_setting('statement_timeout')"), "2min");
    }

    TEST_F(PostgresqlLectura, a_line_that_is_lost_on_the_way_is_told_and_opened_again)
    {
        auto rs = lee("SELECT generate_series(1, 20000000) AS n");
        const auto otra = Connection::Abrir({ .direccion = servidor->direccion("una"), .esquema = "public" });
        otra->Execute("SELECT pg_terminate_backend(" + std::to_string(PQbackendPID(conexion->base())) + ")");
        EXPECT_THROW(resto(*rs), ErrorBaseDatos);
        EXPECT_TRUE(rs->Eof());
        EXPECT_EQ(uno("SELECT 7"), "7");
    }

}
}
