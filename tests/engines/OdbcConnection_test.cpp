#include "engines/odbc/Connection.hpp"

#include "engines/sql/Unidad.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/ControladorOdbc.hpp"
#include "tests/support/DiscoPequeno.hpp"
#include "tests/support/ServidorPostgresql.hpp"

#include <gmock/gmock.h>

namespace atipicos::odbc {
namespace {

    using adodb::Categoria;
    using adodb::ErrorBaseDatos;
    using testing::HasSubstr;
    using testing::Not;
    using testing::StartsWith;

    struct OdbcConnection : testing::Test {
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
            servidor->psql(
                "una", "CREATE TABLE t (id int PRIMARY KEY, fecha timestamp(3), dinero numeric(19,4))");
            conexion = Connection::Abrir({ .cadena = servidor->cadena_odbc("una") });
        }

        void TearDown() override
        {
            conexion.reset();
            if (servidor)
                servidor->borra_base("una");
        }

        Variant primero(const std::string& sql) const
        {
            auto rs = conexion->CreateRecordset();
            rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
            return rs->Eof() ? Variant() : rs->Fields(std::size_t{ 0 }).Value();
        }

        static void mata_a_todos()
        {
            servidor->psql("postgres",
                "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE datname = 'una'");
        }
    };

    template <class Uso> std::pair<Categoria, std::string> fallo_de(Uso uso)
    {
        try {
            uso();
        } catch (const ErrorBaseDatos& error) {
            return { error.categoria(), error.descripcion() };
        }
        return { Categoria::otra, "no error" };
    }

    TEST_F(OdbcConnection, a_password_in_the_connection_string_is_refused_and_never_repeated)
    {
        for (const auto* cadena :
            { "DRIVER={PostgreSQL Unicode};PWD=secreto", "DSN=x;pwd = secreto", "DSN=x;Password=secreto" }) {
            const auto fallo = fallo_de([&] { static_cast<void>(Connection::Abrir({ .cadena = cadena })); });
            EXPECT_EQ(fallo.first, Categoria::conexion) << cadena;
            EXPECT_THAT(fallo.second, StartsWith("La contraseña no se escribe")) << cadena;
            EXPECT_THAT(fallo.second, Not(HasSubstr("secreto"))) << cadena;
        }
    }

    TEST_F(OdbcConnection, a_password_that_is_given_apart_opens_it_and_a_wrong_one_is_not_repeated)
    {
        servidor->psql("una", "CREATE ROLE con_clave LOGIN PASSWORD 'secr}eto;'");
        auto cadena = servidor->cadena_odbc("una");
        cadena.replace(cadena.find("UID=atipicos"), 12, "UID=con_clave");
        EXPECT_NO_THROW(static_cast<void>(Connection::Abrir({ .cadena = cadena, .clave = "secr}eto;" })));
        const auto fallo = fallo_de(
            [&] { static_cast<void>(Connection::Abrir({ .cadena = cadena, .clave = "otrosecreto" })); });
        EXPECT_THAT(fallo.second, StartsWith("No se puede conectar con el servidor de la base de datos ("));
        EXPECT_THAT(fallo.second, Not(HasSubstr("secreto")));
        servidor->psql("una", "DROP ROLE con_clave");
    }

    TEST_F(OdbcConnection, a_lost_connection_is_named_and_the_next_operation_connects_again)
    {
        conexion->Execute("DELETE FROM t");
        mata_a_todos();
        const auto fallo = fallo_de([&] { conexion->Execute("INSERT INTO t (Id) VALUES (1)"); });
        EXPECT_EQ(fallo.first, Categoria::conexion);
        EXPECT_THAT(
            fallo.second, StartsWith("Se ha perdido la conexión con el servidor de la base de datos."));
        conexion->Execute("INSERT INTO t (Id) VALUES (2)");
        EXPECT_EQ(primero("SELECT MAX(Id) FROM t"), Variant(2));
    }

    TEST_F(OdbcConnection, a_transaction_lost_with_its_connection_is_refused_until_it_is_rolled_back)
    {
        conexion->BeginTrans();
        conexion->Execute("INSERT INTO t (Id) VALUES (1)");
        mata_a_todos();
        EXPECT_EQ(fallo_de([&] { conexion->Execute("DELETE FROM t"); }).first, Categoria::conexion);
        EXPECT_EQ(fallo_de([&] { conexion->Execute("INSERT INTO t (Id) VALUES (2)"); }).second,
            "La transacción se ha perdido por un error anterior: sólo se puede deshacer.");
        conexion->RollbackTrans();
        EXPECT_EQ(primero("SELECT COUNT(*) FROM t"), Variant(0));
    }

    TEST_F(OdbcConnection, values_written_back_stand_in_the_statement)
    {
        conexion->Execute("INSERT INTO t (Id) VALUES (1)");
        auto rs = conexion->CreateRecordset();
        rs->Open("SELECT * FROM t WHERE Id =1", adodb::CursorType::Keyset, adodb::LockType::Pessimistic);
        rs->Fields("Fecha").Value("21/11/2026 9:05:03");
        rs->Fields("Dinero").Value(Currency::de_texto("-1234567.8901"));
        rs->Update();
        EXPECT_EQ(CStr(primero("SELECT Fecha FROM t")), "21/11/2026 9:05:03");
        EXPECT_EQ(primero("SELECT Dinero FROM t"), Variant(Currency::de_texto("-1234567.8901")));
    }

    constexpr auto perdida = "La transacción se ha perdido por un error anterior: sólo se puede deshacer.";

    TEST_F(OdbcConnection, a_transaction_that_its_commit_has_undone_is_not_committed_by_trying_again)
    {
        servidor->psql(
            "una", "CREATE TABLE d (id int PRIMARY KEY, de int REFERENCES t DEFERRABLE INITIALLY DEFERRED)");
        conexion->BeginTrans();
        conexion->Execute("INSERT INTO d (Id, De) VALUES (1, 99)");
        EXPECT_EQ(fallo_de([&] { conexion->CommitTrans(); }).first, Categoria::restriccion);
        EXPECT_EQ(
            fallo_de([&] { conexion->CommitTrans(); }), std::pair(Categoria::otra, std::string(perdida)));
        conexion->RollbackTrans();
        conexion->Execute("INSERT INTO t (Id) VALUES (2)");
        EXPECT_EQ(primero("SELECT COUNT(*) FROM t"), Variant(1));
    }

    /// Both products in the database of the test.
    struct ParejaEnPostgresql : OdbcConnection {
        sql::Pareja pareja;

        void SetUp() override
        {
            OdbcConnection::SetUp();
            if (IsSkipped())
                return;
            servidor->psql(
                "una", "CREATE SCHEMA dbo; CREATE TABLE dbo.t (id int, codigo int, PRIMARY KEY (codigo))");
            pareja = Connection::AbrirPareja({ .cadena = servidor->cadena_odbc("una") });
        }
        void TearDown() override
        {
            pareja = {};
            OdbcConnection::TearDown();
        }

        void guarda(int id) const
        {
            pareja.gestion->BeginTrans();
            pareja.contabilidad->BeginTrans();
            pareja.gestion->Execute("INSERT INTO t (Id) VALUES (" + std::to_string(id) + ")");
            pareja.contabilidad->Execute("INSERT INTO t (Codigo) VALUES (" + std::to_string(id) + ")");
            pareja.gestion->CommitTrans();
            pareja.contabilidad->CommitTrans();
        }
        std::pair<Variant, Variant> cuantas() const
        {
            return { primero("SELECT COUNT(*) FROM t"), primero("SELECT COUNT(*) FROM dbo.t") };
        }
    };

    TEST_F(ParejaEnPostgresql, a_line_lost_between_both_commits_takes_both_with_it)
    {
        pareja.gestion->BeginTrans();
        pareja.contabilidad->BeginTrans();
        pareja.gestion->Execute("INSERT INTO t (Id) VALUES (1)");
        pareja.contabilidad->Execute("INSERT INTO t (Codigo) VALUES (1)");
        pareja.gestion->CommitTrans();
        mata_a_todos();
        const auto fallo = fallo_de([&] { pareja.contabilidad->CommitTrans(); });
        EXPECT_EQ(fallo.first, Categoria::conexion);
        EXPECT_THAT(fallo.second, HasSubstr("No se sabe si los datos llegaron a guardarse"));
        EXPECT_EQ(fallo_de([&] { pareja.contabilidad->CommitTrans(); }),
            std::pair(Categoria::conexion, std::string(perdida)));
        pareja.contabilidad->RollbackTrans();
        pareja.gestion->RollbackTrans();
        guarda(2);
        EXPECT_EQ(cuantas(), std::pair(Variant(1), Variant(1)));
    }

    TEST_F(ParejaEnPostgresql, a_line_lost_while_idle_is_opened_again_for_both)
    {
        guarda(1);
        mata_a_todos();
        guarda(2);
        mata_a_todos();
        auto rs = pareja.contabilidad->CreateRecordset();
        rs->Open("SELECT COUNT(*) AS n FROM t", adodb::CursorType::Static, adodb::LockType::ReadOnly);
        EXPECT_EQ(rs->Fields("n").Value(), Variant(2));
    }

    TEST_F(ParejaEnPostgresql, a_line_lost_before_the_key_of_a_table_is_asked_is_named_as_such)
    {
        guarda(1);
        pareja.gestion->BeginTrans();
        auto rs = pareja.contabilidad->CreateRecordset();
        rs->Open("SELECT * FROM t", adodb::CursorType::Keyset, adodb::LockType::Pessimistic);
        rs->Fields("id").Value(8);
        servidor->detiene(); // of which the driver tells otherwise than of a session that was ended
        const auto fallo = fallo_de([&] { rs->Update(); });
        servidor->arranca();
        EXPECT_EQ(fallo.first, Categoria::conexion);
        EXPECT_THAT(
            fallo.second, StartsWith("Se ha perdido la conexión con el servidor de la base de datos."));
        EXPECT_EQ(fallo_de([&] { pareja.gestion->Execute("DELETE FROM t"); }),
            std::pair(Categoria::conexion, std::string(perdida)));
        rs->Close();
        pareja.gestion->RollbackTrans();
        guarda(2);
        EXPECT_EQ(cuantas(), std::pair(Variant(2), Variant(2)));
    }

    TEST_F(ParejaEnPostgresql, a_unit_is_lost_with_its_line)
    {
        {
            sql::Unidad unidad(pareja.transacciones);
            guarda(1);
            mata_a_todos();
            EXPECT_EQ(fallo_de([&] { guarda(2); }).first, Categoria::conexion);
            EXPECT_EQ(
                fallo_de([&] { unidad.confirma(); }), std::pair(Categoria::conexion, std::string(perdida)));
        }
        guarda(3);
        EXPECT_EQ(cuantas(), std::pair(Variant(1), Variant(1)));
    }

    TEST_F(ParejaEnPostgresql, what_was_known_of_tables_that_are_undone_is_forgotten)
    {
        const auto crea = [&] {
            pareja.gestion->BeginTrans();
            pareja.gestion->Execute("CREATE TABLE f (Dia DATETIME)");
            pareja.gestion->Execute("INSERT INTO f (Dia) VALUES ('21/11/2026')");
        };
        const auto como_texto = [&] { // somebody else makes it otherwise
            servidor->psql("una", "CREATE TABLE f (dia varchar(20))");
            pareja.gestion->BeginTrans();
            pareja.gestion->Execute("INSERT INTO f (Dia) VALUES ('21/11/2026')");
            pareja.gestion->CommitTrans();
        };
        crea();
        mata_a_todos();
        EXPECT_EQ(fallo_de([&] { pareja.gestion->Execute("DELETE FROM f"); }).first, Categoria::conexion);
        pareja.gestion->RollbackTrans();
        como_texto();
        EXPECT_EQ(primero("SELECT Dia FROM f"), Variant("21/11/2026"));
        servidor->psql("una", "DROP TABLE f");
        {
            sql::Unidad unidad(pareja.transacciones);
            crea();
            pareja.gestion->RollbackTrans();
            como_texto();
            unidad.confirma();
        }
        EXPECT_EQ(primero("SELECT Dia FROM f"), Variant("21/11/2026"));
    }

    TEST_F(ParejaEnPostgresql, rows_are_written_back_by_the_key_of_their_own_table)
    {
        guarda(1);
        pareja.contabilidad->Execute("UPDATE t SET Id = 7");
        auto rs = pareja.contabilidad->CreateRecordset();
        rs->Open("SELECT * FROM t", adodb::CursorType::Keyset, adodb::LockType::Pessimistic);
        rs->Fields("id").Value(8);
        rs->Update();
        EXPECT_EQ(primero("SELECT id FROM dbo.t WHERE codigo = 1"), Variant(8));
        EXPECT_EQ(primero("SELECT id FROM t"), Variant(1)) << "management's has the other key";
    }

    TEST_F(ParejaEnPostgresql, a_row_that_is_not_there_yet_is_locked_for_those_who_have_a_line_alone_too)
    {
        const auto sola = Connection::Abrir({ .cadena = servidor->cadena_odbc("una"),
            .al_abrir = [](const auto&) { return std::vector<std::string>{ "SET search_path TO dbo" }; },
            .sesion = { .espera = std::chrono::milliseconds(20) } });
        const auto abre = [](adodb::Connection& de) {
            auto rs = de.CreateRecordset();
            rs->Open(
                "SELECT * FROM t WHERE Codigo =5", adodb::CursorType::Keyset, adodb::LockType::Pessimistic);
            return rs;
        };
        const auto rs = abre(*pareja.contabilidad);
        EXPECT_EQ(fallo_de([&] { abre(*sola); }).first, Categoria::bloqueo);
    }

    TEST_F(ParejaEnPostgresql, accounting_is_called_what_it_says_itself)
    {
        servidor->psql("una",
            "CREATE TABLE dbo.nombres (n varchar(20)); INSERT INTO dbo.nombres VALUES"
            " ('Conta2026'), ('Conta2027')");
        pareja = Connection::AbrirPareja(
            { .cadena = servidor->cadena_odbc("una") }, [](adodb::Connection& contabilidad) {
                std::vector<std::string> nombres;
                auto rs = contabilidad.CreateRecordset();
                rs->Open("SELECT n FROM nombres", adodb::CursorType::Static, adodb::LockType::ReadOnly);
                for (; !rs->Eof(); rs->MoveNext())
                    nombres.push_back(CStr(rs->Fields("n").Value()));
                return nombres;
            });
        for (const auto* nombre : { "Conta2026", "conta2027" })
            pareja.gestion->Execute(std::string("SELECT codigo FROM ") + nombre + ".dbo.t");
        EXPECT_NE(
            fallo_de([&] { pareja.gestion->Execute("SELECT codigo FROM Bexmor.dbo.t"); }).second, "no error");
    }

    struct SqlitePorOdbc : testing::Test {
        pruebas::CarpetaTemporal carpeta;
        pruebas::DiscoPequeno disco{ carpeta / "disco", "300k" };
        sql::Pareja pareja;

        void SetUp() override
        {
            if (const auto falta = pruebas::falta_controlador("SQLite3", "libsqliteodbc"); !falta.empty())
                GTEST_SKIP() << falta;
            if (!disco.montado())
                GTEST_SKIP() << "only root can have a disk of its own";
            pareja = Connection::AbrirPareja(
                { .cadena = "DRIVER={SQLite3};DATABASE=" + (carpeta / "disco/empresa.db").string(),
                    .al_abrir
                    = [](const auto&) { return std::vector<std::string>{ "PRAGMA journal_mode=WAL" }; } });
            pareja.gestion->Execute("CREATE TABLE t (Id INT, Texto TEXT)");
        }
        void TearDown() override { pareja = {}; }
    };

    TEST_F(SqlitePorOdbc, a_transaction_that_a_full_disk_has_undone_is_lost_to_both)
    {
        const std::string mucho(100'000, 'x');
        pareja.gestion->BeginTrans();
        pareja.contabilidad->BeginTrans();
        const auto fallo = fallo_de([&] {
            for (int i = 0; i < 100; ++i)
                pareja.gestion->Execute("INSERT INTO t (Id, Texto) VALUES (1, '" + mucho + "')");
        });
        EXPECT_THAT(fallo.second, HasSubstr("full"));
        EXPECT_EQ(
            fallo_de([&] { pareja.gestion->Execute("INSERT INTO t (Id) VALUES (2)"); }).second, perdida);
        EXPECT_EQ(fallo_de([&] { pareja.contabilidad->CommitTrans(); }).second, perdida);
        pareja.contabilidad->RollbackTrans();
        pareja.gestion->RollbackTrans();
        pareja.gestion->Execute("INSERT INTO t (Id) VALUES (3)");
        auto rs = pareja.gestion->CreateRecordset();
        rs->Open("SELECT Id FROM t", adodb::CursorType::Static, adodb::LockType::ReadOnly);
        EXPECT_EQ(rs->Fields("Id").Value(), Variant(3));
    }

}
}
