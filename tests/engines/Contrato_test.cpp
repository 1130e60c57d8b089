// What every engine must do. An engine joins by describing itself in `motores()`.
#include "engines/ado/Connection.hpp"
#include "engines/odbc/Connection.hpp"
#include "engines/postgresql/Connection.hpp"
#include "engines/sql/Guion.hpp"
#include "engines/sql/Postgresql.hpp"
#include "engines/sqlite/Connection.hpp"
#include "tests/support/AdoDePrueba.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/ControladorOdbc.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/SqlServer.hpp"

#include <gmock/gmock.h>

#include <array>
#include <functional>
#include <optional>
#include <set>
#include <thread>

namespace atipicos {
namespace {

    using adodb::Categoria;
    using adodb::Connection;
    using adodb::CursorType;
    using adodb::ErrorBaseDatos;
    using adodb::LockType;
    using Conexion = std::shared_ptr<Connection>;

    /// A pair of databases of the test's own, with the tables below: one to connect to, and one that its
    /// statements reach as `Bexmor.dbo.Tabla`.
    struct Sitio {
        Sitio() = default;
        Sitio(const Sitio&) = delete;
        Sitio& operator=(const Sitio&) = delete;
        virtual ~Sitio() = default;
        virtual Conexion abre(std::chrono::milliseconds espera) const = 0;
    };

    /// An engine, and what it answers where engines may differ.
    struct Motor {
        std::string nombre;
        std::string falta; ///< what there is to install or to set before it can be tested; empty: nothing
        std::function<std::unique_ptr<Sitio>()> crea;
        std::optional<Categoria> empezar_mientras_otro_escribe; ///< nothing: it does not wait
    };
    void PrintTo(const Motor& motor, std::ostream* salida) { *salida << motor.nombre; }

    constexpr auto tablas = R"(
        CREATE TABLE Contador (Empresa INT NOT NULL, Ejercicio INT NOT NULL, Numero INT NOT NULL,
                               PRIMARY KEY (Empresa, Ejercicio));
        CREATE TABLE Valores (Id INT NOT NULL PRIMARY KEY, Corto SMALLINT, Largo INT, Dinero MONEY, Fecha DATETIME,
                              Marca BIT, Texto NVARCHAR(4000)))";

    constexpr auto cuentas = "CREATE TABLE Cuentas (Cuenta NVARCHAR(12) NOT NULL PRIMARY KEY, Alta DATETIME);"
                             "INSERT INTO Cuentas (Cuenta, Alta) VALUES ('40000017', '21/11/2026')";

    class SitioSqlite : public Sitio {
    public:
        SitioSqlite()
        {
            const auto uno
                = sqlite::Connection::AbrirPareja({ .fichero = m_carpeta / "uno.db", .crear = true });
            sql::ejecuta_guion(*uno.gestion, tablas);
            sql::ejecuta_guion(*uno.contabilidad, cuentas);
        }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            const auto conexion
                = sqlite::Connection::Abrir({ .fichero = m_carpeta / "uno.db", .espera = espera });
            conexion->sesion().catalogo(sql::Lado::gestion).agrega_base("Bexmor", "Bexmor_");
            return conexion;
        }

    protected:
        pruebas::CarpetaTemporal m_carpeta;
    };

    /// One file for both products, and a pair of connections over it: the side of the first.
    class SitioSqlitePareja final : public Sitio {
    public:
        SitioSqlitePareja()
        {
            const auto pareja
                = sqlite::Connection::AbrirPareja({ .fichero = m_carpeta / "empresa.db", .crear = true });
            sql::ejecuta_guion(*pareja.gestion, tablas);
            sql::ejecuta_guion(*pareja.contabilidad, cuentas);
        }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            return sqlite::Connection::AbrirPareja({ .fichero = m_carpeta / "empresa.db", .espera = espera })
                .gestion;
        }

    private:
        pruebas::CarpetaTemporal m_carpeta;
    };

    /// The same file, the side of the second product, whose tables are found under other names.
    class SitioSqliteContable final : public Sitio {
    public:
        SitioSqliteContable()
        {
            const auto contable = abre(std::chrono::seconds(1));
            sql::ejecuta_guion(*contable, tablas);
            sql::ejecuta_guion(*contable, cuentas);
        }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            return sqlite::Connection::AbrirPareja(
                { .fichero = m_carpeta / "empresa.db", .crear = true, .espera = espera })
                .contabilidad;
        }

    private:
        pruebas::CarpetaTemporal m_carpeta;
    };

    /// The host's own connection, late bound, here over SQLite.
    class SitioAdo final : public Sitio {
    public:
        Conexion abre(std::chrono::milliseconds espera) const override
        {
            return std::make_shared<ado::Connection>(pruebas::ado_de(m_sqlite.abre(espera)));
        }

    private:
        SitioSqlite m_sqlite;
    };

    class SitioPostgresql : public Sitio {
    public:
        explicit SitioPostgresql(const char* plantilla = gestion) { servidor().crea_base(m_base, plantilla); }
        ~SitioPostgresql() override { servidor().borra_base(m_base); }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            return postgresql::Connection::Abrir(opciones(espera));
        }

    protected:
        // Databases that those of the tests are copies of, by the schema that the tables are in.
        static constexpr auto gestion = "gestion";
        static constexpr auto contabilidad = "dbo";

        postgresql::Opciones opciones(std::chrono::milliseconds espera) const
        {
            return { .direccion = servidor().direccion(m_base),
                .esquema = gestion,
                .bases = { "Bexmor" },
                .espera = espera };
        }

        /// One server for all tests.
        static const pruebas::ServidorPostgresql& servidor()
        {
            static const pruebas::ServidorPostgresql unico;
            static const bool preparado = prepara(unico, gestion) && prepara(unico, contabilidad);
            static_cast<void>(preparado);
            return unico;
        }

        static bool prepara(const pruebas::ServidorPostgresql& servidor, const std::string& plantilla)
        {
            servidor.crea_base(plantilla);
            const auto conexion = postgresql::Connection::Abrir({ servidor.direccion(plantilla), gestion });
            conexion->BeginTrans();
            for (const std::string esquema : { contabilidad, gestion }) {
                sql::crea_esquema_postgresql(*conexion, esquema);
                if (esquema == contabilidad)
                    sql::ejecuta_guion(*conexion, cuentas);
                if (esquema == plantilla)
                    sql::ejecuta_guion(*conexion, tablas);
            }
            conexion->CommitTrans();
            return true;
        }

        static inline int s_bases = 0;
        std::string m_base = "contrato_" + std::to_string(++s_bases);
    };

    /// One side of two connections in one session; the other is there, and idle.
    template <sql::Lado lado> class SitioPostgresqlPareja final : public SitioPostgresql {
    public:
        SitioPostgresqlPareja()
            : SitioPostgresql(lado == sql::Lado::gestion ? gestion : contabilidad)
        {
        }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            const auto pareja
                = std::make_shared<sql::Pareja>(postgresql::Connection::AbrirPareja(opciones(espera)));
            return { pareja, (lado == sql::Lado::gestion ? pareja->gestion : pareja->contabilidad).get() };
        }
    };

    /// The same databases, through the drivers of their products.
    class SitioOdbcPostgresql final : public SitioPostgresql {
    public:
        Conexion abre(std::chrono::milliseconds espera) const override
        {
            return odbc::Connection::Abrir({ .cadena = servidor().cadena_odbc(m_base),
                .al_abrir
                = [](const auto&) { return std::vector<std::string>{ "SET search_path TO gestion" }; },
                .bases = { { "Bexmor", "dbo" } },
                .sesion = { .espera = espera } });
        }
    };

    class SitioOdbcSqlite final : public SitioSqlite {
    public:
        SitioOdbcSqlite()
        {
            sql::ejecuta_guion(
                *sqlite::Connection::Abrir({ .fichero = m_carpeta / "dos.db", .crear = true }), cuentas);
        }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            const auto dos = (m_carpeta / "dos.db").string();
            return odbc::Connection::Abrir({ .cadena = "DRIVER={SQLite3};TIMEOUT="
                    + std::to_string(espera.count()) + ";DATABASE=" + (m_carpeta / "uno.db").string(),
                .al_abrir
                = [dos](const auto&) { return std::vector<std::string>{ "ATTACH '" + dos + "' AS Bexmor" }; },
                .bases = { { "Bexmor", "Bexmor" } },
                .sesion = { .espera = espera } });
        }
    };

    class SitioSqlServer : public Sitio {
    public:
        SitioSqlServer()
        {
            const auto maestra = odbc::Connection::Abrir(en("master", std::chrono::seconds(5)));
            for (const auto* base : { "Orvalin", "Bexmor" }) {
                maestra->Execute(pruebas::sqlserver::borra(base));
                maestra->Execute("CREATE DATABASE " + std::string(base));
            }
            sql::ejecuta_guion(*odbc::Connection::Abrir(en("Orvalin", std::chrono::seconds(5))), tablas);
            sql::ejecuta_guion(*odbc::Connection::Abrir(en("Bexmor", std::chrono::seconds(5))), cuentas);
        }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            return odbc::Connection::Abrir(en("Orvalin", espera));
        }

    protected:
        static odbc::Opciones en(const std::string& base, std::chrono::milliseconds espera)
        {
            return { .cadena = pruebas::sqlserver::cadena(),
                .clave = pruebas::sqlserver::clave(),
                .al_abrir = [base](const auto&) { return std::vector<std::string>{ "USE " + base }; },
                .sesion = { .espera = espera } };
        }
    };

    /// One side of two over a line; the other is there, and idle.
    template <sql::Lado lado> Conexion lado_de_pareja(const odbc::Opciones& opciones)
    {
        const auto pareja = std::make_shared<sql::Pareja>(odbc::Connection::AbrirPareja(opciones));
        return { pareja, (lado == sql::Lado::gestion ? pareja->gestion : pareja->contabilidad).get() };
    }

    template <sql::Lado lado> class LadoOdbcPostgresql final : public SitioPostgresql {
    public:
        LadoOdbcPostgresql()
            : SitioPostgresql(lado == sql::Lado::gestion ? gestion : contabilidad)
        {
        }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            return lado_de_pareja<lado>({ .cadena = servidor().cadena_odbc(m_base),
                .al_abrir
                = [](const auto&) { return std::vector<std::string>{ "SET search_path TO gestion" }; },
                .sesion = { .espera = espera } });
        }
    };

    template <sql::Lado lado> class LadoOdbcSqlite final : public Sitio {
    public:
        LadoOdbcSqlite()
        {
            sql::ejecuta_guion(*abre(std::chrono::seconds(5)), tablas);
            sql::ejecuta_guion(
                *lado_de_pareja<sql::Lado::contabilidad>(opciones(std::chrono::seconds(5))), cuentas);
        }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            return lado_de_pareja<lado>(opciones(espera));
        }

    private:
        odbc::Opciones opciones(std::chrono::milliseconds espera) const
        {
            return { .cadena = "DRIVER={SQLite3};TIMEOUT=" + std::to_string(espera.count())
                    + ";DATABASE=" + (m_carpeta / "empresa.db").string(),
                .al_abrir = [](const auto&) { return std::vector<std::string>{ "PRAGMA journal_mode=WAL" }; },
                .sesion = { .espera = espera } };
        }

        pruebas::CarpetaTemporal m_carpeta;
    };

    template <sql::Lado lado> class LadoSqlServer final : public SitioSqlServer {
    public:
        LadoSqlServer()
        {
            if (lado == sql::Lado::contabilidad)
                sql::ejecuta_guion(*abre(std::chrono::seconds(5)), tablas);
        }

        Conexion abre(std::chrono::milliseconds espera) const override
        {
            return lado_de_pareja<lado>(en("Orvalin", espera));
        }
    };

    std::vector<Motor> motores()
    {
        const auto sin_postgresql = pruebas::ServidorPostgresql::falta();
        const auto sin_odbc_postgresql
            = sin_postgresql + pruebas::falta_controlador("PostgreSQL Unicode", "odbc-postgresql");
        const auto sin_odbc_sqlite = pruebas::falta_controlador("SQLite3", "libsqliteodbc");
        const auto sin_sqlserver = pruebas::sqlserver::falta();
        return { { "sqlite", "", std::make_unique<SitioSqlite>, Categoria::bloqueo },
            { "sqlite_pareja", "", std::make_unique<SitioSqlitePareja>, Categoria::bloqueo },
            { "sqlite_contable", "", std::make_unique<SitioSqliteContable>, Categoria::bloqueo },
            { "ado", "", std::make_unique<SitioAdo>, Categoria::bloqueo },
            { "postgresql", sin_postgresql, std::make_unique<SitioPostgresql>, std::nullopt },
            { "postgresql_pareja", sin_postgresql,
                std::make_unique<SitioPostgresqlPareja<sql::Lado::gestion>>, std::nullopt },
            { "postgresql_contable", sin_postgresql,
                std::make_unique<SitioPostgresqlPareja<sql::Lado::contabilidad>>, std::nullopt },
            { "odbc_postgresql", sin_odbc_postgresql, std::make_unique<SitioOdbcPostgresql>, std::nullopt },
            { "odbc_postgresql_gestion", sin_odbc_postgresql,
                std::make_unique<LadoOdbcPostgresql<sql::Lado::gestion>>, std::nullopt },
            { "odbc_postgresql_contabilidad", sin_odbc_postgresql,
                std::make_unique<LadoOdbcPostgresql<sql::Lado::contabilidad>>, std::nullopt },
            { "odbc_sqlite", sin_odbc_sqlite, std::make_unique<SitioOdbcSqlite>, Categoria::bloqueo },
            { "odbc_sqlite_gestion", sin_odbc_sqlite, std::make_unique<LadoOdbcSqlite<sql::Lado::gestion>>,
                Categoria::bloqueo },
            { "odbc_sqlite_contabilidad", sin_odbc_sqlite,
                std::make_unique<LadoOdbcSqlite<sql::Lado::contabilidad>>, Categoria::bloqueo },
            { "odbc_sqlserver", sin_sqlserver, std::make_unique<SitioSqlServer>, std::nullopt },
            { "odbc_sqlserver_gestion", sin_sqlserver, std::make_unique<LadoSqlServer<sql::Lado::gestion>>,
                std::nullopt },
            { "odbc_sqlserver_contabilidad", sin_sqlserver,
                std::make_unique<LadoSqlServer<sql::Lado::contabilidad>>, std::nullopt } };
    }

    struct Contrato : testing::TestWithParam<Motor> {
        std::unique_ptr<Sitio> sitio;
        Conexion conexion;

        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
            sitio = GetParam().crea();
            conexion = abre();
        }

        Conexion abre(std::chrono::milliseconds espera = std::chrono::seconds(10)) const
        {
            return sitio->abre(espera);
        }

        void ejecuta(const std::string& sql) const { conexion->Execute(sql); }

        Variant primero(const std::string& sql) const
        {
            auto rs = conexion->CreateRecordset();
            rs->Open(sql, CursorType::Static, LockType::ReadOnly);
            return rs->Eof() ? Variant() : rs->Fields(std::size_t{ 0 }).Value();
        }

        std::int32_t cuenta(const std::string& tabla) const
        {
            return CLng(primero("SELECT COUNT(*) FROM " + tabla));
        }
    };

    /// The kind of error that something raises; nothing when it raises none.
    template <class Uso> std::optional<Categoria> lo_que_falla(Uso uso)
    {
        try {
            uso();
        } catch (const ErrorBaseDatos& error) {
            EXPECT_FALSE(error.descripcion().empty());
            return error.categoria();
        }
        return std::nullopt;
    }

    TEST_P(Contrato, a_transaction_is_kept_when_committed_and_gone_when_rolled_back)
    {
        conexion->BeginTrans();
        ejecuta("INSERT INTO Valores (Id) VALUES (1)");
        conexion->CommitTrans();
        conexion->BeginTrans();
        ejecuta("INSERT INTO Valores (Id) VALUES (2)");
        conexion->RollbackTrans();
        EXPECT_EQ(cuenta("Valores"), 1);
    }

    TEST_P(Contrato, a_connection_that_is_dropped_leaves_nothing_of_its_transaction)
    {
        conexion->BeginTrans();
        ejecuta("INSERT INTO Valores (Id) VALUES (1)");
        conexion.reset();
        conexion = abre();
        EXPECT_EQ(cuenta("Valores"), 0);
    }

    TEST_P(Contrato, transactions_are_not_nested_and_none_ends_that_was_not_begun)
    {
        EXPECT_THROW(conexion->CommitTrans(), ErrorBaseDatos);
        EXPECT_THROW(conexion->RollbackTrans(), ErrorBaseDatos);
        conexion->BeginTrans();
        EXPECT_THROW(conexion->BeginTrans(), ErrorBaseDatos);
        conexion->CommitTrans();
    }

    TEST_P(Contrato, a_failing_statement_undoes_itself_alone)
    {
        ejecuta("INSERT INTO Valores (Id) VALUES (3)");
        conexion->BeginTrans();
        ejecuta("INSERT INTO Valores (Id) VALUES (1)");
        EXPECT_EQ(lo_que_falla([&] { ejecuta("INSERT INTO Valores (Id) VALUES (2), (3), (4)"); }),
            Categoria::restriccion);
        EXPECT_EQ(lo_que_falla([&] { ejecuta("INSERT INTO Valores (Id) VALUES ('d'Or')"); }),
            Categoria::instruccion);
        EXPECT_EQ(
            lo_que_falla([&] { ejecuta("INSERT INTO NoHay (Id) VALUES (1)"); }), Categoria::instruccion);
        ejecuta("INSERT INTO Valores (Id) VALUES (5)");
        conexion->CommitTrans();
        EXPECT_EQ(cuenta("Valores"), 3) << "1, 3 and 5";
    }

    TEST_P(Contrato, one_execute_is_one_statement)
    {
        EXPECT_EQ(lo_que_falla([&] { ejecuta("INSERT INTO Valores (Id) VALUES (1); DELETE FROM Valores"); }),
            Categoria::instruccion);
        EXPECT_EQ(cuenta("Valores"), 0) << "nothing of it ran";
    }

    TEST_P(Contrato, counts_the_rows_affected)
    {
        std::int32_t filas = -1;
        conexion->Execute("INSERT INTO Valores (Id, Largo) VALUES (1, 7), (2, 7), (3, 8)", &filas);
        EXPECT_EQ(filas, 3);
        conexion->Execute("UPDATE Valores SET Largo = 7 WHERE Largo = 7", &filas);
        EXPECT_EQ(filas, 2) << "rows found, changed or not";
        conexion->Execute("UPDATE Valores SET Largo = 9 WHERE Id = 99", &filas);
        EXPECT_EQ(filas, 0);
        conexion->Execute("DELETE FROM Valores", &filas);
        EXPECT_EQ(filas, 3);
    }

    TEST_P(Contrato, money_comes_back_to_the_fourth_decimal)
    {
        for (const auto* texto :
            { "0", "1", "-1", "0.0001", "-0.0001", "1234567.8901", "99999999999.9999", "-12.5" }) {
            ejecuta("DELETE FROM Valores");
            ejecuta(std::string("INSERT INTO Valores (Id, Dinero) VALUES (1, ") + texto + ")");
            EXPECT_EQ(primero("SELECT Dinero FROM Valores"), Variant(Currency::de_texto(texto))) << texto;
        }
    }

    TEST_P(Contrato, whole_numbers_bits_texts_and_nulls_come_back_as_what_they_are)
    {
        std::string largo;
        for (int i = 0; i < 4'000; ++i)
            largo += "ñ";
        ejecuta("INSERT INTO Valores (Id, Corto, Largo, Marca, Texto) VALUES (1, -32768, 2147483647, 1, "
                "'Ñandú ''12 €'' \t \"x\" 😀 \\n')");
        ejecuta("INSERT INTO Valores (Id, Corto, Largo, Marca, Texto) VALUES (2, 32767, -2147483648, 0, '"
            + largo + "')");
        auto rs = conexion->CreateRecordset();
        rs->Open("SELECT * FROM Valores ORDER BY Id", CursorType::ForwardOnly, LockType::ReadOnly);
        EXPECT_EQ(rs->Fields("corto").Value(), Variant(-32768));
        EXPECT_EQ(rs->Fields("LARGO").Value(), Variant(2147483647));
        EXPECT_EQ(rs->Fields("Marca").Value(), Variant(true));
        EXPECT_EQ(rs->Fields("Texto").Value(), Variant("Ñandú '12 €' \t \"x\" 😀 \\n"));
        EXPECT_EQ(rs->Fields("Fecha").Value(), Variant(Nulo{}));
        std::string anexado = "-";
        rs->Fields("Fecha").anexa_texto(anexado);
        EXPECT_EQ(anexado, "-") << "null appends nothing";
        rs->MoveNext();
        EXPECT_FALSE(CBool(rs->Fields("Marca").Value()));
        EXPECT_EQ(rs->Fields("Largo").Value(), Variant(std::int32_t{ -2147483647 } - 1));
        EXPECT_EQ(rs->Fields("Texto").Value(), Variant(largo));
        rs->MoveNext();
        EXPECT_TRUE(rs->Eof());
    }

    TEST_P(Contrato, regional_dates_are_stored_compared_and_ordered_as_dates)
    {
        ejecuta("INSERT INTO Valores (Id, Fecha, Texto) VALUES (1, '02/11/2026', '02/11/2026')");
        ejecuta("INSERT INTO Valores (Id, Fecha) VALUES (2, '10/01/2026 9:05:03')");
        ejecuta("INSERT INTO Valores (Id, Fecha) VALUES (3, '9:05:03')");
        EXPECT_EQ(primero("SELECT Fecha FROM Valores WHERE Id = 1"), Variant(*Date::de_dia(2026, 11, 2)));
        EXPECT_EQ(CStr(primero("SELECT Fecha FROM Valores WHERE Id = 2")), "10/01/2026 9:05:03");
        EXPECT_EQ(CStr(primero("SELECT Fecha FROM Valores WHERE Id = 3")), "01/01/1900 9:05:03");
        EXPECT_EQ(primero("SELECT Texto FROM Valores WHERE Id = 1"), Variant("02/11/2026"));
        EXPECT_EQ(
            primero("SELECT MAX(Id) FROM Valores v WHERE v.Fecha BETWEEN '01/01/2026' AND '02/11/2026'"),
            Variant(2));
        EXPECT_EQ(
            primero("SELECT COUNT(*) FROM Valores v WHERE v.Fecha BETWEEN '01/01/2026' AND '10/01/2026'"),
            Variant(0))
            << "the last day ends at its midnight";
        EXPECT_EQ(
            lo_que_falla([&] { ejecuta("UPDATE Valores SET Fecha='31/02/2026'"); }), Categoria::instruccion);
    }

    TEST_P(Contrato, isnull_and_three_part_names_are_understood)
    {
        EXPECT_EQ(primero("SELECT ISNULL(c.Cuenta, '') AS Cuenta FROM Bexmor.dbo.Cuentas c WHERE c.Alta = "
                          "'21/11/2026'"),
            Variant("40000017"));
        EXPECT_EQ(primero("SELECT ISNULL(NULL, 'nada') AS x"), Variant("nada"));
    }

    TEST_P(Contrato, a_field_that_is_not_there_and_a_row_that_is_not_there_are_errors)
    {
        auto rs = conexion->CreateRecordset();
        rs->Open("SELECT Id FROM Valores", CursorType::Static, LockType::ReadOnly);
        EXPECT_TRUE(rs->Eof());
        EXPECT_THROW(static_cast<void>(rs->Fields("NoHay")), ErrorBaseDatos);
        EXPECT_THROW(static_cast<void>(rs->Fields("Id").Value()), ErrorBaseDatos);
        EXPECT_THROW(rs->MoveNext(), ErrorBaseDatos);
        EXPECT_THROW(rs->AddNew(), ErrorBaseDatos) << "it is read-only";
        rs->Close();
        EXPECT_THROW(rs->Close(), ErrorBaseDatos);
    }

    TEST_P(Contrato, an_error_names_the_line_that_ran_the_statement)
    {
        try {
            conexion->Execute("nonsense");
            FAIL();
        } catch (const ErrorBaseDatos& error) {
            EXPECT_EQ(error.donde().linea(), __LINE__ - 3U);
            EXPECT_EQ(error.instruccion(), "nonsense");
        }
    }

    void abre_contador(adodb::Recordset& rs)
    {
        rs.Open("SELECT * FROM Contador WHERE Empresa =1 AND Ejercicio =2026", CursorType::Keyset,
            LockType::Pessimistic);
    }

    TEST_P(Contrato, a_pessimistic_recordset_adds_and_changes_its_row)
    {
        auto rs = conexion->CreateRecordset();
        abre_contador(*rs);
        ASSERT_TRUE(rs->Eof());
        rs->AddNew();
        rs->Fields("Empresa").Value(1);
        rs->Fields("Ejercicio").Value(2026);
        rs->Fields("Numero").Value(260'001);
        rs->Update();
        rs->Close();
        abre_contador(*rs);
        EXPECT_EQ(rs->Fields("Numero").Value(), Variant(260'001));
        rs->Fields("Numero").Value(260'002);
        rs->Update();
        rs->Close();
        EXPECT_EQ(primero("SELECT Numero FROM Contador"), Variant(260'002));
    }

    TEST_P(Contrato, a_pessimistic_recordset_left_without_update_changes_nothing_and_lets_go)
    {
        ejecuta("INSERT INTO Contador (Empresa, Ejercicio, Numero) VALUES (1, 2026, 5)");
        {
            auto rs = conexion->CreateRecordset();
            abre_contador(*rs);
            rs->Fields("Numero").Value(6);
        }
        abre(std::chrono::milliseconds(0))->Execute("UPDATE Contador SET Numero = Numero + 10");
        EXPECT_EQ(primero("SELECT Numero FROM Contador"), Variant(15));
    }

    TEST_P(Contrato, two_connections_at_once_get_unique_and_consecutive_numbers)
    {
        constexpr int veces = 150;
        ejecuta("INSERT INTO Contador (Empresa, Ejercicio, Numero) VALUES (1, 2026, 0)");
        std::array<std::vector<std::int32_t>, 2> numeros;
        const auto toma = [&](std::size_t quien) {
            const auto propia = abre();
            for (int i = 0; i < veces; ++i) {
                const bool en_transaccion = i % 2 == 0;
                if (en_transaccion)
                    propia->BeginTrans();
                auto rs = propia->CreateRecordset();
                abre_contador(*rs);
                const auto numero = CLng(rs->Fields("Numero").Value()) + 1;
                rs->Fields("Numero").Value(numero);
                rs->Update();
                rs->Close();
                numeros[quien].push_back(numero);
                if (en_transaccion)
                    propia->CommitTrans();
            }
        };
        std::jthread otro(toma, 1U);
        toma(0);
        otro.join();
        std::set<std::int32_t> todos(numeros[0].begin(), numeros[0].end());
        todos.insert(numeros[1].begin(), numeros[1].end());
        EXPECT_EQ(todos.size(), 2U * veces);
        EXPECT_EQ(*todos.rbegin(), 2 * veces);
    }

    TEST_P(Contrato, of_two_that_make_a_row_at_once_the_second_finds_it)
    {
        const auto toma = [&](std::int32_t& numero) {
            const auto propia = abre();
            propia->BeginTrans();
            auto rs = propia->CreateRecordset();
            abre_contador(*rs);
            numero = 1;
            if (rs->Eof()) {
                rs->AddNew();
                rs->Fields("Empresa").Value(1);
                rs->Fields("Ejercicio").Value(2026);
            } else {
                numero = CLng(rs->Fields("Numero").Value()) + 1;
            }
            rs->Fields("Numero").Value(numero);
            std::this_thread::sleep_for(std::chrono::milliseconds(50)); // let the other one come
            rs->Update();
            propia->CommitTrans();
        };
        std::array<std::int32_t, 2> numeros{};
        std::jthread otro(toma, std::ref(numeros[1]));
        toma(numeros[0]);
        otro.join();
        EXPECT_THAT(numeros, testing::UnorderedElementsAre(1, 2));
        EXPECT_EQ(primero("SELECT Numero FROM Contador"), Variant(2));
    }

    TEST_P(Contrato, waiting_too_long_for_another_user_is_told_as_a_lock)
    {
        constexpr std::chrono::milliseconds poco(20);
        ejecuta("INSERT INTO Valores (Id) VALUES (1)");
        const auto otra = abre(poco);
        conexion->BeginTrans();
        ejecuta("UPDATE Valores SET Largo = 1");
        EXPECT_EQ(lo_que_falla([&] { otra->Execute("UPDATE Valores SET Largo = 2"); }), Categoria::bloqueo);
        EXPECT_EQ(lo_que_falla([&] { abre(poco)->BeginTrans(); }), GetParam().empezar_mientras_otro_escribe);
        conexion->CommitTrans();
        otra->Execute("UPDATE Valores SET Largo = Largo + 2");
        EXPECT_EQ(primero("SELECT Largo FROM Valores"), Variant(3));
    }

    TEST_P(Contrato, days_of_two_centuries_come_back_equal)
    {
        const auto ultimo = *Date::de_dia(2099, 12, 31);
        for (Date dia = *Date::de_dia(1900, 1, 1); dia <= ultimo; dia = dia.mas_dias(997)) {
            ejecuta("DELETE FROM Valores");
            ejecuta("INSERT INTO Valores (Id, Fecha) VALUES (1, '" + dia.texto() + " 23:59:58')");
            EXPECT_EQ(CStr(primero("SELECT Fecha FROM Valores")), dia.texto() + " 23:59:58");
        }
        ejecuta("UPDATE Valores SET Fecha = '31/12/2099'");
        EXPECT_EQ(primero("SELECT Fecha FROM Valores"), Variant(ultimo));
    }

    TEST_P(Contrato, rows_left_unread_do_not_stand_in_the_way_of_a_commit)
    {
        ejecuta("INSERT INTO Valores (Id) VALUES (1), (2)");
        auto rs = conexion->CreateRecordset();
        rs->Open("SELECT * FROM Valores", CursorType::ForwardOnly, LockType::ReadOnly);
        conexion->BeginTrans();
        ejecuta("INSERT INTO Valores (Id) VALUES (3)");
        conexion->CommitTrans();
        EXPECT_EQ(cuenta("Valores"), 3);
    }

    INSTANTIATE_TEST_SUITE_P(
        motores, Contrato, testing::ValuesIn(motores()), [](const auto& caso) { return caso.param.nombre; });

}
}
