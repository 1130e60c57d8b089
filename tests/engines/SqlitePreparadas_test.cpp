// Statements that are prepared once for all that differ from them in values alone.
#include "engines/sql/Guion.hpp"
#include "engines/sqlite/Connection.hpp"

#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

namespace atipicos::sqlite {
namespace {

    using adodb::CursorType;
    using adodb::ErrorBaseDatos;
    using adodb::LockType;

    struct LasPreparadas : testing::Test {
        pruebas::CarpetaTemporal carpeta;
        std::shared_ptr<Connection> conexion = abre();

        LasPreparadas()
        {
            sql::ejecuta_guion(*conexion,
                "CREATE TABLE t (Id INT PRIMARY KEY, Fecha DATETIME, Dinero MONEY, Texto NVARCHAR(9), x);"
                "CREATE TABLE u (Id INT PRIMARY KEY, Texto NVARCHAR(9) CHECK (Texto <> 'no'))");
        }

        std::shared_ptr<Connection> abre(bool preparadas = true) const
        {
            return Connection::Abrir({ .fichero = carpeta / "uno.db",
                .crear = true,
                .espera = std::chrono::milliseconds(0),
                .preparadas = preparadas });
        }

        std::unique_ptr<adodb::Recordset> lee(const std::string& sql) const
        {
            auto rs = conexion->CreateRecordset();
            rs->Open(sql, CursorType::Static, LockType::ReadOnly);
            return rs;
        }

        std::string textos(const std::string& sql) const ///< the first column, one value after the other
        {
            std::string junto;
            for (auto rs = lee(sql); !rs->Eof(); rs->MoveNext())
                rs->Fields(std::size_t{ 0 }).anexa_texto(junto += "|");
            return junto;
        }

        /// How many statements the session holds prepared that begin so.
        int preparadas(std::string_view comienzo) const
        {
            int cuantas = 0;
            for (auto* una = sqlite3_next_stmt(conexion->base(), nullptr); una != nullptr;
                 una = sqlite3_next_stmt(conexion->base(), una))
                cuantas += std::string_view(sqlite3_sql(una)).starts_with(comienzo) ? 1 : 0;
            return cuantas;
        }
    };

    /// An error with everything that it says.
    template <class Uso> std::string error_entero_de(Uso uso)
    {
        try {
            uso();
        } catch (const ErrorBaseDatos& error) {
            return std::to_string(static_cast<int>(error.categoria())) + " " + error.descripcion() + " in "
                + error.instruccion();
        }
        return "no error";
    }

    TEST_F(LasPreparadas, one_is_enough_for_all_values)
    {
        for (const auto* valores : { "1, '21/11/2026', 12.5, 'uno', NULL", "2, '', 3, 'd''Or', NULL",
                 "-3, '9:05:03', -0.0001, '', NULL" })
            conexion->Execute(std::string("INSERT INTO t VALUES (") + valores + ")");
        EXPECT_EQ(preparadas("INSERT INTO t VALUES (?"), 2) << "the one with a sign is another";
        EXPECT_EQ(textos("SELECT Texto FROM t ORDER BY Id"), "||uno|d'Or");
        EXPECT_EQ(textos("SELECT Fecha FROM t ORDER BY Id"), "|01/01/1900 9:05:03|21/11/2026|01/01/1900");
        EXPECT_EQ(textos("SELECT Dinero FROM t WHERE Fecha = '21/11/2026'"), "|12,5");
        EXPECT_EQ(textos("SELECT Dinero FROM t WHERE Fecha = ''"), "|3");
        EXPECT_EQ(preparadas("SELECT Dinero FROM t WHERE"), 1);
    }

    TEST_F(LasPreparadas, values_are_stored_as_what_their_literals_are)
    {
        const std::array<const char*, 12> literales{ "7", "-7", "7.0", "7.25", "-0.0", "0", "'7'", "'7.0'",
            "'x'", "3000000000", "1e3", "12345678901234567890" };
        for (const auto* literal : literales) {
            conexion->Execute("DELETE FROM t");
            abre(false)->Execute(std::string("INSERT INTO t VALUES (1, NULL, ") + literal + ", " + literal
                + ", " + literal + ")");
            const std::string tal_como
                = "SELECT typeof(Dinero) || quote(Dinero) || typeof(Texto) || quote(Texto) "
                  "|| typeof(x) || quote(x) || (1 / x) FROM t";
            const auto escrito = textos(tal_como);
            conexion->Execute(std::string("UPDATE t SET Dinero = ") + literal + ", Texto = " + literal
                + ", x = " + literal);
            EXPECT_EQ(textos(tal_como), escrito) << literal;
            EXPECT_EQ(textos(std::string("SELECT Id FROM t WHERE Dinero = ") + literal), "|1") << literal;
            EXPECT_EQ(textos(std::string("SELECT Id FROM t WHERE x IN (") + literal + ")"), "|1") << literal;
        }
    }

    TEST_F(LasPreparadas, one_that_is_being_read_is_not_taken_away)
    {
        conexion->Execute("INSERT INTO t (Id) VALUES (2), (3), (4)");
        auto uno = lee("SELECT Id FROM t WHERE Id > 1 ORDER BY Id");
        auto otro = lee("SELECT Id FROM t WHERE Id > 2 ORDER BY Id");
        EXPECT_EQ(preparadas("SELECT Id FROM t WHERE Id > ?"), 2);
        uno->MoveNext();
        EXPECT_EQ(uno->Fields("Id").Value(), Variant(3));
        EXPECT_EQ(otro->Fields("Id").Value(), Variant(3));
        uno->Close();
        otro->MoveNext();
        EXPECT_EQ(otro->Fields("Id").Value(), Variant(4));
        otro->Close();
        EXPECT_EQ(preparadas("SELECT Id FROM t WHERE Id > ?"), 1);
        EXPECT_EQ(textos("SELECT Id FROM t WHERE Id > 3 ORDER BY Id"), "|4");
    }

    TEST_F(LasPreparadas, the_text_of_a_query_may_be_gone_while_its_rows_are_read)
    {
        conexion->Execute(
            "INSERT INTO t (Id, Texto) VALUES (1, 'a'), (2, 'un texto de los largos'), (3, 'c')");
        auto rs = lee(std::string("SELECT Id FROM t WHERE Texto <> '") + "un texto de los largos" + "'");
        rs->MoveNext();
        EXPECT_EQ(rs->Fields("Id").Value(), Variant(3));
    }

    TEST_F(LasPreparadas, errors_are_those_of_the_statement_as_a_text)
    {
        const auto texto = abre(false);
        conexion->Execute("INSERT INTO u VALUES (1, 'a')");
        for (const std::string sql : { "INSERT INTO u VALUES (1, 'b')", "INSERT INTO u VALUES (2, 'no')",
                 "UPDATE u SET Texto = 'no' WHERE Id = 1", "INSERT INTO u VALUES (2, 'b', 3)",
                 "INSERT INTO no_hay VALUES (2, 'b')", "SELECT 1 FROM u WHERE Id = 2 AND AND",
                 "SELECT NoHay FROM u", "INSERT INTO u VALUES (2 'b')",
                 "DELETE FROM u WHERE NoHay = 'x' AND Id = 3",
                 "UPDATE t SET Fecha = '31/02/2026' WHERE NoHay = 5", "DELETE FROM u; DELETE FROM u" }) {
            const auto esperado = error_entero_de([&] { texto->Execute(sql); });
            EXPECT_NE(esperado, "no error") << sql;
            for (int vez = 0; vez < 2; ++vez) {
                EXPECT_EQ(error_entero_de([&] { conexion->Execute(sql); }), esperado);
                EXPECT_EQ(error_entero_de([&] { static_cast<void>(lee(sql)); }), esperado);
            }
        }
        conexion->Execute("UPDATE t SET Fecha = '28/02/2026'");
        EXPECT_EQ(error_entero_de([&] { conexion->Execute("UPDATE t SET Fecha = '29/02/2026'"); }),
            "0 La conversión del texto '29/02/2026' en una fecha no es posible. in UPDATE t SET Fecha = "
            "'29/02/2026'");
    }

    TEST_F(LasPreparadas, one_that_failed_serves_again)
    {
        conexion->Execute("INSERT INTO u VALUES (1, 'a')");
        EXPECT_THROW(conexion->Execute("INSERT INTO u VALUES (1, 'a')"), ErrorBaseDatos);
        std::int32_t filas = -1;
        conexion->Execute("INSERT INTO u VALUES (2, 'a')", &filas);
        EXPECT_EQ(filas, 1);
        EXPECT_EQ(preparadas("INSERT INTO u"), 1);
    }

    TEST_F(LasPreparadas, tables_that_another_user_changes_are_found_changed)
    {
        conexion->Execute("INSERT INTO t (Id, Dinero) VALUES (1, 2.5)");
        EXPECT_EQ(lee("SELECT * FROM t WHERE Id = 5")->Count(), 5U);
        EXPECT_EQ(lee("SELECT * FROM t WHERE Dinero = 2.5")->Fields("Dinero").Value(),
            Variant(Currency::de_texto("2.5")));
        const auto otro = abre();
        otro->Execute("DROP TABLE t");
        otro->Execute("CREATE TABLE t (Id INT PRIMARY KEY, Dinero FLOAT, Nueva INT)");
        conexion->Execute("INSERT INTO t (Id, Dinero) VALUES (6, 2.5)");
        EXPECT_EQ(lee("SELECT * FROM t WHERE Id = 5")->Count(), 3U);
        EXPECT_EQ(lee("SELECT * FROM t WHERE Dinero = 2.5")->Fields("Dinero").Value(), Variant(2.5))
            << "no longer money";
        otro->Execute("DROP TABLE t");
        EXPECT_EQ(error_entero_de([&] { conexion->Execute("INSERT INTO t (Id, Dinero) VALUES (7, 2.5)"); }),
            error_entero_de([&] { abre(false)->Execute("INSERT INTO t (Id, Dinero) VALUES (7, 2.5)"); }));
    }

    TEST_F(LasPreparadas, tables_that_the_session_itself_changes_are_looked_at_anew)
    {
        conexion->Execute("INSERT INTO u VALUES (1, '21/11/2026')");
        conexion->Execute("DROP TABLE u");
        EXPECT_EQ(preparadas("INSERT INTO u"), 1);
        conexion->Execute("CREATE TABLE u (Id INT, Texto DATETIME)");
        conexion->Execute("INSERT INTO u VALUES (1, '21/11/2026')");
        EXPECT_EQ(preparadas("INSERT INTO u"), 1);
        EXPECT_EQ(textos("SELECT Texto || '' FROM u"), "|2026-11-21");
        conexion->BeginTrans();
        conexion->Execute("ALTER TABLE u ADD COLUMN Otra DATETIME");
        conexion->Execute("UPDATE u SET Otra = '21/11/2026'");
        conexion->RollbackTrans();
        conexion->Execute("ALTER TABLE u ADD COLUMN Otra NVARCHAR(12)");
        conexion->Execute("UPDATE u SET Otra = '21/11/2026'");
        EXPECT_EQ(textos("SELECT Otra FROM u"), "|21/11/2026");
    }

    TEST_F(LasPreparadas, they_are_not_kept_without_end)
    {
        for (int i = 0; i < 1'000; ++i)
            static_cast<void>(lee("SELECT " + std::to_string(i) + " AS a" + std::to_string(i) + " FROM u"));
        EXPECT_EQ(preparadas("SELECT "), 256);
    }

    TEST_F(LasPreparadas, the_two_sides_of_a_session_do_not_take_each_others)
    {
        const auto pareja = Connection::AbrirPareja({ .fichero = carpeta / "par.db", .crear = true });
        pareja.gestion->Execute("CREATE TABLE t (a INT)");
        pareja.contabilidad->Execute("CREATE TABLE t (a INT)");
        for (int i = 0; i < 3; ++i) {
            pareja.gestion->Execute("INSERT INTO t VALUES (5)");
            if (i > 0)
                pareja.contabilidad->Execute("INSERT INTO t VALUES (6)");
        }
        const auto cuenta = [&](adodb::Connection& una, const std::string& tabla) {
            auto rs = una.CreateRecordset();
            rs->Open("SELECT COUNT(*) FROM " + tabla + " WHERE a IN (5, 6)", CursorType::Static,
                LockType::ReadOnly);
            return rs->Fields(std::size_t{ 0 }).Value();
        };
        EXPECT_EQ(cuenta(*pareja.gestion, "t"), Variant(3));
        EXPECT_EQ(cuenta(*pareja.contabilidad, "t"), Variant(2));
        EXPECT_EQ(cuenta(*pareja.gestion, "Bexmor.dbo.t"), Variant(2));
    }

    TEST_F(LasPreparadas, a_closed_session_leaves_nothing_beside_its_file)
    {
        conexion->Execute("INSERT INTO u VALUES (1, 'a')");
        EXPECT_TRUE(std::filesystem::exists(carpeta / "uno.db-wal"));
        conexion.reset();
        EXPECT_FALSE(std::filesystem::exists(carpeta / "uno.db-wal"));
    }

}
}
