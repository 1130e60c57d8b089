#include "engines/odbc/Connection.hpp"

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

}
}
