// What every pair of connections over one session must do. An engine joins by describing itself in
// `motores()`.
#include "engines/odbc/Connection.hpp"
#include "engines/postgresql/Connection.hpp"
#include "engines/sql/Guion.hpp"
#include "engines/sql/Pareja.hpp"
#include "engines/sql/Postgresql.hpp"
#include "engines/sql/Unidad.hpp"
#include "engines/sqlite/Connection.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/ControladorOdbc.hpp"
#include "tests/support/ServidorPostgresql.hpp"
#include "tests/support/SqlServer.hpp"

#include <gmock/gmock.h>

#include <functional>
#include <optional>

namespace atipicos {
namespace {

    using adodb::Categoria;
    using adodb::CursorType;
    using adodb::ErrorBaseDatos;
    using adodb::LockType;
    using testing::ElementsAre;
    using testing::HasSubstr;

    /// A database of the test's own with the tables below, to be opened as often as wanted.
    struct SitioDePares {
        SitioDePares() = default;
        SitioDePares(const SitioDePares&) = delete;
        SitioDePares& operator=(const SitioDePares&) = delete;
        virtual ~SitioDePares() = default;
        virtual sql::Pareja abre() const = 0;
    };

    struct MotorDePares {
        std::string nombre;
        std::string falta; ///< what there is to install or to set before it can be tested; empty: nothing
        std::function<std::unique_ptr<SitioDePares>()> crea;
        bool con_diferidas = true; ///< it knows conditions that are looked at in the commit
    };
    void PrintTo(const MotorDePares& motor, std::ostream* salida) { *salida << motor.nombre; }

    constexpr auto tablas_de_gestion = R"(
        CREATE TABLE Empresas (Codigo INT NOT NULL PRIMARY KEY, Nombre NVARCHAR(40));
        INSERT INTO Empresas (Codigo, Nombre) VALUES (7, 'de gestión');
        CREATE TABLE Cargos (Id INT NOT NULL PRIMARY KEY, Fecha DATETIME, Importe MONEY))";

    constexpr auto tablas_de_contabilidad = R"(
        CREATE TABLE Empresas (Codigo INT NOT NULL PRIMARY KEY, Nombre NVARCHAR(40));
        INSERT INTO Empresas (Codigo, Nombre) VALUES (8, 'contable');
        CREATE TABLE Contador (Empresa INT NOT NULL PRIMARY KEY, Numero INT NOT NULL);
        CREATE TABLE Apuntes (Id INT NOT NULL PRIMARY KEY, Dia DATETIME, Empresa INT))";

    constexpr auto con_diferida = "CREATE TABLE Firmas (Id INT NOT NULL PRIMARY KEY, Empresa INT NOT NULL "
                                  "REFERENCES Empresas (Codigo) DEFERRABLE INITIALLY DEFERRED)";

    class SitioSqlite final : public SitioDePares {
    public:
        SitioSqlite()
        {
            const auto pareja
                = sqlite::Connection::AbrirPareja({ .fichero = m_carpeta / "empresa.db", .crear = true });
            sql::ejecuta_guion(*pareja.gestion, tablas_de_gestion);
            sql::ejecuta_guion(*pareja.contabilidad, tablas_de_contabilidad);
            sql::ejecuta_guion(*pareja.contabilidad, con_diferida);
        }

        sql::Pareja abre() const override
        {
            return sqlite::Connection::AbrirPareja({ .fichero = m_carpeta / "empresa.db" });
        }

    private:
        pruebas::CarpetaTemporal m_carpeta;
    };

    void llena(const sql::Pareja& pareja, bool con_diferidas = true)
    {
        sql::ejecuta_guion(*pareja.gestion, tablas_de_gestion);
        sql::ejecuta_guion(*pareja.contabilidad, tablas_de_contabilidad);
        if (con_diferidas)
            sql::ejecuta_guion(*pareja.contabilidad, con_diferida);
    }

    odbc::AlAbrir dice(const std::string& sql)
    {
        return [sql](const auto&) { return std::vector<std::string>{ sql }; };
    }

    class SitioOdbcSqlite final : public SitioDePares {
    public:
        SitioOdbcSqlite() { llena(abre()); }

        sql::Pareja abre() const override
        {
            return odbc::Connection::AbrirPareja(
                { .cadena = "DRIVER={SQLite3};DATABASE=" + (m_carpeta / "empresa.db").string(),
                    .al_abrir = dice("PRAGMA journal_mode=WAL") });
        }

    private:
        pruebas::CarpetaTemporal m_carpeta;
    };

    /// One server for all tests.
    const pruebas::ServidorPostgresql& servidor()
    {
        static const pruebas::ServidorPostgresql unico;
        return unico;
    }

    class SitioPostgresql final : public SitioDePares {
    public:
        SitioPostgresql()
        {
            servidor().crea_base(base);
            const auto conexion = postgresql::Connection::Abrir(
                { .direccion = servidor().direccion(base), .esquema = "dbo" });
            conexion->BeginTrans();
            sql::crea_esquema_postgresql(*conexion, "propio");
            sql::ejecuta_guion(*conexion, tablas_de_gestion);
            sql::crea_esquema_postgresql(*conexion, "dbo");
            sql::ejecuta_guion(*conexion, tablas_de_contabilidad);
            sql::ejecuta_guion(*conexion, con_diferida);
            conexion->CommitTrans();
        }
        ~SitioPostgresql() override { servidor().borra_base(base); }

        sql::Pareja abre() const override
        {
            return postgresql::Connection::AbrirPareja(
                { .direccion = servidor().direccion(base), .esquema = "propio", .bases = { "Bexmor" } });
        }

    private:
        static constexpr auto base = "pareja";
    };

    class SitioOdbcPostgresql final : public SitioDePares {
    public:
        SitioOdbcPostgresql()
        {
            servidor().crea_base(m_base);
            const auto sola = odbc::Connection::Abrir({ .cadena = servidor().cadena_odbc(m_base) });
            sola->BeginTrans();
            sql::crea_esquema_postgresql(*sola, "dbo");
            sql::crea_esquema_postgresql(*sola, "gestion");
            sola->CommitTrans();
            llena(abre());
        }
        ~SitioOdbcPostgresql() override { servidor().borra_base(m_base); }

        sql::Pareja abre() const override
        {
            return odbc::Connection::AbrirPareja(
                { .cadena = servidor().cadena_odbc(m_base), .al_abrir = dice("SET search_path TO gestion") });
        }

    private:
        static inline int s_bases = 0;
        std::string m_base = "odbc_" + std::to_string(++s_bases);
    };

    class SitioSqlServer final : public SitioDePares {
    public:
        SitioSqlServer()
        {
            const auto maestra = odbc::Connection::Abrir(
                { .cadena = pruebas::sqlserver::cadena(), .clave = pruebas::sqlserver::clave() });
            for (const std::string base : { "Orvalin", "Bexmor" }) {
                maestra->Execute(pruebas::sqlserver::borra(base));
                maestra->Execute("CREATE DATABASE " + base);
                maestra->Execute("ALTER DATABASE " + base + " SET READ_COMMITTED_SNAPSHOT ON");
            }
            llena(abre(), false);
        }

        sql::Pareja abre() const override
        {
            return odbc::Connection::AbrirPareja({ .cadena = pruebas::sqlserver::cadena(),
                .clave = pruebas::sqlserver::clave(),
                .al_abrir = dice("USE Orvalin") });
        }
    };

    std::vector<MotorDePares> motores_de_pares()
    {
        return { { "sqlite", "", std::make_unique<SitioSqlite> },
            { "postgresql", pruebas::ServidorPostgresql::falta(), std::make_unique<SitioPostgresql> },
            { "odbc_postgresql",
                pruebas::ServidorPostgresql::falta()
                    + pruebas::falta_controlador("PostgreSQL Unicode", "odbc-postgresql"),
                std::make_unique<SitioOdbcPostgresql> },
            { "odbc_sqlite", pruebas::falta_controlador("SQLite3", "libsqliteodbc"),
                std::make_unique<SitioOdbcSqlite> },
            { "odbc_sqlserver", pruebas::sqlserver::falta(), std::make_unique<SitioSqlServer>, false } };
    }

    struct Pareja : testing::TestWithParam<MotorDePares> {
        std::unique_ptr<SitioDePares> sitio;
        sql::Pareja pareja;
        sql::Pareja otra; ///< of another user
        std::shared_ptr<adodb::Connection> gestion;
        std::shared_ptr<adodb::Connection> contabilidad;

        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
            sitio = GetParam().crea();
            pareja = sitio->abre();
            otra = sitio->abre();
            gestion = pareja.gestion;
            contabilidad = pareja.contabilidad;
        }

        static std::vector<std::string> lee(adodb::Connection& conexion, const std::string& sql)
        {
            std::vector<std::string> valores;
            auto rs = conexion.CreateRecordset();
            rs->Open(sql, CursorType::Static, LockType::ReadOnly);
            for (; !rs->Eof(); rs->MoveNext())
                valores.push_back(CStr(rs->Fields(std::size_t{ 0 }).Value()));
            return valores;
        }

        /// How many charges and lines of accounting another user sees.
        std::pair<std::size_t, std::size_t> visto_por_otro() const
        {
            return { lee(*otra.gestion, "SELECT Id FROM Cargos").size(),
                lee(*otra.contabilidad, "SELECT Id FROM Apuntes").size() };
        }

        void cargo(int id) const
        {
            gestion->Execute("INSERT INTO Cargos (Id) VALUES (" + std::to_string(id) + ")");
        }
        void apunte(int id) const
        {
            contabilidad->Execute("INSERT INTO Apuntes (Id) VALUES (" + std::to_string(id) + ")");
        }
        void empieza() const
        {
            gestion->BeginTrans();
            contabilidad->BeginTrans();
        }
        void guarda(int id) const
        {
            empieza();
            cargo(id);
            apunte(id);
            gestion->CommitTrans();
            contabilidad->CommitTrans();
        }
    };

    using Par = std::pair<std::size_t, std::size_t>;

    template <class Uso> std::string error_en(Uso uso, std::optional<Categoria> categoria = std::nullopt)
    {
        try {
            uso();
        } catch (const ErrorBaseDatos& error) {
            EXPECT_EQ(error.categoria(), categoria.value_or(error.categoria())) << error.descripcion();
            return error.descripcion();
        }
        return "no error";
    }

    constexpr auto deshecha_por_la_otra
        = "La otra conexión ha deshecho la transacción de las dos: sólo se puede deshacer.";

    TEST_P(Pareja, plain_names_are_those_of_the_own_product)
    {
        EXPECT_THAT(lee(*gestion, "SELECT Nombre FROM Empresas WHERE Empresas.Codigo = 7"),
            ElementsAre("de gestión"));
        EXPECT_THAT(lee(*contabilidad, "SELECT Nombre FROM Empresas WHERE Empresas.Codigo = 8"),
            ElementsAre("contable"));
        EXPECT_THAT(lee(*gestion, "SELECT e.Nombre FROM Bexmor.dbo.Empresas e"), ElementsAre("contable"));
        EXPECT_THAT(
            lee(*contabilidad, "SELECT e.Nombre FROM Bexmor.dbo.Empresas e"), ElementsAre("contable"));
        EXPECT_THAT(
            lee(*gestion,
                "SELECT a.Nombre FROM Empresas a INNER JOIN Bexmor.dbo.Empresas b ON a.Codigo < b.Codigo"),
            ElementsAre("de gestión"));
    }

    TEST_P(Pareja, a_table_of_the_other_product_is_missing_under_its_plain_name)
    {
        for (const auto* sql :
            { "SELECT Id FROM Apuntes", "INSERT INTO Contador (Empresa, Numero) VALUES (1, 1)" })
            EXPECT_NE(error_en([&] { gestion->Execute(sql); }, Categoria::instruccion), "no error") << sql;
        for (const auto* sql : { "SELECT Id FROM Cargos", "DELETE FROM Cargos" })
            EXPECT_NE(error_en([&] { contabilidad->Execute(sql); }, Categoria::instruccion), "no error")
                << sql;
    }

    TEST_P(Pareja, dates_mean_the_same_on_both_sides)
    {
        gestion->Execute("INSERT INTO Cargos (Id, Fecha) VALUES (3, '21/11/2026')");
        contabilidad->Execute("INSERT INTO Apuntes (Id, Dia) VALUES (4, '09/02/2026 9:05:03')");
        EXPECT_THAT(
            lee(*gestion, "SELECT Fecha FROM Cargos WHERE Fecha > '20/11/2026'"), ElementsAre("21/11/2026"));
        EXPECT_THAT(lee(*contabilidad, "SELECT Dia FROM Apuntes WHERE Dia < '01/11/2026'"),
            ElementsAre("09/02/2026 9:05:03"));
        EXPECT_THAT(
            lee(*gestion,
                "SELECT a.Id FROM Bexmor.dbo.Apuntes a WHERE a.Dia BETWEEN '09/02/2026' AND '10/02/2026'"),
            ElementsAre("4"));
    }

    TEST_P(Pareja, both_commits_are_seen_by_others_at_once_with_the_last)
    {
        empieza();
        cargo(1);
        apunte(2);
        apunte(3);
        EXPECT_EQ(visto_por_otro(), Par(0, 0));
        gestion->CommitTrans();
        EXPECT_EQ(visto_por_otro(), Par(0, 0)) << "only promised";
        EXPECT_THAT(lee(*gestion, "SELECT Id FROM Bexmor.dbo.Apuntes ORDER BY Id"), ElementsAre("2", "3"));
        contabilidad->CommitTrans();
        EXPECT_EQ(visto_por_otro(), Par(1, 2));
    }

    TEST_P(Pareja, dropped_between_the_two_commits_it_leaves_nothing)
    {
        empieza();
        cargo(1);
        apunte(2);
        gestion->CommitTrans();
        pareja = {};
        gestion.reset();
        contabilidad.reset();
        EXPECT_EQ(visto_por_otro(), Par(0, 0));
    }

    TEST_P(Pareja, a_side_that_is_dropped_undoes_what_it_was_in)
    {
        empieza();
        cargo(1);
        apunte(2);
        gestion.reset();
        pareja.gestion.reset();
        EXPECT_EQ(error_en([&] { apunte(3); }), deshecha_por_la_otra);
        contabilidad->RollbackTrans();
        apunte(4);
        EXPECT_EQ(visto_por_otro(), Par(0, 1));
    }

    TEST_P(Pareja, what_a_unit_has_made_and_undone_is_forgotten)
    {
        sql::Unidad unidad(pareja.transacciones);
        gestion->BeginTrans();
        gestion->Execute("CREATE TABLE Nuevas (Dia DATETIME)");
        gestion->Execute("INSERT INTO Nuevas (Dia) VALUES ('21/11/2026')");
        gestion->CommitTrans();
        unidad.deshace_ultima();
        gestion->BeginTrans();
        gestion->Execute("CREATE TABLE Nuevas (Dia NVARCHAR(40))");
        gestion->Execute("INSERT INTO Nuevas (Dia) VALUES ('21/11/2026')");
        gestion->CommitTrans();
        EXPECT_THAT(lee(*gestion, "SELECT Dia FROM Nuevas"), ElementsAre("21/11/2026"));
    }

    TEST_P(Pareja, one_side_alone_commits_at_once)
    {
        contabilidad->BeginTrans();
        apunte(5);
        contabilidad->CommitTrans();
        EXPECT_EQ(visto_por_otro(), Par(0, 1));
        cargo(6);
        EXPECT_EQ(visto_por_otro(), Par(1, 1)) << "outside a transaction, as always";
    }

    TEST_P(Pareja, rolling_back_one_side_undoes_both_and_the_other_must_roll_back_too)
    {
        for (const bool primero_gestion : { true, false }) {
            auto& una = primero_gestion ? *gestion : *contabilidad;
            auto& la_segunda = primero_gestion ? *contabilidad : *gestion;
            empieza();
            cargo(1);
            apunte(2);
            una.RollbackTrans();
            EXPECT_EQ(visto_por_otro(), Par(0, 0));
            EXPECT_EQ(error_en([&] { la_segunda.Execute("DELETE FROM Empresas"); }), deshecha_por_la_otra);
            EXPECT_EQ(
                error_en([&] { lee(la_segunda, "SELECT Codigo FROM Empresas"); }), deshecha_por_la_otra);
            EXPECT_EQ(error_en([&] { la_segunda.CommitTrans(); }), deshecha_por_la_otra);
            la_segunda.RollbackTrans();
            EXPECT_EQ(error_en([&] { la_segunda.RollbackTrans(); }),
                "No hay ninguna transacción abierta en esta conexión.");
        }
        guarda(3);
        EXPECT_EQ(visto_por_otro(), Par(1, 1));
    }

    TEST_P(Pareja, rolling_back_after_a_promised_commit_undoes_both)
    {
        empieza();
        cargo(1);
        apunte(2);
        gestion->CommitTrans();
        EXPECT_EQ(error_en([&] { cargo(9); }, Categoria::instruccion),
            "La otra conexión tiene una transacción abierta y esta no: antes de escribir, empiécela.");
        gestion->RollbackTrans();
        EXPECT_EQ(error_en([&] { contabilidad->CommitTrans(); }), deshecha_por_la_otra);
        contabilidad->RollbackTrans();
        EXPECT_EQ(visto_por_otro(), Par(0, 0));
    }

    TEST_P(Pareja, who_has_not_begun_asks_but_does_not_write_nor_lock)
    {
        gestion->BeginTrans();
        cargo(1);
        EXPECT_THAT(lee(*contabilidad, "SELECT Codigo FROM Empresas"), ElementsAre("8"));
        EXPECT_NE(error_en([&] { lee(*contabilidad, "SELECT Nada FROM Empresas"); }), "no error");
        EXPECT_NE(error_en([&] { apunte(2); }, Categoria::instruccion), "no error");
        gestion->CommitTrans();
        EXPECT_EQ(visto_por_otro(), Par(1, 0));
    }

    TEST_P(Pareja, a_statement_that_fails_undoes_itself_alone_on_either_side)
    {
        guarda(1);
        empieza();
        cargo(2);
        EXPECT_NE(error_en([&] { apunte(1); }, Categoria::restriccion), "no error");
        EXPECT_NE(error_en([&] { cargo(1); }, Categoria::restriccion), "no error");
        apunte(3);
        gestion->CommitTrans();
        EXPECT_NE(error_en([&] { apunte(1); }, Categoria::restriccion), "no error")
            << "also behind a promise";
        apunte(4);
        contabilidad->CommitTrans();
        EXPECT_EQ(visto_por_otro(), Par(2, 3));
    }

    TEST_P(Pareja, an_open_recordset_keeps_its_rows_across_the_other_sides_doings)
    {
        for (int i = 1; i <= 3; ++i)
            cargo(i);
        auto rs = gestion->CreateRecordset();
        rs->Open("SELECT Id FROM Cargos ORDER BY Id", CursorType::ForwardOnly, LockType::ReadOnly);
        empieza();
        apunte(1);
        EXPECT_EQ(CLng(rs->Fields("Id").Value()), 1);
        rs->MoveNext();
        contabilidad->RollbackTrans();
        gestion->RollbackTrans();
        EXPECT_EQ(CLng(rs->Fields("Id").Value()), 2);
        guarda(9);
        rs->MoveNext();
        EXPECT_EQ(CLng(rs->Fields("Id").Value()), 3);
        rs->MoveNext();
        EXPECT_TRUE(rs->Eof());
    }

    TEST_P(Pareja, rows_are_locked_and_written_back_on_the_second_side)
    {
        for (int esperado = 1; esperado <= 2; ++esperado) {
            empieza();
            auto rs = contabilidad->CreateRecordset();
            rs->Open("SELECT * FROM Contador WHERE Empresa = 8", CursorType::Keyset, LockType::Pessimistic);
            if (rs->Eof()) {
                rs->AddNew();
                rs->Fields("Empresa").Value(8);
                rs->Fields("Numero").Value(0);
            }
            rs->Fields("Numero").Value(CLng(rs->Fields("Numero").Value()) + 1);
            rs->Update();
            rs->Close();
            gestion->CommitTrans();
            contabilidad->CommitTrans();
            EXPECT_THAT(lee(*otra.contabilidad, "SELECT Numero FROM Contador"),
                ElementsAre(std::to_string(esperado)));
        }
    }

    TEST_P(Pareja, a_physical_commit_that_fails_keeps_nothing_of_either_side)
    {
        if (!GetParam().con_diferidas)
            GTEST_SKIP() << "it looks at every condition at once";
        empieza();
        cargo(1);
        contabilidad->Execute("INSERT INTO Firmas (Id, Empresa) VALUES (1, 99)");
        gestion->CommitTrans();
        EXPECT_NE(error_en([&] { contabilidad->CommitTrans(); }, Categoria::restriccion), "no error");
        contabilidad->RollbackTrans();
        gestion->RollbackTrans();
        EXPECT_EQ(visto_por_otro(), Par(0, 0));
        guarda(2);
        EXPECT_EQ(visto_por_otro(), Par(1, 1));
    }

    TEST_P(Pareja, a_unit_is_one_commit_of_many_saves)
    {
        {
            sql::Unidad unidad(pareja.transacciones);
            for (int i = 1; i <= 3; ++i)
                guarda(i);
            EXPECT_EQ(visto_por_otro(), Par(0, 0));
            unidad.confirma();
        }
        EXPECT_EQ(visto_por_otro(), Par(3, 3));
    }

    TEST_P(Pareja, of_a_unit_each_save_is_undone_alone)
    {
        sql::Unidad unidad(pareja.transacciones);
        guarda(1);
        unidad.deshace_ultima();
        guarda(2);
        empieza();
        cargo(3);
        EXPECT_NE(error_en([&] { apunte(2); }, Categoria::restriccion), "no error");
        apunte(3);
        gestion->RollbackTrans();
        contabilidad->RollbackTrans();
        guarda(4);
        guarda(5);
        unidad.deshace_ultima();
        unidad.confirma();
        EXPECT_THAT(lee(*otra.gestion, "SELECT Id FROM Cargos ORDER BY Id"), ElementsAre("2", "4"));
        EXPECT_THAT(lee(*otra.contabilidad, "SELECT Id FROM Apuntes ORDER BY Id"), ElementsAre("2", "4"));
        guarda(6);
        EXPECT_EQ(visto_por_otro(), Par(3, 3)) << "afterwards each is committed at once again";
    }

    TEST_P(Pareja, one_unit_follows_another)
    {
        for (int vez = 0; vez < 3; ++vez) {
            sql::Unidad unidad(pareja.transacciones);
            guarda(10 * vez + 1);
            guarda(10 * vez + 2);
            if (vez != 1)
                unidad.confirma();
        }
        EXPECT_THAT(
            lee(*otra.gestion, "SELECT Id FROM Cargos ORDER BY Id"), ElementsAre("1", "2", "21", "22"));
    }

    TEST_P(Pareja, a_unit_that_does_not_end_leaves_nothing)
    {
        {
            const sql::Unidad unidad(pareja.transacciones);
            guarda(1);
            empieza();
            cargo(2);
        }
        EXPECT_EQ(visto_por_otro(), Par(0, 0));
        gestion->RollbackTrans();
        guarda(3);
        EXPECT_EQ(visto_por_otro(), Par(1, 1));
    }

    INSTANTIATE_TEST_SUITE_P(motores_de_pares, Pareja, testing::ValuesIn(motores_de_pares()),
        [](const auto& uno) { return uno.param.nombre; });

}
}
